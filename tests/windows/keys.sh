#!/usr/bin/env bash
# Plays the editor's keyboard on a virtual screen, by real keys and mouse: keys.sh HOST
#
# HOST: keys_host.cpp.
set -euo pipefail
. "$(dirname "$0")/virtual_screen.sh"
readonly HOST=$1

# begin own|hosted SECONDS
begin() {
    : >"$work/log"
    "$HOST" "$1" "$2" >"$work/log" &
    running=$!
    wait_for window "$work/log"
    sleep 0.5
    read -r _ window other <"$work/log"
    told=1
}
# expect WHAT LINES: these, in order, are what the host has told since the last time.
expect() {
    sleep 0.3
    local lines
    lines=$(tail -n +$((told + 1)) "$work/log" | paste -sd ';')
    told=$(wc -l <"$work/log")
    [[ $lines == "$2" ]] || {
        echo "FAILED $1: \"$lines\", not \"$2\"" >&2
        exit 1
    }
}
# point X Y [xdotool commands]
point() {
    xdotool mousemove --window "$window" "$@"
}

begin own 16
xdotool windowfocus "$window"
xdotool keydown a
sleep 1.5 # the screen repeats it from 0.66 s on
expect "a held key is one note" "on 1 60 100"
xdotool keydown d key x keyup a keyup d
expect "a key ends what it struck" "on 1 64 100;off 1 60;off 1 64"
xdotool keydown a
point 300 23 click 1
sleep 1
xdotool keyup a key s key Escape
expect "a text field leaves no note, and typing in it plays none" "on 1 72 100;off 1 72"
xdotool keydown a
sleep 0.1
xdotool windowfocus "$other" keyup a
expect "a key that comes up elsewhere ends its note" "on 1 72 100;off 1 72"
xdotool windowfocus "$window" keydown a
point 930 23 click 1 # Panic
sleep 0.2
xdotool keyup a key a
expect "no key is dead after panic" "on 1 72 100;off 1 72;on 1 72 100;off 1 72"

point 500 740 mousedown 1
point 520 766 mouseup 1
expect "a glissando, loud at the front" "on 1 55 85;off 1 55;on 1 57 124;off 1 57"
point 113 717 mousedown 1
point 113 600
sleep 0.2
xdotool mouseup 1
expect "the bend springs back" "bend 1 16383;bend 1 8192"
point 980 665 click 1
expect "hidden" "size 1040 680"
point 980 665 click 1
expect "shown" "size 1040 776"
wait "$running"

begin hosted 5
point 500 300 click 1
xdotool key a
expect "a host keeps its keys" ""
point 50 696 click 1
sleep 0.2
xdotool key a windowfocus "$other" key a
sleep 0.2 # a key comes up an idle or two late
point 500 740 click 1
sleep 0.2
xdotool key a
expect "until they are asked for" "on 1 60 100;off 1 60;on 1 55 85;off 1 55;on 1 60 100;off 1 60"
point 50 696 click 1
sleep 0.2
xdotool key a
expect "and gets them back" ""
wait "$running"
echo "ok keys, mouse, focus, panic and text fields leave no note behind; a held key is one note"
