#!/usr/bin/env bash
# Checks the formatting of every file, and runs clang-tidy on those that changed since they last passed (whichever
# checkout that was in): a stamp per file, with all that it includes, its command and the settings as the key, is kept in the
# cache.
set -euo pipefail
. "$(dirname "$0")/lib.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_test) $(packages_style)
cd "$veltra_root"

mapfile -t sources < <(git ls-files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'benchmarks/*.cpp' 'benchmarks/*.h' \
    'examples/*.cpp' 'examples/*.h')
say "Checking the format of ${#sources[@]} files"
clang-format --dry-run --Werror "${sources[@]}"

configure_and_build dev
stamps=$veltra_cache/tidy
mkdir -p "$stamps"

# A line per compiled file: its name, and the key of everything that clang-tidy sees of it: the settings, its command, and
# the project's files that it consists of, which the build has written down.
tidy_keys() {
    python3 - "$veltra_root" <<'PYTHON'
import hashlib, json, os, re, subprocess, sys
root = sys.argv[1]
build = os.path.join(root, "build/dev")
commands = {entry["file"]: entry["command"] for entry in json.load(open(build + "/compile_commands.json"))}
listing = subprocess.run(["ninja", "-C", build, "-t", "deps"], capture_output=True, text=True, check=True).stdout
contents, settings = {}, open(root + "/.clang-tidy").read()

def digest(path):
    if path not in contents:
        contents[path] = hashlib.sha256(open(path, "rb").read()).hexdigest()
    return contents[path]

consists_of = {} # a file that is compiled for several programs counts once
for block in listing.split("\n\n"):
    parts = [os.path.normpath(os.path.join(build, line.strip())) for line in block.splitlines() if line.startswith(" ")]
    name = next((part for part in parts if part in commands), None)
    if name is not None and not name.startswith(build):
        consists_of.setdefault(name, set()).update(part for part in parts if part.startswith(root + "/") and os.path.exists(part))
for name, parts in consists_of.items():
    command = re.sub(r"^\S*ccache ", "", commands[name]).replace(root, "")
    key = hashlib.sha256((settings + command).encode())
    for part in sorted(parts):
        key.update((os.path.relpath(part, root) + digest(part)).encode())
    print(os.path.relpath(name, root), key.hexdigest()[:32])
PYTHON
}

changed=()
declare -A stamp_of
while read -r file key; do
    stamp_of[$file]=$stamps/$key
    [ -f "$stamps/$key" ] || changed+=("$file")
done < <(tidy_keys)
[ ${#stamp_of[@]} -gt 0 ] || die "the build tells of no file to check"

say "Running clang-tidy on ${#changed[@]} changed files of ${#stamp_of[@]}"
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
