#!/bin/sh
# Runs the program on a copy of a configuration; the image quality must change and no other entry, and
# no text outside of its section.
# edit_configuration.sh PROGRAM CONFIGURATION
set -eu
program=$1 configuration=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$configuration" "$work/before"
cp "$configuration" "$work/after"
"$program" "$work/after"

# The entries of the section, sorted, as the map prints them by key; then all lines outside of it but empty ones.
section() { sed -n '/^SECTION image/,/^ENDSECTION image/p' "$1" | LC_ALL=C sort; }
rest() { sed '/^SECTION image/,/^ENDSECTION image/d; /^$/d' "$1"; }

section "$work/before" | sed 's/^quality=.*/quality=85/' >"$work/expected"
section "$work/after" | diff -u "$work/expected" -
grep -q '^quality=85$' "$work/after"
rest "$work/before" >"$work/expected"
rest "$work/after" | diff -u "$work/expected" -

# A file that is not there is said, and nothing is made.
if "$program" "$work/none" 2>"$work/error"; then
    echo "a missing file is no error" >&2
    exit 1
fi
grep -qF "$work/none" "$work/error"
[ ! -e "$work/none" ]
