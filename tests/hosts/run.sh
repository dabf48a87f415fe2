#!/usr/bin/env bash
# Plays the plug-in in hosts, without a screen but a virtual one: a line per step, exit status 1 at the first failure.
#
#     run.sh PLUGIN.so PLUGIN.clap PLUGIN.vst3 PLUGIN.lv2
#
# Nothing outside a temporary folder is read or written but the plug-in itself.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
work=$(mktemp -d)
bundle3=$(readlink -f "$3")
bundle2=$(readlink -f "$4")
started=() # processes to end
trap 'kill "${started[@]}" 2>/dev/null || true; rm -rf "$work"' EXIT

# Hosts look beside their settings; a module as new as what a scan leaves counts as changed.
plugin=$work/plug-ins/tarquil.so
install -D -m 755 "$1" "$plugin"
clap=$work/plug-ins/tarquil.clap
install -D -m 755 "$2" "$clap"
unset DISPLAY WAYLAND_DISPLAY
export HOME=$work/home XDG_CONFIG_HOME=$work/home/.config XDG_CACHE_HOME=$work/home/.cache
export XDG_DATA_HOME=$work/home/.local/share XDG_RUNTIME_DIR=$work/run LXVST_PATH=$work/plug-ins
mkdir -m 700 "$HOME" "$XDG_RUNTIME_DIR"
vst3=$HOME/.vst3/tarquil.vst3
lv2=$HOME/.lv2/tarquil.lv2
mkdir "$HOME/.vst3" "$HOME/.lv2"
cp -r "$bundle3" "$vst3"
cp -r "$bundle2" "$lv2"
find "$work/plug-ins" "$HOME/.vst3" "$HOME/.lv2" -exec touch -d 2020-01-01 {} +

seen=
ok() { printf 'ok %s\n' "$*"; }
failed() { # STEP WHAT-WAS-SEEN
    printf 'FAILED %s; seen: %s\n' "$1" "$(tr '\n' ' ' <<<"$2")"
    exit 1
}
run() { seen=$("$@" 2>&1) || true; } # what it writes is kept for a failure
expect() {                           # STEP COMMAND ...
    local step=$1 result
    shift
    result=$("$@" 2>&1) || failed "$step" "${result:-$seen}"
    ok "$step"
}

. "$here/ardour.sh"
. "$here/qtractor.sh"
. "$here/ardour_window.sh"
