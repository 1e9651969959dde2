#ifndef EMBEDDED_TABLES_READERS_READERS_H
#define EMBEDDED_TABLES_READERS_READERS_H

#include "embedded/tables/SheetBuilder.h"

#include <string>

#if defined(_WIN32)
#define VORN_SPREADSHEETS_EXPORT __declspec(dllexport)
#else
#define VORN_SPREADSHEETS_EXPORT __attribute__((visibility("default")))
#endif

// What the library of the readers exports. Each reads one sheet, from 1, of a file; false when the file or the sheet
// cannot be read.

using ReadSpreadsheet = bool(const std::string& file, int index, embedded::SheetRows& rows);

extern "C" VORN_SPREADSHEETS_EXPORT ReadSpreadsheet vornReadXls;
extern "C" VORN_SPREADSHEETS_EXPORT ReadSpreadsheet vornReadXlsx;

#endif
