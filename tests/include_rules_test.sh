#!/usr/bin/env bash
# include_rules.sh sees an include that a folder may not use, and a folder that it does not know.
set -euo pipefail
rules=$(dirname "$(readlink -f "$0")")/include_rules.sh
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT

# plant FOLDER INCLUDED: a file of FOLDER that includes INCLUDED.
plant() {
    mkdir -p "$tree/$1"
    printf '// A file.\n\n  # include "%s"\n' "$2" >"$tree/$1/planted.h"
}
fail() { echo "$*"; exit 1; }

plant softsynth/voices/deep softsynth/parameters/unit.h
plant editor/window Application.hpp
"$rules" "$tree" || fail "sound includes are refused"

for bad in "common midi/midi_message.h" "softsynth/parameters instrument/names.h" \
    "softsynth/effects softsynth/voices/voice.h" "editor/plots Cairo.hpp" "curves editor/kit/page.h" \
    "player vst/tarq_vst.h" "vst midi/midifilter.h" "new_folder common/wav.h"; do
    # shellcheck disable=SC2086 # folder and header
    plant $bad
    found=$("$rules" "$tree") && fail "passed: $bad"
    [[ $found == "${bad% *}/planted.h"* ]] || fail "$bad gives: $found"
    rm -r "${tree:?}/${bad%% *}"
done
