#!/usr/bin/env bash
# What a workstation asks of the library, as far as it can be seen without one: check_workstation.sh <build folder>, a
# native one of the in-memory platform and the command line. Works in build/workstation.
#
# A made-up seat has the platform's headers in their published form, by frameworks, and import libraries by name. The
# library is built against it and must give the same answers as the ordinary one. Then the sources are laid out as a
# framework and compiled for Windows in the surroundings of a seat.
set -euo pipefail
cd "$(dirname "$0")/.."
native=$(realpath "$1")
work=$PWD/build/workstation
seat=$work/seat
fail() { echo "$*"; exit 1; }

ccache=$(command -v ccache || true)
cxx="$ccache g++ -std=c++17 -O0 -fPIC"
cross="$ccache x86_64-w64-mingw32-g++-posix"
mkdir -p "$work"
rm -rf "$seat" "$work/cache" "$work/workspace" "$work/installed"

# The seat. Its library has the names that the published headers ask for: what our own headers have inline is kept as
# functions, the lists are made from their pages.
python3 cmake/seat_headers.py "$seat" g++
mapfile -t published < <(find "$seat" -name PublicInterfaces -printf '-isystem\n%p\n')
$cxx -w -fkeep-inline-functions -Iplatform/catia -Iplatform/companion -c "$seat/bodies.cpp" -o "$seat/bodies.o"
$cxx -w "${published[@]}" -c "$seat/lists.cpp" -o "$seat/lists.o"
g++ -shared "$seat/bodies.o" "$seat/lists.o" -o "$seat/libVornSeat.so" -L"$native/lib" -lVornPlatform \
    -Wl,-rpath,"$native/lib"
ln -s "$native/lib/libVornPlatform.so" "$seat/"

configure() {
    cmake -S . -B "$work/library" -G Ninja -DCMAKE_BUILD_TYPE=None -DVORNTOOLS_PLATFORM=catia -DCATIA_ROOT="$1" \
        -DCOMPANION_ROOT="$seat/companion" -DCMAKE_SHARED_LINKER_FLAGS=-Wl,-z,defs
}

# What is missing is told at once, by name.
header=$seat/catia/ProductStructure/PublicInterfaces/CATIProduct.h
library=$seat/catia/win_b64/code/lib/KnowledgeItf.lib
mv "$header" "$header.away"
mv "$library" "$library.away"
if configure "$seat/catia" >"$work/missing.log" 2>&1; then
    fail "a seat without CATIProduct.h and KnowledgeItf.lib is taken"
fi
for name in CATIProduct.h KnowledgeItf.lib; do
    grep -q "$name" "$work/missing.log" || fail "not told that $name is missing: $work/missing.log"
done
mv "$header.away" "$header"
mv "$library.away" "$library"

configure "$seat/catia"
cmake --build "$work/library"

# The same answers, the same journal: the order of the whole session is compared.
cmake --build "$native" --target vorntools_on_libraries
program=$native/bin/vorntools_on_libraries
export LD_LIBRARY_PATH=$work/library/lib:$seat
ldd "$program" >"$work/libraries.txt"
grep -qF "$work/library/lib/libVornTools" "$work/libraries.txt" || fail "the seat's library is not the one that runs"
for topic in documents windows selection modes switch restore scenes masks properties parameters instances attributes \
    design-tables checksums; do
    code=0
    "$program" run examples/gear-pump.json "$topic" >"$work/seat.txt" 2>&1 || code=$?
    own=0
    LD_LIBRARY_PATH='' "$native/bin/vorntools" run examples/gear-pump.json "$topic" >"$work/own.txt" 2>&1 || own=$?
    [ $code -eq $own ] && cmp "$work/own.txt" "$work/seat.txt" || fail "run $topic differs when built against the seat"
done
for command in status links; do
    "$program" $command examples/workspace >"$work/seat.txt" 2>&1 || true
    LD_LIBRARY_PATH='' "$native/bin/vorntools" $command examples/workspace >"$work/own.txt" 2>&1 || true
    cmp "$work/own.txt" "$work/seat.txt" || fail "$command differs when built against the seat"
done
unset LD_LIBRARY_PATH

# The framework, compiled from itself with what its identity card names: the words try, catch and throw are the
# platform's, those of Windows are taken, the platform's own build tools say whose code it is.
cmake -DOUT="$work/workspace" -P cmake/framework.cmake
module=$work/workspace/VornTools/VornTools.m
objects=$work/objects
mkdir -p "$objects"
rm -f "$objects"/*.d
{
    grep -hoE '^#include <[a-z_]+>' "$module"/src/*.cpp "$module"/LocalInterfaces/*.h | sort -u
    echo '#include <windows.h>'
    # The compiler's own headers switch these two off, which Microsoft's do not.
    echo '#define min(a, b) (((a) < (b)) ? (a) : (b))'
    echo '#define max(a, b) (((a) > (b)) ? (a) : (b))'
} >"$objects/surroundings.h"
options=(-std=c++17 -O0 -Wall -Wextra -Werror -D_WINDOWS_SOURCE -I"$work/workspace/VornTools/PublicInterfaces"
    -I"$module/LocalInterfaces")
mapfile -t card < <(sed -nE 's/^AddPrereqComponent\("(.*)",Public\);$/\1/p' \
    "$work/workspace/VornTools/IdentityCard/IdentityCard.h")
for framework in "${card[@]}"; do
    options+=(-isystem "$(echo "$seat"/*/"$framework"/PublicInterfaces)")
done
$cross "${options[@]}" -D__VornTools -x c++-header "$objects/surroundings.h" -o "$objects/surroundings.h.gch"
# The one source that catches refuses exceptions that would release nothing.
catching=("${options[@]}" -D__VornTools "$module/src/PlatformErrors.cpp")
if x86_64-w64-mingw32-g++-posix "${catching[@]}" -fsyntax-only 2>"$objects/refused.txt" ||
    ! grep -q '#error "NATIVE_EXCEPTION has to be defined' "$objects/refused.txt"; then
    fail "PlatformErrors.cpp takes exceptions that pass over destructors"
fi
$cross "${catching[@]}" -DNATIVE_EXCEPTION -MD -MF "$objects/PlatformErrors.d" -c -o "$objects/PlatformErrors.o"
find "$module/src" -name '*.cpp' ! -name PlatformErrors.cpp -printf '%f\n' | sed 's/[.]cpp$//' | xargs -P "$(nproc)" -I '{}' \
    x86_64-w64-mingw32-g++-posix "${options[@]}" -D__VornTools -include "$objects/surroundings.h" -MD -MF "$objects/{}.d" \
    -c "$module/src/{}.cpp" -o "$objects/{}.o"

# No prerequisite is missing, or the above would not compile; none is there that no source opens.
diff <(printf '%s\n' "${card[@]}" | sort) \
    <(cat "$objects"/*.d | grep -oE 'seat/(catia|companion)/[A-Za-z0-9]+/PublicInterfaces' | cut -d/ -f3 | sort -u) ||
    fail "IdentityCard.h (left) and the frameworks that the sources open (right) differ"

# The module exports what the library exports; who only uses its headers exports nothing and imports instead.
exports() { strings -a "$@" | grep -o -- '-export:"[^"]*' | cut -d '"' -f 2 | c++filt | sed 's/(.*//' | sort -u; }
exports "$objects"/*.o >"$objects/exports.txt"
sed -E 's/^. //; s/\(.*//' cmake/exported_symbols.txt | grep -vE '^(typeinfo|vtable)' | sort -u |
    comm -23 - "$objects/exports.txt" >"$objects/not_exported.txt"
[ ! -s "$objects/not_exported.txt" ] || fail "not exported with __VornTools: $(cat "$objects/not_exported.txt")"
sample=examples/workstation/DocumentState
sample_options=(-std=c++17 -Wall -Wextra -Werror -D_WINDOWS_SOURCE -DNATIVE_EXCEPTION)
while read -r framework; do
    [ "$framework" != VornTools ] || sample_options+=(-I "$work/workspace/VornTools/PublicInterfaces")
    [ ! -d "$seat/catia/$framework" ] || sample_options+=(-isystem "$seat/catia/$framework/PublicInterfaces")
done < <(sed -nE 's/^AddPrereqComponent\("(.*)",Public\);$/\1/p' "$sample/IdentityCard/IdentityCard.h")
x86_64-w64-mingw32-g++-posix "${sample_options[@]}" -c "$sample/DocumentState.m/src/DocumentState.cpp" \
    -o "$objects/user.obj"
[ -z "$(exports "$objects/user.obj" || true)" ] || fail "the sample exports what it only uses"
strings -a "$objects/user.obj" >"$objects/user.txt"
grep -q '__imp_.*VornCache' "$objects/user.txt" || fail "the sample does not import VornCache"

# The tree for seats, and the sample on it.
cmake --install "$work/library" --component seat --prefix "$work/installed" >/dev/null
cmp "$work/installed/VornTools/IdentityCard/IdentityCard.h" "$work/workspace/VornTools/IdentityCard/IdentityCard.h"
g++ -std=c++17 -Wall -Wextra -Werror -DNATIVE_EXCEPTION -I"$work/installed/VornTools/PublicInterfaces" \
    -isystem "$seat/catia/System/PublicInterfaces" "$sample/DocumentState.m/src/DocumentState.cpp" \
    -o "$work/DocumentState" -L"$work/installed/win_b64/code/bin" -lVornTools -L"$seat" -lVornSeat -lVornPlatform
LD_LIBRARY_PATH=$work/installed/win_b64/code/bin:$seat:$native/lib "$work/DocumentState" examples/workspace/Shaft.CATPart | tee "$work/sample.txt"
grep -q '    MML .*DriveGear.CATPart' "$work/sample.txt" || fail "the sample lists no links"
