#!/usr/bin/env bash
# Opens the editor's window on a virtual screen, by the plug-in's C interface: run.sh HOST
#
# HOST: a program as window_host.cpp describes it, for one of the plug-in's formats.
set -euo pipefail
readonly HOST=$1
. "$(dirname "$0")/virtual_screen.sh"

"$HOST" cycles "${CYCLES:-200}"
"$HOST" three

# A user: drags and turns the wheel all over the page, clicks in the header, types.
mkfifo "$work/at_work"
"$HOST" play <"$work/at_work" >"$work/play.log" &
readonly PLAY=$!
exec 7>"$work/at_work"
wait_for window "$work/play.log"
sleep 1
for y in $(seq 120 60 640); do
    for x in $(seq 60 90 980); do
        xdotool mousemove "$x" "$y" mousedown 1 mousemove_relative -- 0 -15 mouseup 1 click 4 click 5
    done
done
xdotool mousemove 150 20 click 1
sleep 0.3
xdotool type --delay 5 "Etude #3"
xdotool key Return key Escape
sleep 1
exec 7>&-
wait "$PLAY"
tail -n 1 "$work/play.log"
grep -Eq '^begun ([1-9][0-9]*) automated [1-9][0-9]* ended \1, bank changed$' "$work/play.log" || {
    echo "FAILED the host was not told of each gesture's begin and end" >&2
    exit 1
}
echo "ok mouse, wheel and keys reach the controls; every gesture begins and ends"
