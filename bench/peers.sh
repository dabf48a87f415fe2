#!/usr/bin/env bash
# Renders the same MIDI files with Tarquil and with other synthesizers from Debian's archive, one
# after the other in one run, and prints a table.
#
# Usage: peers.sh TARQUIL PLUGIN.so DEMO.mid DEMO.tqb
#
# Every plug-in plays the sound that it starts with; Tarquil's program and FluidSynth play General
# MIDI, and Tarquil the demo's own bank as well.
# Songs: how many times faster than real time (for FluidSynth the whole program's time).  Held
# notes: nanoseconds for each frame and key held, of 20 s with blocks of 256 frames.
set -euo pipefail
readonly TARQUIL=$1 PLUGIN=$2 DEMO=$3 BANK=$4
readonly AMSYNTH=/usr/lib/vst/amsynth_vst.so ZYNADDSUBFX=/usr/lib/vst/ZynAddSubFX.so
readonly SOUNDFONT=/usr/share/sounds/sf2/TimGM6mb.sf2
readonly SONGS=/usr/share/games/openttd/baseset/openmsx
readonly ROUNDS=3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# chord NOTES: a MIDI file that holds so many keys for 20 s.
chord() {
    local track='' key
    for ((key = 40; key < 40 + $1; key++)); do track+=$(printf '\\x00\\x90\\x%02x\\x50' "$key"); done
    track+='\x81\x96\x00' # 40 beats of 480 ticks
    for ((key = 40; key < 40 + $1; key++)); do
        [ "$key" = 40 ] || track+='\x00'
        track+=$(printf '\\x80\\x%02x\\x40' "$key")
    done
    track+='\x00\xff\x2f\x00'
    printf 'MThd\x00\x00\x00\x06\x00\x00\x00\x01\x01\xe0MTrk\x00\x00'
    printf "$(printf '\\x%02x\\x%02x' $((${#track} / 4 / 256)) $((${#track} / 4 % 256)))"
    printf "$track"
}

# median NUMBER ...
median() { printf '%s\n' "$@" | sort -g | sed -n "$((($# + 1) / 2))p"; }

# speed COMMAND ...: what the renderer says.
speed() { "$@" 2>&1 >/dev/null | grep -oE '[0-9.]+ times real time' | cut -d' ' -f1; }

# repeated COMMAND ...: the median of what it prints.
repeated() {
    local round results=()
    for ((round = 0; round < ROUNDS; round++)); do results+=("$("$@")"); done
    median "${results[@]}"
}

# of_fluidsynth SONG: the same for a program that does not say.
of_fluidsynth() {
    local seconds start
    seconds=$("$TARQUIL" render "$1" "$work/out.wav" 2>&1 | grep -oE '[0-9.]+ s,' | cut -d' ' -f1)
    start=$EPOCHREALTIME
    fluidsynth -q -ni -r 44100 -F "$work/out.wav" "$SOUNDFONT" "$1" >/dev/null 2>&1
    awk "BEGIN { printf \"%.1f\n\", $seconds / ($EPOCHREALTIME - $start) }"
}

# per_voice NOTES OPTION ...
per_voice() {
    local notes=$1 times
    shift
    times=$(repeated speed "$TARQUIL" render "$work/chord$notes.mid" "$work/out.wav" --tail 0 "$@")
    awk "BEGIN { printf \"%.1f\", 1e9 / 44100 / $times / $notes }"
}

# median_song COMMAND ...: the command gets one song after the other.
median_song() {
    local song speeds=()
    for song in "$SONGS"/*.mid; do speeds+=("$("$@" "$song")"); done
    median "${speeds[@]}"
}
of_song() { # SONG comes last
    speed "$TARQUIL" render "${@: -1}" "$work/out.wav" "${@:1:$#-1}"
}

chord 16 >"$work/chord16.mid"
chord 64 >"$work/chord64.mid"
"$TARQUIL" render --quiet "$DEMO" "$work/out.wav" # its wavetables are in the cache from now on

echo "| | demo song | openttd-openmsx, median of $(ls "$SONGS"/*.mid | wc -l) | 16 notes | 64 notes |"
echo "|---|---:|---:|---:|---:|"
row() { # NAME OPTION ...
    local name=$1
    shift
    echo "| $name | $(repeated of_song "$@" "$DEMO") | $(median_song of_song "$@") |" \
        "$(per_voice 16 "$@") | $(per_voice 64 "$@") |"
}
row "Tarquil, its General MIDI set"
row "Tarquil, as a plug-in" --plugin "$PLUGIN"
row "amsynth" --plugin "$AMSYNTH"
row "ZynAddSubFX" --plugin "$ZYNADDSUBFX"
echo "| Tarquil, the demo's bank | $(repeated of_song --bank "$BANK" "$DEMO") |" \
    "$(median_song of_song --bank "$BANK") | | |"
echo "| FluidSynth, TimGM6mb | $(repeated of_fluidsynth "$DEMO") | $(median_song of_fluidsynth) | | |"
