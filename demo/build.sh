#!/bin/sh
# Makes OUTDIR/song.mid and OUTDIR/demo.tqb from the sources beside this script.
#   TARQUIL   the program (tarquil)
#   ABC2MIDI  the converter of ABC notation (abc2midi, of the package abcmidi)
set -eu
if [ $# -ne 1 ]; then
    echo "usage: build.sh OUTDIR" >&2
    exit 2
fi
source=$(cd "$(dirname "$0")" && pwd)
mkdir -p "$1"

# The converter exits with 0 whatever it finds; its complaints name a line of the song.
log=$(${ABC2MIDI:-abc2midi} "$source/song.abc" -o "$1/song.mid" 2>&1) || {
    echo "$log" >&2
    exit 1
}
if echo "$log" | grep -qE '^(Error|Warning)'; then
    echo "$log" >&2
    exit 1
fi

# NN-name.tqi becomes instrument NN.
set -- "$1"
out=$1
for file in "$source"/instruments/*.tqi; do
    number=$(basename "$file" | sed 's/^0*\([0-9][0-9]*\)-.*/\1/')
    set -- "$@" "$number=$file"
done
shift
"${TARQUIL:-tarquil}" bank new --force --globals "$source/globals.txt" "$out/demo.tqb" "$@"
