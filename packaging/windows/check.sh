#!/bin/sh
# Tries what build.sh has made under 32-bit Wine, in an i386 chroot of its own (needs root):
# the command line gives the same bytes as on Linux, a database is read through stand-in libraries,
# settings go to and fro between the program and the Windows profile calls, and the window opens
# (build/windows/window.png).
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
. "$here/tools/set_up.sh"
cache=${TOBARINE_CACHE:-$HOME/.cache/tobarine}
root=$cache/wine
made=$here/build/windows/Tobarine-$(project_version)

install_packages debootstrap g++-mingw-w64-i686-posix
if [ ! -x "$root/usr/bin/wine" ]; then
  say "Wine の chroot を作ります (初回だけ)"
  umount -l "$root/dev" "$root/proc" 2>/dev/null || true
  rm -rf --one-file-system "$root"
  debootstrap --arch=i386 --variant=minbase bookworm "$root" "$(debian_mirror)" >/dev/null
  cp /etc/resolv.conf "$root/etc/"
fi
mount | grep -q " $root/proc " || mount -t proc proc "$root/proc"
mount | grep -q " $root/dev " || mount --bind /dev "$root/dev"
trap 'umount -l "$root/dev" "$root/proc"' EXIT
inside() {
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=ja_JP.UTF-8 WINEDEBUG=-all \
    DEBIAN_FRONTEND=noninteractive chroot "$root" "$@"
}
if [ ! -x "$root/usr/bin/wine" ]; then
  inside apt-get update -qq
  inside apt-get install -y -qq --no-install-recommends wine wine32 xvfb xauth x11-apps xdotool \
    imagemagick fonts-ipafont-gothic locales >/dev/null
  echo 'ja_JP.UTF-8 UTF-8' >"$root/etc/locale.gen"
  inside locale-gen >/dev/null
fi

# A folder with a blank and Japanese letters in its name.
work=$root/check
drive="Z:\\check\\ログ と表"
rm -rf "$work"
mkdir -p "$work/ログ と表"
cp -r "$made/." "$work/ログ と表/"
cp "$here"/samples/* "$work/ログ と表/"
for library in Hamlog50 Thdll2Vb; do
  i686-w64-mingw32-gcc-posix -shared -O2 -static -o "$work/ログ と表/$library.dll" \
    "$here/tests/windows/stand_in_dll.c" "$here/tests/windows/$library.def"
done
i686-w64-mingw32-gcc-posix -O2 -static -o "$work/profile_calls.exe" \
  "$here/tests/windows/profile_calls.c"
cli() {
  inside wine "$drive\\tobarine-cli.exe" "$@"
}

cli h2l "$drive\\hamlog.csv" -o "$drive\\out.adi" >"$work/h2l.txt" 2>&1 || true
check "h2l gives the same bytes as on Linux" \
  cmp -s "$work/ログ と表/out.adi" "$here/tests/data/sample_defaults.adi"
cli l2h "$drive\\logger32.adi" -o "$drive\\out.csv" >"$work/l2h.txt" 2>&1 || true
check "l2h gives the same bytes as on Linux" \
  cmp -s "$work/ログ と表/out.csv" "$here/tests/data/logger32_defaults.csv"
cli h2l "$drive\\contest.zlo" -o "$drive\\zlog.adi" --set Op_3=1 >"$work/zlog.txt" 2>&1 || true
check "a zLog log gives the same bytes as on Linux" \
  cmp -s "$work/ログ と表/zlog.adi" "$here/tests/data/contest.adi"

# A name outside the code page.
cp "$here/samples/hamlog.csv" "$work/ログ と表/한글.csv"
cli h2l "$drive\\한글.csv" -o "$drive\\글.adi" >"$work/hangul.txt" 2>&1 || true
check "names outside the code page" cmp -s "$work/ログ と表/글.adi" "$here/tests/data/sample_defaults.adi"

# The sample's contacts as a database of the stand-in libraries.
sed 's/^"//; s/"\r$//; s/","/\t/g' "$here/samples/hamlog.csv" | head -n 30 >"$work/ログ と表/Hamlog.hdb"
head -n 30 "$here/samples/hamlog.csv" >"$work/ログ と表/same.csv"
cli h2l "$drive\\Hamlog.hdb" -o "$drive\\hdb.adi" >"$work/hdb.txt" 2>&1 || true
cli h2l "$drive\\same.csv" -o "$drive\\same.adi" >"$work/same.txt" 2>&1 || true
check "a database is read through the libraries" \
  cmp -s "$work/ログ と表/hdb.adi" "$work/ログ と表/same.adi"
cp "$work/ログ と表/Hamlog.hdb" "$work/ログ と表/한글.hdb"
cli h2l "$drive\\한글.hdb" -o "$drive\\x.adi" >"$work/hangul_hdb.txt" 2>&1 || true
check "a database whose name the libraries cannot take" grep -q '扱えない文字' "$work/hangul_hdb.txt"
# A library beside a database is a stranger's until the user has named its folder.
mkdir -p "$work/hamlog/data"
mv "$work/ログ と表/Hamlog50.dll" "$work/ログ と表/Thdll2Vb.dll" "$work/hamlog/"
cp "$work/hamlog/"*.dll "$work/ログ と表/Hamlog.hdb" "$work/hamlog/data/"
cli h2l 'Z:\check\hamlog\data\Hamlog.hdb' -o "$drive\stranger.adi" >"$work/stranger.txt" 2>&1 || true
check "a library beside a database is not loaded" grep -q 'Hamlog50.dll がありません' "$work/stranger.txt"
cli --set 'hamlog_folder=Z:\check\hamlog' h2l 'Z:\check\hamlog\data\Hamlog.hdb' -o "$drive\named.adi" \
  >"$work/named.txt" 2>&1 || true
check "that of the folder named is" cmp -s "$work/ログ と表/named.adi" "$work/ログ と表/same.adi"
mv "$work/hamlog/Hamlog50.dll" "$work/ログ と表/"
cli h2l "$drive\\Hamlog.hdb" -o "$drive\\hdb.adi" >"$work/missing.txt" 2>&1 || true
check "a missing library is named" grep -q 'Thdll2Vb.dll がありません' "$work/missing.txt"

# The tests know where the repository stands; its drive letter is that of the chroot's root.
"$here/packaging/windows/build.sh" --cli >"$work/build.txt" 2>&1
mkdir -p "$root$here/tests"
cp -r "$here/data" "$here/samples" "$root$here/"
cp -r "$here/tests/data" "$root$here/tests/"
cp "$here/build/windows-cli/tests/tobarine_tests.exe" "$work/"
check "the tests pass" inside sh -c 'cd /check && wine tobarine_tests.exe >tests.txt 2>&1'

say "窓を開きます"
inside sh -c 'Xvfb :9 -screen 0 1366x768x24 >/dev/null 2>&1 & echo $! >/check/xvfb.pid; sleep 2
  DISPLAY=:9 wine "Z:\\check\\ログ と表\\Tobarine.exe" "Z:\\check\\ログ と表\\hamlog.csv" &
  sleep 20; DISPLAY=:9 import -window root /check/window.png
  DISPLAY=:9 xdotool key ctrl+q; wineserver -k; kill "$(cat /check/xvfb.pid)"' >"$work/window.txt" 2>&1
cp "$work/window.png" "$here/build/windows/window.png"
check "the window has written its settings" test -s "$work/ログ と表/Tobarine.ini"
value=$(inside wine 'Z:\check\profile_calls.exe' "$drive\\Tobarine.ini" Config was_moji | tr -d '\r')
check "the profile calls read them" test "$value" = WAS=
inside wine 'Z:\check\profile_calls.exe' "$drive\\Tobarine.ini" Config Chk_16 1
cli h2l "$drive\\hamlog.csv" -o "$drive\\qth.adi" >"$work/qth.txt" 2>&1 || true
check "and what they write is read" grep -q '<QTH:' "$work/ログ と表/qth.adi"

[ "$failures" -eq 0 ] && say "すべて良し。窓は build/windows/window.png"
exit "$failures"
