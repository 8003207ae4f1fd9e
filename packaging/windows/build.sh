#!/bin/sh
# Makes Tobarine for 32-bit Windows from Debian packages only: a folder and a zip with Tobarine.exe
# (the window), tobarine-cli.exe and the program folder's files. Each program is one file that needs
# no other.
#   packaging/windows/build.sh            build/windows/Tobarine-VERSION/ and the zip beside it
#   packaging/windows/build.sh --cli      only tobarine-cli.exe and the tests, without Qt, into
#                                        build/windows-cli/
# Qt is built once, from Debian's source package, into a cache folder (TOBARINE_CACHE, else
# ~/.cache/tobarine): about 20 minutes on two cores.
set -eu
here=$(cd "$(dirname "$0")/../.." && pwd)
. "$here/tools/set_up.sh"
cache=${TOBARINE_CACHE:-$HOME/.cache/tobarine}
version=$(project_version)

headers=$here/build/windows-headers

# The two header-only libraries by themselves: the folder they stand in holds this system's headers.
link_headers() {
  mkdir -p "$headers"
  ln -sfn /usr/include/CLI "$headers/CLI"
  ln -sfn /usr/include/nlohmann "$headers/nlohmann"
}

if [ "${1:-}" = --cli ]; then
  install_packages g++-mingw-w64-i686-posix cmake ninja-build libcli11-dev nlohmann-json3-dev \
    libgtest-dev python3
  link_headers
  cmake -S "$here" -B "$here/build/windows-cli" -G Ninja -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DCMAKE_TOOLCHAIN_FILE="$here/packaging/windows/mingw.cmake" -DTOBARINE_WERROR=ON \
    -DTOBARINE_WINDOW=OFF -DTOBARINE_HEADERS="$headers"
  cmake --build "$here/build/windows-cli"
  exit
fi

install_packages g++-mingw-w64-i686-posix mingw-w64-i686-dev cmake ninja-build libcli11-dev \
  nlohmann-json3-dev qt6-base-dev qt6-base-dev-tools dpkg-dev xz-utils zip ca-certificates

# The source package, by the machine's own apt sources with their type changed; those themselves
# stay as they are.
fetch_qt_source() {
  apt_dir=$cache/apt
  mkdir -p "$apt_dir/parts" "$apt_dir/lists/partial" "$cache/source"
  for sources in /etc/apt/sources.list.d/*.sources; do
    [ -e "$sources" ] && sed 's/^Types:.*/Types: deb-src/' "$sources" >"$apt_dir/parts/$(basename "$sources")"
  done
  if [ -s /etc/apt/sources.list ]; then
    sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$apt_dir/parts/main.list"
  fi
  set -- -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$apt_dir/parts" \
    -o Dir::State::lists="$apt_dir/lists" -o APT::Sandbox::User=root
  apt-get "$@" update -qq
  (cd "$cache/source" && apt-get "$@" source -qq qt6-base)
}

build_qt() {
  say "Qt を Windows 用にビルドします (初回だけ、20 分ほど)"
  [ -d "$cache"/source/qt6-base-6*/ ] 2>/dev/null || fetch_qt_source
  source=$(find "$cache/source" -maxdepth 1 -type d -name 'qt6-base-6*')
  rm -rf "$cache/qt-build"
  mkdir -p "$cache/qt-build"
  off=
  for feature in sql dbus opengl vulkan printsupport testlib xml concurrent icu openssl \
    tabletevent direct2d directwrite directwrite3 androiddeployqt; do
    off="$off -DFEATURE_$feature=OFF"
  done
  # shellcheck disable=SC2086 # one option a word
  cmake -S "$source" -B "$cache/qt-build" -G Ninja -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DCMAKE_TOOLCHAIN_FILE="$here/packaging/windows/mingw.cmake" -DQT_QMAKE_TARGET_MKSPEC=win32-g++ \
    -DCMAKE_INSTALL_PREFIX="$cache/qt" -DQT_HOST_PATH=/usr \
    -DQT_HOST_PATH_CMAKE_DIR="/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake" -DBUILD_SHARED_LIBS=OFF \
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF \
    -DFEATURE_system_zlib=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_harfbuzz=OFF \
    -DFEATURE_system_freetype=OFF -DFEATURE_system_png=OFF -DFEATURE_system_jpeg=OFF \
    -DFEATURE_schannel=ON -DINPUT_opengl=no -DFEATURE_pkg_config=OFF $off
  cmake --build "$cache/qt-build"
  cmake --install "$cache/qt-build"
}

build_programs() {
  say "Tobarine を Windows 用にビルドします"
  cmake -S "$here" -B "$here/build/windows-release" -G Ninja -DCMAKE_BUILD_TYPE=MinSizeRel \
    -DCMAKE_TOOLCHAIN_FILE="$cache/qt/lib/cmake/Qt6/qt.toolchain.cmake" \
    -DTOBARINE_HEADERS="$headers" -DTOBARINE_TESTS=OFF \
    -DCMAKE_INTERPROCEDURAL_OPTIMIZATION=OFF
  cmake --build "$here/build/windows-release"
}

[ -f "$cache/qt/lib/cmake/Qt6/qt.toolchain.cmake" ] || build_qt
link_headers
build_programs

folder=$here/build/windows/Tobarine-$version
rm -rf "$here/build/windows"
mkdir -p "$folder"
bin=$here/build/windows-release/bin
for program in Tobarine tobarine-cli; do
  i686-w64-mingw32-strip -o "$folder/$program.exe" "$bin/$program.exe"
done
cp "$here"/data/* "$here/LICENSE" "$here/packaging/windows/Qt.txt" "$folder/"
for licence in LGPL-3 GPL-3; do
  cp "/usr/share/common-licenses/$licence" "$folder/$licence.txt"
done
(cd "$here/build/windows" && zip -qr "Tobarine-$version.zip" "Tobarine-$version")
say "できました: build/windows/Tobarine-$version.zip"
