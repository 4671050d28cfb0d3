#!/usr/bin/env bash
# Works with the real window for so many seconds (1200) in a sandbox on a virtual screen, beside a storm of short-lived
# processes, and prints a table: scripts/soak.sh [SECONDS]. Fails on a crash, a leak, a hole in the log and when the window
# hangs.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/display.sh"

seconds=${1:-1200}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || die "'$seconds' is no number of seconds"
# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_test) $(packages_display)
configure_and_build dev Soak
sandbox=$(mktemp -d "$(scratch_folder)/soak.XXXXXX")
clean_up() {
    stop_display
    rm -rf "$sandbox"
}
start_display
trap clean_up EXIT
start_compositor

# Nothing of the machine can be started from the window: PATH has stand-ins, and no more.
mkdir -p "$sandbox"/{home,data,temp,runtime,bin,small}
chmod 700 "$sandbox/runtime"
touch "$sandbox/veltra-soak-sandbox"
for name in resolvectl nmcli networkctl xdg-open; do
    printf '#!/bin/sh\nexit 0\n' >"$sandbox/bin/$name"
done
printf '#!/bin/sh\nexit 1\n' >"$sandbox/bin/curl"
chmod +x "$sandbox"/bin/*

sandboxed=(env -i DISPLAY="$DISPLAY" LC_ALL=C.UTF-8 PATH="$sandbox/bin" HOME="$sandbox/home" TEMP="$sandbox/temp"
    TMPDIR="$sandbox/temp" XDG_DATA_HOME="$sandbox/data" XDG_CONFIG_HOME="$sandbox/home" XDG_CACHE_HOME="$sandbox/home"
    XDG_RUNTIME_DIR="$sandbox/runtime" VELTRA_SOAK_DISPLAY="$display_pid $compositor_pid"
    "$veltra_root/build/dev/tests/soak/Soak" "$seconds")
# Volumes that can be filled, one of them the temporary folder: mounted in a namespace of their own, they go with the program.
small=(unshare --mount sh -c 'for folder in small temp; do
    mount -t tmpfs -o size=1m veltra-soak "$0/$folder" || exit 1
    done; exec "$@"' "$sandbox")
say "Soak run of $seconds s"
result=0
if [ "$(id -u)" -eq 0 ] && "${small[@]}" true 2>/dev/null; then
    "${small[@]}" "${sandboxed[@]}" "$sandbox/small" || result=$?
else
    say "No small volume can be mounted here: the disk that fills up is left out."
    "${sandboxed[@]}" || result=$?
fi
[ "$result" -lt 128 ] || die "the window crashed (signal $((result - 128)))"
[ "$result" -eq 0 ] || die "something is wrong: see above"
