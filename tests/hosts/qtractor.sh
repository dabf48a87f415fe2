# Qtractor, on a JACK server without a sound card: scan, a session with the plug-in on a MIDI
# track, playback, save, reload.
# Sourced by run.sh, which gives `work`, `plugin`, `here` and the functions.

session=$work/session.qtr
export QT_QPA_PLATFORM=offscreen JACK_DEFAULT_SERVER=tarquil-$$ JACK_NO_START_SERVER=1
readonly FRAMES=176400 # that are compared: four seconds from the first sound on

# The scanner takes one line per read.
# scan KIND:PLUGIN
scan() {
    { sleep 0.5; echo "$1"; sleep 1; } |
        timeout 20 /usr/lib/*/qtractor/qtractor_plugin_scan
}

# What it saves has more, but it opens this.
make_session() {
    abc2midi "$here/song.abc" -o "$work/song.mid" >/dev/null
    cat >"$session" <<XML
<!DOCTYPE qtractor-session>
<session name="hosts">
 <properties><directory>$work</directory><sample-rate>44100</sample-rate><tempo>120</tempo></properties>
 <tracks>
  <track name="synth" type="midi">
   <properties>
    <input-bus>Master</input-bus><output-bus>Master</output-bus><midi-channel>0</midi-channel>
   </properties>
   <clips><clip name="song">
    <properties><start>0</start><offset>0</offset><length>220500</length></properties>
    <midi-clip><filename>$work/song.mid</filename><track-channel>0</track-channel></midi-clip>
   </clip></clips>
   <plugins><plugin type="VST">
    <filename>$plugin</filename><index>0</index><label>Tarquil</label><activated>1</activated>
    <params><param name="osc1_osc2_mix" index="32">0.8</param></params>
   </plugin></plugins>
  </track>
 </tracks>
</session>
XML
}

# wait_until SECONDS COMMAND ...
wait_until() {
    local tries=$(($1 * 5))
    shift
    while ! "$@" >/dev/null 2>&1; do
        [ $((tries--)) -gt 0 ] || return 1
        sleep 0.2
    done
}

has_ports() { jack_lsp | grep -q '^Qtractor:Master/out_2$'; }
is_saved() { ! cmp -s "$session" "$work/before.qtr" && [ -n "$(chunk)" ]; }
is_gone() { ! kill -0 "$1"; }

# The plug-in's state in the session's file, as text.
chunk() { sed -n '/<config key="chunk">/,/<\/config>/p' "$session"; }

# Opens the session, plays it from the start into a WAV file, saves it and closes.
# play_session WAV
play_session() {
    local log=$work/qtractor.log server host recorder
    cp "$session" "$work/before.qtr"
    # In step with its clients: a busy machine is slow, but loses nothing.
    jackd -n "$JACK_DEFAULT_SERVER" --no-realtime -S -d dummy -r 44100 -p 1024 >"$log" 2>&1 &
    server=$!
    started+=("$server")
    wait_until 10 jack_lsp || failed "JACK starts" "$(cat "$log")"
    LD_PRELOAD=$work/no_sequencer.so qtractor "$session" >"$log" 2>&1 &
    host=$!
    started+=("$host")
    wait_until 20 has_ports || failed "Qtractor opens its session" "$(cat "$log")"
    sleep 2 # its plug-ins follow
    jack_rec -f "$1" -d 7 -b 24 Qtractor:Master/out_1 Qtractor:Master/out_2 >/dev/null 2>&1 &
    recorder=$!
    sleep 0.5
    { echo locate 0; echo play; sleep 6; echo stop; echo quit; } | jack_transport >/dev/null 2>&1
    wait "$recorder" || failed "Qtractor's sound is recorded" "$(cat "$log")"
    kill -USR1 "$host" # save
    wait_until 10 is_saved || failed "Qtractor saves its session" "$(cat "$log")"
    kill "$host"
    wait_until 10 is_gone "$host" || failed "Qtractor closes" "$(cat "$log")"
    kill "$server"
    wait "$server" || true
}

# The compared frames, one a line: 24 bits, two sides.
frames() {
    od -An -v -t x1 -w6 -j 44 "$1" | awk -v frames="$FRAMES" '/[1-9a-f]/ { on = 1 } on && n++ < frames'
}

seen=$(scan "VST:$plugin" 2>&1) || true
# Name, audio inputs and outputs, MIDI inputs and outputs, parameters.
expect "Qtractor's scanner finds it" grep -F "VST|Tarquil|0:2|1:0|173:0|" <<<"$seen"
seen=$(scan "CLAP:$clap" 2>&1) || true
expect "Qtractor's scanner finds the CLAP plug-in" \
    grep -F "CLAP|Tarquil|0:2|1:0|187:0|" <<<"$seen"

gcc -shared -fPIC -o "$work/no_sequencer.so" "$here/no_sequencer.c"
make_session
play_session "$work/first-q.wav"
# 101 / 127
expect "Qtractor loads it onto a MIDI track, sets a parameter and saves" \
    grep 'osc1_osc2_mix.*>0.795276<' "$session"
count=$(frames "$work/first-q.wav" | wc -l)
expect "Qtractor plays the MIDI track: $count frames" [ "$count" = "$FRAMES" ]
chunk >"$work/first-q.state"
play_session "$work/second-q.wav"
expect "Qtractor opens the session again: the same state" cmp "$work/first-q.state" <(chunk)
expect "the same sound: $FRAMES frames" \
    cmp <(frames "$work/first-q.wav") <(frames "$work/second-q.wav")
