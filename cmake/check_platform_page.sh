#!/usr/bin/env bash
# Compares platform/README.md with the headers beside it: each has one row, and the row names something proposed exactly
# when a comment in the header begins a remark with "Proposed:". Compares platform/frameworks.txt with the headers as well,
# and the table of docs/workstation.md with it; --fix writes that table.
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

listed=$(sed -nE 's/^([A-Za-z_0-9]+\.h) .*/\1/p' platform/frameworks.txt | LC_ALL=C sort)
difference=$({ diff <(grep -v '^ExportedByCatia.h$' <<<"$headers") <(echo "$listed") || true; } |
    sed -n 's/^< /has no line: /p; s/^> /has no header, or a second line: /p')
if [ -n "$difference" ]; then
    echo "platform/frameworks.txt:"
    echo "$difference"
    failed=1
fi

# Framework, library, headers, how that is known; what is known in different ways has a row each.
framework_table() {
    echo '| framework | library | headers | known by |'
    echo '|---|---|---|---|'
    awk '/^[A-Za-z]/ { sub(/[.]h$/, "", $1); key = $2 " | " $3 SUBSEP $4; of[key] = of[key] (of[key] ? ", " : "") $1 }
        END { for (key in of) { split(key, part, SUBSEP); print "| " part[1] " | " of[key] " | " part[2] " |" } }' \
        platform/frameworks.txt | LC_ALL=C sort
}
seat_page=docs/workstation.md
if [ "${1:-}" = --fix ]; then
    before=$(sed '/^| framework | library/,$d' "$seat_page")
    after=$(sed '1,/^| framework | library/d' "$seat_page" | sed '1,/^$/d')
    printf '%s\n\n%s\n\n%s\n' "$before" "$(framework_table)" "$after" >"$seat_page.new"
    mv "$seat_page.new" "$seat_page"
elif ! diff <(sed -n '/^| framework | library/,/^$/{/^$/d;p}' "$seat_page") <(framework_table); then
    echo "$seat_page (left) is not what platform/frameworks.txt says (right): $0 --fix"
    failed=1
fi
exit $failed
