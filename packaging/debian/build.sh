#!/bin/sh
# Makes the Debian package: build/release/package/tobarine_VERSION_amd64.deb
set -eu
export LC_ALL=C.UTF-8  # a delivered file's name is Japanese
umask 022  # the modes in the package are those of its folders and files here
here=$(cd "$(dirname "$0")/../.." && pwd)
. "$here/tools/set_up.sh"
"$here/run" --build
install_packages dpkg-dev file
cd "$here/build/release"
cpack >cpack.log 2>&1 || { cat cpack.log >&2; exit 1; }
ls -l package/*.deb
