#!/bin/sh
# Fuzzes the readers and the runs: fuzz/run.sh [SECONDS [TARGET...]]; 60 seconds a target, and all of
# them, when nothing is said. What breaks the program is left in build/fuzz/found/, and what has been
# tried with new results in build/fuzz/corpus/.
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
. "$here/tools/set_up.sh"
seconds=${1:-60}
[ $# -gt 0 ] && shift

install_packages clang libclang-rt-14-dev cmake ninja-build libcli11-dev nlohmann-json3-dev \
  libcurl4-openssl-dev
build fuzz
bin=$here/build/fuzz/bin
list=$here/build/fuzz/corpora
"$bin/tobarine_replay" "$here" --list >"$list"
# Every try writes a file or more: in memory, where there is such a place.
[ -w /dev/shm ] && export TMPDIR=/dev/shm
export ASAN_OPTIONS=allocator_may_return_null=1
mkdir -p "$here/build/fuzz/found"
[ $# -gt 0 ] || set -- $(cut -d' ' -f1 "$list" | uniq)
for target; do
  corpus=$here/build/fuzz/corpus/$target
  mkdir -p "$corpus"
  grep "^$target " "$list" | cut -d' ' -f2- | while read -r file; do
    cp "$file" "$corpus/seed-$(basename "$file")"
  done
  say "$target: $seconds 秒"
  log=$here/build/fuzz/$target.log
  if "$bin/tobarine_fuzz" "$target" -max_total_time="$seconds" -timeout=60 -rss_limit_mb=2048 \
    -max_len=16384 -print_final_stats=1 -artifact_prefix="$here/build/fuzz/found/$target-" \
    "$corpus" >"$log" 2>&1; then
    sed -n 's/^stat::number_of_executed_units: */  回数 /p' "$log"
    sed -n 's/^#.*DONE *cov: \([0-9]*\).*/  通った所 \1/p' "$log"
  else
    say "壊れました: $target ($log)"
    grep -m 3 -A 12 -E "does not hold|ERROR:|runtime error|libFuzzer: timeout" "$log" || tail -n 20 "$log"
    failures=$((failures + 1))
  fi
done
exit "$failures"
