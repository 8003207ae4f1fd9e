#!/bin/sh
# Measures every direction, the call-sign lookup, the loading of tables and the window, and writes the
# figures into docs/performance.md, then prints what twice the input costs: bench/run.sh [CONTACTS...]
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
. "$here/tools/set_up.sh"

install_packages g++ cmake ninja-build libcli11-dev nlohmann-json3-dev libcurl4-openssl-dev \
  qt6-base-dev libbenchmark-dev python3
build bench
say "測ります (数分かかります)"
python3 "$here/bench/measure.py" "$here/build/bench" "$@"
exec python3 "$here/bench/doubling.py" "$here/build/bench"
