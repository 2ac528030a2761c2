#!/usr/bin/env bash
# An installation staged with DESTDIR holds the same files as one under a prefix of its own, and none of them names the
# directory that it was staged in, built in or built from.
#   staging.sh BUILD CONFIGURED_PREFIX STAGE OTHER_PREFIX SOURCE
set -eu
build=$1 configured=$2 stage=$3 other=$4 source=$5

files() {
    (cd "$1" && find . ! -type d | sort)
}

rm -rf "$stage"
DESTDIR=$stage cmake --install "$build" >/dev/null
diff <(files "$stage$configured") <(files "$other")
[ "$(files "$stage" | wc -l)" = "$(files "$other" | wc -l)" ] || { echo "files outside of $configured"; exit 1; }
if grep -rIlF -e "$stage" -e "$build" -e "$source" "$stage$configured/include" "$stage$configured/lib"; then
    echo "the files above name directories of the build"
    exit 1
fi
rm -rf "$stage"
