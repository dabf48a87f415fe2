#!/usr/bin/env bash
# Plays a song through a server without a sound card, records what comes out and compares it with the
# renderer's: jack.sh jackd|pipewire TARQUIL SONG.mid
set -euo pipefail
readonly SERVER=$1 TARQUIL=$2 SONG=$3 RATE=48000 PERIOD=4096
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

# It waits for its clients: a busy machine is slow, but loses nothing.
start_jackd() {
    jackd -n "$JACK_DEFAULT_SERVER" --no-realtime -S -d dummy -r "$RATE" -p "$PERIOD" -m \
        >"$work/jackd.log" 2>&1 &
    started+=($!)
}

# With its session manager, which gives the speakers their ports and wants a message bus.  Clients that
# are late are not waited for.
start_pipewire() {
    export XDG_RUNTIME_DIR=$work/run XDG_CONFIG_HOME=$work/config XDG_STATE_HOME=$work/state
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    cat >"$work/pipewire.conf" <<CONF
context.properties = { core.daemon = true core.name = pipewire-0 default.clock.rate = $RATE default.clock.quantum = $PERIOD }
context.spa-libs = { audio.convert.* = audioconvert/libspa-audioconvert
                     support.* = support/libspa-support }
context.modules = [
    { name = libpipewire-module-protocol-native } { name = libpipewire-module-spa-node-factory }
    { name = libpipewire-module-client-node } { name = libpipewire-module-adapter }
    { name = libpipewire-module-link-factory } { name = libpipewire-module-metadata }
    { name = libpipewire-module-access }
]
context.objects = [
    { factory = adapter args = {
        factory.name = support.null-audio-sink node.name = speakers media.class = Audio/Sink
        audio.position = [ FL FR ] object.linger = true port.physical = true } }
]
CONF
    pipewire -c "$work/pipewire.conf" >"$work/pipewire.log" 2>&1 &
    started+=($!)
    wait_until 10 pw-cli info 0 || failed "PipeWire starts"
    dbus-run-session -- wireplumber >"$work/wireplumber.log" 2>&1 &
    started+=($!)
    LD_LIBRARY_PATH=$(echo /usr/lib/*/pipewire-0.3/jack)${LD_LIBRARY_PATH:+:$LD_LIBRARY_PATH}
    export LD_LIBRARY_PATH
}

"$TARQUIL" render "$SONG" "$work/rendered.wav" --rate "$RATE" --bits 32 --quiet
frames=$((($(stat -c %s "$work/rendered.wav") - 44) / 8))

"start_$SERVER"
has_monitors() { [ "$(jack_lsp | grep -ci monitor)" = 2 ]; }
wait_until 10 has_monitors || failed "$SERVER shows what its speakers get"
mapfile -t monitors < <(jack_lsp | grep -i monitor)
# The recorder is there first; its end is of no interest.
jack_rec -f "$work/recorded.wav" -d $((frames / RATE + 15)) -b 32 "${monitors[@]}" >"$work/rec.log" 2>&1 &
recorder=$!
started+=("$recorder")
wait_until 10 eval 'jack_lsp -c | grep -A1 -i monitor | grep -q jackrec' || failed "the recorder listens"
"$TARQUIL" play "$SONG" --no-window --device jack >"$work/play.log" 2>&1 ||
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
cmp "$work/rendered.txt" "$work/recorded.txt" >"$work/cmp.log" || failed "what $SERVER plays is what is rendered"
printf 'ok %s frames at %s Hz from %s are those of tarquil render\n' "$count" "$RATE" "$SERVER"
