# The Windows program on this machine: what belongs beside it, and a sandbox below build/ in which Wine runs it.
# Sourced after lib.sh, never run.
# shellcheck shell=bash

veltra_windows_build=$veltra_root/build/windows
veltra_wine=$veltra_root/build/wine

windows_qt() {
    local found=${VELTRA_WINDOWS_QT:-}
    [ -n "$found" ] || found=$(sed -n 's/^VELTRA_WINDOWS_QT:PATH=//p' "$veltra_windows_build/CMakeCache.txt" 2>/dev/null || true)
    [ -d "$found/bin" ] || die "Qt for Windows is not known; configure first:  cmake --preset windows"
    echo "$found"
}

# The folders that DLLs come from: Qt, the compiler's runtime, its thread library.
windows_dll_folders() {
    windows_qt | sed 's|$|/bin|'
    local name
    for name in libstdc++-6.dll libwinpthread-1.dll; do
        dirname "$(readlink -f "$(x86_64-w64-mingw32-g++-posix -print-file-name="$name")")"
    done
}

# Wine shows the whole file system as drive Z.
windows_path() { echo "Z:${1//\//\\}"; }

# --- Deployment -------------------------------------------------------------------------------------------------------

# deploy_windows DIR: the program with everything it needs to start on a machine that has none of it.
deploy_windows() {
    local target=$1 qt
    qt=$(windows_qt)
    rm -rf "$target"
    mkdir -p "$target/platforms" "$target/styles"
    cp "$veltra_windows_build/src/VeltraOptimizer.exe" "$target/"
    cp "$qt/plugins/platforms/qwindows.dll" "$target/platforms/"
    cp "$qt/plugins/styles/qwindowsvistastyle.dll" "$target/styles/"
    copy_imported_dlls "$target"
    find "$target" -name '*.dll' -exec x86_64-w64-mingw32-strip --strip-unneeded {} +
}

# Brings in what the files in DIR import, then what that imports, until nothing is new. What is in none of the folders
# belongs to the system.
copy_imported_dlls() {
    local target=$1 name folder folders copied=1
    mapfile -t folders < <(windows_dll_folders)
    while [ "$copied" -gt 0 ]; do
        copied=0
        for name in $(imported_dlls "$target"); do
            [ -f "$target/$name" ] && continue
            for folder in "${folders[@]}"; do
                [ -f "$folder/$name" ] || continue
                cp "$folder/$name" "$target/"
                copied=$((copied + 1))
                break
            done
        done
    done
}
imported_dlls() {
    find "$1" \( -name '*.exe' -o -name '*.dll' \) -exec x86_64-w64-mingw32-objdump -p {} + \
        | sed -n 's/^\tDLL Name: //p' | sort -u
}

# --- The sandbox ------------------------------------------------------------------------------------------------------

# Home, data, trash, temporary folder and Windows itself lie below build/wine, so that no test meets the machine's own.
wine_environment() {
    export WINEPREFIX=$veltra_wine/prefix WINEARCH=win64 WINEDEBUG=-all
    # No offers to download what the program does not use, and no entries in the desktop's menus.
    export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
    export HOME=$veltra_wine/home TMPDIR=$veltra_wine/temp XDG_RUNTIME_DIR=$veltra_wine/runtime
    export XDG_DATA_HOME=$HOME/.local/share XDG_CONFIG_HOME=$HOME/.config XDG_CACHE_HOME=$HOME/.cache
    export LC_ALL=C.UTF-8
    mkdir -p "$XDG_DATA_HOME" "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME" "$TMPDIR" "$XDG_RUNTIME_DIR"
    chmod 700 "$XDG_RUNTIME_DIR"
}

# For programs that are not deployed: the DLLs by way of Windows' PATH. Wine hides variables of Qt from the program
# unless their name is led by WINE.
wine_development_environment() {
    local folder name path=
    while read -r folder; do
        path+="${path:+;}$(windows_path "$folder")"
    done < <(windows_dll_folders)
    export WINEPATH=$path WINEQT_PLUGIN_PATH
    WINEQT_PLUGIN_PATH=$(windows_path "$(windows_qt)/plugins")
    export WINEQT_FORCE_STDERR_LOGGING=1 # where no console is seen, Qt's messages go to the debugger otherwise
    for name in $(compgen -e QT_ || true); do
        export "WINE$name=${!name}"
    done
}

# What differs from a fresh Windows of Wine's: key, name, type, value.
wine_settings() {
    # A crash ends the program, no dialog waits for a click.
    echo 'HKCU\Software\Wine\WineDbg|ShowCrashDialog|REG_DWORD|0'
    # No window manager runs on the virtual screen, and Wine would wait two seconds for its answer at every window.
    echo 'HKCU\Software\Wine\X11 Driver|Managed|REG_SZ|N'
    # Without the folder of Wine's PowerShell, which answers nothing: every window would start it fifteen times. The test
    # that wants it names it.
    echo 'HKLM\System\CurrentControlSet\Control\Session Manager\Environment|PATH|REG_EXPAND_SZ|%SystemRoot%\system32;%SystemRoot%;%SystemRoot%\system32\wbem'
}

# Creates the sandbox's Windows once, and again when Wine or a setting changed; a caller that comes meanwhile waits.
wine_prepare() {
    wine_environment
    local wanted
    wanted=$(wine --version; wine_settings)
    wine_is_prepared && return 0
    (
        flock 9
        wine_is_prepared && exit 0
        say "Creating the Wine sandbox (once)"
        rm -rf "$WINEPREFIX"
        create_wine_prefix >"$(log_file wine-sandbox)" 2>&1 9>&- \
            || die "Wine does not start; see build/logs/wine-sandbox.log"
        echo "$wanted" >"$veltra_wine/complete"
    ) 9>"$veltra_wine/lock"
}
wine_is_prepared() { [ "$(cat "$veltra_wine/complete" 2>/dev/null)" = "$wanted" ]; }
create_wine_prefix() {
    local key name type value
    timeout 180 wine wineboot --init || return 1
    while IFS='|' read -r key name type value; do
        timeout 60 wine reg add "$key" /v "$name" /t "$type" /d "$value" /f || return 1
    done < <(wine_settings)
    timeout 60 wineserver --wait
}

# Keeps the sandbox's Windows up until this script ends, since starting it anew for every program takes two seconds: a
# command line waits for words that never come. The desktop, which the first program with a window starts, stays up too,
# and with it the output of that program; so that program is one whose output nobody waits for.
wine_keep_running() {
    coproc veltra_wine_anchor { exec wine cmd 2>/dev/null; }
    read -r -t 60 -u "${veltra_wine_anchor[0]}" || die "Wine does not start"
    timeout 60 wine rundll32 user32.dll,GetDesktopWindow </dev/null >/dev/null 2>&1 || true
}

# Ends whatever still runs in the sandbox, and nothing else.
wine_stop() {
    wineserver --kill 2>/dev/null || true
    timeout 30 wineserver --wait 2>/dev/null || true
}

# Process identifiers of what runs in the sandbox.
wine_processes() {
    local process
    for process in /proc/[0-9]*; do
        [[ $(readlink "$process/exe" 2>/dev/null) == */wine* ]] || continue
        grep -qzFx "WINEPREFIX=$WINEPREFIX" "$process/environ" 2>/dev/null && basename "$process"
    done
    return 0
}
