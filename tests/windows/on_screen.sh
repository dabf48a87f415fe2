#!/usr/bin/env bash
# Runs a host on a virtual screen that looks itself at what it sees: on_screen.sh HOST ARGUMENT ...
set -euo pipefail
. "$(dirname "$0")/virtual_screen.sh"

"$@"
