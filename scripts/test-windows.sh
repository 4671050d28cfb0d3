#!/usr/bin/env bash
# Builds the Windows program and tests it under Wine on a virtual screen: first every test of the build, then the program
# itself, started from a folder that holds all it needs, as a user would start it.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/display.sh"
. "$(dirname "$0")/wine.sh"

title="Veltra Premium C++ PC Optimizer"
width=1100
height=680
deployment=$veltra_windows_build/deploy
artifacts=$veltra_windows_build/artifacts
passed=0
failed=0

count() { # count RESULT DESCRIPTION
    if [ "$1" -eq 0 ]; then
        passed=$((passed + 1))
        say "passed: $2"
    else
        failed=$((failed + 1))
        say "FAILED: $2"
    fi
}
check() { # check DESCRIPTION COMMAND...
    local description=$1 result=0
    shift
    "$@" || result=$?
    count "$result" "$description"
}

# Under Wine each test gets a second chance, which the log shows. Its console server may hang when its program has ended, about
# once in many thousand programs, and ctest then waits for it to the test's time limit; and whatever else this machine does
# slows down the starting of programs, which some tests time, several times as much as natively.
run_tests() {
    local log summary
    log=$(log_file ctest-windows)
    say "Running the tests of the build"
    timeout 2400 ctest --test-dir "$veltra_windows_build" --output-on-failure --no-tests=error \
        --repeat until-pass:2 | tee "$log" || true
    summary=$(sed -n 's/.*tests passed, \([0-9]*\) tests failed out of \([0-9]*\).*/\1 \2/p' "$log")
    [ -n "$summary" ] || die "the tests did not come to their end"
    failed=$((failed + ${summary% *}))
    passed=$((passed + ${summary#* } - ${summary% *}))
}

probe() { timeout 90 "$veltra_root/scripts/wine-run.sh" "$veltra_windows_build/tests/windows/WindowProbe.exe" "$@"; }

# Nothing of the environment helps the program to find its parts, not even the working directory.
start_program() {
    say "Starting ${deployment#"$veltra_root"/}/VeltraOptimizer.exe"
    (cd / && exec timeout 180 wine "$deployment/VeltraOptimizer.exe") >"$(log_file smoke-windows)" 2>&1 &
    program=$!
}
window_is_as_it_should_be() {
    place=$(probe expect "$title" "$width" "$height" 60) || return 1
    say "The window: $place"
}
# The first figures and the first frames are there within two seconds.
take_screenshot() {
    mkdir -p "$artifacts"
    sleep 2
    timeout 30 import -window root -crop "${place:-${width}x$height+0+0}" +repage "$artifacts/dashboard.png"
}
# A window that stays empty has one colour, or a few.
screenshot_shows_something() {
    [ "$(identify -format '%k' "$artifacts/dashboard.png")" -gt 500 ]
}
program_ends_with_zero() {
    local result=0
    wait "$program" || result=$?
    [ "$result" -eq 0 ] || { say "The exit code is $result"; return 1; }
}
nothing_is_left() {
    wine_stop
    local left
    left=$(wine_processes)
    [ -z "$left" ] || { say "Still running: $left"; return 1; }
}

smoke_test() {
    deploy_windows "$deployment"
    say "Deployed $(find "$deployment" -type f | wc -l) files, $(du -sh "$deployment" | cut -f1)"
    start_program
    check "the window is called \"$title\" and measures $width x $height" window_is_as_it_should_be
    check "a screenshot is taken (${artifacts#"$veltra_root"/}/dashboard.png)" take_screenshot
    check "the window is not empty" screenshot_shows_something
    check "the window closes when asked to" probe close "$title" 30
    check "the program ends with exit code 0" program_ends_with_zero
    check "no process is left behind" nothing_is_left
}

clean_up() {
    wine_stop
    stop_display
}

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_windows) $(packages_wine) $(packages_display)
configure_and_build windows

start_display 2400x1500 # room for windows at twice their size
start_compositor
wine_environment
trap clean_up EXIT
wine_prepare
wine_keep_running
run_tests
smoke_test
echo "$passed passed, $failed failed"
[ "$failed" -eq 0 ]
