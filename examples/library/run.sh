#!/usr/bin/env bash
# Runs the examples on a copy of the gear pump and compares what they print: run.sh <library_examples>
set -euo pipefail
program=$(realpath "${1:?usage: run.sh <library_examples>}")
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$here/../prepare_workspace.sh" "$work/workspace"
cp -R "$here/../gear-pump.json" "$here/data" "$work"
cd "$work"
"$program" | tee "$work/printed.txt" | diff "$here/expected.txt" - || {
    echo "The examples print something else than examples/library/expected.txt." >&2
    exit 1
}
cat "$work/printed.txt"
