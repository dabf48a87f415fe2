#!/usr/bin/env bash
# A first hour with the stand-alone program, by mouse and keys on a virtual screen, and heard:
# newcomer.sh TARQUIL PLACES DESK
#
# From the default to a filtered, moving pad; a brass found by its tag, tried, given to channel 3 and
# changed; saved; broken and undone; closed and opened again.  What is played goes into a file, whose
# parts newcomer_heard.py checks.
#
# PLACES: editor_places.cpp; DESK: desk.cpp.
set -euo pipefail
readonly TARQUIL=$1 PLACES=$2 DESK=$3
. "$(dirname "$0")/virtual_screen.sh"
. "$(dirname "$0")/stand_alone.sh"

# start RECORDING [arguments]
start() {
    recording=$1
    : >"$work/$recording.parts"
    "$TARQUIL" play --device "file:$work/$recording.wav" "${@:2}" >"$work/play.log" 2>&1 &
    player=$!
    for _ in $(seq 300); do
        grep -q "sound:" "$work/play.log" && break
        sleep 0.02
    done
    begun=$EPOCHREALTIME
    wait_for_window
    sleep 1
    shown=$(window)
    xdotool windowfocus "$shown"
}
close() {
    "$DESK" close "$shown"
    wait "$player" || fail "closing is no clean end"
}

"$PLACES" >"$work/places"
at() { awk -F '\t' -v name="$1" '$1 == name { print $2 }' "$work/places"; }
go() { # NAME
    local place
    place=$(at "$1")
    [ -n "$place" ] || fail "there is no \"$1\""
    # shellcheck disable=SC2086
    xdotool mousemove --window "$shown" $place
    sleep 0.05
}
click() { go "$1" && xdotool click 1 && sleep 0.15; }
choose() { # CONTROLLER INDEX: of its list, 0 the first
    click "$1"
    # shellcheck disable=SC2046
    xdotool key --delay 8 $(printf 'Up %.0s' $(seq 40)) $([ "$2" = 0 ] || printf 'Down %.0s' $(seq "$2")) Return
    sleep 0.15
}
drag() { # CONTROLLER DX DY
    go "$1"
    xdotool mousedown 1
    for _ in 1 2 3 4 5; do
        xdotool mousemove_relative -- "$(($2 / 5))" "$(($3 / 5))"
        sleep 0.03
    done
    xdotool mouseup 1
    sleep 0.1
}
carry() { # FROM TO
    go "$1"
    xdotool mousedown 1
    xdotool mousemove_relative 0 -20
    go "$2"
    sleep 0.1
    xdotool mouseup 1
    sleep 0.3
}
# listen NAME SECONDS: what is heard from now on is a part of that name.
listen() {
    local from=$EPOCHREALTIME
    sleep "$2"
    echo "$1 $(awk "BEGIN { print $from - $begun, $EPOCHREALTIME - $begun }")" >>"$work/$recording.parts"
}
play() { # NAME: the key of the computer that is C
    xdotool keydown a
    listen "$1" 2.5
    xdotool keyup a
    sleep 1.5
}

start first
listen nothing 0.5
click "tab Bank"
click "Bank Initialise"
click "tab Oscillators"
choose "Oscillators osc1_type" 1
play sine
choose "Oscillators osc1_type" 2
play saw
click "tab Filter"
choose "Filter filter1_type" 1
drag "Filter filter1_cutoff" 0 30
play filtered
choose "Filter cutoff1_influence1_source" 4 # LFO 1
drag "Filter cutoff1_influence1_amount" 60 0
play moving
click "tab Envelopes"
drag "Envelopes env1_attack" 0 -150
play pad

click "tab Sounds"
click search
xdotool type --delay 20 brass
xdotool key Down
listen tried 1.5
xdotool key Escape
sleep 0.5
listen "tried-no-more" 0.5
play "pad-again"
carry "second sound" "channel 3"
play brass
click "tab Filter"
drag "Filter filter1_cutoff" 0 40
play tweaked
xdotool key ctrl+s
sleep 0.3
xdotool type --delay 20 "$work/mine"
xdotool key Return
wait_for_title "mine.tqb - Tarquil" "the bank is not saved"
click "tab Output"
drag "Output main_volume" -400 0
play broken
wait_for_title "*mine.tqb - Tarquil" "an edit is not marked"
xdotool key ctrl+z
play undone
wait_for_title "mine.tqb - Tarquil" "undo does not lead back to what is saved"
close

start second --bank "$work/mine.tqb"
click "channel 3"
play tweaked
click "channel 1"
play pad
close

/usr/bin/python3 "$(dirname "$0")/newcomer_heard.py" "$work"
