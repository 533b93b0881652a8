#!/bin/sh
# Runs a program and compares its output, its errors and how it ends with a file, which holds them in
# this order; the last line is "exit STATUS".
# expect.sh FILE PROGRAM [ARGUMENT…]
set -eu
file=$1
shift

errors=$(mktemp)
trap 'rm -f "$errors"' EXIT
status=0
output=$("$@" 2>"$errors") || status=$?
{
    [ -z "$output" ] || printf '%s\n' "$output"
    cat "$errors"
    printf 'exit %s\n' "$status"
} | diff -u "$file" -
