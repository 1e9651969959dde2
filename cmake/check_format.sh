#!/usr/bin/env bash
# Checks the layout of every C++ file; with --fix puts it right.
set -euo pipefail
cd "$(dirname "$0")/.."
mode=(--dry-run -Werror)
if [ "${1:-}" = --fix ]; then
    mode=(-i)
fi
cmake/source_files.sh | xargs -d '\n' clang-format "${mode[@]}" || {
    echo "Run cmake/check_format.sh --fix" >&2
    exit 1
}
