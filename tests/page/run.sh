#!/usr/bin/env bash
# Checks the report's page.
#   run.sh check            its files and the tests: syntax, layout, types; its model
#   run.sh browser PROGRAM  pages that PROGRAM and the tests make, in Chromium and Firefox
#   run.sh fix              puts the layout right
#   run.sh picture PROGRAM  takes the picture of the page for the README anew
# Exit status 77, with the reason as the last line: something that it needs cannot be had here.
set -euo pipefail
cd "$(dirname "$0")/../.."
work=build/page
page=tools/vorntools/page

not_run() {
    echo "$1"
    exit 77
}

# Node's packages, as the lock file has them; anew only when that has changed.
install() {
    cmake/install_packages.sh page || not_run "Node cannot be installed"
    command -v npm >/dev/null || not_run "there is no npm"
    cmp -s tests/page/package-lock.json $work/installed.json && return
    mkdir -p $work
    cp tests/page/package.json tests/page/package-lock.json $work
    (cd $work && timeout 600 npm ci --ignore-scripts --no-audit --no-fund --fetch-retries 1) || not_run "Node's packages cannot be had"
    cp tests/page/package-lock.json $work/installed.json
}

layout() {
    $work/node_modules/.bin/prettier --print-width 120 --tab-width 4 --single-quote "$1" \
        $page/*.{html,css,js} tests/page/*.{js,json} bench/page.js
}

# Runs tests and tells how many of them failed.
run_tests() {
    local code=0
    NODE_PATH=$PWD/$work/node_modules node --test --test-reporter=tap "$@" | tee $work/tests.tap || code=$?
    awk '/^# (pass|fail) /{count[$2] = $3} END {
        printf "# counted: %d failed of %d\n", count["fail"], count["fail"] + count["pass"]
    }' $work/tests.tap
    return $code
}

check() {
    for file in $page/*.js tests/page/*.js bench/page.js; do
        node --check "$file"
    done
    layout --check
    $work/node_modules/.bin/tsc -p tests/page/tsconfig.json
    run_tests tests/page/model.test.js
}

browser() {
    local browsers=()
    cmake/install_packages.sh browser || true
    for name in chromium firefox-esr; do
        if command -v $name >/dev/null; then
            browsers+=("${name%-esr}=$(command -v $name)")
        else
            echo "not run in $name, which cannot be had"
        fi
    done
    [ ${#browsers[@]} -gt 0 ] || not_run "there is no browser"
    VORNTOOLS=$(realpath "$1") BROWSERS=${browsers[*]} run_tests tests/page/browser.test.js
}

picture() {
    local program folder
    program=$(realpath "$1")
    folder=$(mktemp -d)
    examples/prepare_workspace.sh "$folder/gear-pump"
    (cd "$folder" && "$program" report gear-pump -o report.html) || [ $? -eq 1 ]
    mkdir -p docs/images
    NODE_PATH=$PWD/$work/node_modules node tests/page/picture.js "$folder/report.html" docs/images/report.png
    rm -r "$folder"
}

command=${1:?usage: run.sh check|browser PROGRAM|fix|picture PROGRAM}
shift
install
case $command in
    check) check ;;
    browser) browser "$@" ;;
    picture) picture "$@" ;;
    fix) layout --write ;;
    *) exit 2 ;;
esac
