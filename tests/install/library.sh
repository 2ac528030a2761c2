#!/usr/bin/env bash
# The installed library: its names, what it exports, and that nothing leads back to where it was built.
#   library.sh PREFIX LIBDIR VERSION
set -eu
prefix=$1 libdir=$2 version=$3
library=$prefix/$libdir/libskinwidgets.so
failures=0

expect() {
    [ "$2" = "$3" ] && return
    echo "$1: $2, not $3"
    failures=$((failures + 1))
}

tag() {
    readelf -d "$2" | sed -n "s/.*($1).*\[\(.*\)\]/\1/p"
}

# What other objects may use, without the linker's own marks and templates of the standard library.
exported() {
    nm -DC --defined-only "$library" | sed -n 's/^[0-9a-f]* [TDBRV] //p' |
        sed 's/^\(non-virtual thunk to\|vtable for\|typeinfo for\|typeinfo name for\) //' | grep -vE '^(std::|(__bss_start|_edata|_end)$)'
}

# What the installed headers promise: classes, functions and variables with the export mark, and a namespace of helpers.
promised() {
    find "$prefix/include" -name '*.h' -exec cat {} + | sed -n \
        -e 's/^class SKINWIDGETS_EXPORT \([A-Za-z_]*\).*/\1/p' \
        -e 's/^SKINWIDGETS_EXPORT [^(;]*[ &*]\([A-Za-z_]*\)[(;].*/\1/p'
    echo skinwidgets
}

soname=libskinwidgets.so.${version%%.*}
expect soname "$(tag SONAME "$library")" "$soname"
expect "real name" "$(basename "$(readlink -f "$library")")" "libskinwidgets.so.$version"
expect "link for programs" "$(readlink "$prefix/$libdir/$soname")" "libskinwidgets.so.$version"
expect "search path of the library" "$(tag RUNPATH "$library")$(tag RPATH "$library")" ""
if [ -e "$prefix/bin/skinplayer" ]; then
    expect "search path of the player" "$(tag RUNPATH "$prefix/bin/skinplayer")" "\$ORIGIN/../$libdir"
fi
names=$(promised | sort -u | paste -sd '|')
expect "exports without a promise" "$(exported | grep -vE "^($names)(::|\(|\$)" | sort -u | head -5)" ""
expect "exported panel constructors" "$(exported | grep -c '^SkinBase::SkinBase(')" 2
exit $failures
