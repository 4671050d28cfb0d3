#!/usr/bin/env bash
# Builds the program and starts it. Where there is no display, a virtual one is used: every page is opened, a picture of
# each is saved, and their paths are printed.
set -euo pipefail
. "$(dirname "$0")/scripts/lib.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_build)
configure_and_build release VeltraOptimizer
program=$veltra_root/build/release/src/VeltraOptimizer

if [ -n "${WAYLAND_DISPLAY:-}" ]; then
    ensure_packages qt6-wayland
fi
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    say "Starting Veltra"
    exec "$program" "$@"
fi
say "No display: using a virtual one"
# shellcheck disable=SC2046
ensure_packages $(packages_display)
exec "$veltra_root/scripts/screenshots.sh" "$program" "$veltra_root/build/screenshots"
