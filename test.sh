#!/usr/bin/env bash
# Runs every check, or only the stages named: ./test.sh [--tidy] [STAGE...]
#   format words layers platform registered share  the sources
#   linux sanitize windows plain       build and test (windows: cross-compiled, under Wine)
#   profiles                           the native tests on kinder platforms than the other stages have
#   swept                              every exported method goes through the failure sweep, or says why not
#   state exports                      what the built library keeps and exports against their lists
#   json                               what --json prints and docs/json.md against the schemas, the catalogue against docs/
#   reference                          the comments of the public headers, and the reference that is made of them; not
#                                      run where Doxygen cannot be had
#   install                            projects built against the installed tree, the packages
#   workstation                        the library built against a made-up seat, and laid out as a framework for one
#   page browser                       the report's page: its files and model, and all of it in real browsers; not run
#                                      where Node, its packages or the browsers cannot be had
#   tidy fuzz bench                    only when named: clang-tidy, FUZZ_SECONDS (60) of each fuzzer, the benchmarks
#   mutants [N]                        only when named: N (40) changes of the library drawn by lot, each to be noticed
# Installs missing Debian packages first. The last line is "N passed, M failed"; a check counts as one, a ctest run
# with each of its tests.
set -uo pipefail
cd "$(dirname "$0")"
root=$PWD
jobs=$(nproc)
logs=$root/build/logs
not_run=77 # exit status of a stage that lacks something which not every machine can have
passed=0
failed=0

default_stages=(format words layers platform registered share reference linux profiles swept state exports json page
    browser sanitize windows plain install workstation)

stage_format() { cmake/check_format.sh; }
stage_words() { cmake/check_words.sh; }
stage_layers() { cmake/check_layers.sh; }
stage_platform() { cmake/check_platform_page.sh; }
stage_registered() { cmake/check_tests_registered.sh; }
stage_share() { cmake/check_test_share.sh; }
stage_reference() { cmake/check_header_comments.sh && cmake/make_reference.py --check build/reference; }

build() { cmake --preset "$1" && cmake --build --preset "$1" -- -j "$jobs"; }
build_and_test() { build "$1" && ctest --preset "$1" -j "$jobs"; }

stage_linux() { build_and_test linux; }
stage_profiles() {
    [ -x build/linux/bin/vorntools_tests ] || build linux || return
    local profile running=() failed=0
    for profile in kind resolving; do
        VORNTOOLS_PROFILE=$profile build/linux/bin/vorntools_tests --gtest_brief=1 &
        running+=($!)
    done
    for profile in "${running[@]}"; do
        wait "$profile" || failed=1
    done
    return $failed
}
stage_swept() {
    [ -x build/linux/bin/vorntools_tests ] || build linux || return
    cmake/check_swept.sh build/linux/bin/vorntools_tests build/linux/lib/libVornTools.so
}
stage_state() {
    [ -f build/linux/lib/libVornTools.so ] || build linux || return
    cmake/check_writable_symbols.sh build/linux/lib/libVornTools.so
}
stage_exports() {
    [ -f build/linux/lib/libVornTools.so ] || build linux || return
    cmake/check_exported_symbols.sh build/linux/lib/libVornTools.so
}
stage_json() {
    [ -x build/linux/bin/vorntools_tests ] || build linux || return
    cmake/check_json.py build/linux/bin/vorntools_tests build/linux/bin/vorntools &&
        cmake/check_catalogue.py build/linux/bin/vorntools
}
stage_page() { tests/page/run.sh check; }
stage_browser() {
    [ -x build/linux/bin/vorntools ] || build linux || return
    tests/page/run.sh browser build/linux/bin/vorntools
}
stage_sanitize() { build_and_test sanitize; }
stage_plain() { build_and_test plain; }

stage_windows() {
    export WINEPREFIX=$root/build/windows/wine WINEDEBUG=-all WINEDLLOVERRIDES='mscoree,mshtml='
    build windows || return
    [ -f "$WINEPREFIX/system.reg" ] || { mkdir -p "$WINEPREFIX" && wineboot -i; }
    # A server that stays saves its start with every program.
    wineserver -p
    trap 'wineserver -k' EXIT
    # The first program starts Wine's own services, which keep its output open: a test would never be seen to end.
    wine build/windows/bin/vorntools.exe --version >/dev/null 2>&1 </dev/null
    ctest --preset windows -j "$jobs" && check_imports build/windows/bin/*.dll build/windows/bin/vorntools.exe
}

# The modules need nothing but the system's own libraries and each other.
check_imports() {
    local foreign
    foreign=$(x86_64-w64-mingw32-objdump -p "$@" | sed -n 's/.*DLL Name: //p' | sort -u |
        grep -viE '^(kernel32|msvcrt|shell32|advapi32|user32|VornPlatform|VornTools)\.dll$')
    [ -z "$foreign" ] || { echo "imported, but nobody ships it: $foreign"; return 1; }
}

# What packages and ./run.sh are made from.
stage_install() {
    cmake --workflow --preset package || return
    local work=$root/build/install
    rm -rf "$work"
    # Moved after the installation: nothing may remember the first place.
    cmake --install build/release --prefix "$work/first" && mv "$work/first" "$work/tree" || return
    cmake -S tests/install -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$work/tree" &&
        cmake --build "$work/cmake" && "$work/cmake/consumer" || return
    local pc library
    pc=$(find "$work/tree" -name VornTools.pc -printf '%h')
    library=$(dirname "$pc")
    # shellcheck disable=SC2046
    PKG_CONFIG_PATH=$pc g++ -std=c++17 tests/install/main.cpp -o "$work/consumer" \
        $(PKG_CONFIG_PATH=$pc pkg-config --cflags --libs VornTools) -Wl,-rpath,"$library" && "$work/consumer" || return
    # The README's program, exactly as it stands there.
    sed -n '/^```cpp$/,/^```$/p' README.md | grep -v '^```' >"$work/readme.cpp"
    # shellcheck disable=SC2046
    PKG_CONFIG_PATH=$pc g++ -std=c++17 "$work/readme.cpp" -o "$work/readme" \
        $(PKG_CONFIG_PATH=$pc pkg-config --cflags --libs VornTools) -Wl,-rpath,"$library" &&
        "$work/readme" examples/workspace/GearPump.CATProduct >"$work/readme.txt" &&
        grep -qF 'misses D:\projects\gear pump\Relief_Valve' "$work/readme.txt" || return
    [ ! -d build/release/reference ] || [ -f "$work/tree/share/doc/VornTools/html/index.html" ] || return
    cmake/check_links.sh "$work/tree/share/doc/VornTools" &&
        "$work/tree/bin/vorntools" --version && find build/release/packages-out -maxdepth 1 -type f
}

stage_workstation() {
    [ -f build/linux/bin/vorntools ] || build linux || return
    cmake/check_workstation.sh build/linux
}

stage_tidy() {
    cmake --preset sanitize -B build/tidy -DVORNTOOLS_UNITY=OFF &&
        cmake/source_files.sh foundation cache session links properties | grep '\.cpp$' |
        xargs -P "$jobs" -n 1 clang-tidy -p build/tidy --quiet
}

stage_fuzz() {
    build fuzz || return
    local source name
    for source in fuzz/*_fuzz.cpp; do
        name=$(basename "$source" _fuzz.cpp)
        local options=(-max_total_time="${FUZZ_SECONDS:-60}" -print_final_stats=1 -timeout=60)
        [ ! -f "fuzz/dictionaries/$name.dict" ] || options+=(-dict="fuzz/dictionaries/$name.dict")
        # Finds go to the build folder; the seeds stay as they are.
        mkdir -p "build/fuzz/found/$name"
        "build/fuzz/bin/${name}_fuzz" "${options[@]}" -artifact_prefix="build/fuzz/found/" \
            "build/fuzz/found/$name" "fuzz/corpus/$name" || return
    done
}

stage_mutants() { tests/mutants/run.py "${mutants:-40}"; }

stage_bench() {
    build bench || return
    local program
    for program in build/bench/bin/*_bench; do
        "$program" || return
    done
}

# Adds the outcome of a stage: the tests that its ctest or Node run counted, or one check.
count() {
    local log=$1 code=$2 line
    line=$(sed -nE 's/^[0-9]+% tests passed, ([0-9]+) tests? failed out of ([0-9]+)$/\1 \2/p
        s/^# counted: ([0-9]+) failed of ([0-9]+)$/\1 \2/p' "$log" | tail -n 1)
    if [ -n "$line" ]; then
        local bad=${line% *} all=${line#* }
        passed=$((passed + all - bad))
        failed=$((failed + bad))
        [ "$code" -eq 0 ] || [ "$bad" -gt 0 ] || failed=$((failed + 1))
    elif [ "$code" -eq 0 ]; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
    fi
}

run_stage() {
    local stage=$1 log=$logs/$1.log code=0 begin=$SECONDS
    (stage_"$stage") >"$log" 2>&1 || code=$?
    if [ $code -eq $not_run ]; then
        echo "$stage not run: $(tail -n 1 "$log")"
        return
    fi
    if [ $code -ne 0 ]; then
        tail -n 200 "$log"
        echo "$stage FAILED after $((SECONDS - begin)) s (whole log: $log)"
    else
        grep -hE 'tests passed, |^Test share|inputs replayed|^# counted|^not run|lines meet ' "$log"
        echo "$stage passed in $((SECONDS - begin)) s"
    fi
    count "$log" $code
}

main() {
    local stages=() stage with_tidy=
    for stage in "$@"; do
        if [ "$stage" = --tidy ]; then
            with_tidy=yes
        elif [[ $stage =~ ^[0-9]+$ ]] && [ "${stages[*]: -1}" = mutants ]; then
            mutants=$stage
        elif declare -F "stage_$stage" >/dev/null; then
            stages+=("$stage")
        else
            sed -n '2,18s/^# \?//p' "$root/test.sh" >&2
            exit 2
        fi
    done
    [ ${#stages[@]} -gt 0 ] || stages=("${default_stages[@]}")
    [ -z "$with_tidy" ] || stages+=(tidy)

    cmake/install_packages.sh test || exit 2
    mkdir -p "$logs"
    for stage in "${stages[@]}"; do
        run_stage "$stage"
    done
    echo "$passed passed, $failed failed"
    [ $failed -eq 0 ]
}

main "$@"
