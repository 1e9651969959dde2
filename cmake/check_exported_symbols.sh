#!/usr/bin/env bash
# Compares what a library exports with cmake/exported_symbols.txt: check_exported_symbols.sh [--update] <libVornTools.so>.
# A line that goes breaks programs that were built before; one that comes is a promise. Both are to be meant: --update
# writes the file anew, and the change is reviewed with the rest. VORNTOOLS_PREVIOUS names the library of the previous
# release, which abidiff then compares as well.
set -euo pipefail
list=$(dirname "$0")/exported_symbols.txt
update=
[ "$1" != --update ] || { update=yes; shift; }

# Functions (T), variables (D) and what belongs to classes (V), by their names in C++. Members of nested classes that a
# header only names are nobody's.
symbols() {
    nm -DC --defined-only "$1" | cut -d ' ' -f 2- | sed -E 's/^[BDGRS] /D /; s/^[VWu] /V /' |
        grep -E '^[TD] |^V (vtable|typeinfo)' | grep -vE '^T [A-Za-z]+::[A-Za-z]+::' | LC_ALL=C sort -u
}

if [ -n "$update" ]; then
    symbols "$1" >"$list"
    exit
fi
if ! diff "$list" <(symbols "$1"); then
    echo "$1 (right) exports something else than $list (left); if that is meant: $0 --update $1"
    exit 1
fi
if [ -n "${VORNTOOLS_PREVIOUS:-}" ]; then
    abidiff --no-added-syms "$VORNTOOLS_PREVIOUS" "$1"
fi
