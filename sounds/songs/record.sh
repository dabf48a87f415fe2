#!/bin/sh
# Records the songs as short Opus files: record.sh MIDI_FOLDER OUT_FOLDER
# MIDI_FOLDER is where the build puts the songs' MIDI files.
#   TARQUIL   the program (tarquil)
#   OPUSENC   the encoder (opusenc, of the package opus-tools)
set -eu
[ $# -eq 2 ] || { echo "usage: record.sh MIDI_FOLDER OUT_FOLDER" >&2; exit 2; }
kilobits=56 # a second: 237 seconds come to 1.8 MB
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$2"

# record SONG.mid OUT.opus BANK TITLE
record() {
    "${TARQUIL:-tarquil}" render "$1" "$work/song.wav" --bank "$3" --rate 48000
    "${OPUSENC:-opusenc}" --quiet --bitrate $kilobits --discard-comments --comment "TITLE=$4" \
        --comment "ARTIST=Tarquil" "$work/song.wav" "$2"
}

for song in salt_and_copper:gm phosphor_wake:originals under_the_viaduct:gm; do
    name=${song%:*}
    title=$(sed -n 's/^T://p' "$(dirname "$0")/$name.abc")
    record "$1/$name.mid" "$2/$name.opus" "${song#*:}" "$title"
done
