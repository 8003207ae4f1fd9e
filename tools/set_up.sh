# What ./run, ./test and the packages' scripts share; read by them, with $here set to the repository's folder.

say() { printf '== %s\n' "$*" >&2; }

# check WHAT COMMAND...: runs the command and tells whether all is well; counts in $failures.
failures=0
check() {
  what=$1
  shift
  if "$@"; then
    say "良し: $what"
  else
    say "だめ: $what"
    failures=$((failures + 1))
  fi
}

project_version() {
  sed -n 's/^project(Tobarine VERSION \([0-9.]*\).*/\1/p' "$here/CMakeLists.txt"
}

# The address of the machine's own Debian mirror.
debian_mirror() {
  sed -n 's/^URIs: *//p; s/^deb [^h]*\(http[^ ]*\).*/\1/p' /etc/apt/sources.list.d/*.sources \
    /etc/apt/sources.list 2>/dev/null | head -n 1
}

# Installs the Debian packages that are missing; asks for root only then.
install_packages() {
  missing=
  for package; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing="$missing $package"
  done
  [ -z "$missing" ] && return
  say "足りないパッケージを入れます:$missing"
  as_root=
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || {
      say "root で入れて下さい: apt-get install --no-install-recommends$missing"
      exit 1
    }
    as_root=sudo
  fi
  $as_root apt-get update -qq
  # shellcheck disable=SC2086 # one word a package
  $as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# Configures and builds a preset of CMakePresets.json into build/.
build() {
  cd "$here"
  first=
  [ -f "build/$1/.ninja_log" ] || first="初回は 5 分ほど、"
  say "ビルドします: build/$1 (${first}記録は build/$1.log)"
  mkdir -p build
  if ! { cmake --preset "$1" && cmake --build --preset "$1"; } >"build/$1.log" 2>&1; then
    cat "build/$1.log" >&2
    say "ビルドできませんでした (build/$1.log)"
    exit 1
  fi
  cd - >/dev/null
}
