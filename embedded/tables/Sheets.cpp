#include "embedded/tables/Sheets.h"

#include "embedded/files/FileNames.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/tables/LittleEndian.h"
#include "embedded/text/Characters.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace embedded {

namespace {

constexpr std::string_view kMarkUtf8 = "\xEF\xBB\xBF";
constexpr std::string_view kMarkLowFirst = "\xFF\xFE";
constexpr std::string_view kMarkHighFirst = "\xFE\xFF";

bool beginsWith(std::string_view bytes, std::string_view beginning) {
    return bytes.substr(0, beginning.size()) == beginning;
}

std::string fromLatin1(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) appendCharacter(text, static_cast<unsigned char>(byte));
    return text;
}

/** A last byte without its other half is left out. */
std::string fromUtf16Bytes(std::string_view bytes, bool isHighFirst) {
    std::vector<unsigned short> units;
    units.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i + 2 <= bytes.size(); i += 2) {
        const unsigned unit = read16(bytes, i);
        units.push_back(static_cast<unsigned short>(isHighFirst ? unit >> 8U | unit << 8U : unit));
    }
    return fromUtf16(units.data(), units.size());
}

std::string decoded(std::string_view bytes) {
    if (beginsWith(bytes, kMarkLowFirst)) return fromUtf16Bytes(bytes.substr(kMarkLowFirst.size()), false);
    if (beginsWith(bytes, kMarkHighFirst)) return fromUtf16Bytes(bytes.substr(kMarkHighFirst.size()), true);
    if (beginsWith(bytes, kMarkUtf8)) bytes.remove_prefix(kMarkUtf8.size());
    return isWellFormed(bytes) ? std::string(bytes) : fromLatin1(bytes);
}

bool readLine(std::string_view line, std::size_t row, std::size_t columns, SheetBuilder& sheet) {
    for (std::size_t column = 0; column < columns; ++column) {
        const std::size_t end = std::min(line.find('\t'), line.size());
        if (end > 0 && !sheet.put(row, column, std::string(line.substr(0, end)))) return false;
        if (end == line.size()) return true;
        line.remove_prefix(end + 1);
    }
    return true;
}

/** How many titles a line has; 0 when one is empty in front of another. */
std::size_t countTitles(std::string_view line) {
    while (!line.empty() && line.back() == '\t') line.remove_suffix(1);
    if (line.empty() || line.front() == '\t' || line.find("\t\t") != std::string_view::npos) return 0;
    return static_cast<std::size_t>(std::count(line.begin(), line.end(), '\t')) + 1;
}

} // namespace

std::optional<SheetRows> readTextSheet(std::string_view bytes) {
    const std::string text = decoded(bytes);
    std::string_view rest = text;
    if (rest.find('\0') != std::string_view::npos) return std::nullopt;
    SheetBuilder sheet;
    std::size_t columns = 0;
    for (std::size_t row = 0; !rest.empty(); ++row) {
        const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
        const std::string_view line = rest.substr(0, end);
        if (row == 0) columns = countTitles(line);
        if (columns == 0 || !readLine(line, row, columns, sheet)) return std::nullopt;
        const bool isPair = rest.substr(end, 2) == "\r\n";
        rest.remove_prefix(std::min(rest.size(), end + (isPair ? 2U : 1U)));
    }
    return sheet.take();
}

SheetFileKind sheetFileKind(const std::string& file) {
    std::string suffix = suffixOf(file);
    for (char& character : suffix) character = static_cast<char>(toLower(static_cast<unsigned char>(character)));
    if (suffix == "xls") return SheetFileKind::xls;
    return suffix == "xlsx" || suffix == "xlsm" ? SheetFileKind::xlsx : SheetFileKind::text;
}

std::optional<std::string> readSheetFile(const std::string& file) {
    FileFacts facts;
    SystemFile opened;
    if (!examineFile(file, facts) || !facts.isFile || facts.size > static_cast<long long>(kLargestSheetFile) ||
        !opened.open(file))
        return std::nullopt;
    std::string bytes;
    std::vector<char> block(std::size_t(1) << 16U);
    for (;;) {
        const long count = opened.read(block.data(), block.size());
        if (count < 0) return std::nullopt;
        if (count == 0) return bytes;
        bytes.append(block.data(), static_cast<std::size_t>(count));
        if (bytes.size() > kLargestSheetFile) return std::nullopt;
    }
}

std::optional<SheetRows> readSheet(std::string_view bytes, SheetFileKind kind, int index, char decimalMark) {
    std::optional<SheetRows> rows;
    switch (kind) {
    case SheetFileKind::xls: rows = readXls(bytes, index, decimalMark); break;
    case SheetFileKind::xlsx: rows = readXlsx(bytes, index, decimalMark); break;
    case SheetFileKind::text:
        if (index == 1) rows = readTextSheet(bytes);
        break;
    }
    if (rows && rows->empty()) rows.reset();
    return rows;
}

} // namespace embedded
