#include "tests/support/Workbook.h"

#include <cstdint>

std::string littleEndian(std::uint64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i, value >>= 8) bytes += static_cast<char>(value);
    return bytes;
}

namespace {

std::uint32_t crc32(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320U & (0U - (crc & 1U)));
    }
    return ~crc;
}

/** A zip archive whose parts are stored as they are. */
class Archive {
public:
    void add(const std::string& name, const std::string& content) {
        const std::string facts = littleEndian(20, 2) + littleEndian(0, 8) + littleEndian(crc32(content), 4) +
                                  littleEndian(content.size(), 4) + littleEndian(content.size(), 4) +
                                  littleEndian(name.size(), 2) + littleEndian(0, 2);
        m_directory +=
            "PK\1\2" + littleEndian(20, 2) + facts + littleEndian(0, 10) + littleEndian(m_parts.size(), 4) + name;
        m_parts += "PK\3\4" + facts + name + content;
        ++m_count;
    }
    std::string bytes() const {
        return m_parts + m_directory + "PK\5\6" + littleEndian(0, 4) + littleEndian(m_count, 2) +
               littleEndian(m_count, 2) + littleEndian(m_directory.size(), 4) + littleEndian(m_parts.size(), 4) +
               littleEndian(0, 2);
    }

private:
    std::string m_parts;
    std::string m_directory;
    std::uint64_t m_count = 0;
};

std::string sheetPart(const WorkbookSheet& sheet) {
    std::string data;
    for (const auto& row : sheet) {
        data += "<row>";
        for (const std::string& cell : row) data += "<c t=\"inlineStr\"><is><t>" + cell + "</t></is></c>";
        data += "</row>";
    }
    return "<worksheet><sheetData>" + data + "</sheetData></worksheet>";
}

constexpr std::size_t kSector = 512;
constexpr std::size_t kShortSector = 64;
constexpr std::size_t kShortStream = 4096; ///< from this size on a stream has sectors of its own
constexpr std::uint32_t kFree = 0xFFFFFFFF;
constexpr std::uint32_t kEnd = 0xFFFFFFFE;
constexpr std::uint32_t kTable = 0xFFFFFFFD;
constexpr std::uint32_t kList = 0xFFFFFFFC;
constexpr std::size_t kTablesInHeader = 109;
constexpr std::size_t kTablesInList = kSector / 4 - 1; ///< its last number leads to the next list

std::string padded(std::string bytes, std::size_t unit, char filling = '\0') {
    bytes.resize((bytes.size() + unit - 1) / unit * unit, filling);
    return bytes;
}

/** The table of a chain over sectors that stand one behind the other. */
std::string chainOf(std::size_t first, std::size_t count) {
    std::string table;
    for (std::size_t i = 1; i <= count; ++i) table += littleEndian(i < count ? first + i : kEnd, 4);
    return table;
}

std::string directoryEntry(const std::string& name, int type, std::uint32_t child, std::size_t first,
                           std::size_t size) {
    std::string wide;
    for (const char character : name) wide += littleEndian(static_cast<unsigned char>(character), 2);
    wide.resize(64, '\0');
    return wide + littleEndian(2 * name.size() + 2, 2) + littleEndian(static_cast<std::uint64_t>(type), 1) +
           littleEndian(1, 1) + littleEndian(kFree, 4) + littleEndian(kFree, 4) + littleEndian(child, 4) +
           std::string(36, '\0') + littleEndian(first, 4) + littleEndian(size, 8);
}

} // namespace

std::string compoundFile(const std::string& name, const std::string& content) {
    const bool isShort = content.size() < kShortStream;
    const std::string sectors = padded(content, kSector);
    const std::size_t count = sectors.size() / kSector;
    // The table describes the list of its own sectors that the header has no room for, itself, the directory, the table
    // of short sectors and the stream, in this order.
    std::size_t tables = 1;
    std::size_t lists = 0;
    while (tables * kSector / 4 < lists + tables + 2 + count)
        lists = (++tables > kTablesInHeader) ? (tables - kTablesInHeader - 1) / kTablesInList + 1 : 0;
    const std::size_t directoryAt = lists + tables;
    const std::size_t first = directoryAt + 2;
    std::string table;
    for (std::size_t i = 0; i < lists; ++i) table += littleEndian(kList, 4);
    for (std::size_t i = 0; i < tables; ++i) table += littleEndian(kTable, 4);
    table += littleEndian(kEnd, 4) + littleEndian(kEnd, 4) + chainOf(first, count);
    std::string header;
    std::string list;
    for (std::size_t i = 0; i < tables; ++i) (i < kTablesInHeader ? header : list) += littleEndian(lists + i, 4);
    header = padded(header, 4 * kTablesInHeader, '\xFF');
    std::string listed;
    for (std::size_t i = 0; i < lists; ++i)
        listed += padded(list.substr(i * 4 * kTablesInList, 4 * kTablesInList), 4 * kTablesInList, '\xFF') +
                  littleEndian(i + 1 < lists ? i + 1 : kEnd, 4);
    const std::string shortTable = isShort ? chainOf(0, padded(content, kShortSector).size() / kShortSector) : "";
    const std::string directory =
        directoryEntry("Root Entry", 5, 1, isShort ? first : kEnd, isShort ? sectors.size() : 0) +
        directoryEntry(name, 2, kFree, isShort ? 0 : first, content.size());
    return std::string("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1") + std::string(16, '\0') + littleEndian(0x3E, 2) +
           littleEndian(3, 2) + littleEndian(0xFFFE, 2) + littleEndian(9, 2) + littleEndian(6, 2) +
           std::string(10, '\0') + littleEndian(tables, 4) + littleEndian(directoryAt, 4) + littleEndian(0, 4) +
           littleEndian(kShortStream, 4) + littleEndian(directoryAt + 1, 4) + littleEndian(1, 4) +
           littleEndian(lists > 0 ? 0 : kEnd, 4) + littleEndian(lists, 4) + header + listed +
           padded(table, kSector, '\xFF') + padded(directory, kSector) +
           padded(shortTable.empty() ? littleEndian(kFree, 4) : shortTable, kSector, '\xFF') + sectors;
}

std::string xlsRecord(unsigned type, const std::string& data) {
    return littleEndian(type, 2) + littleEndian(data.size(), 2) + data;
}

std::string xlsBegin(unsigned content, unsigned version) {
    return xlsRecord(0x809, littleEndian(version, 2) + littleEndian(content, 2));
}

std::string xlsStream(const std::string& workbook, const std::vector<std::string>& sheets, unsigned version) {
    const std::string begin = xlsBegin(5, version);
    const std::string end = xlsRecord(0x0A, "");
    const std::size_t listed = sheets.size() * 13;
    const std::size_t offset = begin.size() + workbook.size() + listed + end.size();
    std::string list;
    std::string rest;
    for (const std::string& sheet : sheets) {
        list += xlsRecord(0x85, littleEndian(offset + rest.size(), 4) + littleEndian(0, 2) + littleEndian(1, 1) +
                                    littleEndian(0, 1) + "S");
        rest += xlsBegin(0x10, version) + sheet + end;
    }
    return begin + workbook + list + end + rest;
}

std::string archiveOf(const std::vector<std::pair<std::string, std::string>>& parts) {
    Archive archive;
    for (const auto& [name, content] : parts) archive.add(name, content);
    return archive.bytes();
}

std::string workbook(const std::vector<WorkbookSheet>& sheets) {
    std::vector<std::string> parts;
    for (const WorkbookSheet& sheet : sheets) parts.push_back(sheetPart(sheet));
    return workbookOfParts(parts);
}

std::string workbookOfParts(const std::vector<std::string>& sheetParts) {
    Archive archive;
    std::string list;
    std::string relations;
    for (std::size_t i = 0; i < sheetParts.size(); ++i) {
        const std::string index = std::to_string(i + 1);
        list += "<sheet name=\"S" + index + "\" r:id=\"r" + index + "\"/>";
        relations += "<Relationship Id=\"r" + index + "\" Target=\"sheet" + index + ".xml\"/>";
        archive.add("xl/sheet" + index + ".xml", sheetParts[i]);
    }
    archive.add("xl/workbook.xml", "<workbook xmlns:r=\"r\"><sheets>" + list + "</sheets></workbook>");
    archive.add("xl/_rels/workbook.xml.rels", "<Relationships>" + relations + "</Relationships>");
    return archive.bytes();
}
