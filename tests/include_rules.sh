#!/usr/bin/env bash
# Fails when a file includes what its folder may not use.
# include_rules.sh SOURCE_ROOT
set -euo pipefail
cd "${1:?the folder with the sources}"

# A folder and its subfolders without a row of their own may use themselves and what stands behind
# the colon: folders (with all below them) or a name in capitals for several.
readonly RULES='
common:
softsynth/parameters:  common
instrument:            common softsynth/parameters
softsynth/signal:      CORES
softsynth/kernels:     CORES
softsynth/wavetables:  CORES
softsynth/filters:     CORES
softsynth/effects:     CORES
softsynth/reverb:      CORES
softsynth/rate:        CORES
softsynth/lpc:         CORES
softsynth/voices:      CORES instrument
softsynth/core:        CORES instrument softsynth/voices
midi:                  common softsynth/parameters
midi/gm:               common softsynth/parameters instrument midi
player:                common softsynth instrument midi
sounds:                common softsynth/parameters instrument midi player
curves:                common softsynth instrument
editor/model:          SHOWN
editor/kit:            SHOWN editor/model
editor/plots:          SHOWN editor/model editor/kit
editor/widgets:        SHOWN editor/model editor/kit editor/plots
editor/pages:          SHOWN editor/model editor/kit editor/plots editor/widgets
editor/view:           SHOWN editor/model editor/kit editor/plots editor/widgets editor/pages
editor/access:         common editor/kit
editor/window:         common editor TOOLKIT
editor/pictures:       SHOWN editor
frame:                 common softsynth/parameters instrument player sounds editor
vst/abi:               common
vst:                   vst/abi common softsynth/parameters instrument player sounds editor frame
formats:               common softsynth/parameters instrument midi player sounds editor frame
standalone:            common softsynth/parameters softsynth/rate midi player sounds editor frame
tools:                 ALL
tests:                 ALL
bench:                 ALL
fuzz:                  ALL
'
readonly SHORT='
CORES    common softsynth/parameters softsynth/signal softsynth/kernels softsynth/wavetables softsynth/filters softsynth/effects softsynth/reverb softsynth/rate softsynth/lpc
SHOWN    common softsynth/parameters instrument curves
ALL      common softsynth instrument midi player sounds curves editor frame vst formats standalone tools tests bench
TOOLKIT  Application.hpp Cairo.hpp Window.hpp
'

find . -path ./build -prune -o -path ./.git -prune -o \
    \( -name '*.h' -o -name '*.cpp' -o -name '*.def' \) -printf '%P\n' | sort |
    awk -v rules="$RULES" -v short="$SHORT" '
    # The longest folder of the table that `path` lies in.
    function room_of(path,    folder) {
        folder = path
        while (!(folder in allowed) && sub(/\/[^\/]*$/, "", folder)) {}
        return folder in allowed ? folder : ""
    }
    function lies_in(path, folder) {
        return path == folder || index(path, folder "/") == 1
    }
    function may_use(room, included,    i, n, folders) {
        if (room_of(included) == room)
            return 1
        n = split(allowed[room], folders, " ")
        for (i = 1; i <= n; i++)
            if (lies_in(included, folders[i]))
                return 1
        return 0
    }
    BEGIN {
        n = split(short, lines, "\n")
        for (i = 1; i <= n; i++)
            if (split(lines[i], words, " ") > 1) {
                sub(/^[A-Z]+ +/, "", lines[i])
                meaning[words[1]] = lines[i]
            }
        n = split(rules, lines, "\n")
        for (i = 1; i <= n; i++) {
            if (split(lines[i], parts, ":") < 2)
                continue
            m = split(parts[2], words, " ")
            for (j = 1; j <= m; j++)
                list[parts[1]] = list[parts[1]] " " (words[j] in meaning ? meaning[words[j]] : words[j])
            allowed[parts[1]] = list[parts[1]]
        }
    }
    {
        path = $0
        room = room_of(path)
        if (room == "") {
            print path ": its folder has no row in tests/include_rules.sh"
            bad++
            next
        }
        line = 0
        while ((getline text < path) > 0) {
            line++
            if (text !~ /^[ \t]*#[ \t]*include[ \t]*"/)
                continue
            split(text, quoted, "\"")
            checked++
            if (!may_use(room, quoted[2])) {
                print path ":" line ": " room " may not use " quoted[2]
                bad++
            }
        }
        close(path)
    }
    END {
        if (checked == 0)
            print "no #include found"
        exit (bad > 0 || checked == 0)
    }'
