#ifndef EMBEDDED_TABLES_READERS_READERS_H
#define EMBEDDED_TABLES_READERS_READERS_H

// What the library of the readers and who loads it agree on. Each may have a C++ library of its own: no object of it
// crosses, and nothing is thrown across.

#include <cstddef>

#if defined(_WIN32)
#define VORN_SPREADSHEETS_EXPORT __declspec(dllexport)
#else
#define VORN_SPREADSHEETS_EXPORT __attribute__((visibility("default")))
#endif

enum class SheetReading { done, unreadable, outOfMemory };

/** Takes the text of a cell, both positions from 0. The reading ends with what it returns, unless that is done. */
using PutCell = SheetReading(void* context, std::size_t row, std::size_t column, const char* text, std::size_t length);

/** Reads one sheet, from 1, of a file's bytes; unreadable when they are no such file or lack the sheet. Cells may have
 * been put even so. */
using ReadSpreadsheet = SheetReading(const char* bytes, std::size_t size, int index, char decimalMark, PutCell* put,
                                     void* context);

extern "C" VORN_SPREADSHEETS_EXPORT ReadSpreadsheet vornReadXlsx;

#endif
