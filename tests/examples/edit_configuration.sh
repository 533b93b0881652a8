#!/bin/sh
# Runs the program on copies of all example configurations: of each the image quality changes, and no
# byte outside of that line; where there is none, it comes at the end.
# edit_configuration.sh PROGRAM FOLDER
set -eu
export LC_ALL=C # bytes, not characters
program=$1 folder=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# With a byte order mark, and without a line end at the end.
{ printf '\357\273\277'; cat "$folder/gate.cfg"; } >"$work/mark.cfg"
head -c -1 "$folder/gate.cfg" >"$work/open.cfg"
cp "$folder"/*.cfg "$work"

count=0
for before in "$work"/*.cfg; do
    after=$before.after
    cp "$before" "$after"
    "$program" "$after"
    if grep -q '^quality=' "$before"; then
        sed 's/^quality=[0-9]*/quality=85/' "$before" >"$before.expected"
        cmp "$before.expected" "$after"
    else
        head -c "$(wc -c <"$before")" "$after" | cmp - "$before"
        sed "1,$(wc -l <"$before")d; s/\r\$//; /^\$/d" "$after" >"$before.added"
        printf 'SECTION image\nquality=85\nENDSECTION image\n' | cmp - "$before.added"
    fi
    # Once more changes nothing.
    cp "$after" "$before.once"
    "$program" "$after"
    cmp "$before.once" "$after"
    count=$((count + 1))
done
[ "$count" -eq 6 ]

# A file that is not there is said, and nothing is made.
if "$program" "$work/none" 2>"$work/error"; then
    echo "a missing file is no error" >&2
    exit 1
fi
grep -qF "$work/none" "$work/error"
[ ! -e "$work/none" ]

# A text that is no configuration is said, and stays.
printf '#:1\n#:2\n\nSECTION a\n' >"$work/broken"
cp "$work/broken" "$work/copy"
if "$program" "$work/broken" 2>"$work/error"; then
    echo "a malformed text is no error" >&2
    exit 1
fi
grep -q 'ENDSECTION a expected' "$work/error"
cmp "$work/broken" "$work/copy"
