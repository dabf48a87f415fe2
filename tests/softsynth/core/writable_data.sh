#!/usr/bin/env bash
# Looks for objects that two engines would share and could write to.
#
# Usage: writable_data.sh NM OBJECT...   Only what is named below may exist: whatever else a block
# writes belongs to its engine, so that engines render at the same time on any threads.
set -euo pipefail

allowed=(
    # References to the personality routine of exceptions and the like.
    'DW\.ref\..*'
    # Written once, by whoever comes first: the compiler guards them, or main has not begun.
    'guard variable for .*'
    'tarquil::default_controller_bytes\(\)::defaults'
    'tarquil::\(anonymous namespace\)::instrument_defaults\(\)::defaults'
    'tarquil::kernel_levels\(\)::levels'
    'tarquil::\(anonymous namespace\)::current' # the kernels; later only by tests, while nothing renders
    'tarquil::pitch_bend_mulfac_table'
    'tarquil::generate_pitch_bend_table\(\)::is_generated'
    'tarquil::shared_waveforms\(\)::store'
    # Atomic: the log's switch, and the numbers of temporary files.
    'tarquil::\(anonymous namespace\)::enabled'
    'tarquil::AtomicFile::open_temporary\(unsigned int\)::last_number'
    # Under its own lock, when a rate is chosen: tables that are only read once they are there.
    'tarquil::shared_polyphase_table\(tarquil::RateRatio const&\)::(mutex|tables)'
    # The standard library's own, atomic: threads that wait for an atomic value, as a renderer's do.
    'std::__detail::__waiter_pool_base::_S_for\(void const\*\)::__w'
    # Set before main begins, or by the first call, and only read from then on.
    'tarquil::\(anonymous namespace\)::NO_MAP'
    'tarquil::power_spectrum\(.*\)::window'
)

nm=$1
shift
[ $# -gt 0 ] || { echo "no objects given" >&2; exit 1; }
patterns=$(printf '%s\n' "${allowed[@]}" | sed -e 's/.*/^&$/')
# The section tells constants with addresses in them (.data.rel.ro) from variables.
found=$("$nm" --demangle --defined-only --format=sysv "$@" |
    awk -F'|' '$NF ~ /^ *(\.data|\.bss|\*COM\*)/ && $NF !~ /^ *\.data\.rel\.ro/ {
        gsub(/^ +| +$/, "", $1); print $1 }' | grep -v -E -f <(echo "$patterns") || true)
[ -z "$found" ] || { echo "writable data that engines share:"; echo "$found"; exit 1; } >&2
