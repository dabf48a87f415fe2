#!/usr/bin/env bash
# The window as a screen reader finds it, on a desktop's bus of the test's own: reader.sh TARQUIL HOST
#
# HOST: window_host.cpp, the plug-in in a host.
set -euo pipefail
if [ -z "${TARQUIL_TEST_SESSION:-}" ]; then
    TARQUIL_TEST_SESSION=1 GSETTINGS_BACKEND=memory NO_AT_BRIDGE=1 exec dbus-run-session -- "$0" "$@"
fi
readonly TARQUIL=$1 HOST=$2
here=$(dirname "$(readlink -f "$0")")
. "$here/virtual_screen.sh"
. "$here/stand_alone.sh"

# As the desktop's settings do it.
want_readers() { # true|false
    gdbus call --session --dest org.a11y.Bus --object-path /org/a11y/bus --method \
        org.freedesktop.DBus.Properties.Set org.a11y.Status IsEnabled "<$1>" >/dev/null
}
reader() { /usr/bin/python3 "$here/reader.py" "$@" || fail "$*"; }

want_readers false
"$TARQUIL" play --device null >"$work/play.log" 2>&1 &
player=$!
wait_for_window
xdotool windowfocus "$(window)"
reader nobody
want_readers true
reader walk
reader edit
reader keys
reader command
xdotool key ctrl+shift+s
sleep 0.5
for _ in $(seq 60); do xdotool key BackSpace; done
xdotool type --delay 20 "$work/read"
reader saves
program=$("$TARQUIL" bank show "$work/read.tqb" 0)
grep -q "^instrument 0: Orgäl" <<<"$program" || fail "the typed name is not in the file"
grep -Eq "^filter1_cutoff +[0-9.]+ +40 " <<<"$program" || fail "the value that was set is not in the file"
want_readers false
reader nobody
kill "$player"
wait "$player" || fail "the program does not end well"

want_readers true
"$HOST" cycles 8 40 || # long enough for each window to be told of
    fail "openings in a host"
mkfifo "$work/at_work"
"$HOST" play <"$work/at_work" >"$work/play.log" &
player=$!
exec 7>"$work/at_work"
wait_for window "$work/play.log"
reader host
exec 7>&-
wait "$player"
grep -q "^begun 1 automated 1 ended 1, bank changed" "$work/play.log" || fail "the host is not told"
echo "ok a screen reader walks through the window, reads, sets, presses, types and follows the focus, in hosts too"
