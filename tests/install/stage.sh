#!/bin/sh
# Installs a build into STAGE/first and moves the tree to STAGE/moved; a second tree in
# STAGE/libraries lacks the tool. Nothing in the tree may name the folder it was installed to, and
# every file belongs to exactly one component.
# stage.sh CMAKE BUILD SOURCE STAGE LIBDIR
set -eu
cmake=$1 build=$2 source=$3 stage=$4 libdir=$5

rm -rf "$stage"
mkdir -p "$stage"
"$cmake" --install "$build" --prefix "$stage/first" >/dev/null
mv "$stage/first" "$stage/moved"
for component in Runtime Development; do
    "$cmake" --install "$build" --prefix "$stage/libraries" \
        --component "FileFormatsVantero_$component" >/dev/null
done

fail() {
    echo "$*" >&2
    exit 1
}

for file in libFileFormatsVantero.so libFileFormatsVantero.so.1 libVanteroBase.so \
    libVanteroBase.so.1 pkgconfig/FileFormatsVantero.pc \
    cmake/FileFormatsVantero/FileFormatsVanteroConfig.cmake; do
    [ -e "$stage/moved/$libdir/$file" ] || fail "not installed: $libdir/$file"
done
if [ -x "$build/bin/vantero-formats" ]; then
    [ -x "$stage/moved/bin/vantero-formats" ] || fail "not installed: bin/vantero-formats"
    "$stage/moved/bin/vantero-formats" --version >/dev/null
    for file in man/man1/vantero-formats.1 bash-completion/completions/vantero-formats \
        zsh/vendor-completions/_vantero-formats fish/vendor_completions.d/vantero-formats.fish \
        vantero-formats/schemas/config-show.json vantero-formats/schemas/common.json; do
        [ -e "$stage/moved/share/$file" ] || fail "not installed: share/$file"
    done
    for folder in bin share; do
        [ ! -e "$stage/libraries/$folder" ] || fail "the tool came with the libraries"
    done
fi

if [ -x "$build/bin/vantero-config-browser" ]; then
    [ "$("$stage/moved/bin/vantero-config-browser" --version)" != "" ] ||
        fail "the installed browser does not start"
    for file in applications/vantero-config-browser.desktop mime/packages/vantero-config-browser.xml \
        metainfo/com.example.fileformatsvantero.config_browser.metainfo.xml \
        icons/hicolor/48x48/apps/vantero-config-browser.png man/man1/vantero-config-browser.1; do
        [ -e "$stage/moved/share/$file" ] || fail "not installed: share/$file"
    done
fi

if grep -rIl -e "$stage/first" -e "$source" "$stage/moved"; then
    fail "these files name the folder of the installation or of the sources"
fi
for library in "$stage/moved/$libdir"/lib*.so; do
    # shellcheck disable=SC2016 # a word of the run path, not of the shell
    readelf -d "$library" | grep -E 'R(UN)?PATH' | grep -vF '[$ORIGIN]' &&
        fail "$library: a run path that does not move along"
done
find "$stage/moved" -name '*_p.h' | grep . && fail "internal headers are installed"

for component in Tool Browser; do
    "$cmake" --install "$build" --prefix "$stage/$component" \
        --component "FileFormatsVantero_$component" >/dev/null
done
files() {
    (cd "$1" 2>/dev/null && find . ! -type d) || true
}
{ files "$stage/libraries"; files "$stage/Tool"; files "$stage/Browser"; } | sort >"$stage/components.txt"
files "$stage/moved" | sort | diff -u --label "all components" --label "the whole tree" \
    "$stage/components.txt" - || fail "a file belongs to no component, or to two"
exit 0
