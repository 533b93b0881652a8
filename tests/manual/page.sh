#!/bin/sh
# Fails when a checker of manual pages has something to say.
# page.sh mandoc|groff PROGRAM PAGE
set -eu
case $1 in
mandoc) # whether other pages are installed here says nothing
    said=$("$2" -Tlint -W style "$3" 2>&1 | grep -v 'mandoc.db\|referenced manual not found' || true)
    ;;
groff)
    said=$("$2" -mdoc -Tutf8 -ww "$3" 2>&1 >/dev/null)
    ;;
esac
[ -z "$said" ] || {
    echo "$said" >&2
    exit 1
}
