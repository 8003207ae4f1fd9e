#!/bin/sh
# Takes pictures of the windows: starts the program on a screen of its own (1366x768, as a laptop has),
# works through it by keyboard, and keeps what it shows. Look at the pictures before you commit.
#
#   tools/screenshots.sh                        docs/screenshots/ anew
#   tools/screenshots.sh --out DIR [--scale 1.5] [--dark] [--program FILE]
#                                               every window and question, to look at: larger, on a
#                                               dark desktop, of a program that is built already
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
. "$here/tools/set_up.sh"
out=$here/docs/screenshots
all=
scale=1
dark=
program=
while [ $# -gt 0 ]; do
  case $1 in
    --out) out=$2 all=1; shift ;;
    --scale) scale=$2; shift ;;
    --dark) dark=1 ;;
    --program) program=$2; shift ;;
    *) sed -n '2,9s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
  esac
  shift
done
install_packages xvfb openbox xdotool imagemagick fonts-ipafont-gothic qt6ct qt6-translations-l10n
if [ -z "$program" ]; then
  "$here/run" --build
  program=$here/build/release/bin/tobarine
fi
mkdir -p "$out"
work=$(mktemp -d /tmp/tobarine-XXXXXX)
logs=/tmp/ログ
typed=/tmp/log # the same, where the path is typed
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$work" "$logs" "$typed"' EXIT

export DISPLAY=:87 LC_ALL=C.UTF-8 TOBARINE_HOME="$work/home" XDG_CONFIG_HOME="$work/config"
export QT_SCALE_FACTOR="$scale"
if [ -n "$dark" ]; then
  mkdir -p "$XDG_CONFIG_HOME/qt6ct"
  cat >"$XDG_CONFIG_HOME/qt6ct/qt6ct.conf" <<'CONF'
[Appearance]
style=Fusion
custom_palette=true
color_scheme_path=/usr/share/qt6ct/colors/darker.conf
[Fonts]
general="Sans,9,-1,5,50,0,0,0,0,0"
fixed="Monospace,9,-1,2,50,0,0,0,0,0"
CONF
  export QT_QPA_PLATFORMTHEME=qt6ct
fi
Xvfb "$DISPLAY" -screen 0 1366x768x24 >/dev/null 2>&1 &
sleep 2
openbox >/dev/null 2>&1 &
sleep 1

# A program folder and logs as delivered, then the window with the log, if any.
begin() { # [LOG]
  rm -rf "$logs" "$typed" "$work/home"
  cp -r "$here/samples" "$logs"
  ln -s "$logs" "$typed"
  cp -r "$here/data" "$work/home"
  open_window "$@"
}
open_window() { # [LOG]
  [ -z "${1-}" ] || set -- "$logs/$1"
  "$program" "$@" >/dev/null 2>&1 &
  running=$!
  window=$(timeout 30 xdotool search --sync --onlyvisible --name 'Tobarine' | head -n 1)
  xdotool windowactivate --sync "$window"
  sleep 1
}
end() { kill "$running"; wait "$running" 2>/dev/null || true; sleep 0.5; }
key() { xdotool key --delay 100 "$@"; sleep 0.5; }
keys() { xdotool type --delay 30 "$1"; sleep 0.5; }
wait_for() { timeout 30 xdotool search --sync --onlyvisible --name "$1" >/dev/null; sleep 1; } # TITLE
tool_entry() { # NUMBER: of the [ Tool ] menu, from 1
  key alt+t
  for _ in $(seq 2 "$1"); do key Down; done
  key Return
  sleep 1
}
shot() { # NAME: of the window in front, with its frame
  sleep 1
  import -frame -window "$(xdotool getactivewindow)" -strip +dither -colors 200 "PNG8:$out/$1.png"
}
screen() { # NAME: of the whole screen
  sleep 1
  import -window root -strip +dither -colors 200 "PNG8:$out/$1.png"
}

begin
shot start
end
begin hamlog.csv
shot opened
key alt+h
shot main
key ctrl+r
shot report
if [ -n "$all" ]; then
  key Tab Tab Down Return
  screen report_row
  xdotool search --name '変換の報告' windowactivate --sync >/dev/null
fi
key Escape
xdotool windowactivate --sync "$window"
key ctrl+i
shot viewer
if [ -n "$all" ]; then
  key ctrl+f
  keys JA
  key Return
  shot viewer_search
  keys zzz
  key Return
  shot viewer_nothing
fi
end
begin
key shift+Tab shift+Tab
keys 70cm
shot grid
end
begin
tool_entry 2
wait_for 'ADIF to zLog ALL'
key space
wait_for 'を開く'
keys "$typed/n1mm.adi"
key Return
wait_for 'ADIF to zLog ALL'
key Tab space
sleep 2
shot zlog
end

[ -n "$all" ] || exit 0
begin contest.all
screen ask_zone
end
begin
tr ' ' '\n' <"$logs/logger32.adi" >"$logs/lotw.adi"
end
open_window lotw.adi
screen ask_reading
end
begin hamlog.csv
echo 'someone else wrote this' >"$logs/hamlog.adi"
key alt+h
screen ask_output
end
begin
for _ in $(seq 16); do cat "$logs/hamlog.csv" "$logs/hamlog.csv" >"$logs/long.csv"; cp "$logs/long.csv" "$logs/hamlog.csv"; done
end
open_window long.csv
key alt+h
kill -STOP "$running"
shot running
kill -CONT "$running"
end
begin
tool_entry 5
wait_for 'を開く'
keys "$typed/hamlog.csv"
key Return
wait_for 'hamlog.csv'
shot editor
key ctrl+End BackSpace shift+Home Delete ctrl+s
screen editor_saved
key Escape
shot editor_rest
keys x
key alt+F4
screen ask_save
end
