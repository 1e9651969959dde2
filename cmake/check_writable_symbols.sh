#!/usr/bin/env bash
# Compares the writable memory of the built library with docs/state.md: check_writable_symbols.sh <libVornTools.so>.
# Every variable must match an entry of a table's first column, and every entry a variable.
set -euo pipefail
page=$(dirname "$0")/../docs/state.md

# What the compiler and the C++ runtime put there, and the guards of variables that are made at first use.
own='^(\.(bss|data|tbss|tdata)|_?_?bss_start|_edata|_end|__dso_handle|__TMC_END__|completed\.[0-9]+|DW\.ref\..*|guard variable for .*|std::__ioinit)$'
symbols=$(objdump -tC "$1" |
    sed -nE 's/^[0-9a-f]+ .{7} \.(bss|data|tbss|tdata)\t[0-9a-f]+ +(\.hidden )?//p' | grep -vE "$own" | sort -u)
[ -n "$symbols" ] || { echo "no symbols can be read from $1"; exit 1; }
mapfile -t entries < <(sed -nE 's/^\| `([^`]+)` \|.*/\1/p' "$page")

failed=0
declare -A used=()
while IFS= read -r symbol; do
    known=
    for entry in "${entries[@]}"; do
        # shellcheck disable=SC2053
        [[ $symbol == $entry ]] || continue
        known=yes
        used[$entry]=yes
    done
    [ -n "$known" ] && continue
    echo "not in docs/state.md: $symbol"
    failed=1
done <<<"$symbols"
for entry in "${entries[@]}"; do
    [ -n "${used[$entry]:-}" ] && continue
    echo "only in docs/state.md: $entry"
    failed=1
done
exit $failed
