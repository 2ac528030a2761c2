#!/usr/bin/env bash
# Builds a program with nothing but a compiler and pkg-config, and runs it.
#   pkgconfig.sh COMPILER LIBDIR shared|static SOURCE PROGRAM
set -eu
compiler=$1 libdir=$2 kind=$3 source=$4 program=$5
export PKG_CONFIG_PATH=$libdir/pkgconfig
options=()
[ "$kind" = static ] && options=(--static)
read -ra flags <<<"$(pkg-config --cflags skinwidgets)"
read -ra libraries <<<"$(pkg-config "${options[@]}" --libs skinwidgets)"
"$compiler" -std=c++17 -fPIC "${flags[@]}" "$source" -o "$program" "${libraries[@]}" -Wl,-rpath,"$libdir"
if readelf -d "$program" | grep -q 'NEEDED.*libskinwidgets'; then linked=shared; else linked=static; fi
[ "$linked" = "$kind" ] || { echo "the library is linked as a $linked one, not as a $kind one"; exit 1; }
"$program"
