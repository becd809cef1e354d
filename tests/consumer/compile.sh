#!/usr/bin/env bash
# Compiles against an installation, as strict C++11: each header of the library alone, or an application.
# Usage: compile.sh PREFIX LIBRARY_DIRECTORY headers COMPILER
#        compile.sh PREFIX LIBRARY_DIRECTORY application COMPILER SOURCE PROGRAM [LINKER_FLAG...]
set -euo pipefail
prefix=$1 libraries=$1/$2 what=$3
compile=("$4" -std=c++11 -Wall -Wextra -Wpedantic -Werror)
shift 4

export PKG_CONFIG_LIBDIR=$libraries/pkgconfig
read -ra cflags <<<"$(pkg-config --cflags velm_zavra)"

case $what in
headers)
    count=0
    while read -r header; do
        "${compile[@]}" "${cflags[@]}" -fsyntax-only -x c++ - <<<"#include \"$header\""
        count=$((count + 1))
    done < <(find "$prefix/include" -type f '(' -name 'VELM_*' -o -name 'ZAVRA_*' -o -path '*/records/*' ')')
    echo "$count headers"
    [[ $count -ge 20 ]]
    ;;
application)
    read -ra libs <<<"$(pkg-config --libs velm_zavra)"
    "${compile[@]}" "${cflags[@]}" "$1" -o "$2" "${libs[@]}" "-Wl,-rpath,$libraries" "${@:3}"
    ;;
esac
