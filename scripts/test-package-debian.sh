#!/usr/bin/env bash
# Tests the Debian package: what the tools say about it, then installed into this system, started on a virtual display,
# and removed. Needs the right to install packages.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package-lib.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_package_debian) $(packages_display)
name=veltra-optimizer
package=$veltra_packages/${name}_${veltra_version}_$(dpkg --print-architecture).deb
unpacked=$veltra_root/build/package/debian/unpacked
pictures=$veltra_packages/screenshots/debian
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo -n)

lintian_is_content() { lintian --allow-root --fail-on error --tag-display-limit 0 "$package"; }
metainfo_is_valid() { appstreamcli validate --no-net "$unpacked"/usr/share/metainfo/*.xml; }
desktop_entry_is_valid() { desktop-file-validate "$unpacked"/usr/share/applications/*.desktop; }
manual_is_readable() {
    local warnings
    warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$unpacked/usr/share/man/man1/$name.1.gz" 2>&1 >/dev/null)
    [ -z "$warnings" ] || { echo "$warnings"; return 1; }
}
program_is_hardened() { # position-independent, relocations read-only before the start, no executable stack, checks
    local dump wanted
    dump=$(readelf -Wdlhs "$unpacked/usr/bin/$name")
    for wanted in 'Type: *DYN' 'FLAGS_1.*NOW.*PIE' GNU_RELRO 'GNU_STACK.* RW ' __stack_chk_fail; do
        grep -q "$wanted" <<<"$dump" || { say "Missing: $wanted"; return 1; }
    done
}
every_file_belongs() { dpkg -L "$name" | grep '^/usr/.*veltra' | while read -r file; do [ -e "$file" ] || exit 1; done; }
pages_open() { "$veltra_root/scripts/screenshots.sh" "/usr/bin/$name" "$pictures"; }
pictures_show_something() { # a page that stays empty has a few colours
    local picture
    [ "$(find "$pictures" -name '*.png' | wc -l)" -eq 8 ] || return 1
    for picture in "$pictures"/*.png; do
        [ "$(identify -format '%k' "$picture")" -gt 500 ] || return 1
    done
}
# apt, not dpkg: the dependencies must be found by name.
install_package() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends --reinstall \
        --allow-downgrades "$package" >"$(log_file apt-install)" 2>&1
}
remove_package() { "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive dpkg --purge "$name" >"$(log_file dpkg-purge)" 2>&1; }
nothing_is_left() {
    ! is_installed "$name" || return 1
    while read -r file; do
        [[ $file != */ ]] || continue
        [ ! -e "/${file#./}" ] || { say "Left: /${file#./}"; return 1; }
    done < <(dpkg-deb --fsys-tarfile "$package" | tar -t)
    [ ! -e "/var/lib/dpkg/info/$name.list" ]
}

! is_installed "$name" || die "$name is installed on this system; its test would remove it"
rm -rf "$unpacked" "$pictures"
dpkg-deb -x "$package" "$unpacked"
check "lintian has no errors" lintian_is_content
check "the AppStream metainfo is valid" metainfo_is_valid
check "the desktop entry is valid" desktop_entry_is_valid
check "the manual page is formatted without a warning" manual_is_readable
check "the program is hardened" program_is_hardened
check "the package can be installed" install_package
check "every file is in its place" every_file_belongs
check "the installed program starts, every page opens, it ends with 0" pages_open
check "every page shows something (${pictures#"$veltra_root"/})" pictures_show_something
check "the package can be removed" remove_package
check "nothing of it is left" nothing_is_left
package_checks_done
