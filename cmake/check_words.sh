#!/usr/bin/env bash
# The sources speak for themselves: nothing in them sends the reader to a text that the repository does not hold, to a
# ticket or to a folder of somebody's machine, and nothing is left for later. C++ files are plain ASCII.
set -euo pipefail
cd "$(dirname "$0")/.."

files() {
    if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
        git ls-files -co --exclude-standard -z
    else
        find . -path ./build -prune -o -type f -print0
    fi
}

patterns=(
    '\bspec[.](md|txt|pdf|docx?)\b'
    '\b(as|per|our|the|this) (spec|specs|specified)\b'
    '\bspecification (says|states|requires|demands)\b'
    '\bParts? [1-9][.][0-9]+\b'
    '\b(issue|ticket) #?[0-9]+\b'
    '(^|[^A-Za-z0-9_.>)}])/(home|root|work|farm|shared|mnt|Users)/'
    '\b(TODO|FIXME|XXX)\b'
)
joined=$(IFS='|'; echo "${patterns[*]}")

failed=0
# report <what the lines on standard input are>
report() {
    local lines
    lines=$(cat)
    [ -n "$lines" ] || return 0
    printf '%s\n%s\n' "$lines" "$1"
    failed=1
}

# This script's own patterns and the corpora, which are data, are left out.
report "The lines above refer to what a reader of the repository cannot see, or leave work behind." < <(
    files | grep -zvE '^(\./)?(cmake/check_words\.sh|fuzz/corpus/)' | xargs -0 grep -nIiHP -- "$joined")
report "The lines above are not plain ASCII; use escapes." < <(
    cmake/source_files.sh | LC_ALL=C xargs -d '\n' grep -nHP '[^\x00-\x7F]')
exit $failed
