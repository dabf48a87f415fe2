#!/usr/bin/env bash
# Turns the wheel all over a window on a virtual screen: wheel.sh HOST
#
# HOST SECONDS shows the editor for so long, prints "window" when it is there, and looks itself at
# what the wheel has done.
set -euo pipefail
. "$(dirname "$0")/virtual_screen.sh"

"$1" 6 >"$work/log" &
readonly HOST=$!
wait_for window "$work/log"
for y in $(seq 120 60 640); do
    for x in $(seq 60 90 980); do
        xdotool mousemove "$x" "$y" click 4
    done
done
wait "$HOST"
cat "$work/log"
