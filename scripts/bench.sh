#!/usr/bin/env bash
# Builds the benchmarks and prints their tables. They measure; nothing passes or fails by them.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/display.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_display)
configure_and_build bench
start_display
start_compositor
say "Start-up"
"$veltra_root/build/bench/benchmarks/StartBench"
say "Frames and ticks"
"$veltra_root/build/bench/benchmarks/FrameBench"
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
