#!/usr/bin/env bash
# Builds the fuzzers and runs each for some seconds: scripts/fuzz.sh [SECONDS], by default 5. Fails when one finds something;
# the input that did it is then kept below build/fuzz/fuzz.
set -euo pipefail
. "$(dirname "$0")/lib.sh"

seconds=${1:-5}
[[ $seconds =~ ^[1-9][0-9]*$ ]] || die "'$seconds' is no number of seconds"
# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_style)
export VELTRA_CMAKE_ARGS="${VELTRA_CMAKE_ARGS:-} -DVELTRA_FUZZ_SECONDS=$seconds"
configure_and_build fuzz fuzzers
# The build may have been configured with another time.
cmake -DVELTRA_FUZZ_SECONDS="$seconds" "$veltra_root/build/fuzz" >"$(log_file configure-fuzz)"
say "Running each fuzzer for $seconds s"
ctest --test-dir "$veltra_root/build/fuzz" -L fuzz --output-on-failure --no-tests=error --timeout $((seconds + 60)) -j "$veltra_jobs"
