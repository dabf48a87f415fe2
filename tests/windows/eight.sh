#!/usr/bin/env bash
# Shows the editors of eight instances that play on a virtual screen: eight.sh HOST
set -euo pipefail
. "$(dirname "$0")/virtual_screen.sh"

"$1" eight
