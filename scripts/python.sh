#!/bin/sh
# Runs a script of this folder with Python, which is installed first where it is missing.
#   scripts/python.sh SCRIPT [ARGUMENT…]
# An argument --help prints what stands at the head of the script.
set -eu
. "${0%/*}/usage.sh"
case ${2-} in
-h | --help)
    sed -n '/^__doc__ = """/,/^"""/{ s/^__doc__ = """//; /^"""/d; s/\\\\/\\/g; p; }' "$1"
    exit 0
    ;;
esac
command -v python3 >/dev/null || "${0%/*}/setup" packages-python.txt
exec python3 "$@"
