#!/usr/bin/env bash
# Times the editor's first picture and the wheel's way to the screen: response.sh HOST [N]
#
# HOST: response_host.cpp; it looks itself at how many idle calls they take.
set -euo pipefail
. "$(dirname "$0")/virtual_screen.sh"

"$1" "${2:-5}"
