#!/bin/sh
# Reads ADIF files we wrote with an ADIF parser that is not ours (npm's adif-parser-ts) and compares
# the number of contacts and every field. Needs Node.js and npm, and ./run --build first.
#   tools/check_adif.sh [HAMLOG.csv]
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
log=${1:-$here/samples/hamlog.csv}
dir=$(mktemp -d "${TMPDIR:-/tmp}/tobarine-XXXXXX")
trap 'rm -rf "$dir"' EXIT
(cd "$dir" && npm init -y >/dev/null && npm install --silent adif-parser-ts >/dev/null)
for command in h2l eqsl; do
  "$here/build/release/bin/tobarine-cli" --json $command "$log" -o "$dir/out.adi" >"$dir/report.json"
  cp "$here/tools/check_adif.js" "$dir/"
  (cd "$dir" && node check_adif.js out.adi report.json)
done
