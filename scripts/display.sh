# A virtual display with a compositor. Sourced after lib.sh.
# shellcheck shell=bash

# start_display [WIDTHxHEIGHT]: starts Xvfb on a free display number and exports DISPLAY. Ends with the script.
start_display() {
    command -v Xvfb >/dev/null || die "no display, and no Xvfb to make one: please install the package 'xvfb'"
    local number_file
    number_file=$(mktemp "$(scratch_folder)/display.XXXXXX")
    Xvfb -displayfd 3 -noreset -screen 0 "${1:-1280x800}x24" -nolisten tcp 3>"$number_file" 2>/dev/null &
    display_pid=$!
    trap stop_display EXIT
    local tries
    for ((tries = 0; tries < 100; ++tries)); do
        [ -s "$number_file" ] && break
        sleep 0.05
    done
    [ -s "$number_file" ] || die "the virtual display did not start"
    DISPLAY=:$(cat "$number_file")
    export DISPLAY
    rm -f "$number_file"
}

# start_compositor: blends translucent windows, as every desktop does.
start_compositor() {
    command -v picom >/dev/null || die "no compositor for the virtual display: please install the package 'picom'"
    picom --backend xrender --config /dev/null >/dev/null 2>&1 &
    compositor_pid=$!
}

stop_display() {
    [ -z "${compositor_pid:-}" ] || kill "$compositor_pid" 2>/dev/null || true
    [ -z "${display_pid:-}" ] || kill "$display_pid" 2>/dev/null || true
    wait 2>/dev/null || true
}
