#!/bin/sh
# Runs the demo to its end, then with readers that go earlier; nothing may stay of its files.
# demo.sh DEMO FOLDER_OF_THE_TOOL
set -eu
demo=$1 tools=$2

TMPDIR=$(mktemp -d)
export TMPDIR
trap 'rm -rf "$TMPDIR"' EXIT
nothing_left() {
    [ -z "$(ls -A "$TMPDIR")" ] || { echo "$1 leaves files behind" >&2; exit 1; }
}
"$demo" --tools "$tools" | grep -q "^# The tool is /.*/vantero-formats" ||
    { echo "the demo does not tell where the tool is" >&2; exit 1; }
nothing_left "the demo"
for lines in 1 2 20 60; do
    "$demo" --tools "$tools" 2>/dev/null | head -n "$lines" >/dev/null
    # The reader is gone before the demo is.
    for wait in 1 2 3 4 5 6 7 8 9 10; do
        [ -n "$(ls -A "$TMPDIR")" ] || break
        sleep 0.$wait
    done
    nothing_left "the demo after $lines lines"
done
