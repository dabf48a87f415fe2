#!/usr/bin/env bash
# Plays a song through a JACK server without a sound card, records what comes out and compares it with
# the renderer's: jack.sh TARQUIL SONG.mid [BANK.tqb]
#
# The server waits for its clients: a busy machine is slow, but loses nothing.
set -euo pipefail
readonly TARQUIL=$1 SONG=$2 RATE=48000
readonly BANK=(${3:+--bank "$3"})
work=$(mktemp -d)
started=()
trap 'kill "${started[@]}" 2>/dev/null || true; rm -rf "$work"' EXIT
export JACK_DEFAULT_SERVER=tarquil-$$ JACK_NO_START_SERVER=1

failed() {
    printf 'FAILED %s\n' "$1" >&2
    cat "$work"/*.log >&2
    exit 1
}

# wait_until SECONDS COMMAND ...
wait_until() {
    local tries=$(($1 * 10))
    shift
    while ! "$@" >/dev/null 2>&1; do
        [ $((tries--)) -gt 0 ] || return 1
        sleep 0.1
    done
}

"$TARQUIL" render "$SONG" "$work/rendered.wav" --rate "$RATE" --bits 32 --quiet "${BANK[@]}"
frames=$((($(stat -c %s "$work/rendered.wav") - 44) / 8))

jackd -n "$JACK_DEFAULT_SERVER" --no-realtime -S -d dummy -r "$RATE" -p 1024 -m >"$work/jackd.log" 2>&1 &
started+=($!)
wait_until 10 jack_lsp || failed "JACK starts"
mapfile -t monitors < <(jack_lsp | grep -i monitor)
[ "${#monitors[@]}" = 2 ] || failed "JACK shows what its speakers get"
# The recorder is there first; its end is of no interest.
jack_rec -f "$work/recorded.wav" -d $((frames / RATE + 15)) -b 32 "${monitors[@]}" >"$work/rec.log" 2>&1 &
recorder=$!
started+=("$recorder")
wait_until 10 eval 'jack_lsp -c | grep -A1 -i monitor | grep -q jackrec' || failed "the recorder listens"
"$TARQUIL" play "$SONG" --no-window --device jack "${BANK[@]}" >"$work/play.log" 2>&1 ||
    failed "the song is played"
wait "$recorder" || failed "the sound is recorded"

# From the first sound on, as far as the rendered file goes: but for its end, where the converter has
# nothing more to read and the player goes on.
readonly CONVERTER_REACH=64
samples() { # WAV [FRAMES]
    tail -c +45 "$1" | od -An -v -t d4 -w8 |
        awk -v most="${2:-1e9}" '$1 != 0 || $2 != 0 { on = 1 } on && n++ < most'
}
samples "$work/rendered.wav" >"$work/whole.txt"
count=$(($(wc -l <"$work/whole.txt") - CONVERTER_REACH))
samples "$work/rendered.wav" "$count" >"$work/rendered.txt"
samples "$work/recorded.wav" "$count" >"$work/recorded.txt"
[ "$count" -gt "$RATE" ] || failed "there is a second of sound at least"
cmp "$work/rendered.txt" "$work/recorded.txt" >"$work/cmp.log" || failed "what JACK plays is what is rendered"
printf 'ok %s frames at %s Hz from JACK are those of tarquil render\n' "$count" "$RATE"
