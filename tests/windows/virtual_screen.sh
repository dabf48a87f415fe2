# Starts a virtual screen for the tests of windows, and ends it with the script that reads this file.
# Gives `work`, a temporary folder.

work=$(mktemp -d)
screen=$((90 + RANDOM % 800))
Xvfb ":$screen" -screen 0 1600x1000x24 -noreset -nolisten tcp >"$work/xvfb.log" 2>&1 &
server=$!
trap 'kill "$server" 2>/dev/null || true; rm -rf "$work"' EXIT
export DISPLAY=":$screen" XDG_CONFIG_HOME=$work XDG_CACHE_HOME=${XDG_CACHE_HOME:-$work}
export ASAN_OPTIONS=fast_unwind_on_malloc=0 # cairo keeps no frame pointers
leaks=$(dirname "${BASH_SOURCE[0]}")/leaks_of_libraries.txt
export LSAN_OPTIONS=suppressions=$leaks:print_suppressions=0
for _ in $(seq 50); do
    xdpyinfo >/dev/null 2>&1 && break
    sleep 0.1
done

# wait_for WORD FILE
wait_for() {
    for _ in $(seq 50); do
        grep -q "$1" "$2" && break
        sleep 0.1
    done
}
