#!/usr/bin/env bash
# The description as LV2's own tools see it: validate.sh BUNDLE
set -euo pipefail
lv2_validate "$1"/*.ttl
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/lv2"
ln -s "$(readlink -f "$1")" "$work/lv2/tarquil.lv2"
export LV2_PATH=$work/lv2:/usr/lib/lv2
lv2ls | grep -qx urn:tarquil:synth
lv2info urn:tarquil:synth >"$work/info" 2>&1
if grep -i error "$work/info"; then exit 1; fi
grep -q 'Has latency: *yes' "$work/info"
