#!/usr/bin/env bash
# Opens the editor's window on a virtual screen, by the plug-in's C interface: run.sh HOST
#
# HOST: a program as window_host.cpp describes it, for one of the plug-in's formats.
set -euo pipefail
readonly HOST=$1
readonly NUMBER=$((90 + RANDOM % 400))
work=$(mktemp -d)
Xvfb ":$NUMBER" -screen 0 1600x1000x24 -noreset -nolisten tcp >"$work/xvfb.log" 2>&1 &
readonly SERVER=$!
trap 'kill $SERVER 2>/dev/null || true; rm -rf "$work"' EXIT
export DISPLAY=":$NUMBER" XDG_CONFIG_HOME=$work XDG_CACHE_HOME=${XDG_CACHE_HOME:-$work}
export ASAN_OPTIONS=fast_unwind_on_malloc=0 # cairo keeps no frame pointers
export LSAN_OPTIONS=suppressions=$(dirname "$0")/leaks_of_libraries.txt:print_suppressions=0
for _ in $(seq 50); do
    xdpyinfo >/dev/null 2>&1 && break
    sleep 0.1
done

"$HOST" cycles "${CYCLES:-200}"
"$HOST" three

# A user: drags and turns the wheel all over the page, clicks in the header, types.
"$HOST" play 12 >"$work/play.log" &
readonly PLAY=$!
for _ in $(seq 50); do
    grep -q window "$work/play.log" && break
    sleep 0.1
done
sleep 1
for y in $(seq 120 60 640); do
    for x in $(seq 60 90 980); do
        xdotool mousemove "$x" "$y" mousedown 1 mousemove_relative -- 0 -15 mouseup 1 click 4 click 5
    done
done
xdotool mousemove 150 20 click 1
sleep 0.3
xdotool type --delay 5 "Etude #3"
xdotool key Return key Escape
wait "$PLAY"
cat "$work/play.log" | tail -n 1
grep -Eq '^begun ([1-9][0-9]*) automated [1-9][0-9]* ended \1, bank changed$' "$work/play.log" || {
    echo "FAILED the host was not told of each gesture's begin and end" >&2
    exit 1
}
echo "ok mouse, wheel and keys reach the controls; every gesture begins and ends"
