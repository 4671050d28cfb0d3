# The hands and eyes of test-package-windows.sh: uses the installed program. Sourced by it, never run.
# shellcheck shell=bash disable=SC2154

title='Veltra Premium C++ PC Optimizer'
pages=(dashboard cleaner startup proc-watch pc-config network settings logs)
probe_program=$veltra_windows_build/tests/windows/WindowProbe.exe

probe() { timeout 90 wine "$probe_program" "$@"; }
# Windows' path while the development DLLs are needed: by the probe only, never by the program.
start_program() { # start_program FOLDER
    (cd / && exec timeout 300 wine "$1/VeltraOptimizer.exe") >"$(log_file package-windows)" 2>&1 &
    program=$!
}
window_is_shown() {
    local place
    place=$( (wine_development_environment && probe expect "$title" 1100 680 60) | tr -d '\r') || return 1
    IFS='+' read -r _ left top <<<"$place"
    say "The window: $place"
}

# Places in the window, in pixels.
point() { xdotool mousemove $((left + $1)) $((top + $2)); }
click() { point "$1" "$2" && xdotool click 1; }
open_page() { click 60 $((181 + $1 * 62)) && sleep 0.8; }
picture() { timeout 30 import -window root -crop "1100x680+$left+$top" +repage "$pictures/$1.png"; }

every_page_opens() {
    local index
    sleep 2 # the first figures
    for index in "${!pages[@]}"; do
        open_page "$index"
        picture "$((index + 1))-${pages[index]}" || return 1
    done
}
every_page_shows_something() { # a page that stays empty has a few colours, and the same ones as the page before
    local file
    [ "$(find "$pictures" -name '[1-8]-*.png' | wc -l)" -eq 8 ] || return 1
    for file in "$pictures"/[1-8]-*.png; do
        [ "$(identify -format '%k' "$file")" -gt 500 ] || { say "${file##*/} is empty"; return 1; }
    done
    [ "$(sha256sum "$pictures"/[1-8]-*.png | cut -d' ' -f1 | sort -u | wc -l)" -eq 8 ]
}

# The log as it stands on its page, by way of the clipboard.
read_log() {
    open_page 7
    click 650 400
    xdotool key ctrl+a key ctrl+c
    sleep 0.7
    timeout 5 xclip -o -selection clipboard | tr -d '\r'
}
log_says() {
    log_text=$(read_log) || return 1
    grep -qE "^\[[0-9:]{8}\] $1\$" <<<"$log_text" || { say "The log says: $log_text"; return 1; }
}

# Yes is asked for by its letter.
answer_yes() { sleep 1.2 && picture "$1" && xdotool key alt+y && sleep 1.5; }

temp_is_cleaned() {
    local temp
    temp=$(timeout 30 wine winepath -u "$(timeout 30 wine cmd /c 'echo %TEMP%' | tr -d '\r')" | tr -d '\r')
    [[ $temp == "$WINEPREFIX"/* ]] || { say "TEMP is not in the sandbox: $temp"; return 1; }
    mkdir -p "$temp/veltra test/inside"
    touch "$temp/veltra test/inside/a.txt" "$temp/veltra test.tmp" "$user/kept.txt"
    open_page 1
    click 380 161
    answer_yes question-clean
    [ ! -e "$temp/veltra test" ] && [ ! -e "$temp/veltra test.tmp" ] && [ -e "$user/kept.txt" ] && rm "$user/kept.txt"
}
# The victim waits for a window that never comes.
victim_is_ended() {
    cp "$probe_program" "$scratch/VeltraVictim.exe"
    (wine_development_environment && exec timeout 120 wine "$scratch/VeltraVictim.exe" expect 'no such window' 1 1 100) \
        >/dev/null 2>&1 &
    local victim=$!
    open_page 3
    click 500 196
    xdotool type --delay 30 VeltraVictim
    sleep 2.5
    kill -0 "$victim" 2>/dev/null || return 1
    picture found-victim
    # The next reading may take the selection away before the button is reached.
    local tries
    for ((tries = 0; tries < 4; ++tries)); do
        click 300 287
        xdotool sleep 0.1
        click 1035 196
        answer_yes question-end
        ! timeout 3 tail --pid="$victim" -f /dev/null || return 0
    done
    return 1
}
# Where nothing is installed.
portable_program_runs() {
    start_program "$scratch/unzipped/$name"
    window_is_shown && program_closes
}
program_closes() {
    (wine_development_environment && probe close "$title" 30) && wait "$program"
}

use_the_program() {
    start_program "$folder"
    check "the installed program shows its window" window_is_shown
    check "every page opens" every_page_opens
    check "every page shows something (${pictures#"$veltra_root"/})" every_page_shows_something
    check "the log says Ready." log_says 'Ready\.'
    check "Clean Temp empties the temporary folder, and no other" temp_is_cleaned
    check "the log says so" log_says 'Temp cleaned\. Deleted [0-9]+ items\.'
    check "End Task ends the process that was chosen" victim_is_ended
    check "neither installer nor uninstaller touches a program that runs" refuses_while_it_runs "$installer"
    check "it closes with exit code 0" program_closes
}
