#!/usr/bin/env bash
# Builds the benchmarks and prints their tables. They measure; nothing passes or fails by them.
#   scripts/bench.sh            all of them
#   scripts/bench.sh --frames   only what frames cost, and the program at rest, as JSON too
#   scripts/bench.sh --memory   the same, with ten minutes for the resident size
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/display.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_display)
ensure_packages $(packages_bench)
configure_and_build bench
start_display 2400x1500 # room for the window at twice its size
start_compositor
openbox --config-file /dev/null >/dev/null 2>&1 & # minimises windows

measure_frames() {
    say "Frames, and the program at rest"
    "$veltra_root/build/bench/benchmarks/FrameBench" "$veltra_root/build/bench/frames.json" "$@"
    say "As JSON: $veltra_root/build/bench/frames.json"
}
case "${1:-}" in
    '') ;;
    --frames) measure_frames; exit ;;
    --memory) measure_frames --with-memory; exit ;;
    *) die "unknown option '$1' (known: --frames, --memory)" ;;
esac
say "Start-up"
"$veltra_root/build/bench/benchmarks/StartBench"
measure_frames
say "Toasts"
"$veltra_root/build/bench/benchmarks/ToastBench"
say "Log"
"$veltra_root/build/bench/benchmarks/LogBench"
say "Readings of all processes, against top"
"$veltra_root/build/bench/benchmarks/SamplerBench"
say "The process table"
"$veltra_root/build/bench/benchmarks/ProcessTableBench"
say "PC Config"
"$veltra_root/build/bench/benchmarks/PcConfigBench"
say "Cleaning"
# In memory where possible: a disk's own work would hide the difference.
shared=/dev/shm
[ -w "$shared" ] || shared=$(scratch_folder)
folder=$(mktemp -d "$shared/veltra-clean.XXXXXX")
TEMP=$folder TMPDIR=$folder "$veltra_root/build/bench/benchmarks/CleanBench"
rm -rf "$folder"
