#include "tests/support/LibraryAllocations.h"

#include "embedded/Records.h"
#include "tests/support/Allocations.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>

#if defined(__GLIBC__)
#include <dlfcn.h>
#include <execinfo.h>
#endif

namespace {

constexpr std::size_t kMostPieces = 1 << 16;
std::array<bool, kMostPieces> isOfLibrary; ///< by the place in the order of all pieces
std::size_t seen = 0;
std::size_t counted = 0;
std::size_t wanted = 0; ///< 0: none is refused
bool isLooking = false;

#if defined(__GLIBC__)

bool beginsWithOneOf(const char* text, std::initializer_list<const char*> beginnings) {
    return std::any_of(beginnings.begin(), beginnings.end(), [text](const char* beginning) {
        return std::strncmp(text, beginning, std::strlen(beginning)) == 0;
    });
}

bool isOperatorNew(const char* symbol) { return beginsWithOneOf(symbol, {"_Znw", "_Zna"}); }
bool isOfStandardLibrary(const char* symbol) {
    return isOperatorNew(symbol) ||
           beginsWithOneOf(symbol, {"_ZNSt", "_ZNKSt", "_ZSt", "_ZN9__gnu_cxx", "_ZNK9__gnu_cxx"});
}

/** Texts and lists, which live where whoever makes them has memory. */
bool isOfValue(const char* symbol) {
    for (const char* const type : {"CATUnicodeString", "CATListOf", "CATListVal", "TYPVector", "TYPMap"})
        if (std::strstr(symbol, type)) return !std::strstr(symbol, "UTIL");
    return false;
}

/** Whether the library asks, itself or through a text or a list, by the calls that lead here. */
bool libraryAsks() {
    std::array<void*, 64> calls;
    const int depth = backtrace(calls.data(), static_cast<int>(calls.size()));
    bool isBehindNew = false;
    const char* ofPlatform = nullptr; // the call of the platform that the library made
    for (int i = 0; i < depth; ++i) {
        Dl_info place;
        if (!dladdr(static_cast<char*>(calls[static_cast<std::size_t>(i)]) - 1, &place) || !place.dli_fname) continue;
        const char* const symbol = place.dli_sname ? place.dli_sname : "";
        isBehindNew = isBehindNew || isOperatorNew(symbol);
        if (!isBehindNew || isOfStandardLibrary(symbol) || std::strstr(place.dli_fname, "libstdc++")) continue;
        if (std::strstr(place.dli_fname, "libVornPlatform"))
            ofPlatform = symbol;
        else
            return std::strstr(place.dli_fname, "libVornTools.so") && (!ofPlatform || isOfValue(ofPlatform));
    }
    return false;
}

#else

bool libraryAsks() { return false; }

#endif

/** Looking may itself need memory. */
bool look() {
    isLooking = true;
    const bool asks = libraryAsks();
    isLooking = false;
    return asks;
}

/** For Allocations: whether this piece is the one to be refused. */
bool counts() {
    if (isLooking || embedded::Journal::get().open() == 0 || seen == kMostPieces) return false;
    const std::size_t piece = seen++;
    if (wanted == 0) {
        isOfLibrary[piece] = look();
        counted += isOfLibrary[piece];
        return false;
    }
    return isOfLibrary[piece] && ++counted == wanted && look();
}

} // namespace

namespace libraryAllocations {

void count() {
    seen = counted = wanted = 0;
    allocations::refuse(1, 1, counts);
}

std::size_t end() {
    allocations::refuse(0, 0);
    return counted;
}

void refuse(std::size_t nth) {
    seen = counted = 0;
    wanted = nth;
    allocations::refuse(1, 1, counts);
}

} // namespace libraryAllocations
