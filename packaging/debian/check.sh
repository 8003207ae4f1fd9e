#!/bin/sh
# Tries the Debian package in a clean chroot (needs root): install, convert, open the window, remove;
# nothing may stay outside the user's home. Window: build/release/package/window.png
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
. "$here/tools/set_up.sh"
deb=$(echo "$here"/build/release/package/*.deb)
root=$(mktemp -d "${TMPDIR:-/tmp}/tobarine-deb-XXXXXX")

install_packages debootstrap
say "Debian 12 の chroot を作ります"
debootstrap --variant=minbase bookworm "$root" "$(debian_mirror)" >/dev/null
cp /etc/resolv.conf "$root/etc/"
mount -t proc proc "$root/proc"
trap 'umount "$root/proc"; rm -rf --one-file-system "$root"' EXIT
inside() {
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/home/me DEBIAN_FRONTEND=noninteractive \
    chroot "$root" "$@"
}
inside apt-get install -y -qq --no-install-recommends xvfb imagemagick fonts-ipafont-gothic >/dev/null
mkdir -p "$root/home/me"
cp "$here/samples/hamlog.csv" "$root/home/me/"
cp "$deb" "$root/tmp/"
(cd "$root" && find etc opt usr var/lib -xdev ! -path 'var/lib/dpkg/*' ! -path 'var/lib/apt/*' | sort) \
  >"$root/tmp/before"
check "its folders and files can be read by all" sh -c "! dpkg-deb -c '$deb' | grep -q '^.......--'"
check "installs" inside sh -c 'apt-get install -y -qq --no-install-recommends /tmp/*.deb >/dev/null 2>&1'
check "converts" inside sh -c 'cd /home/me && tobarine-cli h2l hamlog.csv >/dev/null 2>&1'
check "gives the bytes it should" cmp -s "$root/home/me/hamlog.adi" "$here/tests/data/sample_defaults.adi"
inside sh -c 'Xvfb :9 -screen 0 1000x740x24 >/dev/null 2>&1 & x=$!; sleep 2
  DISPLAY=:9 tobarine /home/me/hamlog.csv >/dev/null 2>&1 & t=$!
  sleep 4; DISPLAY=:9 import -window root /tmp/window.png; kill $t $x' || true
cp "$root/tmp/window.png" "$here/build/release/package/"
check "makes the user's own folder" test -s "$root/home/me/.local/share/tobarine/Tobarine.ini"
check "removes" inside sh -c 'apt-get purge -y -qq --autoremove tobarine >/dev/null 2>&1'
(cd "$root" && find etc opt usr var/lib -xdev ! -path 'var/lib/dpkg/*' ! -path 'var/lib/apt/*' | sort) \
  >"$root/tmp/after"
check "leaves nothing of its own" sh -c "! comm -13 '$root/tmp/before' '$root/tmp/after' | grep -i tobarine"
[ "$failures" -eq 0 ] && say "すべて良し"
exit "$failures"
