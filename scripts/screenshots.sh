#!/usr/bin/env bash
# screenshots.sh PROGRAM FOLDER: runs the program on a virtual display the way a user would, with the mouse: opens every
# page, saves a picture of each, closes the window, and ends with the program's exit code.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/display.sh"

program=$1
folder=$2
pages=(dashboard cleaner startup proc-watch pc-config network settings logs)
title='Veltra Premium C++ PC Optimizer'

# Places in the window, in pixels: the sidebar's buttons stand 62 apart, the close button in the title bar's corner.
button_x=60 first_button_y=181 button_step=62
close_x=1053 close_y=43
settle=0.26 # longer than a page's entrance

mkdir -p "$folder"
start_display
start_compositor
# A trial run touches nobody's folders: everything that a program may write to lies in a sandbox.
sandbox=$(mktemp -d "$(scratch_folder)/screenshots.XXXXXX")
raw=$sandbox/raw
mkdir -m 700 "$raw" "$sandbox"/{home,data,temp,runtime,bin}
# Nor the web: whatever would ask it fails at once.
for asker in curl powershell; do
    ! command -v "$asker" >/dev/null || ln -s "$(command -v false)" "$sandbox/bin/$asker"
done
pictures=() converters=()
cleanup() {
    rm -rf "$sandbox"
    stop_display
}
trap cleanup EXIT

started=$(date +%s%N)
env HOME="$sandbox/home" XDG_DATA_HOME="$sandbox/data" XDG_RUNTIME_DIR="$sandbox/runtime" \
    TEMP="$sandbox/temp" TMPDIR="$sandbox/temp" PATH="$sandbox/bin:$PATH" "$program" &
program_pid=$!
window=$(timeout 20 xdotool search --sync --onlyvisible --name "^${title//+/\\+}$" | head -n 1) \
    || die "the window did not appear"
say "Window shown after $((($(date +%s%N) - started) / 1000000)) ms"
eval "$(xdotool getwindowgeometry --shell "$window")" # X, Y, WIDTH, HEIGHT

sleep 0.3 # the first figures come after 80 ms, the sidebar unfolds meanwhile
for index in "${!pages[@]}"; do
    xdotool mousemove $((X + button_x)) $((Y + first_button_y + index * button_step)) click 1
    sleep "$settle"
    xwd -root -silent -out "$raw/$index.xwd"
    picture=$folder/$((index + 1))-${pages[index]}.png
    convert "$raw/$index.xwd" -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" +repage -depth 8 -quality 15 "$picture" &
    pictures+=("$picture")
    converters+=($!)
done
wait "${converters[@]}" || die "a picture could not be saved"
printf '%s\n' "${pictures[@]}"

xdotool mousemove $((X + close_x)) $((Y + close_y)) click 1
code=0
timeout 10 tail --pid="$program_pid" -f /dev/null || die "the window did not close"
wait "$program_pid" || code=$?
say "Closed with exit code $code"
exit "$code"
