#!/usr/bin/env bash
# Plants random faults in the sources, one at a time, and tells which of them no test catches.
#
#     run.sh [--seed S] [N] [PATH ...]
#
# N faults (20) in the .cpp files of each PATH (instrument midi player vst editor/model), of four kinds
# in turn: a comparison, a constant, an exchanged operand, a deleted statement. The working tree is not
# touched: the faults go into a git worktree of their own, build/mutants/tree, which has what is
# committed or known to git there. It stays for the next run.
#
# Every test program that is made of the faulty file runs, or loads a plug-in that is: first the suites
# that mirror the file's folder, then all of each program, the quickest first, until the first failure.
# Each is linked when its turn comes. A fault that does not compile, or that the compiler makes the
# same object of, does not count. Exit status 1 when one survived.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
root=$(readlink -f "$here/../..")
tree=$root/build/mutants/tree
build=$tree/build/release
readonly ALL_PROGRAMS=(tests/tarquil_tests tests/tarquil_vst_tests tests/tarquil_editor_tests
    tests/tarquil_tools_tests tests/tarquil_standalone_tests
    tests/tarquil_golden tests/tarquil_recorded editor/tarquil_editor_pictures
    tests/formats/every/tarquil_formats_tests tests/formats/clap/tarquil_clap_tests
    tests/formats/vst3/tarquil_vst3_tests tests/formats/lv2/tarquil_lv2_tests
    tests/formats/table/tarquil_format_table)
# Not tarquil_sounds_tests, which hears every sound for minutes and looks at the sounds, not the code.
readonly NOT_GTEST='golden|recorded|pictures|format_table'
# What these do with a plug-in does not reach its editor.
readonly PLUGIN_USERS='vst_tests|tools_tests|recorded|tests/formats/'

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
[ $# -gt 0 ] || paths=(instrument midi player vst editor/model)
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
    ninja -C "$build" -j "$(nproc)" "$@" >"$scratch/build.log" 2>&1
}

# is_made_of PROGRAM FILE ...: of any of the files.
is_made_of() {
    local program=$1 inputs file
    shift
    inputs=$(ninja -C "$build" -t inputs "$program")
    for file; do
        [[ $program =~ $PLUGIN_USERS && $file = editor/* ]] || [[ $inputs != *"$tree/$file"* ]] || return 0
    done
    return 1
}

# What a file is compiled to.
objects_of() { ninja -C "$build" -t query "$tree/$1" | sed -n 's/^ *\(.*\.o\)$/\1/p'; }

# checksum FILE ...: of all of them.
checksum() { (cd "$build" && cat "$@" | cksum); }

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
    *format_table) arguments=("$build/tools/tarquil") ;;
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
        sed -E 's/.*\(//; s/.*/&.*:*\/&.*/' | sort -u | paste -sd:
}

declare -A sound seconds_of uses suites_of
# has_suite PROGRAM FILTER: any of the filter's.
has_suite() {
    local suite
    for suite in ${suites_of[$1]:-}; do
        [[ :$2: != *":$suite*:"* ]] || return 0
    done
    return 1
}

# tries PROGRAM [GTEST OPTION ...]: links and runs it; exit status 1, and `caught_by`, when it sees the fault.
tries() {
    local program=$1
    shift
    caught_by=${program##*/}
    # Everything but what the build makes with it has been compiled.
    compile "$program" || { caught_by="what is made when ${program##*/} is built"; return 1; }
    # shellcheck disable=SC2086
    [ "$(checksum ${uses[$program]})" != "${sound[$program]}" ] || return 0
    run_program "$program" "${seconds_of[$program]}" "$@"
}

# is_caught FILE: sets `caught_by`.
is_caught() {
    local program filter made=()
    for program in "${PROGRAMS[@]}"; do
        ! is_made_of "$program" "$1" || made+=("$program")
    done
    filter=$(mirror_filter "$1")
    for program in "${made[@]}"; do
        has_suite "$program" "$filter" || continue
        tries "$program" "--gtest_filter=$filter" || return 0
    done
    for program in "${made[@]}"; do
        tries "$program" || return 0
    done
    return 1
}

cd "$root"
command -v ccache >/dev/null && export CMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER-ccache}
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
PROGRAMS=()
for program in "${ALL_PROGRAMS[@]}"; do
    ! is_made_of "$program" "${sources[@]}" || PROGRAMS+=("$program")
done
[ "${#PROGRAMS[@]}" -gt 0 ] || fail "no test program is made of ${paths[*]}"
compile "${PROGRAMS[@]}" || fail "the tree does not build: $(tail -n 20 "$scratch/build.log")"
for file in song.mid demo.tqb; do
    [ ! -f "$build/demo/$file" ] || install -m 644 "$build/demo/$file" "$scratch"
done
for program in "${PROGRAMS[@]}"; do
    # With the plug-ins that it loads and the program that it starts.
    uses[$program]=$({ echo "$program"; ninja -C "$build" -t inputs "$program"; } |
        grep -E "^($program|tools/tarquil|(vst|formats)/.*\.(so|clap))$" | sort -u | paste -sd' ')
    # shellcheck disable=SC2086
    sound[$program]=$(checksum ${uses[$program]})
    [[ $program =~ $NOT_GTEST ]] ||
        suites_of[$program]=$("$build/$program" --gtest_list_tests | grep -oE '^[^ .]+' | tr '/' '\n' | sort -u | paste -sd' ')
    SECONDS=0
    run_program "$program" 1800 || fail "without a fault ${program##*/} fails: $(grep -A 8 -m 1 Failure "$scratch/test.log" || tail -n 20 "$scratch/test.log")"
    seconds_of[$program]=$((20 + 4 * SECONDS))
done
mapfile -t PROGRAMS < <(for program in "${PROGRAMS[@]}"; do
    echo "${seconds_of[$program]} $program"
done | sort -n | cut -d' ' -f2)

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
    mapfile -t objects < <(objects_of "$file")
    [ "${#objects[@]}" -gt 0 ] || continue
    compile "${objects[@]}" || fail "the tree no longer builds: $(tail -n 20 "$scratch/build.log")"
    whole=$(checksum "${objects[@]}")
    FAULT=$with awk -v line="$line" 'NR == line { print ENVIRON["FAULT"]; next } { print }' "$file" >"$scratch/faulty"
    cp "$scratch/faulty" "$file"
    result=
    if compile "${objects[@]}" && [ "$(checksum "${objects[@]}")" != "$whole" ]; then
        planted=$((planted + 1))
        if is_caught "$file"; then
            result="caught by $caught_by"
        else
            result=SURVIVED
            survived=$((survived + 1))
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
