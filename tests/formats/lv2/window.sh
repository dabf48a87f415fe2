#!/usr/bin/env bash
# The window in a host's window on a virtual screen: window.sh HOST
set -euo pipefail
readonly NUMBER=$((500 + RANDOM % 400))
work=$(mktemp -d)
Xvfb ":$NUMBER" -screen 0 1600x1000x24 -noreset -nolisten tcp >"$work/xvfb.log" 2>&1 &
readonly SERVER=$!
trap 'kill $SERVER 2>/dev/null || true; rm -rf "$work"' EXIT
export DISPLAY=":$NUMBER" XDG_CONFIG_HOME=$work XDG_CACHE_HOME=${XDG_CACHE_HOME:-$work}
export ASAN_OPTIONS=fast_unwind_on_malloc=0 # cairo keeps no frame pointers
export LSAN_OPTIONS=suppressions=$(dirname "$0")/../../windows/leaks_of_libraries.txt:print_suppressions=0
for _ in $(seq 50); do
    xdpyinfo >/dev/null 2>&1 && break
    sleep 0.1
done

# A user who turns the wheel all over the page.
"$1" 6 >"$work/log" &
readonly HOST=$!
for _ in $(seq 50); do
    grep -q window "$work/log" && break
    sleep 0.1
done
for y in $(seq 120 60 640); do
    for x in $(seq 60 90 980); do
        xdotool mousemove "$x" "$y" click 4
    done
done
wait "$HOST"
cat "$work/log"
