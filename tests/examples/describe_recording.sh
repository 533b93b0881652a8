#!/bin/sh
# Writes a record by the example and reads it by the tool.
# describe_recording.sh PROGRAM TOOL
set -eu
program=$1 tool=$2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$program" "$work/17.erdinfo"
"$tool" erdinfo show "$work/17.erdinfo" >"$work/shown"
for line in 'id1 *4711' 'id2 *-1' 'number2 *250' 'time1 *1299701647.000 s (2011-03-09 20:14:07.000 UTC)' \
    'time2 *1299701657.000 s (2011-03-09 20:14:17.000 UTC)'; do
    grep -qx "$line" "$work/shown" || { cat "$work/shown"; exit 1; }
done
# Names are those that were given.
"$program" "$work/Süd.erdinfo"
cmp "$work/17.erdinfo" "$work/Süd.erdinfo"
if "$program" "$work/none/17.erdinfo" 2>/dev/null; then
    echo "a missing folder is no error" >&2
    exit 1
fi
