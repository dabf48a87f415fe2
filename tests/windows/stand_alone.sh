# What the tests of the stand-alone program's window share: `player` is its process, `window` and
# `title` are those of the window.  Read after virtual_screen.sh.

export XDG_STATE_HOME=$work/state HOME=$work
player=

fail() {
    echo "FAILED $1; the title is \"$(title)\"" >&2
    cat "$work/play.log" >&2
    exit 1
}
window() { xdotool search --name Tarquil 2>/dev/null | head -n 1; }
title() { xdotool getwindowname "$(window)" 2>/dev/null || true; }
wait_for_window() {
    for _ in $(seq 100); do
        [ -n "$(window)" ] && break
        sleep 0.1
    done
}
# wait_for_title TEXT WHAT
wait_for_title() {
    for _ in $(seq 100); do
        [ "$(title)" = "$1" ] && return
        sleep 0.1
    done
    fail "$2"
}
