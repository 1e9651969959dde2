#!/usr/bin/env bash
# Lists our C++ files, one a line, below the folders given (default: all of them).
set -euo pipefail
cd "$(dirname "$0")/.."
if [ $# -eq 0 ]; then
    set -- include foundation cache session links properties platform embedded tools tests fuzz bench examples
fi
find "$@" -type f \( -name '*.cpp' -o -name '*.h' \) | LC_ALL=C sort
