#!/bin/sh
# Configures the project without tests, on a system without GoogleTest, into absolute folders.
# options.sh CMAKE SOURCE BUILD GENERATOR COMPILER
set -eu
cmake=$1 source=$2 build=$3 generator=$4 compiler=$5

rm -rf "$build"
"$cmake" -S "$source" -B "$build" -G "$generator" -DCMAKE_CXX_COMPILER="$compiler" \
    -DBUILD_TESTING=OFF -DCMAKE_DISABLE_FIND_PACKAGE_GTest=ON \
    -DCMAKE_DISABLE_FIND_PACKAGE_benchmark=ON \
    -DCMAKE_INSTALL_PREFIX=/opt/vantero -DCMAKE_INSTALL_LIBDIR=/srv/vantero/lib \
    -DCMAKE_INSTALL_INCLUDEDIR=/srv/vantero/include

if grep -il 'gtest\|gmock' "$build/build.ninja"; then
    echo "the build uses GoogleTest" >&2
    exit 1
fi
expect() {
    actual=$(PKG_CONFIG_PATH=$build pkg-config --variable="$1" FileFormatsVantero)
    [ "$actual" = "$2" ] || { echo "$1 is $actual, expected $2" >&2; exit 1; }
}
expect libdir /srv/vantero/lib
expect includedir /srv/vantero/include
expect prefix /opt/vantero
