#!/bin/sh
# Compiles each installed header alone, twice in one unit, as users compile; then all of them as C++20
# with every restriction that Qt knows for strings and keywords.
# compile_headers.sh COMPILER PREFIX LIBDIR
set -eu
compiler=$1 prefix=$2 libdir=$3
include=$prefix/include/FileFormatsVantero
PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
export PKG_CONFIG_PATH
# Quoted for a shell. Qt's own headers are not ours to judge.
flags=$(pkg-config --cflags FileFormatsVantero |
    sed "s| -I\(/usr/include/[^ ]*qt5\)| -isystem \1|g; s|^-I\(/usr/include/[^ ]*qt5\)|-isystem \1|")
strict='-DQT_NO_CAST_FROM_ASCII -DQT_NO_CAST_TO_ASCII -DQT_NO_KEYWORDS -DQT_NO_FOREACH
    -DQT_NO_CAST_FROM_BYTEARRAY -DQT_NO_URL_CAST_FROM_STRING -DQT_USE_QSTRINGBUILDER
    -DQT_DISABLE_DEPRECATED_BEFORE=0x050F00'

cd / # not where a header could be found by chance
headers=$(find "$include" -name '*.h' -printf '%P\n' | sort)
[ -n "$headers" ] || { echo "no headers in $include" >&2; exit 1; }

# compile OPTION…: the unit of standard input.
compile() {
    eval "set -- \"\$@\" $flags"
    "$compiler" -x c++ -fsyntax-only -Wall -Wextra -Wpedantic -Wconversion -Wshadow \
        -Wold-style-cast -Werror "$@" -
}
count=0
for header in $headers; do
    printf '#include "%s"\n' "$header" "$header" | compile -std=c++17 ||
        { echo "$header does not compile alone" >&2; exit 1; }
    count=$((count + 1))
done
# shellcheck disable=SC2086 # a list of options
printf '#include "%s"\n' $headers | compile -std=c++20 $strict ||
    { echo "the headers do not compile with every restriction" >&2; exit 1; }
echo "$count headers compile alone"
