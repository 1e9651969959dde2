#!/usr/bin/env bash
# Lists our C++ files, one a line, below the folders given (default: all of them).
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -eq 0 ]; then
    set -- include foundation cache session links properties platform embedded tools tests fuzz bench examples
fi
# Git keeps no empty folders: one that holds no file yet is not there in a fresh clone.
existing=()
for folder in "$@"; do
    [ ! -e "$folder" ] || existing+=("$folder")
done
[ ${#existing[@]} -gt 0 ] || exit 0
# An identity card is a list of frameworks, whatever its name says.
find "${existing[@]}" -type f \( -name '*.cpp' -o -name '*.h' \) ! -name IdentityCard.h | LC_ALL=C sort
