# Ardour: scan, a session with the plug-in on a MIDI track, automation, export, reload; in each
# format that it has.
# Sourced by run.sh, which gives `work`, `plugin`, `vst3`, `lv2`, `here` and the functions.

# Ardour's own programs need its libraries.
in_ardour() {
    LD_LIBRARY_PATH=/usr/lib/ardour7 ARDOUR_DLL_PATH=/usr/lib/ardour7 \
        ARDOUR_DATA_PATH=/usr/share/ardour7 ARDOUR_CONFIG_PATH=/etc/ardour7 \
        timeout "${ARDOUR_SECONDS:-60}" "$@"
}

# Runs a script.  Its back end without a sound card now and then cannot register a track's port
# (1 in 8 here, before the plug-in has played): then it is asked again.
run_script() {
    local attempt
    for attempt in 1 2 3 4; do
        run in_ardour ardour7-lua "$here/$1"
        grep -q 'register_port: Port already exists' <<<"$seen" || break
    done
}

# Puts the song on the track, as far as the session's file goes: scripts can not import.
add_song() {
    local file=$session/first.ardour
    abc2midi "$here/song.abc" -o "$session/interchange/session/midifiles/song.mid" >/dev/null
    local source='<Source name="song.mid" type="midi" flags="Writable,CanRename" id="9001" channel="0"/>'
    local at='muted="0" opaque="1" start="b0" length="b15360@b0"' # ticks, 1920 a quarter note
    local region="<Region name=\"song\" type=\"midi\" $at id=\"9002\" source-0=\"9001\" master-source-0=\"9001\"/>"
    # Four seconds and the end of the last note, in units of 1/282240000 s.
    local range='<Location id="9003" name="session" start="a0" end="a1411200000" flags="IsSessionRange"/>'
    sed -i -e "s|<Sources/>|<Sources>$source</Sources>|" \
        -e "s|<Locations/>|<Locations>$range</Locations>|" \
        -e "s|\(<Playlist id=\"[0-9]*\" name=\"synth\".*\)/>|\1>$region</Playlist>|" \
        -e 's|id-counter="[0-9]*"|id-counter="9100"|' "$file"
    grep -q "$region" "$file"
}

readonly HEADER_BYTES=88

# export_session SNAPSHOT WAV.  Now and then Ardour writes a header and no sample (1 in 25 here).
export_session() {
    local attempt
    for attempt in 1 2 3; do
        run in_ardour ardour7-export -b float -o "$2" "$session" "$1"
        [ ! -s "$2" ] || [ "$(stat -c %s "$2")" -le "$HEADER_BYTES" ] || return 0
    done
    return 1
}

# The samples of an export, without its header, which holds the time of day, and without the first
# frame of each of Ardour's blocks: on a busy machine it adds what its memory held there, in a
# session without any plug-in too.
samples() {
    python3 -c '
import signal, sys
signal.signal(signal.SIGPIPE, signal.SIG_DFL)  # cmp ends at the first difference
BLOCK = 2048 * 2 * 4  # frames, channels, bytes
data = open(sys.argv[1], "rb").read()[int(sys.argv[2]):]
for start in range(0, len(data), BLOCK):
    sys.stdout.buffer.write(data[start + 8:start + BLOCK])' "$1" $HEADER_BYTES
}

# sounds_like_first SNAPSHOT.  A busy Ardour begins an export in another place of its block now and then
# (1 in 100 here), and automation, which it sends block by block, comes a little earlier or later.
sounds_like_first() {
    local attempt difference=silence
    for attempt in 1 2 3; do
        export_session "$1" "$work/$1.wav" || continue
        difference=$(cmp <(samples "$work/first.wav") <(samples "$work/$1.wav")) && return 0
    done
    echo "$difference"
    return 1
}

# The plug-in's state in a session's file.
# As VST 2 has it.
state() { sed -n 's|.*<chunk program="[0-9]*">\(.*\)</chunk>.*|\1|p' "$session/$1.ardour" | base64 -d; }

# try_format FORMAT PARAMETERS FIRST: Ardour's name for the format, and how many parameters it sees, ours
# from FIRST on.
try_format() {
    local panning=$(($3 + 1)) peak
    session=$work/$1/session
    mkdir "$work/$1"
    export TARQUIL_SESSION=$session TARQUIL_FORMAT=$1 TARQUIL_PARAMETERS=$2 TARQUIL_FIRST=$3
    run_script ardour_make.lua
    expect "Ardour loads it as an instrument, sets and automates parameters" \
        grep "^$2 parameters" <<<"$seen"
    [ "$1" != LXVST ] ||
        expect "Ardour saves its state" test -s "$session/first.ardour" -a -n "$(state first | head -c 1)"

    add_song || failed "the song goes onto the MIDI track" "$session/first.ardour is not as expected"
    export_session first "$work/first.wav" || failed "Ardour plays the MIDI track" "$seen"
    peak=$(samples "$work/first.wav" | od -An -v -t f4 -w4 |
        awk '{ if ($1 < 0) $1 = -$1; if ($1 > peak) peak = $1 } END { printf "%.4f", peak }')
    expect "Ardour plays the MIDI track: peak $peak" awk "BEGIN { exit !($peak > 0.01) }"

    sed "s|\(automation-id=\"parameter-$panning\".*\)state=\"Play\"|\1state=\"Off\"|" "$session/first.ardour" \
        >"$session/still.ardour"
    export_session still "$work/still.wav" || failed "Ardour exports without automation" "$seen"
    ! cmp -s <(samples "$work/first.wav") <(samples "$work/still.wav") ||
        failed "the automated panning is heard" "the same samples without it"
    ok "the automated panning is heard"

    run_script ardour_reload.lua
    [ -s "$session/second.ardour" ] || failed "Ardour opens the session again" "$seen"
    ok "Ardour opens the session again: parameters as set"
    [ "$1" != LXVST ] ||
        expect "the same state: $(state first | wc -c) bytes" cmp <(state first) <(state second)
    expect "the same sound: $(samples "$work/first.wav" | wc -c) bytes of samples" \
        sounds_like_first second
}

run in_ardour /usr/lib/ardour7/ardour-vst-scanner -f "$plugin"
expect "Ardour scans the plug-in" grep -o "Found Plugin: .*Tarquil" <<<"$seen"
try_format LXVST 173 0

run in_ardour /usr/lib/ardour7/ardour-vst3-scanner -f "$vst3"
expect "Ardour scans the VST 3 plug-in" grep -o "Found Plugin: .*Tarquil" <<<"$seen"
try_format VST3 884 0

try_format LV2 175 5
