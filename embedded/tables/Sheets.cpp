#include "embedded/tables/Sheets.h"

#include "embedded/files/FileNames.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/text/Characters.h"

#include <algorithm>

namespace embedded {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string fromLatin1(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) appendCharacter(text, static_cast<unsigned char>(byte));
    return text;
}

bool readLine(std::string_view line, std::size_t row, SheetBuilder& sheet) {
    for (std::size_t column = 0;; ++column) {
        const std::size_t end = std::min(line.find('\t'), line.size());
        if (end > 0 && !sheet.put(row, column, std::string(line.substr(0, end)))) return false;
        if (end == line.size()) return true;
        line.remove_prefix(end + 1);
    }
}

std::optional<std::string> readBytes(const std::string& file) {
    FileFacts facts;
    SystemFile opened;
    if (!examineFile(file, facts) || !facts.isFile || !opened.open(file)) return std::nullopt;
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

std::string foldedSuffix(const std::string& file) {
    std::string suffix = suffixOf(file);
    for (char& character : suffix) character = static_cast<char>(toLower(static_cast<unsigned char>(character)));
    return suffix;
}

} // namespace

std::optional<SheetRows> readTextSheet(std::string_view bytes) {
    if (bytes.size() > kLargestSheetFile || bytes.find('\0') != std::string_view::npos) return std::nullopt;
    std::string recoded;
    if (!isWellFormed(bytes)) bytes = recoded = fromLatin1(bytes);
    if (bytes.substr(0, kByteOrderMark.size()) == kByteOrderMark) bytes.remove_prefix(kByteOrderMark.size());
    SheetBuilder sheet;
    for (std::size_t row = 0; !bytes.empty(); ++row) {
        const std::size_t end = std::min(bytes.find_first_of("\r\n"), bytes.size());
        if (!readLine(bytes.substr(0, end), row, sheet)) return std::nullopt;
        const bool isPair = bytes.substr(end, 2) == "\r\n";
        bytes.remove_prefix(std::min(bytes.size(), end + (isPair ? 2U : 1U)));
    }
    SheetRows rows = sheet.take();
    if (rows.empty()) return std::nullopt;
    return rows;
}

bool isSpreadsheet(const std::string& file) {
    const std::string suffix = foldedSuffix(file);
    return suffix == "xls" || suffix == "xlsx" || suffix == "xlsm";
}

std::optional<SheetRows> readSheet(const std::string& file, int index) {
    if (index < 1) return std::nullopt;
    FileFacts facts;
    if (!examineFile(file, facts) || !facts.isFile || facts.size > static_cast<long long>(kLargestSheetFile))
        return std::nullopt;
    if (isSpreadsheet(file)) return foldedSuffix(file) == "xls" ? readXls(file, index) : readXlsx(file, index);
    const std::optional<std::string> bytes = readBytes(file);
    return bytes && index == 1 ? readTextSheet(*bytes) : std::nullopt;
}

} // namespace embedded
