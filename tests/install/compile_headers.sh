#!/bin/sh
# Compiles each installed header alone, twice in one unit: as users compile, then as C++20 with every
# restriction that Qt knows for strings and keywords.
# compile_headers.sh COMPILER PREFIX LIBDIR
set -eu
compiler=$1 prefix=$2 libdir=$3
include=$prefix/include/FileFormatsVantero
PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
export PKG_CONFIG_PATH
# Qt's own headers are not ours to judge.
flags=$(pkg-config --cflags FileFormatsVantero |
    sed "s| -I\(/usr/include/[^ ]*qt5\)| -isystem \1|g; s|^-I\(/usr/include/[^ ]*qt5\)|-isystem \1|")
strict='-DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII -DQT_NO_KEYWORDS -DQT_NO_FOREACH
    -DQT_NO_CAST_FROM_BYTEARRAY -DQT_NO_URL_CAST_FROM_STRING -DQT_USE_QSTRINGBUILDER
    -DQT_DISABLE_DEPRECATED_BEFORE=0x050F00'
export compiler flags strict

cd / # not where a header could be found by chance
count=$(find "$include" -name '*.h' | wc -l)
[ "$count" -gt 0 ] || { echo "no headers in $include" >&2; exit 1; }
# shellcheck disable=SC2016 # expanded by the inner shell
find "$include" -name '*.h' -printf '%P\n' | sort | xargs -P 2 -n 1 sh -c '
    compile() {
        printf "#include \"%s\"\n#include \"%s\"\n" "$header" "$header" |
            "$compiler" -x c++ -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow \
                -Wold-style-cast -Werror "$@" -
    }
    header=$1
    compile -std=c++17 $flags && compile -std=c++20 $strict $flags ||
        { echo "$header does not compile alone" >&2; exit 1; }
' compile
echo "$count headers compile alone"
