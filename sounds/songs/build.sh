#!/bin/sh
# Makes SONG.mid from SONG.abc: build.sh SONG.abc SONG.mid
#   ABC2MIDI  the converter of ABC notation (abc2midi, of the package abcmidi)
set -eu
if [ $# -ne 2 ]; then
    echo "usage: build.sh SONG.abc SONG.mid" >&2
    exit 2
fi

# The converter exits with 0 whatever it finds; its complaints name a line of the song.
log=$(${ABC2MIDI:-abc2midi} "$1" -o "$2" 2>&1) || {
    echo "$log" >&2
    exit 1
}
if echo "$log" | grep -qE '^(Error|Warning)'; then
    echo "$log" >&2
    rm -f "$2"
    exit 1
fi
