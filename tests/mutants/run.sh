#!/usr/bin/env bash
# Plants random faults in the sources, one at a time, and tells which of them no test catches.
#
#     run.sh [--seed S] [N] [PATH ...]
#
# N faults (20) in the .cpp files of each PATH (instrument midi vst editor/model), of four kinds in
# turn: a comparison, a constant, an exchanged operand, a deleted statement. The working tree is not
# touched: the faults go into a git worktree of their own, build/mutants/tree, which has what is
# committed or known to git there. It stays for the next run.
#
# Only the test programs that are made of those files are built, and those that a fault has changed
# run: first the suites that mirror its folder, until the first failure. A fault that does not compile,
# or that the compiler makes the same programs of, does not count. Exit status 1 when one survived.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
root=$(readlink -f "$here/../..")
tree=$root/build/mutants/tree
build=$tree/build/release
readonly ALL_PROGRAMS=(tests/tarquil_tests tests/tarquil_vst_tests tests/tarquil_editor_tests
    tests/tarquil_tools_tests tests/tarquil_golden tests/tarquil_recorded editor/tarquil_editor_pictures)
readonly NOT_GTEST='golden|recorded|pictures'
# Loaded by these; what they do with it does not reach its editor.
readonly PLUGIN=vst/tarquil.so PLUGIN_USERS='vst_tests|tools_tests|recorded'

fail() { printf 'mutants: %s\n' "$*" >&2; exit 2; }

seed=$$
if [ "${1:-}" = --seed ]; then
    seed=${2:?a number follows --seed}
    shift 2
fi
wanted=20
if [[ ${1:-} =~ ^[0-9]+$ ]]; then
    wanted=$1
    shift
fi
paths=("$@")
[ $# -gt 0 ] || paths=(instrument midi vst editor/model)
renice -n 15 $$ >/dev/null

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
chmod 711 "$scratch"
# A faulty program may remove what it should not: it runs as nobody, if that can be had.
as_nobody=()
[ "$(id -u)" != 0 ] || as_nobody=(setpriv --reuid=65534 --regid=65534 --clear-groups)

random_state=$seed
random() { # LIMIT: sets `drawn` to 0..LIMIT-1
    random_state=$(((random_state * 1103515245 + 12345) & 0x7fffffff))
    drawn=$(((random_state >> 8) % $1))
}

# compile TARGET ...: exit status 1, and the compiler's words in the log, when it cannot be built.
compile() {
    ninja -C "$build" -j "$(nproc)" "${@##*/}" >"$scratch/build.log" 2>&1
}

# is_made_of PROGRAM FILE ...: of any of the files.
is_made_of() {
    local program=$1 inputs file
    shift
    inputs=$(ninja -C "$build" -t inputs "${program##*/}")
    for file; do
        [[ $program =~ $PLUGIN_USERS && $file = editor/* ]] || [[ $inputs != *"$tree/$file"* ]] || return 0
    done
    return 1
}

checksum() { cksum <"$build/$1"; }

# is_changed PROGRAM FILE: the fault in the file has changed what the program runs.
is_changed() {
    [ "$(checksum "$1")" != "${sound[$1]}" ] ||
        [[ $1 =~ $PLUGIN_USERS && $2 != editor/* && $(checksum "$PLUGIN") != "${sound[$PLUGIN]}" ]]
}

# run_program PROGRAM SECONDS [GTEST OPTION ...]: in a place and with a cache of its own.
run_program() {
    local program=$1 seconds=$2
    shift 2
    rm -rf "$scratch/run"
    mkdir -m 777 "$scratch/run"
    local arguments=(--gtest_fail_fast --gtest_brief=1 "$@")
    case $program in
    *golden) arguments=(--song "$scratch/song.mid" --bank "$scratch/demo.tqb") ;;
    *recorded) arguments=(--every 5 "$tree/tests/vst/recorded/recording.txt") ;;
    *pictures) arguments=(check "$tree/tests/editor/pictures" "$scratch/demo.tqb" "$scratch/run") ;;
    esac
    (
        cd "$scratch/run"
        ulimit -f 2000000 -v 16000000
        export HOME=$scratch/run XDG_CACHE_HOME=$scratch/run XDG_CONFIG_HOME=$scratch/run TMPDIR=$scratch/run
        exec timeout -k 5 "$seconds" "${as_nobody[@]}" "$build/$program" "${arguments[@]}"
    ) >"$scratch/test.log" 2>&1 </dev/null
}

# The suites of the tests that mirror the folder of a file, as a filter.
mirror_filter() {
    local folder=$tree/tests/${1%/*}
    [ -d "$folder" ] || return 0
    { grep -rhoE '^(TEST|TEST_F|TEST_P)\([A-Za-z0-9_]+' "$folder" || true; } |
        sed -E 's/.*\(//; s/.*/*&.*/' | sort -u | paste -sd:
}

declare -A sound seconds_of
# is_caught FILE: sets `caught_by`.
is_caught() {
    local program changed=() filter
    compile "${PROGRAMS[@]}" || {
        caught_by="the demo bank" # everything but what the build makes with it was built before
        return 0
    }
    for program in "${PROGRAMS[@]}"; do
        ! is_changed "$program" "$1" || changed+=("$program")
    done
    filter=$(mirror_filter "$1")
    for program in "${changed[@]}"; do
        [ -n "$filter" ] && [[ ! $program =~ $NOT_GTEST ]] || continue
        run_program "$program" "${seconds_of[$program]}" "--gtest_filter=$filter" ||
            { caught_by=${program##*/}; return 0; }
    done
    for program in "${changed[@]}"; do
        run_program "$program" "${seconds_of[$program]}" || { caught_by=${program##*/}; return 0; }
    done
    return 1
}

cd "$root"
commit=$(git stash create)
commit=${commit:-$(git rev-parse HEAD)}
if [ -e "$tree/.git" ]; then
    git -C "$tree" checkout -q --force --detach "$commit"
else
    git worktree prune
    git worktree add -q --force --detach "$tree" "$commit"
fi
cd "$tree"
mapfile -t sources < <(git ls-files "${paths[@]}" | grep '\.cpp$')
[ "${#sources[@]}" -gt 0 ] || fail "no .cpp file in ${paths[*]}"
cmake --preset release -DTARQUIL_WERROR=OFF -DTARQUIL_BENCH=OFF >"$scratch/build.log" 2>&1 ||
    fail "the tree does not configure: $(tail -n 20 "$scratch/build.log")"
PROGRAMS=() GTEST_PROGRAMS=()
for program in "${ALL_PROGRAMS[@]}"; do
    is_made_of "$program" "${sources[@]}" || continue
    PROGRAMS+=("$program")
    [[ $program =~ $NOT_GTEST ]] || GTEST_PROGRAMS+=("$program")
done
[ "${#GTEST_PROGRAMS[@]}" -gt 0 ] || fail "no test program is made of ${paths[*]}"
compile "${PROGRAMS[@]}" || fail "the tree does not build: $(tail -n 20 "$scratch/build.log")"
for file in song.mid demo.tqb; do
    [ ! -f "$build/demo/$file" ] || install -m 644 "$build/demo/$file" "$scratch"
done
[ ! -f "$build/$PLUGIN" ] || sound[$PLUGIN]=$(checksum "$PLUGIN")
for program in "${PROGRAMS[@]}"; do
    sound[$program]=$(checksum "$program")
    SECONDS=0
    run_program "$program" 1800 || fail "without a fault ${program##*/} fails: $(tail -n 20 "$scratch/test.log")"
    seconds_of[$program]=$((20 + 4 * SECONDS))
done

awk -f "$here/faults.awk" "${sources[@]}" >"$scratch/faults"
readonly KINDS=(comparison constant operand statement)
printf 'seed %s, %s places in %s\n' "$seed" "$(wc -l <"$scratch/faults")" "${paths[*]}"

planted=0 survived=0 drawn=0 round=0
while [ "$planted" -lt "$wanted" ] && [ -s "$scratch/faults" ]; do
    kind=${KINDS[round % 4]}
    round=$((round + 1))
    mapfile -t places < <(grep -n "^$kind" "$scratch/faults" | cut -d: -f1)
    [ "${#places[@]}" -gt 0 ] || continue
    random "${#places[@]}"
    IFS=$'\t' read -r _ file line with < <(sed -n "${places[drawn]}p" "$scratch/faults")
    with=$(sed -n "${places[drawn]}p" "$scratch/faults" | cut -f 4-)
    sed -i "${places[drawn]}d" "$scratch/faults"
    before=$(sed -n "${line}p" "$file")
    FAULT=$with awk -v line="$line" 'NR == line { print ENVIRON["FAULT"]; next } { print }' "$file" >"$scratch/faulty"
    cp "$scratch/faulty" "$file"
    result=
    if compile "${GTEST_PROGRAMS[@]}"; then
        changed=no
        for program in "${GTEST_PROGRAMS[@]}"; do
            ! is_changed "$program" "$file" || changed=yes
        done
        if [ $changed = yes ]; then
            planted=$((planted + 1))
            if is_caught "$file"; then
                result="caught by $caught_by"
            else
                result=SURVIVED
                survived=$((survived + 1))
            fi
        fi
    fi
    git checkout -q -- "$file"
    [ -n "$result" ] || continue
    printf '%d %s:%s %s: %s\n' "$planted" "$file" "$line" "$kind" "$result"
    [ "$result" != SURVIVED ] || printf '    - %s\n    + %s\n' "${before#"${before%%[! ]*}"}" "${with#"${with%%[! ]*}"}"
done
compile "${PROGRAMS[@]}" || fail "the tree no longer builds: $(tail -n 20 "$scratch/build.log")"
printf '%d of %d caught\n' $((planted - survived)) "$planted"
[ "$survived" = 0 ]
