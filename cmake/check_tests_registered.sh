#!/usr/bin/env bash
# A test that nobody builds protects nothing: compares tests, fuzz targets and benchmarks on disk with those that the
# CMake files name, and asks a corpus of every fuzz target.
set -euo pipefail
cd "$(dirname "$0")/.."
failed=0

# compare <what> <on disk> <registered>
compare() {
    local difference
    difference=$(diff <(sort <<<"$2") <(sort <<<"$3") | sed -n 's/^< /not registered: /p; s/^> /not there: /p')
    if [ -n "$difference" ]; then
        echo "$1:"
        echo "$difference"
        failed=1
    fi
}

compare tests/CMakeLists.txt \
    "$(find tests -name '*_test.cpp' -printf '%P\n')" \
    "$(sed -n 's/^ *\([A-Za-z0-9_/]*_test\.cpp\)$/\1/p' tests/CMakeLists.txt)"
fuzz_targets=$(sed -n 's/^vorntools_fuzz_target(\(.*\))$/\1/p' fuzz/CMakeLists.txt)
compare fuzz/CMakeLists.txt "$(find fuzz -name '*_fuzz.cpp' -printf '%f\n' | sed 's/_fuzz\.cpp$//')" "$fuzz_targets"
compare "fuzz/corpus" "$(find fuzz/corpus -mindepth 2 -type f -printf '%h\n' | sed 's|.*/||' | sort -u)" "$fuzz_targets"
compare bench/CMakeLists.txt \
    "$(find bench -name '*_bench.cpp' -printf '%f\n' | sed 's/_bench\.cpp$//')" \
    "$(sed -n 's/^vorntools_benchmark(\(.*\))$/\1/p' bench/CMakeLists.txt)"
exit $failed
