#include "embedded/tables/readers/Readers.h"

#include <pugixml.hpp>
#include <zip.h>

#include <cstdlib>
#include <cstring>
#include <memory>

using namespace embedded;

namespace {

// A workbook is an archive of XML parts: the list of sheets, where each sheet's part lies, the texts that the cells
// share, and the sheets. Element names may carry a prefix.

struct CloseArchive {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, CloseArchive>;

struct CloseEntry {
    void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

bool loadPart(zip_t* archive, const std::string& name, pugi::xml_document& part) {
    zip_stat_t facts;
    if (zip_stat(archive, name.c_str(), ZIP_FL_NOCASE, &facts) != 0 || !(facts.valid & ZIP_STAT_SIZE)) return false;
    const std::unique_ptr<zip_file_t, CloseEntry> entry(zip_fopen_index(archive, facts.index, 0));
    if (!entry || facts.size > kLargestSheetFile) return false;
    std::string bytes(static_cast<std::size_t>(facts.size), '\0');
    if (zip_fread(entry.get(), bytes.data(), bytes.size()) != static_cast<zip_int64_t>(bytes.size())) return false;
    return static_cast<bool>(part.load_buffer(bytes.data(), bytes.size()));
}

const char* localName(const char* name) {
    const char* const colon = std::strchr(name, ':');
    return colon ? colon + 1 : name;
}

bool isNamed(const pugi::xml_node& node, const char* name) { return std::strcmp(localName(node.name()), name) == 0; }

pugi::xml_node childOf(const pugi::xml_node& node, const char* name) {
    return node.find_child([&](const pugi::xml_node& child) { return isNamed(child, name); });
}

/** The texts of runs one after the other; without the readings that may stand beside them. */
std::string textOf(const pugi::xml_node& item) {
    std::string text;
    for (const pugi::xml_node& part : item) {
        if (isNamed(part, "t")) text += part.text().get();
        if (isNamed(part, "r")) text += childOf(part, "t").text().get();
    }
    return text;
}

/** Name of the part of a sheet; empty when there is none. */
std::string sheetPart(zip_t* archive, int index) {
    pugi::xml_document workbook;
    pugi::xml_document relations;
    if (!loadPart(archive, "xl/workbook.xml", workbook) || !loadPart(archive, "xl/_rels/workbook.xml.rels", relations))
        return std::string();
    int number = 0;
    std::string id;
    for (const pugi::xml_node& sheet : childOf(childOf(workbook, "workbook"), "sheets"))
        if (isNamed(sheet, "sheet") && ++number == index)
            for (const pugi::xml_attribute& attribute : sheet.attributes())
                if (std::strcmp(localName(attribute.name()), "id") == 0) id = attribute.value();
    for (const pugi::xml_node& relation : childOf(relations, "Relationships")) {
        if (id.empty() || id != relation.attribute("Id").value()) continue;
        const std::string target = relation.attribute("Target").value();
        return target[0] == '/' ? target.substr(1) : "xl/" + target;
    }
    return std::string();
}

std::vector<std::string> sharedTexts(zip_t* archive) {
    std::vector<std::string> texts;
    pugi::xml_document part;
    if (!loadPart(archive, "xl/sharedStrings.xml", part)) return texts;
    for (const pugi::xml_node& item : childOf(part, "sst"))
        if (isNamed(item, "si")) texts.push_back(textOf(item));
    return texts;
}

std::string cellText(const pugi::xml_node& cell, const std::vector<std::string>& shared) {
    const std::string type = cell.attribute("t").value();
    if (type == "inlineStr") return textOf(childOf(cell, "is"));
    const std::string value = childOf(cell, "v").text().get();
    if (type == "b") return value == "1" ? "TRUE" : "FALSE";
    if (type == "s") {
        const unsigned long position = std::strtoul(value.c_str(), nullptr, 10);
        return position < shared.size() ? shared[position] : std::string();
    }
    if (!type.empty() && type != "n") return value;
    char* end = nullptr;
    const double number = std::strtod(value.c_str(), &end);
    return value.empty() || *end ? value : cellNumber(number);
}

/** Takes a position like "AB12" apart, both parts from 0. What is missing stays as it was. */
void readPosition(const char* text, std::size_t& row, std::size_t& column) {
    std::size_t letters = 0;
    for (; *text >= 'A' && *text <= 'Z' && letters < kMostCells; ++text)
        letters = letters * 26 + static_cast<std::size_t>(*text - 'A') + 1;
    if (letters > 0) column = letters - 1;
    const unsigned long number = std::strtoul(text, nullptr, 10);
    if (number > 0) row = number - 1;
}

bool readRows(const pugi::xml_node& data, const std::vector<std::string>& shared, SheetBuilder& sheet) {
    std::size_t row = 0;
    for (const pugi::xml_node& line : data) {
        std::size_t column = 0;
        readPosition(line.attribute("r").value(), row, column);
        for (const pugi::xml_node& cell : line) {
            readPosition(cell.attribute("r").value(), row, column);
            std::string text = cellText(cell, shared);
            if (!text.empty() && !sheet.put(row, column, std::move(text))) return false;
            ++column;
        }
        ++row;
    }
    return true;
}

} // namespace

bool vornReadXlsx(const std::string& file, int index, SheetRows& rows) {
    const Archive archive(zip_open(file.c_str(), ZIP_RDONLY, nullptr));
    if (!archive) return false;
    const std::string name = sheetPart(archive.get(), index);
    pugi::xml_document part;
    if (name.empty() || !loadPart(archive.get(), name, part)) return false;
    SheetBuilder sheet;
    const std::vector<std::string> shared = sharedTexts(archive.get());
    if (!readRows(childOf(childOf(part, "worksheet"), "sheetData"), shared, sheet)) return false;
    rows = sheet.take();
    return true;
}
