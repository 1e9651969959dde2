#ifndef EMBEDDED_TABLES_SHEETS_H
#define EMBEDDED_TABLES_SHEETS_H

#include "embedded/tables/SheetBuilder.h"

#include <optional>
#include <string>
#include <string_view>

namespace embedded {

/** What the suffix of a file's name, letter case ignored, tells of the sheets in it. */
enum class SheetFileKind { text, xls, xlsx };
SheetFileKind sheetFileKind(const std::string& file);

/** Whether files of a kind can be read here. */
bool reads(SheetFileKind kind);

/** The bytes of a file; none when it cannot be read or is larger than any table. */
std::optional<std::string> readSheetFile(const std::string& file);

/** The cells of one sheet, from 1 (a text has the one). None when the bytes are no such file, or the sheet is not there
 * or has no cell. @param decimalMark of numbers in spreadsheets; texts stand as they are */
std::optional<SheetRows> readSheet(std::string_view bytes, SheetFileKind kind, int index, char decimalMark);

// One each kind.

/** One row a line, cells separated by tabulators. The first row has the titles: what stands right of them is not read,
 * and none is empty. UTF-8, UTF-16 behind a byte order mark, else Latin-1; none for other texts with a NUL. */
std::optional<SheetRows> readTextSheet(std::string_view bytes);
std::optional<SheetRows> readXls(std::string_view bytes, int index, char decimalMark);
/** What reads these brings large packages with it, and so is a library of its own, which is loaded with the first such
 * file; none can be read without it. */
std::optional<SheetRows> readXlsx(std::string_view bytes, int index, char decimalMark);

} // namespace embedded

#endif
