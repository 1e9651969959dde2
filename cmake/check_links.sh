#!/usr/bin/env bash
# Follows the links of the pages below a folder to other files: check_links.sh <folder>.
set -euo pipefail
failed=0
while IFS=: read -r page link; do
    target=$(dirname "$page")/${link%%#*}
    [ -e "$target" ] || { echo "$page: $link leads nowhere"; failed=1; }
done < <(find "$1" -name '*.md' -exec grep -oHE '\]\([^)#:]+(#[^)]*)?\)' {} + | sed -E 's/\]\((.*)\)$/\1/')
exit $failed
