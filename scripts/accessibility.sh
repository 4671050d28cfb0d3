#!/usr/bin/env bash
# Starts the program in a sandbox on a virtual screen and looks at it as assistive technology does, over the accessibility
# bus: names, roles, the way of Tab through every page, and the contrast of all text. Prints a table; fails with a list.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/display.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_display) $(packages_accessibility)
configure_and_build release VeltraOptimizer
sandbox=$(mktemp -d "$(scratch_folder)/accessibility.XXXXXX")
# The bus makes its socket in there, whose path the system limits to 107 characters.
runtime=$sandbox/run
[ ${#runtime} -le 88 ] || runtime=$(mktemp -d /dev/shm/veltra.XXXXXX)
clean_up() {
    stop_display
    rm -rf "$sandbox" "$runtime"
}
start_display 1280x800
trap clean_up EXIT
start_compositor

mkdir -p "$sandbox"/{home,data,temp,bin} "$runtime"
chmod 700 "$runtime"
# Whatever would ask the web fails at once.
for asker in curl powershell; do
    ln -s "$(command -v false)" "$sandbox/bin/$asker"
done
log=$(log_file accessibility)
result=0
# The bus's servers talk, too: what they say goes to the log. The system's own Python: the one that the packages are installed for.
env -u DBUS_SESSION_BUS_ADDRESS -u AT_SPI_BUS_ADDRESS -u WAYLAND_DISPLAY LC_ALL=C.UTF-8 PATH="$sandbox/bin:$PATH" \
    HOME="$sandbox/home" TEMP="$sandbox/temp" TMPDIR="$sandbox/temp" XDG_DATA_HOME="$sandbox/data" \
    XDG_CONFIG_HOME="$sandbox/home" XDG_CACHE_HOME="$sandbox/home" XDG_RUNTIME_DIR="$runtime" \
    GSETTINGS_BACKEND=memory QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 \
    dbus-run-session -- /usr/bin/python3 -B "$veltra_root/scripts/accessibility/check.py" \
    "$veltra_root/build/release/src/VeltraOptimizer" 3>&1 >"$log" 2>&1 || result=$?
case $result in
    0) ;;
    2) die "accessibility: see above" ;;
    *) tail -n 20 "$log" >&2 && die "the check did not come to its end ($result)" ;;
esac
