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

/** A function of the readers' library, which stands beside this one; null when it is not there. Never unloaded. */
ReadSpreadsheet* readerNamed(const char* name) {
#if defined(_WIN32)
    static const HMODULE library = LoadLibraryA("VornSpreadsheets.dll");
    const FARPROC found = library ? GetProcAddress(library, name) : nullptr;
#else
    static void* const library = dlopen("libVornSpreadsheets.so", RTLD_NOW | RTLD_LOCAL);
    void* const found = library ? dlsym(library, name) : nullptr;
#endif
    ReadSpreadsheet* reader = nullptr;
    static_assert(sizeof reader == sizeof found, "both are the address of a function");
    std::memcpy(&reader, &found, sizeof reader);
    return reader;
}

std::optional<SheetRows> readWith(ReadSpreadsheet* reader, const std::string& file, int index) {
    SheetRows rows;
    if (!reader || !reader(file, index, rows)) return std::nullopt;
    return rows;
}

} // namespace

bool readsXls() { return readerNamed("vornReadXls") != nullptr; }
bool readsXlsx() { return readerNamed("vornReadXlsx") != nullptr; }

std::optional<SheetRows> readXls(const std::string& file, int index) {
    return readWith(readerNamed("vornReadXls"), file, index);
}

std::optional<SheetRows> readXlsx(const std::string& file, int index) {
    return readWith(readerNamed("vornReadXlsx"), file, index);
}

} // namespace embedded
