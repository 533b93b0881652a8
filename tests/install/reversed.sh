#!/bin/sh
# Runs PROGRAM with the library of FOLDER in place of its own.
# reversed.sh PROGRAM FOLDER
set -eu
program=$1 folder=$2

LD_LIBRARY_PATH=$folder
export LD_LIBRARY_PATH
ldd "$program" | grep -qF "$folder/libFileFormatsVantero.so.1" ||
    { echo "the program does not take the library of $folder" >&2; exit 1; }
"$program"
