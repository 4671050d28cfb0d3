#!/usr/bin/env bash
# Makes the Windows packages in build/packages: a portable archive and an installer, of the same files.
# VELTRA_SIGN_COMMAND names a command that signs the file it is given as its last argument, in place.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package-lib.sh"
. "$(dirname "$0")/wine.sh"

# shellcheck disable=SC2046
ensure_packages $(packages_build) $(packages_windows) $(packages_package_windows)
configure_and_build windows VeltraOptimizer WindowProbe

name=VeltraOptimizer-$veltra_version-windows-x64
work=$veltra_root/build/package/windows
stage=$work/$name
archive=$veltra_packages/$name-portable.zip
installer=$veltra_packages/$name-setup.exe
limit_mib=40

# Windows' own editor shows it as it is only with its line ends.
copy_text() { sed 's/$/\r/' "$1" >"$2"; }

# Texts of what is inside, as the packages that it comes from give them.
copy_notices() {
    local licenses=$stage/licenses
    mkdir "$licenses"
    copy_text "$veltra_root/LICENSE" "$stage/LICENSE.txt"
    copy_text "$veltra_root/THIRD-PARTY-NOTICES.md" "$stage/THIRD-PARTY-NOTICES.txt"
    copy_text "$veltra_root/CHANGELOG.md" "$stage/CHANGELOG.txt"
    copy_text /usr/share/common-licenses/LGPL-3 "$licenses/LGPL-3.txt"
    copy_text /usr/share/common-licenses/GPL-3 "$licenses/GPL-3.txt"
    copy_text /usr/share/doc/qt6-base-dev/copyright "$licenses/Qt.txt"
    copy_text /usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright "$licenses/GCC.txt"
    copy_text /usr/share/doc/mingw-w64-common/copyright "$licenses/MinGW-w64.txt"
}

sign() {
    if [ -z "${VELTRA_SIGN_COMMAND:-}" ]; then
        say "NOT SIGNED: $(basename "$1") (VELTRA_SIGN_COMMAND names no signing command)"
        return
    fi
    say "Signing $(basename "$1")"
    bash -c "$VELTRA_SIGN_COMMAND \"\$1\"" sign "$1" || die "$(basename "$1") could not be signed"
}

# The installer's list: every file by name, for the way in, for the way out, and for what must not be there before.
installer_list() {
    local folder file
    cd "$stage"
    echo '!macro InstallFiles'
    while read -r folder; do
        printf '    SetOutPath "%s"\n' "\$INSTDIR${folder:+\\$folder}"
        while read -r file; do
            printf '    File "%s"\n' "$stage/${folder:+$folder/}$file"
        done < <(find "./$folder" -maxdepth 1 -type f -printf '%f\n' | LC_ALL=C sort)
    done < <(find . -type d -printf '%P\n' | LC_ALL=C sort)
    echo '!macroend'
    echo '!macro RemoveFiles'
    find . -type f -printf '%P\n' | LC_ALL=C sort | sed 's|/|\\|g; s|.*|    Delete "$INSTDIR\\&"|'
    find . -mindepth 1 -type d -printf '%P\n' | LC_ALL=C sort -r | sed 's|/|\\|g; s|.*|    RMDir "$INSTDIR\\&"|'
    echo '!macroend'
    echo '!macro GotoIfAnyExists LABEL'
    find . -type f -printf '%P\n' | LC_ALL=C sort | sed 's|/|\\|g; s|.*|    IfFileExists "$INSTDIR\\&" ${LABEL}|'
    echo '!macroend'
    echo "!define INSTALLED_KIB $(du -sk --apparent-size . | cut -f1)"
}

make_archive() {
    rm -f "$archive"
    (cd "$work" && find "$name" | LC_ALL=C sort | TZ=UTC zip -X -9 -q "$archive" -@)
}
make_installer() {
    local signing=()
    if [ -n "${VELTRA_SIGN_COMMAND:-}" ]; then
        printf '#!/bin/sh\nexec %s "$1"\n' "$VELTRA_SIGN_COMMAND" >"$work/sign.sh"
        chmod +x "$work/sign.sh"
        signing=(-DSIGN="$work/sign.sh")
    fi
    (installer_list) >"$work/files.nsh"
    (cd "$veltra_root/packaging/windows" && makensis -V2 -NOCD -DVERSION="$veltra_version" -DPUBLISHER=Veltra \
        -DPRODUCT='Veltra Premium C++ PC Optimizer' -DSTAGE="$stage" -DFILES="$work/files.nsh" -DOUTPUT="$installer" \
        "${signing[@]}" veltra.nsi) || die "the installer could not be built"
}

rm -rf "$work"
mkdir -p "$work" "$veltra_packages"
deploy_windows "$stage"
x86_64-w64-mingw32-strip --strip-unneeded "$stage/VeltraOptimizer.exe"
copy_notices
sign "$stage/VeltraOptimizer.exe"
same_times "$stage"
size_kib=$(du -sk --apparent-size "$stage" | cut -f1)
[ "$size_kib" -lt $((limit_mib * 1024)) ] || die "unpacked, the program takes $size_kib KiB: more than $limit_mib MiB"
make_archive
make_installer
sign "$installer"
for file in "$archive" "$installer"; do
    say "Made ${file#"$veltra_root"/}: $(stat -c %s "$file") bytes ($size_kib KiB unpacked)"
done
