#!/usr/bin/env bash
# Compares platform/README.md with the headers beside it: each has one row, and the row names something proposed exactly
# when a comment in the header begins a remark with "Proposed:".
set -euo pipefail
cd "$(dirname "$0")/.."
page=platform/README.md
failed=0

rows() { sed -nE 's/^\| `([A-Za-z_]+\.h)` \|[^|]*\| ?([^|]*)\|$/\1 \2/p' "$page"; }

headers=$(find platform -name '*.h' -printf '%f\n' | LC_ALL=C sort)
difference=$({ diff <(echo "$headers") <(rows | cut -d ' ' -f 1 | LC_ALL=C sort) || true; } |
    sed -n 's/^< /has no row: /p; s/^> /has no header, or a second row: /p')
if [ -n "$difference" ]; then
    echo "$page:"
    echo "$difference"
    failed=1
fi

while read -r header proposed; do
    file=$(find platform -name "$header")
    [ -n "$file" ] || continue
    if grep -q 'Proposed:' "$file"; then
        [ -n "$proposed" ] || { echo "$file proposes something that $page does not name"; failed=1; }
    elif [ -n "$proposed" ]; then
        echo "$page calls something of $file proposed, which no comment there says"
        failed=1
    fi
done < <(rows)
exit $failed
