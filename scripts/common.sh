# Sourced by the scripts of the top folder: packages, configuring and building.

set -eu
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Not root and no sudo: cannot run $*" >&2
        return 1
    fi
}

is_installed() {
    [ "$(dpkg-query -W -f '${Status}' "$1" 2>/dev/null)" = "install ok installed" ] ||
        # A package may stand for a virtual one.
        dpkg-query -W -f '${Status} ${Provides}\n' 2>/dev/null | grep '^install ok installed' | grep -qw -- "$1"
}

# install_packages [package...]: those of the list and these.
install_packages() {
    command -v dpkg-query >/dev/null || return 0
    local package missing=()
    while read -r package; do
        case $package in ''|'#'*) continue ;; esac
        is_installed "$package" || missing+=("$package")
    done < <(cat "$root/scripts/packages.txt" - <<<"$(printf '%s\n' "$@")")
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing: ${missing[*]}"
    as_root apt-get update -q
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build PRESET [cmake build arguments]
build() {
    local preset=$1
    shift
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
        # Without these nothing that uses precompiled headers is kept.
        export CCACHE_SLOPPINESS=pch_defines,time_macros
    fi
    (cd "$root" && cmake --preset "$preset" >"$root/build/configure-$preset.log" 2>&1) || {
        cat "$root/build/configure-$preset.log" >&2
        return 1
    }
    cmake --build "$root/build/$preset" "$@"
}

mkdir -p "$root/build"
