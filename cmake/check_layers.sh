#!/usr/bin/env bash
# Which folder may include which; the drawing in CONTRIBUTING.md shows the same. Every include of a C++ file that names
# one of our folders must stand in the table.
set -euo pipefail
cd "$(dirname "$0")/.."

# <folder>: <folders it may include besides itself>. Calls through include/ are no arrows: the exported classes call
# each other in circles by contract. What is not named here is no folder of ours.
allowed='
include:
foundation:
cache: foundation
session: foundation cache
links: foundation cache session
properties: foundation cache session
platform:
embedded:
tools: embedded
tests: embedded foundation cache session links properties tests
fuzz: embedded foundation cache session links properties tests tools
bench: embedded foundation cache session links properties tests
examples: embedded tests
'

cmake/source_files.sh | xargs -d '\n' grep -Hn '^[[:space:]]*#[[:space:]]*include "[^"]*/' | awk -v table="$allowed" '
BEGIN {
    count = split(table, lines, "\n")
    for (i = 1; i <= count; ++i) {
        if (split(lines[i], parts, ":") < 2) continue
        known[parts[1]] = 1
        may[parts[1], parts[1]] = 1
        targets = split(parts[2], names, " ")
        for (k = 1; k <= targets; ++k) may[parts[1], names[k]] = 1
    }
}
{
    split($0, place, ":")
    from = place[1]
    sub("/.*", "", from)
    to = $0
    sub("^[^\"]*\"", "", to)
    sub("/.*", "", to)
    if (to !~ /^[.]/ && (!(to in known) || may[from, to])) next
    print place[1] ":" place[2] ": " from "/ may not include " to "/"
    failed = 1
}
END { exit failed }'
