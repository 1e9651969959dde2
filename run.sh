#!/usr/bin/env bash
# Builds the command line and runs it: ./run.sh shows the library's kinds of work on the example workspace,
# ./run.sh ARGUMENT... runs vorntools with these arguments. Installs missing Debian packages first.
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)

program=$root/build/release/bin/vorntools

# Passes on what ninja says and shows its "[12/34] ..." on standard error: one line that changes on a terminal, now and
# then a line elsewhere. A build with nothing to do says nothing.
show_progress() {
    local line shown=0
    while IFS= read -r line; do
        echo "$line"
        [[ $line =~ ^\[([1-9][0-9]*)/([0-9]+)\] ]] || continue
        if [ -t 2 ]; then
            printf '\rBuilding: %s of %s ' "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}" >&2
            shown=1
        elif ((BASH_REMATCH[1] % 10 == 0)); then
            echo "Building: ${BASH_REMATCH[1]} of ${BASH_REMATCH[2]}" >&2
        fi
    done
    [ $shown = 0 ] || printf '\r%30s\r' '' >&2
}

build() {
    mkdir -p "$root/build"
    local log=$root/build/run.log
    [ -x "$program" ] || echo "Building; the first time takes a few minutes." >&2
    if ! (cd "$root" && cmake --preset release &&
        NINJA_STATUS='[%f/%t] ' cmake --build --preset release --target vorntools_program) 2>&1 | show_progress >"$log"; then
        tail -n 40 "$log" >&2
        echo "The build failed; the whole log is $log" >&2
        exit 2
    fi
}

# Runs vorntools and shows what was run. Its status 1 says that there are findings, which the example has on purpose.
show() {
    echo
    echo "\$ vorntools $*"
    local code=0
    (cd "$examples" && "$program" "$@") || code=$?
    [ $code -le 1 ] || exit $code
}

heading() { printf '\n# %s\n' "$1"; }

"$root/cmake/install_packages.sh" build
build
if [ $# -gt 0 ]; then
    exec "$program" "$@"
fi

# File times decide what counts as modified and a checkout does not keep them, so everything is set up in a copy.
examples=$root/build/examples
rm -rf "$examples"
mkdir -p "$examples"
"$root/examples/prepare_workspace.sh" "$examples/workspace" >&2
cp -R "$root/examples/gear-pump.json" "$root/examples/exchange" "$examples"

session=gear-pump.json

heading "Documents, windows, products and selection of a session"
show run $session documents
show run $session windows --find DriveGear.CATPart
show run $session selection

heading "State of the documents, by their DAT files"
show status workspace
show run $session checksums

heading "Files exchanged with the PDM client"
show exchange result exchange
show exchange highlight exchange
show exchange session exchange --session $session
cat "$examples/exchange/CADFilesInSession.txt"

heading "Links of the documents, found in their bytes"
show links workspace
show links --missing workspace
show uses workspace/GearPump.CATProduct
show used-by workspace/Shaft.CATPart workspace

heading "The same questions to a catalogue, which is asked instead of the folders"
show catalogue workspace -o workspace.sqlite
show used-by workspace/Shaft.CATPart --catalogue workspace.sqlite

heading "All of it on one page, which opens in any browser: build/examples/report.html"
show report workspace -o report.html

heading "What a document's file is made of, and its picture"
show contents workspace/Shaft.CATPart
show preview workspace/Shaft.CATPart -o workspace

heading "Properties, parameters, design tables and scenes; work modes"
show run $session properties
show run $session parameters
show run $session attributes
show run $session instances
show run $session design-tables
show run $session scenes
show run $session masks
show run $session switch 'GP-100\Housing.1' --to design
