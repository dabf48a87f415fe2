# Ardour with its windows, on a screen and a JACK server without hardware: the plug-in's window is
# opened, played, edited, made larger, closed and opened again, and the session saved.
# Sourced by run.sh after ardour.sh, whose sessions it opens.

readonly PLUGIN_AT="43 169" # in the strip beside the tracks, once the track is chosen
readonly TRACK_AT="60 345"
readonly BAR=34 # pixels of Ardour's own above the editor

# Starts the screen and the server; Ardour's settings know that it has been here, and the server.
start_desk() {
    local config=$XDG_CONFIG_HOME/ardour7
    Xvfb -displayfd 8 -screen 0 1600x1000x24 -noreset -nolisten tcp 8>"$work/display" 2>/dev/null &
    started+=($!)
    export JACK_DEFAULT_SERVER=tarquil_window_$$
    jackd -n "$JACK_DEFAULT_SERVER" --no-realtime -S -d dummy -r 44100 -p 1024 >"$work/jackd.log" 2>&1 &
    started+=($!)
    wait_for test -s "$work/display"
    DISPLAY=:$(cat "$work/display")
    export DISPLAY
    mkdir -p "$config"
    touch "$config/.a7"
    cat >"$config/config" <<'CONFIG'
<?xml version="1.0" encoding="UTF-8"?>
<Ardour><Config/><Extra><AudioMIDISetup><EngineStates>
<State backend="JACK" driver="" device="" input-device="" output-device="" sample-rate="44100"
 buffer-size="1024" n-periods="2" input-latency="0" output-latency="0" lm-input="" lm-output=""
 active="1" use-buffered-io="0" midi-option="" lru="1"><MIDIDevices/></State>
</EngineStates></AudioMIDISetup></Extra></Ardour>
CONFIG
}

wait_for() {
    local end=$((SECONDS + 30))
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}
window_named() { xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1; }
is_shown() { [ -n "$(window_named "$1")" ]; }
is_hidden() { [ -z "$(window_named "$1")" ]; }
on_screen() { python3 "$here/screen.py" "$@"; }
# Of the whole window, as "780 616".
size_of() { xwininfo -id "$1" | awk '/Width:/ { w = $2 } /Height:/ { print w, $2 }'; }
is_wider() { [ "$(size_of "$1" | cut -d ' ' -f 1)" -gt "$2" ]; }
has_size() { [ "$(size_of "$1")" = "$2" ]; }
# point WINDOW X Y [xdotool commands]: places in the editor's pixels
point() { xdotool mousemove --window "$1" "$2" $(($3 + BAR)) "${@:4}"; }
parameters() {
    run_script ardour_parameters.lua
    grep '^parameter' <<<"$seen"
}

# The first key of the keyboard's C4 octave, the levels at the top, and the last key.
key() { on_screen pixels 300 $((730 + BAR)) 4 1; }
levels() { on_screen pixels 632 $((8 + BAR)) 150 14; }
last_key() { on_screen pixels 1018 $((750 + BAR)) 4 4; }

open_window() { # FORMAT
    local attempt
    for attempt in 1 2 3 4 5 6; do # a busy machine may not have its strip drawn yet
        xdotool mousemove $PLUGIN_AT click --repeat 2 --delay 80 1
        sleep 3
        ! is_shown "synth: Tarquil.*$1" || break
    done
    wait_for is_shown "synth: Tarquil.*$1" ||
        failed "Ardour opens the window" "$(tail -n 3 "$work/ardour.log")"
    plugin_window=$(window_named "synth: Tarquil.*$1")
    xdotool windowmove "$plugin_window" 0 0
    sleep 1.5
}

# Parameters that differ by more than a byte's rounding, to which an LV2 window brings its ports.
num_changed() {
    awk 'NR == FNR { before[$2] = $3; next }
         { way = $3 - before[$2]; most = $3 * $3 > before[$2] ^ 2 ? $3 : before[$2]
           changed += way * way > (0.02 * most) ^ 2 }
         END { print changed + 0 }' "$1" "$2"
}

choose_size() {
    point "$plugin_window" 972 23 click 1
    sleep 0.5
    point "$plugin_window" 985 103 click 1 # the largest for this screen
    wait_for is_wider "$plugin_window" 1200 ||
        failed "the window follows its size menu" "$(size_of "$plugin_window")"
    sleep 1
    [ "$(on_screen pixels 1150 $((880 + BAR)) 4 4)" != "$(on_screen pixels 1500 900 4 4)" ] ||
        failed "the picture fills the window" "$(on_screen pixels 1150 $((880 + BAR)) 4 4)"
    chosen=$(size_of "$plugin_window")
    ok "it takes another size"
}

# try_window FORMAT PARAMETERS
try_window() {
    local ardour editor before quiet silent changed
    export TARQUIL_SESSION=$work/$1/session TARQUIL_PARAMETERS=$2
    before=$(parameters)
    rm -f "$XDG_CONFIG_HOME/tarquil/editor.conf" # the size that the format before has chosen
    ARDOUR_SECONDS=200 in_ardour "$(echo /usr/lib/ardour7/ardour-7.*)" -n "$TARQUIL_SESSION/first.ardour" >"$work/ardour.log" 2>&1 &
    ardour=$!
    started+=("$ardour")
    # It says that the session was made with another device.
    until is_shown "first - Ardour" || ! kill -0 "$ardour" 2>/dev/null; do
        xdotool key Return
        sleep 0.5
    done
    editor=$(window_named "first - Ardour")
    sleep 2
    xdotool windowfocus "$editor" mousemove $TRACK_AT click 1
    sleep 0.5
    xdotool key shift+e
    sleep 1
    open_window "$1"
    has_size "$plugin_window" "1040 $((776 + BAR))" ||
        failed "Ardour gives the window its size" "$(size_of "$plugin_window")"
    ok "Ardour's window shows the $1 plug-in's"

    quiet=$(key)
    silent=$(levels)
    point "$plugin_window" 300 730 mousedown 1
    wait_for eval '[ "$(key)" != "$quiet" ]' || failed "a key lights" "$(key)"
    wait_for eval '[ "$(levels)" != "$silent" ]' || failed "a key sounds" "$(levels)"
    xdotool mouseup 1
    wait_for eval '[ "$(key)" = "$quiet" ]' || failed "a key goes dark" "$(key)"
    ok "a key of its keyboard is played, lights, and the levels rise"

    point "$plugin_window" 544 190 click 4
    sleep 0.5
    # Ardour takes an LV2 window's wish for a size, but its own window stays as it is.
    [ "$1" = LV2 ] || choose_size
    on_screen close "$plugin_window"
    wait_for is_hidden "synth: Tarquil" || failed "the window closes" "it is there"
    open_window "$1"
    [ "$1" = LV2 ] || wait_for has_size "$plugin_window" "$chosen" ||
        failed "the window has the size that was chosen again" "$(size_of "$plugin_window")"
    ok "it closes and opens again, $(size_of "$plugin_window" | tr ' ' x)"
    [ "$(last_key)" != "$(on_screen pixels 1500 950 4 4)" ] ||
        failed "the picture fills the window" "$(last_key)"

    xdotool windowfocus "$editor" key ctrl+s
    wait_for eval '[ "$(xdotool getwindowname "$editor")" = "first - Ardour" ]' || failed "Ardour saves" "it does not"
    xdotool key ctrl+q
    wait "$ardour" || failed "Ardour ends well" "status $?; $(tail -n 3 "$work/ardour.log")"
    changed=$(num_changed <(echo "$before") <(parameters))
    [ "$changed" = 1 ] || failed "the knob that was turned is in the saved session" "$changed parameters have changed"
    ok "Ardour ends with status 0; the knob that was turned, and no other, is in the session"
}

start_desk
try_window VST3 884
try_window LV2 175
