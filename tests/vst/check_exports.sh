#!/bin/sh
# A module exports its entry points and nothing else: check_exports.sh MODULE "NAME ..."
names=$(nm -D --defined-only "$1" | awk '{ print $3 }' | LC_ALL=C sort | xargs)
[ "$names" = "$2" ] || { echo "exported: $names" >&2; exit 1; }
