#!/usr/bin/env bash
# Makes the Debian package in build/packages.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package-lib.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_package_debian)
configure_and_build release VeltraOptimizer

name=veltra-optimizer
work=$veltra_root/build/package/debian
tree=$work/tree
docs=$tree/usr/share/doc/$name
architecture=$(dpkg --print-architecture)
package=$veltra_packages/${name}_${veltra_version}_$architecture.deb
# A reserved domain: whoever publishes the package names an address of their own.
maintainer=${VELTRA_MAINTAINER:-Veltra contributors <veltra@example.org>}
released=$(date --utc --rfc-email --date="@$SOURCE_DATE_EPOCH")

rm -rf "$work"
mkdir -p "$docs" "$work/debian" "$veltra_packages"
umask 022
cmake --install "$veltra_root/build/release" --prefix "$tree/usr" >"$(log_file install-debian)"
strip --remove-section=.comment --remove-section=.note "$tree/usr/bin/$name"
gzip -9n "$tree"/usr/share/man/man1/*

{
    echo 'Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/'
    printf '\nFiles: *\nCopyright: 2026 Veltra contributors\nLicense: Expat\n'
    sed -n '5,$ { s/^$/./; s/^/ /; p }' "$veltra_root/LICENSE"
} >"$docs/copyright"
printf '%s (%s) unstable; urgency=medium\n\n  * See changelog.md.\n\n -- %s  %s\n' \
    "$name" "$veltra_version" "$maintainer" "$released" | gzip -9n >"$docs/changelog.gz"
gzip -9nc "$veltra_root/CHANGELOG.md" >"$docs/changelog.md.gz"

# The libraries, as the packages that hold them say; and what is loaded by name: the platform plug-ins.
printf 'Source: %s\n\nPackage: %s\nArchitecture: any\n' "$name" "$name" >"$work/debian/control"
libraries=$(cd "$work" && dpkg-shlibdeps -O "tree/usr/bin/$name" 2>/dev/null | sed -n 's/^shlibs:Depends=//p')
[ -n "$libraries" ] || die "the libraries' packages could not be found"

mkdir "$tree/DEBIAN"
(cd "$tree" && find usr -type f -print0 | LC_ALL=C sort -z | xargs -0 md5sum) >"$tree/DEBIAN/md5sums"
cat >"$tree/DEBIAN/control" <<END
Package: $name
Version: $veltra_version
Section: utils
Priority: optional
Architecture: $architecture
Maintainer: $maintainer
Installed-Size: $(du -sk --apparent-size "$tree/usr" | cut -f1)
Depends: $libraries, libqt6gui6
Recommends: curl
Suggests: qt6-wayland, xdg-utils
Description: system monitor with safe maintenance actions
 Veltra shows memory, disk, processes and hardware in one window, and offers a
 few maintenance actions that stay deliberately safe: cleaning never leaves the
 temporary folder and never follows links, and whatever deletes something asks
 first. There is no background service, no settings file, and no elevation.
END
same_times "$tree"
dpkg-deb --root-owner-group -Zxz --build "$tree" "$package" >/dev/null
say "Made ${package#"$veltra_root"/}: $(stat -c %s "$package") bytes, $(du -sk --apparent-size "$tree/usr" | cut -f1) KiB installed"
