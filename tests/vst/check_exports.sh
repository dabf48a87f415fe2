#!/bin/sh
# The module exports its two entry points and nothing else.
names=$(nm -D --defined-only "$1" | awk '{ print $3 }' | LC_ALL=C sort | xargs)
[ "$names" = "VSTPluginMain main" ] || { echo "exported: $names" >&2; exit 1; }
