#!/usr/bin/env bash
# Tests the Windows packages under Wine, in a Windows of their own: installs silently, uses the program with mouse and
# keyboard as its owner would, uninstalls silently, and looks for what is left.
set -euo pipefail
. "$(dirname "$0")/lib.sh"
. "$(dirname "$0")/package-lib.sh"
. "$(dirname "$0")/display.sh"
. "$(dirname "$0")/wine.sh"
. "$(dirname "$0")/package-windows-hands.sh"
veltra_wine=$veltra_root/build/wine-package

name=VeltraOptimizer-$veltra_version-windows-x64
stage=$veltra_root/build/package/windows/$name
installer=$veltra_packages/$name-setup.exe
archive=$veltra_packages/$name-portable.zip
uninstaller=UninstallVeltra.exe
pictures=$veltra_packages/screenshots/windows
key='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\VeltraOptimizer'

is_hardened() { # random addresses from all 64 bits, no executable data
    local flags
    flags=$(x86_64-w64-mingw32-objdump -p "$1" | sed -n 's/^DllCharacteristics\s*//p')
    [ $((0x$flags & 0x160)) -eq $((0x160)) ] || { say "$(basename "$1"): $flags"; return 1; }
}
all_are_hardened() {
    local file
    while read -r file; do
        is_hardened "$file" || return 1
    done < <(find "$stage" "$installer" -name '*.exe' -o -name '*.dll')
    # The stack's protector is part of the program.
    grep -qa 'stack smashing detected' "$stage/VeltraOptimizer.exe"
}
archive_is_the_stage() {
    rm -rf "$scratch/unzipped"
    unzip -q "$archive" -d "$scratch/unzipped" && diff -r "$scratch/unzipped/$name" "$stage"
}

install_silently() { timeout 120 wine "$installer" /S; }
files_are_installed() { [ "$(diff -rq "$stage" "$folder")" = "Only in $folder: $uninstaller" ]; }
registry_value() { timeout 30 wine reg query "$key" /v "$1" 2>/dev/null | tr -d '\r' | sed -n 's/.*REG_[A-Z]* *//p'; }
apps_entry_is_right() {
    [ "$(registry_value DisplayVersion)" = "$veltra_version" ] && [ "$(registry_value Publisher)" = Veltra ] \
        && [ "$(registry_value DisplayName)" = "$title" ] \
        && [ "$(registry_value InstallLocation)" = "$(timeout 30 wine winepath -w "$folder" | tr -d '\r')" ] \
        && [ -n "$(registry_value QuietUninstallString)" ]
}
menu_entry_is_there() { [ -f "$menu/Veltra Optimizer.lnk" ]; }
refuses_while_it_runs() {
    local result=0
    timeout 60 wine "$1" /S ${2:+"$2"} || result=$?
    [ "$result" -eq 32 ] && files_are_installed
}

foreign_files_stay() {
    local other=$WINEPREFIX/drive_c/foreign result=0
    mkdir "$other"
    echo 'of another program' >"$other/LICENSE.txt"
    timeout 60 wine "$installer" /S '/D=C:\foreign' || result=$?
    [ "$result" -eq 80 ] && [ "$(cat "$other/LICENSE.txt")" = 'of another program' ] && rm "$other/LICENSE.txt" \
        && rmdir "$other" && files_are_installed
}
moves_to_another_folder() {
    local before=$folder
    timeout 120 wine "$installer" /S '/D=C:\moved' || return 1
    folder="$WINEPREFIX/drive_c/moved"
    [ ! -e "$before" ] && files_are_installed && apps_entry_is_right && menu_entry_is_there
}

# The uninstaller goes on as a copy of itself after the program that was called has ended.
uninstall_silently() { timeout 120 wine "$folder/$uninstaller" /S; }
comes_down_to() { # comes_down_to NAME: within ten seconds the folder holds this and nothing else
    local tries left
    for ((tries = 0; tries < 100; ++tries)); do
        left=$(find "$folder" -mindepth 1 -printf '%P\n')
        [ "$left" != "$1" ] || return 0
        sleep 0.1
    done
    say "Left: $left"
    return 1
}
is_gone() {
    local tries
    for ((tries = 0; tries < 100; ++tries)); do
        [ -e "$folder" ] || return 0
        sleep 0.1
    done
    return 1
}
registry_and_menu_are_clean() {
    ! timeout 30 wine reg query "$key" >/dev/null 2>&1 && ! menu_entry_is_there
}
nothing_new_is_left() { diff "$scratch/before" <(list_of_files); }
list_of_files() { # what Windows itself writes all the time is not counted
    (cd "$WINEPREFIX/drive_c" && find . -path ./windows -prune -o -type f -print | grep -v '/Temp/' | LC_ALL=C sort)
}

clean_up() {
    wine_stop
    stop_display
}

# shellcheck disable=SC2046
ensure_packages $(packages_windows) $(packages_package_windows) $(packages_wine) $(packages_display)
start_display 1280x800
start_compositor
wine_environment
trap clean_up EXIT
wine_prepare
wine_keep_running
scratch=$veltra_wine/scratch
user=$(find "$WINEPREFIX/drive_c/users" -mindepth 1 -maxdepth 1 -type d ! -name Public | head -n 1)
folder="$user/AppData/Local/Programs/Veltra Optimizer"
menu="$user/AppData/Roaming/Microsoft/Windows/Start Menu/Programs"
# What a run that failed may have left.
rm -rf "$scratch" "$pictures" "$folder" "$menu/Veltra Optimizer.lnk" "$WINEPREFIX"/drive_c/{foreign,moved}
timeout 30 wine reg delete "$key" /f >/dev/null 2>&1 || true
mkdir -p "$scratch" "$pictures"
list_of_files >"$scratch/before"

check "every program and library is hardened" all_are_hardened
check "the archive contains the files of the installer" archive_is_the_stage
check "the installer works silently" install_silently
check "every file is installed" files_are_installed
check "\"Apps\" shows name, version and publisher" apps_entry_is_right
check "the Start menu has an entry" menu_entry_is_there
use_the_program
check "the program can be installed again, over itself" install_silently
check "every file is installed again" files_are_installed
echo 'to be kept' >"$folder/notes of the owner.txt"
check "the uninstaller works silently" uninstall_silently
check "it leaves what it did not bring, and nothing else" comes_down_to 'notes of the owner.txt'
rm -rf "$folder"
check "registry and Start menu are clean" registry_and_menu_are_clean
check "a third installation" install_silently
check "it does not install over files of somebody else" foreign_files_stay
check "in another folder, it takes the earlier version away" moves_to_another_folder
check "the uninstaller works again" uninstall_silently
check "the folder is gone" is_gone
check "registry and Start menu are clean again" registry_and_menu_are_clean
check "the program of the portable archive runs" portable_program_runs
check "no file is left anywhere" nothing_new_is_left
package_checks_done
