#!/usr/bin/env bash
# Builds and runs all tests.
#   ./test.sh            the tests on this machine
#   ./test.sh --asan     the same with the address and undefined-behaviour sanitizers
#   ./test.sh --tsan     the same with the thread sanitizer
#   ./test.sh --threads  only the tests of what runs on several threads, with the thread sanitizer
#   ./test.sh --windows  the Windows program and its tests, under Wine
set -euo pipefail
. "$(dirname "$0")/scripts/lib.sh"
. "$(dirname "$0")/scripts/display.sh"

preset=dev
targets=()
tests=()
case "${1:-}" in
    '') ;;
    --asan | --tsan) preset=${1#--} ;;
    --threads)
        preset=tsan
        targets=(ProcessSamplerTest ProcessWatcherTest)
        tests=(-R '^(ProcessSamplerTest|ProcessWatcherTest)$')
        ;;
    --windows) exec "$veltra_root/scripts/test-windows.sh" ;;
    *) die "unknown option '$1' (known: --asan, --tsan, --threads, --windows)" ;;
esac

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_test) $(packages_display)
configure_and_build "$preset" "${targets[@]}"
start_display
say "Running the tests ($preset)"
ctest --test-dir "$veltra_root/build/$preset" --output-on-failure -j "$veltra_jobs" "${tests[@]}"
