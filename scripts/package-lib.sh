# What the packages have in common. Sourced after lib.sh, never run.
# shellcheck shell=bash

veltra_packages=$veltra_root/build/packages

# The version's one home is the project() call.
veltra_version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' "$veltra_root/CMakeLists.txt")
[ -n "$veltra_version" ] || die "CMakeLists.txt names no version"

# Every file in a package bears the time of the last change of the source, so that the same source makes the same package.
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -C "$veltra_root" log -1 --format=%ct 2>/dev/null || date +%s)}
export SOURCE_DATE_EPOCH

veltra_checks_failed=0
# check DESCRIPTION COMMAND...: one line a check; package_checks_done tells whether all passed.
check() {
    local description=$1
    shift
    if "$@"; then
        say "passed: $description"
    else
        veltra_checks_failed=$((veltra_checks_failed + 1))
        say "FAILED: $description"
    fi
}
package_checks_done() {
    [ "$veltra_checks_failed" -eq 0 ] || die "$veltra_checks_failed checks of the package failed"
}

same_times() { find "$1" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +; }
