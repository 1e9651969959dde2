#include "embedded/tables/CellTexts.h"
#include "embedded/tables/SheetBuilder.h"
#include "embedded/tables/readers/Readers.h"

#include <pugixml.hpp>
#include <zip.h>

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <optional>

using namespace embedded;

namespace {

// A workbook is an archive of XML parts: the list of sheets, where each sheet's part lies, the texts and formats that
// the cells share, and the sheets. Element names may carry a prefix.

struct CloseArchive {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, CloseArchive>;

struct CloseEntry {
    void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

Archive openArchive(std::string_view bytes) {
    zip_source_t* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
    zip_t* const archive = source ? zip_open_from_source(source, ZIP_RDONLY, nullptr) : nullptr;
    if (source && !archive) zip_source_free(source);
    return Archive(archive);
}

bool hasPart(zip_t* archive, const std::string& name) {
    return zip_name_locate(archive, name.c_str(), ZIP_FL_NOCASE) >= 0;
}

bool loadPart(zip_t* archive, const std::string& name, pugi::xml_document& part) {
    // Texts of blanks are texts; blanks between elements are not.
    constexpr unsigned keepBlanks = pugi::parse_default | pugi::parse_ws_pcdata_single;
    zip_stat_t facts;
    if (zip_stat(archive, name.c_str(), ZIP_FL_NOCASE, &facts) != 0 || !(facts.valid & ZIP_STAT_SIZE)) return false;
    const std::unique_ptr<zip_file_t, CloseEntry> entry(zip_fopen_index(archive, facts.index, 0));
    if (!entry || facts.size > kLargestSheetFile) return false;
    std::string bytes(static_cast<std::size_t>(facts.size), '\0');
    if (zip_fread(entry.get(), bytes.data(), bytes.size()) != static_cast<zip_int64_t>(bytes.size())) return false;
    return static_cast<bool>(part.load_buffer(bytes.data(), bytes.size(), keepBlanks));
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

/** What the cells of a workbook's sheets refer to. */
struct Workbook {
    NumberRules rules;
    std::vector<std::string> sharedTexts;
    std::vector<NumberKind> styles;
};

/** Name of the part of a sheet; empty when there is none. */
std::string sheetPart(zip_t* archive, const pugi::xml_node& workbook, int index) {
    pugi::xml_document relations;
    if (!loadPart(archive, "xl/_rels/workbook.xml.rels", relations)) return std::string();
    int number = 0;
    std::string id;
    for (const pugi::xml_node& sheet : childOf(workbook, "sheets"))
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

/** False when there are shared texts that cannot be read. */
bool readSharedTexts(zip_t* archive, std::vector<std::string>& texts) {
    constexpr const char* name = "xl/sharedStrings.xml";
    if (!hasPart(archive, name)) return true;
    pugi::xml_document part;
    if (!loadPart(archive, name, part)) return false;
    for (const pugi::xml_node& item : childOf(part, "sst"))
        if (isNamed(item, "si")) texts.push_back(textOf(item));
    return true;
}

bool readStyles(zip_t* archive, std::vector<NumberKind>& styles) {
    constexpr const char* name = "xl/styles.xml";
    if (!hasPart(archive, name)) return true;
    pugi::xml_document part;
    if (!loadPart(archive, name, part)) return false;
    const pugi::xml_node sheet = childOf(part, "styleSheet");
    std::map<int, NumberKind> formats;
    for (const pugi::xml_node& format : childOf(sheet, "numFmts"))
        formats[format.attribute("numFmtId").as_int()] =
            kindOfFormat(std::string_view(format.attribute("formatCode").value()));
    for (const pugi::xml_node& style : childOf(sheet, "cellXfs")) {
        if (!isNamed(style, "xf")) continue;
        const int number = style.attribute("numFmtId").as_int();
        const auto format = formats.find(number);
        styles.push_back(format == formats.end() ? kindOfFormat(number) : format->second);
    }
    return true;
}

/** A number as the file writes it: with a decimal point, whatever the language. */
std::optional<double> numberIn(std::string_view text) {
    double number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size()) return std::nullopt;
    return number;
}

std::optional<std::string> sharedText(const Workbook& workbook, std::string_view index) {
    std::size_t position = 0;
    const auto end = std::from_chars(index.data(), index.data() + index.size(), position);
    if (end.ec != std::errc() || position >= workbook.sharedTexts.size()) return std::nullopt;
    return workbook.sharedTexts[position];
}

/** From the other form of dates, "2026-11-21T10:20:30.000Z". */
std::string isoDateText(const std::string& value, NumberKind kind) {
    constexpr std::size_t dateLength = 10;
    constexpr std::size_t wholeLength = 19;
    if (value.size() <= dateLength || value[dateLength] != 'T') return value;
    std::string text = value.substr(0, kind == NumberKind::date ? dateLength : wholeLength);
    if (text.size() > dateLength) text[dateLength] = ' ';
    return text;
}

/** None when the cell refers to a text that is not there. */
std::optional<std::string> cellText(const pugi::xml_node& cell, const Workbook& workbook) {
    const std::string_view type = cell.attribute("t").value();
    if (type == "inlineStr") return textOf(childOf(cell, "is"));
    const std::string value = childOf(cell, "v").text().get();
    if (value.empty()) return value;
    if (type == "b") return booleanText(value == "1" || value == "true");
    if (type == "s") return sharedText(workbook, value);
    const std::size_t style = cell.attribute("s").as_uint();
    const auto kind = style < workbook.styles.size() ? workbook.styles[style] : NumberKind::number;
    if (type == "d") return isoDateText(value, kind);
    const auto number = type.empty() || type == "n" ? numberIn(value) : std::nullopt;
    if (!number) return value;
    return numberText(*number, kind, workbook.rules);
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

/** Where the cells go. */
struct Receiver {
    PutCell* put;
    void* context;
};

SheetReading readRows(const pugi::xml_node& data, const Workbook& workbook, const Receiver& receiver) {
    std::size_t row = 0;
    for (const pugi::xml_node& line : data) {
        if (!isNamed(line, "row")) continue;
        std::size_t column = 0;
        readPosition(line.attribute("r").value(), row, column);
        for (const pugi::xml_node& cell : line) {
            if (!isNamed(cell, "c")) continue;
            readPosition(cell.attribute("r").value(), row, column);
            const std::optional<std::string> text = cellText(cell, workbook);
            if (!text) return SheetReading::unreadable;
            const SheetReading taken = text->empty()
                                           ? SheetReading::done
                                           : receiver.put(receiver.context, row, column, text->data(), text->size());
            if (taken != SheetReading::done) return taken;
            ++column;
        }
        ++row;
    }
    return SheetReading::done;
}

SheetReading readSheet(std::string_view bytes, int index, char decimalMark, const Receiver& receiver) {
    const Archive archive = openArchive(bytes);
    pugi::xml_document book;
    if (!archive || !loadPart(archive.get(), "xl/workbook.xml", book)) return SheetReading::unreadable;
    const pugi::xml_node workbookNode = childOf(book, "workbook");
    const std::string name = sheetPart(archive.get(), workbookNode, index);
    pugi::xml_document part;
    if (name.empty() || !loadPart(archive.get(), name, part)) return SheetReading::unreadable;
    Workbook workbook;
    workbook.rules = {decimalMark, childOf(workbookNode, "workbookPr").attribute("date1904").as_bool()};
    if (!readSharedTexts(archive.get(), workbook.sharedTexts) || !readStyles(archive.get(), workbook.styles))
        return SheetReading::unreadable;
    return readRows(childOf(childOf(part, "worksheet"), "sheetData"), workbook, receiver);
}

} // namespace

SheetReading vornReadXlsx(const char* bytes, std::size_t size, int index, char decimalMark, PutCell* put,
                          void* context) {
    try {
        return readSheet(std::string_view(bytes, size), index, decimalMark, {put, context});
    } catch (...) { // only memory runs out here
        return SheetReading::outOfMemory;
    }
}
