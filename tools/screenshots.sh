#!/bin/sh
# Takes docs/screenshots/ anew: starts the window on a screen of its own (1366x768, as a laptop has),
# works through it with keys and mouse, and keeps what it shows. Look at the pictures before you commit.
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
. "$here/tools/set_up.sh"
install_packages xvfb openbox xdotool imagemagick fonts-ipafont-gothic
"$here/run" --build
out=$here/docs/screenshots
work=$(mktemp -d /tmp/tobarine-XXXXXX)
logs=/tmp/ログ
typed=/tmp/log  # for where the path is typed
trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$work" "$logs" "$typed"' EXIT
rm -rf "$logs" "$typed"
cp -r "$here/data" "$work/home"
cp -r "$here/samples" "$logs"
cp -r "$here/samples" "$typed"

export DISPLAY=:87 LC_ALL=C.UTF-8 TOBARINE_HOME="$work/home"
Xvfb "$DISPLAY" -screen 0 1366x768x24 >/dev/null 2>&1 &
sleep 2
openbox >/dev/null 2>&1 &
sleep 1

open_window() { # LOG...
  "$here/build/release/bin/tobarine" "$@" >/dev/null 2>&1 &
  program=$!
  window=$(timeout 20 xdotool search --sync --onlyvisible --name 'Tobarine' | head -n 1)
  xdotool windowactivate --sync "$window"
  sleep 1
}
shot() { # NAME
  sleep 1
  frame=$(xdotool getactivewindow)
  import -frame -window "$frame" -strip +dither -colors 200 "PNG8:$out/$1.png"
}
key() { xdotool key --delay 100 "$@"; sleep 0.5; }
end_window() { kill "$program"; wait "$program" 2>/dev/null || true; sleep 0.5; }

open_window
shot start
end_window
open_window "$logs/hamlog.csv"
shot opened
key alt+h
shot main
key ctrl+r
shot report
key Escape ctrl+i
shot viewer
end_window
open_window "$logs/contest.zlo"
xdotool mousemove --window "$window" 225 455 click --repeat 2 --delay 100 1
xdotool type 70cm
shot grid
end_window
open_window
key alt+t
key Down
key Return
timeout 20 xdotool search --sync --onlyvisible --name 'ADIF to zLog ALL' >/dev/null
sleep 1
xdotool mousemove --window "$(xdotool getactivewindow)" 115 110 click 1
sleep 1
xdotool type "$typed/n1mm.adi"
key Return
xdotool mousemove --window "$(xdotool getactivewindow)" 330 110 click 1
shot zlog
end_window
