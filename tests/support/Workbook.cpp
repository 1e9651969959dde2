#include "tests/support/Workbook.h"

#include <cstdint>

namespace {

std::uint32_t crc32(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (0xEDB88320U & (0U - (crc & 1U)));
    }
    return ~crc;
}

std::string number(std::uint64_t value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i, value >>= 8) bytes += static_cast<char>(value);
    return bytes;
}

/** A zip archive whose parts are stored as they are. */
class Archive {
public:
    void add(const std::string& name, const std::string& content) {
        const std::string facts = number(20, 2) + number(0, 8) + number(crc32(content), 4) + number(content.size(), 4) +
                                  number(content.size(), 4) + number(name.size(), 2) + number(0, 2);
        m_directory += "PK\1\2" + number(20, 2) + facts + number(0, 10) + number(m_parts.size(), 4) + name;
        m_parts += "PK\3\4" + facts + name + content;
        ++m_count;
    }
    std::string bytes() const {
        return m_parts + m_directory + "PK\5\6" + number(0, 4) + number(m_count, 2) + number(m_count, 2) +
               number(m_directory.size(), 4) + number(m_parts.size(), 4) + number(0, 2);
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

} // namespace

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
