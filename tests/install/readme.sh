#!/usr/bin/env bash
# Builds the README's example, taken from its text, as its text says.
#   readme.sh README DIRECTORY PREFIX CMAKE [cmake arguments]
set -eu
readme=$1 directory=$2 prefix=$3 cmake=$4
shift 4

# The first block of a language.
block() {
    awk -v start="\`\`\`$1" '$0 == start {inside = 1; next} inside && /^```/ {exit} inside' "$readme"
}

rm -rf "$directory"
mkdir -p "$directory"
block cpp >"$directory/main.cpp"
{
    echo 'cmake_minimum_required(VERSION 3.25)'
    echo 'project(App LANGUAGES CXX)'
    echo 'add_executable(app main.cpp)'
    block cmake
} >"$directory/CMakeLists.txt"
grep -q 'int main' "$directory/main.cpp"
grep -q 'find_package(SkinWidgets' "$directory/CMakeLists.txt"
"$cmake" -S "$directory" -B "$directory/build" "$@" -DCMAKE_PREFIX_PATH="$prefix"
"$cmake" --build "$directory/build"
