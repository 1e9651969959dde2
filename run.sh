#!/usr/bin/env bash
# Builds the command line and runs it: ./run.sh shows the state of the example workspace, ./run.sh ARGUMENT... runs
# vorntools with these arguments. Installs missing Debian packages first.
set -euo pipefail
root=$(cd "$(dirname "$0")" && pwd)

build() {
    mkdir -p "$root/build"
    local log=$root/build/run.log
    if ! (cd "$root" && cmake --preset linux && cmake --build --preset linux --target vorntools_program) >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        echo "The build failed; the whole log is $log" >&2
        exit 2
    fi
}

# File times decide what counts as modified and a checkout does not keep them, so the workspace is set up in a copy.
# Prints the folder.
prepare_workspace() {
    local copy=$root/build/workspace
    if [ -x "$root/examples/prepare_workspace.sh" ]; then
        rm -rf "$copy"
        "$root/examples/prepare_workspace.sh" "$copy" >&2
        echo "$copy"
    else
        echo "$root/examples/workspace"
    fi
}

"$root/cmake/install_packages.sh" build
[ -x "$root/build/linux/bin/vorntools" ] || echo "Building; the first time takes a minute." >&2
build
if [ $# -gt 0 ]; then
    exec "$root/build/linux/bin/vorntools" "$@"
fi

workspace=$(prepare_workspace)
code=0
"$root/build/linux/bin/vorntools" status "$workspace" || code=$?
# 1 says that there are findings: the example has a modified document on purpose.
[ $code -le 1 ] || exit $code
