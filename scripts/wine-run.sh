#!/usr/bin/env bash
# wine-run.sh PROGRAM [ARGUMENT...]: runs a program of the Windows build in the Wine sandbox; ctest uses it for every test.
# Its exit code is the program's. Without a display it gets a virtual one.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/display.sh"
. "$(dirname "$0")/wine.sh"

run=(exec wine "$@")
if [ -z "${DISPLAY:-}" ]; then
    start_display 1280x800
    start_compositor
    run=(wine "$@") # this shell stays to end the display
fi
wine_prepare >&2
wine_development_environment
"${run[@]}"
