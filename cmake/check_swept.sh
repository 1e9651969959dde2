#!/usr/bin/env bash
# Runs the whole suite in one process and compares the methods that the library exports with those that the sweep ran:
# check_swept.sh <vorntools_tests> <libVornTools.so>. Each of the others has its line and its reason in
# tests/support/not_swept.txt. The suite itself finds tolerated faults that no run needs.
set -euo pipefail
page=$(dirname "$0")/../tests/support/not_swept.txt
record=$(mktemp)
trap 'rm -f "$record"' EXIT
env -u VORNTOOLS_PROFILE VORNTOOLS_SWEPT="$record" "$1" --gtest_brief=1

# Constructors and destructors are left out.
exported=$(nm -DC --defined-only "$2" | sed -nE 's/^[0-9a-f]+ T ((VornTools[A-Za-z]*|VornCache)::[A-Za-z_]+)\(.*/\1/p' |
    awk -F:: '$1 != $2' | sort -u)
[ -n "$exported" ] || { echo "no symbols can be read from $2"; exit 1; }
swept=$(sort -u "$record")
listed=$(sed -nE 's/^([A-Za-z_:]+)  # .+/\1/p' "$page" | sort -u)

failed=0
while IFS= read -r method; do
    echo "neither swept nor in not_swept.txt: $method"
    failed=1
done < <(comm -23 <(echo "$exported") <(sort -u <(echo "$swept") <(echo "$listed")) | sed '/^$/d')
while IFS= read -r method; do
    echo "swept, or not exported, and in not_swept.txt all the same: $method"
    failed=1
done < <(sort -u <(comm -12 <(echo "$swept") <(echo "$listed")) <(comm -13 <(echo "$exported") <(echo "$listed")) |
    sed '/^$/d')
exit $failed
