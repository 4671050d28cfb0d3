# Shared by the other scripts: messages, folders, package installation. Sourced, never run.
# shellcheck shell=bash

veltra_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
veltra_cache=${VELTRA_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/veltra}
veltra_jobs=$(nproc)

say() { printf '\033[1;36m==>\033[0m %s\n' "$*"; }
die() {
    printf '\033[1;31merror:\033[0m %s\n' "$*" >&2
    exit 1
}

# Packages by purpose; each list is a function so that it can be read and extended in one place.
packages_build() { echo build-essential cmake ninja-build qt6-base-dev qt6-base-dev-tools libxcb1-dev; }
packages_display() { echo xvfb xauth picom imagemagick x11-utils x11-apps xdotool fonts-open-sans fonts-dejavu-core; }
packages_test() { echo libgtest-dev libgmock-dev; }
packages_bench() { echo openbox; }
packages_style() { echo clang clang-format clang-tidy git python3; }
packages_accessibility() { echo at-spi2-core dbus python3-pyatspi; }
packages_coverage() { echo gcovr; }
packages_windows() { echo g++-mingw-w64-x86-64-posix dpkg-dev googletest; }
packages_wine() { echo wine wine64; }
packages_package_windows() { echo nsis zip unzip xclip; }
packages_package_debian() { echo dpkg-dev lintian appstream desktop-file-utils man-db; }
packages_cache() { echo ccache; }
packages_icons() { echo librsvg2-bin icoutils imagemagick; }

is_installed() { dpkg-query -W -f='${Status}' "$1" 2>/dev/null | grep -q '^install ok installed$'; }

# ensure_packages NAME...: installs what is missing. Never asks: without the rights it prints the command and stops.
ensure_packages() {
    local missing=() name
    for name in "$@"; do
        is_installed "$name" || missing+=("$name")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    command -v apt-get >/dev/null || die "these packages are needed and this system has no apt-get: ${missing[*]}"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        sudo -n true 2>/dev/null || die "packages are missing; please run:  sudo apt-get install --no-install-recommends ${missing[*]}"
        as_root=(sudo -n)
    fi
    say "Installing packages: ${missing[*]}"
    "${as_root[@]}" apt-get -qq update || say "The package lists could not be refreshed; going on with the ones at hand."
    for name in "${missing[@]}"; do
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "$name" >/dev/null \
            || die "package '$name' could not be installed"
    done
}

# use_compiler_cache: from here on, what was compiled before, in whichever checkout, is not compiled again.
use_compiler_cache() {
    # shellcheck disable=SC2046
    ensure_packages $(packages_cache)
    export CMAKE_C_COMPILER_LAUNCHER=ccache CMAKE_CXX_COMPILER_LAUNCHER=ccache
    export CCACHE_DIR=$veltra_cache/ccache CCACHE_MAXSIZE=5G CCACHE_BASEDIR=$veltra_root CCACHE_NOHASHDIR=1
}

# configure_and_build PRESET [TARGET...]: configures once, then lets the build tool decide what is out of date.
configure_and_build() {
    local preset=$1
    shift
    cd "$veltra_root" || exit 1
    if [ ! -f "build/$preset/build.ninja" ]; then
        say "Configuring ($preset)"
        cmake --preset "$preset" ${VELTRA_CMAKE_ARGS:-} >"$(log_file "configure-$preset")" 2>&1 \
            || { tail -n 40 "$(log_file "configure-$preset")" >&2; die "configuring '$preset' failed"; }
    fi
    say "Building ($preset)"
    cmake --build "build/$preset" -j "$veltra_jobs" ${1:+--target "$@"} || die "building '$preset' failed"
}

# Where scripts keep what they need only for a moment.
scratch_folder() {
    mkdir -p "$veltra_root/build/scratch"
    echo "$veltra_root/build/scratch"
}

log_file() {
    mkdir -p "$veltra_root/build/logs"
    echo "$veltra_root/build/logs/$1.log"
}
