#!/usr/bin/env bash
# Looks for symbols of the kernels' objects that the linker would share with other objects.
#
# Usage: kernel_symbols.sh NM OBJECT...   A weak symbol outside the level's own namespace may be
# kept for the whole program although it holds instructions that the machine lacks. References to
# the personality routine of exceptions and descriptions of types, which a sanitizer asks for, are data.
set -euo pipefail

nm=$1
shift
[ $# -gt 0 ] || { echo "no objects given" >&2; exit 1; }
shared=$("$nm" --demangle --defined-only "$@" | grep -E ' [VWu] ' |
    grep -vE ' [VWu] ((.* )?tarquil::kernels_[a-z0-9]+::|DW\.ref\.|typeinfo )' || true)
[ -z "$shared" ] || { echo "shared symbols:"; echo "$shared"; exit 1; } >&2
