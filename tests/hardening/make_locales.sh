#!/bin/sh
# Makes the UTF-8 forms of locales: make_locales.sh FOLDER NAME…; quick when they are there.
set -eu
folder=$1
shift
mkdir -p "$folder"
for name in "$@"; do
    [ -e "$folder/$name.UTF-8/LC_NUMERIC" ] && continue
    rm -rf "$folder/$name.new"
    localedef -i "$name" -f UTF-8 "$folder/$name.new" || [ $? -eq 1 ] # 1: made, with warnings
    mv "$folder/$name.new" "$folder/$name.UTF-8"
done
