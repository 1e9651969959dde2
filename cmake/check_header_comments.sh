#!/usr/bin/env bash
# The comments of the public headers fit the declarations that they stand at, as Clang reads them, and every exported
# class shows an example.
set -euo pipefail
cd "$(dirname "$0")/../include"
printf '#include "%s"\n' *.h |
    clang++ -std=c++17 -fsyntax-only -x c++ -Werror -Wdocumentation -Wdocumentation-pedantic \
        -I. -isystem ../platform/catia -isystem ../platform/companion -
lacking=$(grep -l '^class ExportedByVornTools ' -- *.h | xargs grep -L '@snippet' || true)
[ -z "$lacking" ] || { echo "no example: $lacking"; exit 1; }
