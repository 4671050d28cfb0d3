#!/usr/bin/env bash
# Runs all tests of this system with counters in the program (gcc, preset `coverage`), and prints how much of src/ they
# reach: a table per folder, then the lines that no test reaches. scripts/coverage.sh [--again]: with what was counted last.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/display.sh"

[ $# -eq 0 ] || [ "$*" = --again ] || die "unknown option '$*' (known: --again)"
# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_test) $(packages_display) $(packages_coverage)
build=$veltra_root/build/coverage
result=0
if [ $# -eq 0 ]; then
    configure_and_build coverage
    # Without those of earlier runs, and of files that are gone.
    find "$build" -name '*.gcda' -delete
    start_display 1280x800
    say "Running the tests (coverage)"
    ctest --test-dir "$build" --output-on-failure -j "$veltra_jobs" || result=$?
fi
[ -d "$build" ] || die "nothing was counted yet"

say "Counting"
counted=$build/coverage.json
# What a compiler adds for exceptions that may pass through is no branch of ours.
gcovr --root "$veltra_root" --object-directory "$build" --filter "$veltra_root/src/" --exclude-throw-branches \
    --exclude-unreachable-branches --gcov-ignore-parse-errors -j "$veltra_jobs" --json "$counted" "$build/src" \
    2>"$(log_file coverage)" || die "gcovr failed: see $(log_file coverage)"
python3 -B "$veltra_root/scripts/coverage.py" "$veltra_root" "$counted"
[ "$result" -eq 0 ] || die "tests failed: what they would have reached may be missing"
