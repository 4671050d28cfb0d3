#!/usr/bin/env bash
# Builds the packages and tests what it built; they lie in build/packages with their SHA-256 sums.
#   ./package.sh             all packages
#   ./package.sh --debian    only the Debian package
#   ./package.sh --windows   only the installer and the portable archive for Windows
#   ./package.sh --no-tests  builds without testing; may be combined with the others
# VELTRA_SIGN_COMMAND names a command that signs the Windows file it is given; VELTRA_MAINTAINER is the Debian package's
# "NAME <ADDRESS>".
set -euo pipefail
. "$(dirname "$0")/scripts/lib.sh"
. "$(dirname "$0")/scripts/package-lib.sh"

kinds=()
tested=yes
for option in "$@"; do
    case $option in
        --debian | --windows) kinds+=("${option#--}") ;;
        --no-tests) tested=no ;;
        *) die "unknown option '$option' (known: --debian, --windows, --no-tests)" ;;
    esac
done
[ ${#kinds[@]} -gt 0 ] || kinds=(debian windows)

mkdir -p "$veltra_packages"
rm -f "$veltra_packages"/SHA256SUMS
for kind in "${kinds[@]}"; do
    "$veltra_root/scripts/package-$kind.sh"
    [ "$tested" = no ] || "$veltra_root/scripts/test-package-$kind.sh"
done
cd "$veltra_packages"
find . -maxdepth 1 -type f -name "*$veltra_version*" -printf '%P\n' | LC_ALL=C sort | xargs sha256sum >SHA256SUMS
sha256sum --check --quiet SHA256SUMS
say "Packages in ${veltra_packages#"$veltra_root"/}, $([ "$tested" = yes ] && echo tested || echo 'NOT TESTED'):"
cat SHA256SUMS
