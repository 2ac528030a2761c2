#!/usr/bin/env bash
# Every installed header compiles as the first and only one, without a warning.
#   headers.sh COMPILER HEADERS OBJECTS
set -eu
compiler=$1 headers=$2 objects=$3
read -ra qt <<<"$(pkg-config --cflags Qt6Widgets | sed 's/-I/-isystem /g')"

# Into a file rather than -fsyntax-only, so that a compiler cache serves it.
compile() {
    local header=$1 name
    shift
    name=${header//\//_}
    echo "#include \"$header\"" >"$name.cpp"
    "$@" -c "$name.cpp" -o "$name.o" || { echo "in $header"; return 1; }
}
export -f compile

rm -rf "$objects"
mkdir -p "$objects"
cd "$objects"
mapfile -t names < <(cd "$headers" && find . -name '*.h' | sed 's,^\./,,' | sort)
[ ${#names[@]} -gt 20 ] || { echo "only ${#names[@]} headers in $headers"; exit 1; }
command=("$compiler" -std=c++17 -fPIC -Wall -Wextra -Wpedantic -Wshadow -Werror -I "$headers" "${qt[@]}")
if command -v ccache >/dev/null; then command=(ccache "${command[@]}"); fi
printf '%s\0' "${names[@]}" | xargs -0 -P "$(nproc)" -I '{}' bash -c 'compile "$@"' bash '{}' "${command[@]}"
echo "${#names[@]} headers"
