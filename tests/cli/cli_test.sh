#!/bin/sh
# The command line as a user meets it: results, messages and exit statuses, garbage included.
# Usage: cli_test.sh TOBARINE-CLI SOURCE-FOLDER
set -u
cli=$1
source=$2
dir=$(mktemp -d "${TMPDIR:-/tmp}/tobarine-XXXXXX")  # no dot: outputs end at the first one
trap 'chmod -R u+rwx "$dir"; rm -rf "$dir"' EXIT
export TOBARINE_HOME="$dir/home" TMPDIR="$dir/tmp"
mkdir "$TMPDIR"
cp -r "$source/data" "$TOBARINE_HOME"
cp "$source/samples/hamlog.csv" "$dir/log.csv"
cd "$dir" || exit 1
failures=0

# check NAME STATUS PATTERN COMMAND...: the exit status, and a pattern in all that is printed.
check() {
  name=$1 status=$2 pattern=$3
  shift 3
  "$@" >out.txt 2>err.txt </dev/null
  got=$?
  if [ "$got" -ne "$status" ] || ! cat out.txt err.txt | grep -qe "$pattern"; then
    echo "FAILED: $name: status $got (wanted $status), pattern '$pattern'"
    cat out.txt err.txt | head -5
    failures=$((failures + 1))
  fi
}

# refused NAME COMMAND...: one line on standard error, nothing on standard output, exit status 1.
refused() {
  name=$1
  shift
  check "$name" 1 'tobarine-cli: ' "$@"
  if [ -s out.txt ] || [ "$(wc -l <err.txt)" -ne 1 ]; then
    echo "FAILED: $name: not exactly one line on standard error"
    failures=$((failures + 1))
  fi
}

equal() {
  if ! cmp -s "$1" "$2"; then
    echo "FAILED: $1 and $2 differ"
    failures=$((failures + 1))
  fi
}

check "h2l" 0 '変換数: 48 件' "$cli" h2l log.csv
equal log.adi "$source/tests/data/sample_defaults.adi"
check "eqsl with settings" 0 '処理終了' "$cli" eqsl log.csv -o e.adi --set Chk_5=1 --set Chk_6=1 \
  --set Chk_7=1 --set Chk_9=1 --set Chk_11=1
equal e.adi "$source/tests/data/sample_eqsl.adi"
check "l2h" 0 '変換数: 15 件' "$cli" l2h "$source/samples/logger32.adi" -o l.csv
equal l.csv "$source/tests/data/logger32_defaults.csv"
check "l2h to JST" 0 '変換数: 8 件' "$cli" l2h "$source/samples/n1mm.adi" -o n.csv --time jst \
  --set Chk_9=1 --set Chk_10=1 --set Op_2=1 --set Chk_16=1
equal n.csv "$source/tests/data/n1mm_jst.csv"
check "wrong time option" 2 'time' "$cli" l2h "$source/samples/n1mm.adi" --time gmt
check "nowhere to put the state" 0 '州名の転記先が「不特定」' "$cli" --set Chk_9=1 \
  l2h "$source/samples/logger32.adi" -o s.csv
printf '<CALL:3>A1A\n<QSO_DATE:8>20240501\n<EOR>\n' >lotw.adi
refused "an ADIF that would lose contacts" "$cli" l2h lotw.adi
refused "the same for zLog" "$cli" adif2zlog lotw.adi
check "nothing is written" 2 lotw.csv ls lotw.csv
check "unless it is wanted" 0 '変換数: 0 件' "$cli" l2h --reading classic lotw.adi
check "what it would do" 0 '1 件が失われます' "$cli" info lotw.adi
check "report" 0 'gigahertz-text' "$cli" --json h2l log.csv
check "report" 0 'JA3QRR  10G' "$cli" --report h2l log.csv
"$cli" --quiet h2l log.csv >quiet.txt 2>&1
equal quiet.txt /dev/null
check "info" 0 '入力数: 48 件' "$cli" info log.csv
check "calls" 0 "^JA1ABC	JA	339	Japan$" "$cli" lookup calls JA1ABC
check "codes" 0 "^500A	339$" "$cli" lookup codes 500A
printf 'W1AW\r\nKH6AA' >calls.txt
check "calls from standard input" 0 '"prefix":"KH6"' sh -c "'$cli' --json lookup calls <calls.txt"
check "jcc" 0 "^11007	11007	神奈川県三浦郡$" "$cli" lookup jcc 11007
check "trace" 0 'Band_tbl.ini For Input' sh -c "'$cli' --trace t.txt h2l log.csv && cat t.txt"
for kind in all zlo; do
  check "zLog $kind" 0 '変換数: 16 件' "$cli" h2l "$source/samples/contest.$kind" -o "z.adi" \
    --set Op_3=1 --keep-intermediate zlog_1.csv
  equal z.adi "$source/tests/data/contest.adi"
  equal zlog_1.csv "$source/tests/data/contest_zlog_1.csv"
done
check "the zone of a zLog log" 0 '時刻の読み方: UTC' "$cli" eqsl "$source/samples/contest.all" -o z.adi
check "the zone of a zLog log" 0 'JST のログなら --set Op_3=1' "$cli" eqsl \
  "$source/samples/contest.all" -o z.adi
check "the zone of a .ZLO" 0 '時刻の読み方: JST (ファイルに記されている)' "$cli" h2l \
  "$source/samples/contest.zlo" -o z.adi
equal z.adi "$source/tests/data/contest.adi"
check "a .ZLO against its zone" 0 '記録と違います: UTC (選んだもの。ファイルには JST' "$cli" h2l \
  "$source/samples/contest.zlo" -o z.adi --set zlog_in_jst=0
check "a .ZLO as it says itself" 0 'JST (選んだもの)' "$cli" h2l "$source/samples/contest.zlo" \
  -o z.adi --set op_3=1
check "info of a .ALL" 0 '入力数: 16 件' "$cli" info "$source/samples/contest.all"
check "info of a .ALL" 0 '時刻: UTC (ファイルには記されていない)' "$cli" info \
  "$source/samples/contest.all"
check "info of a .ZLO" 0 '"zone": "JST"' "$cli" --json info "$source/samples/contest.zlo"
check "info of a .ZLO" 0 '"zone_from": "file"' "$cli" --json info "$source/samples/contest.zlo"
printf 'ZLOX' >new.zlo && head -c 764 /dev/zero >>new.zlo && cp new.zlo new.zlox
check "info of a .ZLO" 0 'コンテスト: ALL JA コンテスト' "$cli" info "$source/samples/contest.zlo"
check "info of a .ZLO" 0 '"dx_contest": false' "$cli" --json info "$source/samples/contest.zlo"
check "adif2zlog" 0 '時刻の書き方.*: .all は JST' "$cli" adif2zlog "$source/samples/n1mm.adi" -o n1mm \
  --set OP_name_tenki=1 --set TX_NR_tenki=1 --set COMMENT_tenki=1 --set TX_NR_001=1 \
  --set del_power_flag=1 --set zlog_all_jst=1
equal n1mm.all "$source/tests/data/n1mm.all"
equal n1mm.zlo "$source/tests/data/n1mm.zlo"
equal n1mm.csv "$source/tests/data/n1mm_with_remarks.csv"
if [ "$(ls "$TOBARINE_HOME")" != "$(ls "$source/data")" ]; then
  echo "FAILED: a command wrote into the program folder"
  failures=$((failures + 1))
fi

for words in h2l eqsl l2h adif2zlog info settings "lookup calls" "lookup codes" "lookup jcc" "build dxcc" \
  "build jcc" "build codes" "jarl check" "jarl download"; do
  # shellcheck disable=SC2086 # two words
  check "help of $words" 0 "^  tobarine-cli .*$words" "$cli" $words --help
  check "manual page" 0 "^.SS $words$" "$cli" --man
  for word in $words; do
    check "English manual page: $word" 0 "$word" cat "$source/packaging/linux/tobarine-cli.1.in"
  done
done
check "output is input" 2 '同じファイル' "$cli" h2l log.csv -o ./log.csv
check "unknown kind" 2 '\-\-kind' "$cli" h2l log.csv --kind xyz

printf 'x,24/05/01\r\n' >short.csv
check "short line" 1 'short.csv: 1 行目: 欄が足りません (2 個' "$cli" h2l short.csv
printf 'JA1ABC,240501,2105J\r\n' >old.csv
refused "old layout" "$cli" h2l old.csv
check "old layout" 1 '旧' "$cli" h2l old.csv
: >empty.csv
check "empty file" 0 '変換数: 0 件' "$cli" h2l empty.csv
mkdir folder.csv
refused "folder" "$cli" h2l folder.csv
refused "no such file" "$cli" h2l none.csv
# The same bytes each time.
LC_ALL=C awk 'BEGIN { srand(7); for (i = 0; i < 100000; i++) printf "%c", int(rand() * 256) }' |
  tr -d ',' >random.csv
refused "random bytes" "$cli" h2l random.csv
head -c 100000000 /dev/zero | tr '\0' 'x' >long.csv
refused "one line of 100 MB" "$cli" eqsl long.csv
check "full disk" 1 'tobarine-cli: /dev/full: 書き込めません' "$cli" h2l log.csv -o /dev/full
check "full disk" 1 '途中で止まりました' "$cli" l2h log.adi -o /dev/full
refused "no such folder" "$cli" h2l log.csv -o none/out.adi
refused "no home" "$cli" --home "$dir/none" h2l log.csv
cp log.csv Hamlog.hdb
refused "Hamlog's database" "$cli" h2l Hamlog.hdb
check "Hamlog's database" 1 'CSV に出力' "$cli" info Hamlog.hdb
refused "not a log" "$cli" h2l "$source/LICENSE"
refused "wrong kind" "$cli" eqsl log.adi
refused "ADIF given to h2l" "$cli" h2l log.adi
check "the way back is named" 1 'l2h を使って' "$cli" h2l log.adi
refused "wrong kind" "$cli" l2h log.csv
refused "l2h of a folder" "$cli" l2h . -o x.csv
cp random.csv random.adi
refused "random bytes as ADIF" "$cli" l2h random.adi
: >empty.adi
check "empty ADIF" 0 '変換数: 0 件' "$cli" l2h empty.adi
for kind in all zlo; do
  : >empty.$kind
  refused "empty zLog log" "$cli" h2l empty.$kind
  refused "empty zLog log" "$cli" info empty.$kind
  cp random.csv random.$kind
  refused "random bytes as a zLog log" "$cli" h2l random.$kind
  mkdir folder.$kind
  refused "folder as a zLog log" "$cli" eqsl folder.$kind
  check "zLog on a full disk" 1 '変換数: 0 件' "$cli" h2l "$source/samples/contest.$kind" -o /dev/full
  refused "intermediate file on a full disk" "$cli" h2l "$source/samples/contest.$kind" -o z.adi \
    --keep-intermediate /dev/full
done
head -c 100 "$source/samples/contest.zlo" >short.zlo
refused "less than a record" "$cli" h2l short.zlo
for file in new.zlo new.zlox; do
  refused "the newer binary log" "$cli" h2l $file
  refused "the newer binary log" "$cli" info $file
done
check "the newer binary log" 1 '.ZLOX です.*保存し直して' "$cli" h2l new.zlo
(cat "$source/samples/contest.all"; head -c 100000000 /dev/zero | tr '\0' 'x') >long.all
check "one line of 100 MB" 1 'long.all: 18 行目' "$cli" h2l long.all
check "what came before it" 1 '変換数: 16 件' "$cli" h2l long.all
check "intermediate file is input" 2 '同じファイル' "$cli" h2l long.all -o z.adi \
  --keep-intermediate long.all
check "no intermediate file" 2 'keep-intermediate' "$cli" h2l log.csv --keep-intermediate x
refused "adif2zlog of a zLog log" "$cli" adif2zlog "$source/samples/contest.all" -o x
refused "adif2zlog of random bytes" "$cli" adif2zlog random.adi -o x
ln -s /dev/full full.zlo
check "adif2zlog on a full disk" 1 'full.zlo: 書き込めません' "$cli" adif2zlog log.adi -o full
refused "adif2zlog into no folder" "$cli" adif2zlog log.adi -o none/x
cp n1mm.csv input.csv
check "adif2zlog over its input" 1 'この変換の入力ではありません' "$cli" adif2zlog input.csv -o input
if [ "$(id -u)" -ne 0 ]; then
  cp log.csv secret.csv && chmod 000 secret.csv
  refused "no permission" "$cli" h2l secret.csv
fi

cp "$TOBARINE_HOME/dxcc_hl.dat" before.dat
refused "damaged cty.dat" "$cli" build dxcc log.csv
equal before.dat "$TOBARINE_HOME/dxcc_hl.dat"
printf 'Japan: 25: 45: AS: 1: 2: 3: JA:\r\n JA;\r\n' >small.dat
refused "cty.dat of one entity" "$cli" build dxcc small.dat
check "cty.dat of one entity" 1 'force' "$cli" build dxcc small.dat
equal before.dat "$TOBARINE_HOME/dxcc_hl.dat"
check "a new file loses nothing" 0 '処理終了' "$cli" build dxcc small.dat -o small_hl.dat
check "cty.dat of one entity, forced" 0 '処理終了' "$cli" build dxcc small.dat --force
equal small_hl.dat "$TOBARINE_HOME/dxcc_hl.dat"
cp before.dat "$TOBARINE_HOME/dxcc_hl.dat"
head -c 50000 /dev/zero | tr '\0' / >slashes.txt
check "a call of slashes" 0 '^////*	$' sh -c "'$cli' lookup calls <slashes.txt | cut -f1,2"
head -c 200000 /dev/zero | tr '\0' J >long.txt
refused "a line without end" sh -c "'$cli' lookup calls <long.txt"
awk '{ printf "JA1ABC%s,24/05/01,12:00J,59,59,7,CW,100101,,,,,,,\r\n", $0 }' slashes.txt >slashes.csv
check "a contact with it" 0 '変換数: 1 件' "$cli" --set Chk_9=1 h2l slashes.csv
check "codes from it" 0 '登録数: 0 件' "$cli" build codes slashes.csv
printf 'W1AW,24/05/01,12:00U,59,59,14,CW,502A,,,,,,,\r\n' >codes.csv
cat codes.csv codes.csv >codes2.csv
check "learn codes" 0 '登録数: 1 件' "$cli" build codes codes2.csv
awk 'BEGIN { for (; n < 6000; ++n) printf "W1AW,24/05/01,12:00U,59,59,14,CW,%d%c,,,,,,,\r\n", 501 + n % 498, 65 + n / 498 }' >many.csv
refused "more codes than there are" "$cli" build codes many.csv
check "learned code" 0 "^502A	291$" "$cli" lookup codes 502A
printf '"1","A","B"\r\n"2"' >"$TOBARINE_HOME/Mode_tbl.ini"
refused "damaged table" "$cli" h2l log.csv
check "damaged table" 1 'Mode_tbl.ini: 2 行目' "$cli" h2l log.csv

truncate -s 65M "$TOBARINE_HOME/Mode_tbl.ini"
check "table of 65 MB" 1 'Mode_tbl.ini: 大きすぎます' "$cli" h2l log.csv
cp "$source/data/Mode_tbl.ini" "$TOBARINE_HOME"
awk 'BEGIN { while (++n < 9000) m = m "x"; print "JA1ABC,24/05/01,12:00J,59,59,7," m ",,,,,,,," }' >mode.csv
check "very long mode" 0 'xxx…$' "$cli" --report h2l mode.csv

# The window's help is the manual's chapter on the tables.
sed -n '/^```text$/,/^```$/p' "$source/docs/manual.ja.md" | sed '1d;$d' >chapter.txt
iconv -f cp932 -t utf-8 "$source/data/変換テーブルの説明.txt" | tr -d '\r' >help.txt
equal chapter.txt help.txt

if [ -n "$(ls "$TMPDIR")" ]; then
  echo "FAILED: a temporary file was left behind"
  failures=$((failures + 1))
fi

[ "$failures" -eq 0 ] && echo "command line: all checks passed"
exit "$failures"
