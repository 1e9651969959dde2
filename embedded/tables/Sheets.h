#ifndef EMBEDDED_TABLES_SHEETS_H
#define EMBEDDED_TABLES_SHEETS_H

#include "embedded/tables/SheetBuilder.h"

#include <optional>
#include <string>
#include <string_view>

namespace embedded {

/** Rows of a text: one a line, cells separated by tabulators. Bytes that are not UTF-8 are Latin-1. None for a text
 * that has no cell, holds a NUL byte or is too large. */
std::optional<SheetRows> readTextSheet(std::string_view bytes);

/** Whether a file name has a suffix of spreadsheets, letter case ignored. */
bool isSpreadsheet(const std::string& file);
/** What a file is read by. */
bool readsXls();
bool readsXlsx();

/** The cells of one sheet, from 1 (a text file has the one). None when the file or the sheet cannot be read. */
std::optional<SheetRows> readSheet(const std::string& file, int index);

// The two kinds of spreadsheets. What reads them brings large packages with it, and so is a library of its own, which
// is loaded with the first spreadsheet; none can be read without it.
std::optional<SheetRows> readXls(const std::string& file, int index);
std::optional<SheetRows> readXlsx(const std::string& file, int index);

} // namespace embedded

#endif
