#!/bin/sh
# Compares the libraries that LIBRARY needs (the loader itself aside) with those listed in FILE, and looks for symbols that
# none of them has.
# needed.sh LIBRARY FILE
set -eu
library=$1 file=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
readelf -d "$library" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p' |
    grep -vE '^(lib(asan|ubsan|tsan|gcov)|ld-.*)\.so' | LC_ALL=C sort >"$work/actual"
sed 's/ *#.*//; /^$/d' "$file" | LC_ALL=C sort >"$work/expected"
status=0
# A build type may need fewer of the language's own libraries, never another one.
unexpected=$(LC_ALL=C comm -23 "$work/actual" "$work/expected")
if [ -n "$unexpected" ]; then
    printf '%s needs undocumented libraries:\n%s\n' "$library" "$unexpected" >&2
    status=1
fi
unused=$(LC_ALL=C comm -13 "$work/actual" "$work/expected" | grep -vE '^lib(m|gcc_s|c)\.so' || true)
if [ -n "$unused" ]; then
    printf '%s lists libraries that %s does not need:\n%s\n' "$file" "$library" "$unused" >&2
    status=1
fi
undefined=$(ldd -r "$library" 2>&1 | grep 'undefined symbol' || true)
if [ -n "$undefined" ]; then
    printf '%s\n' "$undefined" >&2
    status=1
fi
exit $status
