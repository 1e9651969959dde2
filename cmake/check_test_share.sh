#!/usr/bin/env bash
# Prints the share of test lines in all C++ lines (blank lines left out) and fails far outside a quarter to a third.
set -euo pipefail
cd "$(dirname "$0")/.."
lines() { cmake/source_files.sh "$@" | xargs -d '\n' cat | grep -cv '^[[:space:]]*$'; }
tests=$(lines tests fuzz)
all=$(lines)
share=$((100 * tests / all))
echo "Test share: $share % ($tests of $all lines)"
if [ $share -lt 20 ] || [ $share -gt 36 ]; then
    echo "Tests shall be a quarter to a third of the code; 20 % to 36 % is accepted." >&2
    exit 1
fi
