#!/usr/bin/env bash
# Builds Qt for Windows (MinGW) from the distribution's own source package and keeps it outside the checkout.
# Prints the folder of the finished toolkit as its last line. A stamp of version and options is the cache key; a build
# that was interrupted goes on where it stopped.
set -euo pipefail
. "$(dirname "$0")/lib.sh"

toolchain=$veltra_root/packaging/windows/mingw-toolchain.cmake

# Only what the program uses; every third-party library comes bundled, so that nothing else must be cross-built.
options=(
    -DCMAKE_BUILD_TYPE=Release
    -DBUILD_SHARED_LIBS=ON
    -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_DOCS=OFF
    -DFEATURE_network=OFF -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_printsupport=OFF
    -DFEATURE_concurrent=OFF -DFEATURE_xml=OFF -DFEATURE_testlib=ON
    -DINPUT_opengl=no -DFEATURE_vulkan=OFF -DFEATURE_icu=OFF -DFEATURE_glib=OFF
    -DFEATURE_tabletevent=OFF # its header is not shipped with the source package
    -DFEATURE_system_zlib=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_doubleconversion=OFF
    -DFEATURE_system_freetype=OFF -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_jpeg=OFF -DFEATURE_system_png=OFF
)

ensure_packages $(packages_build) $(packages_windows) >&2

version=$(dpkg-query -W -f='${Version}' qt6-base-dev)
compiler=$(x86_64-w64-mingw32-g++-posix -dumpfullversion)
key=$(printf '%s\n' "$version" "$compiler" "${options[@]}" "$(cat "$toolchain")" | sha256sum | cut -c1-12)
work=$veltra_cache/qt-windows/$key
prefix=$work/install

if [ -f "$work/complete" ]; then
    say "Qt for Windows is cached ($key)" >&2
    echo "$prefix"
    exit 0
fi
mkdir -p "$work"
exec 9>"$work/lock"
flock 9 # a second caller waits for the first and then finds the toolkit complete
[ -f "$work/complete" ] && { echo "$prefix"; exit 0; }

# The source entries are derived from the mirror that this machine already uses, in a private copy of apt's state.
enable_source_entries() {
    local codename file
    # shellcheck disable=SC1091
    codename=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mkdir -p "$work/apt/lists/partial" "$work/apt/sources.d"
    rm -f "$work"/apt/sources.d/*
    for file in /etc/apt/sources.list.d/*.sources; do
        [ -f "$file" ] && grep -qE "^Suites:.*(^| )$codename( |$)" "$file" \
            && sed 's/^Types:.*/Types: deb-src/' "$file" >"$work/apt/sources.d/$(basename "$file")"
    done
    cat /etc/apt/sources.list /etc/apt/sources.list.d/*.list 2>/dev/null \
        | grep -E "^deb .* $codename(-updates|-security)? " | sed 's/^deb /deb-src /' >"$work/apt/sources.d/derived.list" || true
}
apt_private() {
    apt-get -qq -o Dir::Etc::sourcelist=/dev/null -o Dir::Etc::sourceparts="$work/apt/sources.d" \
        -o Dir::State::lists="$work/apt/lists" -o APT::Sandbox::User=root "$@" >&2
}

if [ ! -f "$work/source.complete" ]; then
    say "Fetching the source package of Qt ($version)" >&2
    enable_source_entries
    apt_private update
    rm -rf "$work/source" "$work/download"
    mkdir -p "$work/download"
    (cd "$work/download" && apt_private source --download-only "qt6-base=$version")
    dpkg-source --no-check -x "$work"/download/*.dsc "$work/source" >&2
    touch "$work/source.complete"
fi

if [ ! -f "$work/build/build.ninja" ]; then
    say "Configuring Qt for Windows" >&2
    rm -rf "$work/build"
    mkdir -p "$work/build"
    host_libs=$(qtpaths6 --query QT_INSTALL_LIBS)
    cmake -S "$work/source" -B "$work/build" -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$host_libs/cmake" \
        "${options[@]}" >"$work/configure.log" 2>&1 \
        || { rm -f "$work/build/build.ninja"; tail -n 40 "$work/configure.log" >&2; die "Qt for Windows could not be configured"; }
fi

say "Building Qt for Windows (about 25 minutes on two cores, once)" >&2
cmake --build "$work/build" -j "$veltra_jobs" >"$work/build.log" 2>&1 \
    || { tail -n 40 "$work/build.log" >&2; die "Qt for Windows could not be built"; }
cmake --install "$work/build" >"$work/install.log" 2>&1 || die "Qt for Windows could not be installed"
touch "$work/complete"
rm -rf "$work/build" "$work/source" "$work/download" "$work/apt"
echo "$prefix"
