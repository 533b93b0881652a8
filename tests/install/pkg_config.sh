#!/bin/sh
# Builds and runs a program with what pkg-config says of the package installed at PREFIX.
# pkg_config.sh COMPILER PREFIX LIBDIR SOURCE BUILD [FLAG…]
set -eu
# shellcheck disable=SC2034 # used by eval
compiler=$1 prefix=$2 libdir=$3 source=$4 build=$5
shift 5

mkdir -p "$build"
PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
export PKG_CONFIG_PATH
pkg-config --validate FileFormatsVantero
pkg-config --exact-version="$(sed -n 's/^Version: //p' "$PKG_CONFIG_PATH/FileFormatsVantero.pc")" \
    FileFormatsVantero
flags=$(pkg-config --cflags --libs FileFormatsVantero) # quoted for a shell
eval "set -- \"\$@\" \"\$source\" -o \"\$build/consumer\" $flags"
"$compiler" -std=c++17 -Wall -Wextra -Werror "$@" -Wl,-rpath,"$prefix/$libdir"
"$build/consumer"
