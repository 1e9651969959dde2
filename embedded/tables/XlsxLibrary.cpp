#include "embedded/tables/Sheets.h"
#include "embedded/tables/readers/Readers.h"

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <dlfcn.h>
#endif

#include <cstring>

namespace embedded {

namespace {

/** The reader in a library that stands beside this one; null when it is not there. Never unloaded. */
ReadSpreadsheet* xlsxReader() {
#if defined(_WIN32)
    static const HMODULE library = LoadLibraryA("VornSpreadsheets.dll");
    const FARPROC found = library ? GetProcAddress(library, "vornReadXlsx") : nullptr;
#else
    static void* const library = dlopen("libVornSpreadsheets.so", RTLD_NOW | RTLD_LOCAL);
    void* const found = library ? dlsym(library, "vornReadXlsx") : nullptr;
#endif
    ReadSpreadsheet* reader = nullptr;
    static_assert(sizeof reader == sizeof found, "both are the address of a function");
    std::memcpy(&reader, &found, sizeof reader);
    return reader;
}

} // namespace

bool reads(SheetFileKind kind) { return kind != SheetFileKind::xlsx || xlsxReader(); }

std::optional<SheetRows> readXlsx(std::string_view bytes, int index, char decimalMark) {
    ReadSpreadsheet* const reader = xlsxReader();
    SheetRows rows;
    if (!reader || !reader(bytes, index, decimalMark, rows)) return std::nullopt;
    return rows;
}

} // namespace embedded
