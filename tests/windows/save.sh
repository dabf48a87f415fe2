#!/usr/bin/env bash
# Edits in the stand-alone program's window are saved, kept and offered again: save.sh TARQUIL
set -euo pipefail
readonly TARQUIL=$1
. "$(dirname "$0")/virtual_screen.sh"
. "$(dirname "$0")/stand_alone.sh"

start() {
    "$TARQUIL" play --device null "$@" >"$work/play.log" 2>&1 &
    player=$!
    wait_for_window
    sleep 0.5
}
turn_a_knob() { xdotool mousemove --window "$(window)" 544 190 click 4; }

start
wait_for_title "Untitled - Tarquil" "a new bank has no name"
turn_a_knob
wait_for_title "*Untitled - Tarquil" "an edit is not marked"
xdotool key ctrl+z
wait_for_title "Untitled - Tarquil" "undo back to the start counts as changed"
turn_a_knob
xdotool key ctrl+s
sleep 0.3
xdotool type --delay 20 "$work/none/mine" # no such folder: the question stays
xdotool key Return
sleep 0.3
for _ in $(seq 60); do xdotool key BackSpace; done
xdotool type --delay 20 "$work/mine"
xdotool key Return
wait_for_title "mine.tqb - Tarquil" "Ctrl+S does not save"
[ -s "$work/mine.tqb" ] || fail "no file was written"
turn_a_knob
wait_for_title "*mine.tqb - Tarquil" "an edit after a save is not marked"
kill -TERM "$player"
wait "$player" || fail "a signal is no clean end"
start
xdotool key Return # restore
wait_for_title "*mine.tqb - Tarquil" "what a signal ended is not offered"
kill "$server" # the display goes
wait "$player" && fail "the program outlives its display"
grep -q "kept" "$work/play.log" || fail "edits go with the display"
[ "$(find "$XDG_STATE_HOME" -name '*.tqb' | wc -l)" = 1 ] || fail "there is more than one copy"
echo "ok saved under a name, kept through a signal and the loss of the display"
