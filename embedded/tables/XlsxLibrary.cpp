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
#include <new>

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

SheetReading putCell(void* context, std::size_t row, std::size_t column, const char* text, std::size_t length) {
    try {
        const bool taken = static_cast<SheetBuilder*>(context)->put(row, column, std::string(text, length));
        return taken ? SheetReading::done : SheetReading::unreadable;
    } catch (const std::bad_alloc&) {
        return SheetReading::outOfMemory;
    }
}

} // namespace

bool reads(SheetFileKind kind) { return kind != SheetFileKind::xlsx || xlsxReader(); }

std::optional<SheetRows> readXlsx(std::string_view bytes, int index, char decimalMark) {
    ReadSpreadsheet* const reader = xlsxReader();
    if (!reader) return std::nullopt;
    SheetBuilder sheet;
    switch (reader(bytes.data(), bytes.size(), index, decimalMark, putCell, &sheet)) {
    case SheetReading::done: return sheet.take();
    case SheetReading::unreadable: return std::nullopt;
    case SheetReading::outOfMemory: break;
    }
    throw std::bad_alloc();
}

} // namespace embedded
