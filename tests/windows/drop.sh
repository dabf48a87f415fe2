#!/usr/bin/env bash
# Files dropped onto the stand-alone program's window: drop.sh TARQUIL PLACES DESK
#
# PLACES: editor_places.cpp; DESK: desk.cpp.
set -euo pipefail
readonly TARQUIL=$1 PLACES=$2 DESK=$3
. "$(dirname "$0")/virtual_screen.sh"
. "$(dirname "$0")/stand_alone.sh"

mkdir "$work/a folder"
"$TARQUIL" bank extract originals 0 "$work/a folder/bass.tqi" >/dev/null
"$TARQUIL" bank new "$work/mine.tqb" "0=$work/a folder/bass.tqi" --title Mine >/dev/null
"$TARQUIL" play --device null >"$work/play.log" 2>&1 &
player=$!
wait_for_window
sleep 0.5
shown=$(window)
# drop CHANNEL FILE WHAT: is taken or refused
drop() {
    local place answer
    place=$("$PLACES" | grep "^channel $1	" | cut -f 2)
    # shellcheck disable=SC2086
    answer=$("$DESK" drop "$shown" $place "$2")
    [ "$answer" = "$3" ] || fail "a drop is \"$answer\", not $3"
    sleep 0.2
}
save() { # FILE
    xdotool windowfocus "$shown" key ctrl+shift+s
    sleep 0.3
    for _ in $(seq 60); do xdotool key BackSpace; done
    xdotool type --delay 20 "$1"
    xdotool key Return
    sleep 0.5
    [ -s "$1.tqb" ] || fail "$1.tqb is not saved"
}

drop 3 "$work/a%20folder/bass.tqi" taken
save "$work/one"
program=$(sed -n 's/^channel_programs = //p' "$work/one.tqb" | cut -d ' ' -f 3)
"$TARQUIL" bank show "$work/one.tqb" "$program" | grep -q "$(sed -n 's/^name = //p' "$work/a folder/bass.tqi")" ||
    fail "channel 3 does not play the dropped sound, but program $program"
drop 3 "$work/mine.tqb" taken
drop 3 "$work/mine.tqb" refused # while a question is open
xdotool key Right Return        # load as bank
sleep 0.3
save "$work/two"
grep -q "^song_title = Mine" "$work/two.tqb" || fail "the dropped bank is not there"
kill "$player"
wait "$player" || fail "the program does not end well"
echo "ok a dropped instrument plays on its channel, a dropped bank is asked about and loaded"
