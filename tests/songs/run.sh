#!/usr/bin/env bash
# Renders every collected song as General MIDI and with the engine's own numbers, and prints what
# came out: a line for each song in FOLDER/songs.tsv, a table by package here.
#
# Usage: run.sh TARQUIL FOLDER [RENDER OPTION ...]    (options of the General MIDI renders)
#
# A song fails when it does not render, has no finite peak, or has a message that the report does
# not account for; every tenth song also when another block length or a second run gives other
# bytes.  Files that are damaged are refused and counted.
set -euo pipefail
readonly TARQUIL=$1 FOLDER=$2
shift 2
readonly TABLE=$FOLDER/songs.tsv
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# value KEY FILE: of the summary.
value() { sed -nE "s/^ *\"$1\": ([^,]*),?$/\1/p" "$2" | head -n 1; }

failed=0
fail() {
    printf 'songs: %s\n' "$*" >&2
    failed=$((failed + 1))
}

# sum FILE KEY: of the counts under KEY; an empty list is "{}" in one line.
sum() { sed -n "/^    \"$2\": {$/,/}/p" "$1" | sed -nE 's/.*: ([0-9]+),?$/\1/p' | awk '{ n += $1 } END { print n + 0 }'; }

# check SONG DIALECT OPTION ...: renders it and writes its line.
check() {
    local song=$1 dialect=$2 json=$work/summary.json name
    shift 2
    name=$(basename "$song" .mid)
    "$TARQUIL" render --midi "$dialect" --json --report "$@" "$song" "$work/$dialect.wav" \
        >"$json" 2>"$work/error" || {
        if [ $? = 2 ]; then
            printf '%s\t%s\trefused\t%s\n' "$name" "$dialect" "$(tail -n 1 "$work/error")" >>"$TABLE"
        else
            fail "$name, $dialect: $(tail -n 1 "$work/error")"
        fi
        return 0
    }
    local peak seconds
    peak=$(value peak_dbfs "$json")
    seconds=$(value seconds "$json")
    local shortfalls=0 unaccounted=0 voices=0
    if [ "$dialect" = gm ]; then
        shortfalls=$(sum "$json" shortfalls)
        voices=$(value most_voices "$json")
        unaccounted=$(($(value messages "$json") - $(sum "$json" played) -
            $(sum "$json" approximated) - $(sum "$json" ignored)))
        [ "$unaccounted" = 0 ] || fail "$name: $unaccounted messages are not accounted for"
    fi
    printf '%s\t%s\trendered\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n' "$name" "$dialect" "$seconds" "$peak" \
        "$(value loudness_lufs "$json")" "$(value times_real_time "$json")" "$voices" \
        "$shortfalls" "$(sha256sum <"$work/$dialect.wav" | cut -c 1-16)" >>"$TABLE"
    [[ $peak =~ ^-?[0-9.e-]+$ || $peak = null ]] || fail "$name, $dialect: a peak of $peak"
}

# check_blocks SONG OPTION ...: whether a second run and other block lengths give the same bytes.
check_blocks() {
    local song=$1 block first
    shift
    first=$(tail -n 1 "$TABLE" | cut -f 10)
    for block in 256 64 2048 1004; do
        "$TARQUIL" render --midi gm --quiet --block "$block" "$@" "$song" "$work/block.wav"
        [ "$(sha256sum <"$work/block.wav" | cut -c 1-16)" = "$first" ] ||
            fail "$(basename "$song"): other bytes in blocks of $block"
    done
}

: >"$TABLE"
number=0
for song in "$FOLDER"/midi/*.mid; do
    check "$song" native
    check "$song" gm "$@"
    if [ $((number % 10)) = 0 ] && tail -n 1 "$TABLE" | grep -q rendered; then
        check_blocks "$song" "$@"
    fi
    number=$((number + 1))
done

echo 'package                 dialect  songs refused   LUFS median (min ... max)   peak max  times real time  voices'
for dialect in native gm; do
    cut -f 1 "$TABLE" | sed -E 's/-[^-]*$//; s/^(simutrans-data|openttd-openmsx|planetblupi-music-midi|[a-z]+).*/\1/' |
        sort -u | while read -r package; do
        grep "^$package-" "$TABLE" | awk -F '\t' -v dialect="$dialect" '$2 == dialect' | sort -t "$(printf '\t')" -k 6,6g |
            awk -F '\t' -v package="$package" -v dialect="$dialect" '
                $3 == "refused" { refused++; next }
                { n++; lufs[n] = $6; speed += $4; time += $4 / ($7 > 0 ? $7 : 1)
                  if (n == 1 || $5 > peak) peak = $5
                  if ($8 > voices) voices = $8 }
                END { printf "%-24s%-8s%6d%8d%10.1f (%.1f ... %.1f)%12.1f%17.1f%8d\n", package,
                      dialect, n, refused, lufs[int((n + 1) / 2)], lufs[1], lufs[n], peak,
                      (time > 0 ? speed / time : 0), voices }'
    done
done
printf '%d failed\n' "$failed"
[ "$failed" = 0 ]
