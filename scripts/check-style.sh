#!/usr/bin/env bash
# Checks the formatting of every file, and runs clang-tidy on those that changed since they last passed (whichever
# checkout that was in): a stamp per file, with its text, all headers and the settings as the key, is kept in the cache.
set -euo pipefail
. "$(dirname "$0")/lib.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_test) $(packages_style)
cd "$veltra_root"

mapfile -t sources < <(git ls-files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'benchmarks/*.cpp' 'benchmarks/*.h' \
    'examples/*.cpp' 'examples/*.h')
say "Checking the format of ${#sources[@]} files"
clang-format --dry-run --Werror "${sources[@]}"

[ -f build/dev/compile_commands.json ] || configure_and_build dev
stamps=$veltra_cache/tidy
mkdir -p "$stamps"
common=$(git ls-files '*.h' '*.clang-tidy' 'CMakeLists.txt' 'cmake/*' | xargs sha256sum | sha256sum)

changed=()
declare -A stamp_of
while read -r file; do
    [ -n "$file" ] || continue
    stamp=$stamps/$( (echo "$common $file" && cat "$file") | sha256sum | cut -c1-32)
    stamp_of[$file]=$stamp
    [ -f "$stamp" ] || changed+=("$file")
done < <(git ls-files 'src/*.cpp' 'tests/*.cpp' 'benchmarks/*.cpp' 'examples/*.cpp' | while read -r file; do
    grep -qF "\"$veltra_root/$file\"" build/dev/compile_commands.json && echo "$file" || true
done)

say "Running clang-tidy on ${#changed[@]} changed files"
tidy_one() {
    local file=$1 stamp=$2
    if clang-tidy -p build/dev --quiet "$file" >"$stamp.log" 2>/dev/null; then
        mv "$stamp.log" "$stamp"
    else
        cat "$stamp.log"
        rm -f "$stamp.log"
        return 1
    fi
}
export -f tidy_one
for file in "${changed[@]}"; do
    printf '%s\0%s\0' "$file" "${stamp_of[$file]}"
done | xargs -0 -r -n 2 -P "$veltra_jobs" bash -c 'tidy_one "$0" "$1"' || die "clang-tidy found something"
