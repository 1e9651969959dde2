#ifndef EMBEDDED_TABLES_READERS_READERS_H
#define EMBEDDED_TABLES_READERS_READERS_H

#include "embedded/tables/SheetBuilder.h"

#include <string_view>

#if defined(_WIN32)
#define VORN_SPREADSHEETS_EXPORT __declspec(dllexport)
#else
#define VORN_SPREADSHEETS_EXPORT __attribute__((visibility("default")))
#endif

// What the library of the readers exports: reads one sheet, from 1, of a file's bytes; false when they are no such file
// or the sheet cannot be read.

using ReadSpreadsheet = bool(std::string_view bytes, int index, char decimalMark, embedded::SheetRows& rows);

extern "C" VORN_SPREADSHEETS_EXPORT ReadSpreadsheet vornReadXlsx;

#endif
