#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DatLines.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"

#include "VornCache.h"

#include <memory>
#include <string>
#include <vector>

namespace {

struct DatOptions {
    CommonOptions common;
    std::string file;
};

constexpr const char* kPositionalTags[] = {"<ItemId>",      "<ItemRevId>",        "<ItemRevName>",
                                           "<DatasetUID>",  "<DatasetVersion>",   "<LoadType>",
                                           "<DatasetType>", "<LocalLastModDate>", "<DbLastModDate>"};
constexpr const char* kSingleTags[] = {"<ItemRevUID>", "<DatasetUID>", "<NamedRefUID>", "<LoadType>",
                                       "<LocalLastModDate>"};
constexpr const char* kVersionTag = "<DatFileVersion>";
constexpr const char* kIdentifierTag = "<CatiaUUID>";
constexpr const char* kBlockTags[] = {"<Configuration>", "<DT_Sheets>",  "<DT_Cfgs>",  "<DT_CfgCksums>",
                                      "<OVSkippedOcc>",  "<LinkedDocs>", "<DT_Files>", "<StructLastModDate>"};
constexpr const char* kMapsTag = "<DT_Maps>";
constexpr const char* kMapTag = "<DT_Map>";
constexpr const char* kDocumentLinks = "document_links";

/** What a field says, for the reader of the table. */
struct Meaning {
    const char* tag;
    const char* text;
};
constexpr Meaning kMeanings[] = {{"<DatFileVersion>", "layout: 0 one field a line, else tagged"},
                                 {"<ItemId>", "item in the PDM"},
                                 {"<ItemRevId>", "its revision"},
                                 {"<ItemRevName>", "the revision's name"},
                                 {"<ItemRevUID>", "item revision in the PDM"},
                                 {"<DatasetUID>", "dataset that holds the file"},
                                 {"<DatasetVersion>", "version of the dataset"},
                                 {"<DatasetType>", "type of the dataset"},
                                 {"<NamedRefUID>", "named reference in the dataset"},
                                 {"<LoadType>", "what it was loaded for"},
                                 {"<LocalLastModDate>", "file's date when it was loaded, seconds since 1970"},
                                 {"<DbLastModDate>", "date in the PDM"},
                                 {"<CatiaUUID>", "document that the DAT file was written for"},
                                 {"<Configuration>", "configuration of the structure"},
                                 {"<DT_Sheets>", "design table: its sheets"},
                                 {"<DT_Cfgs>", "design table: configurations"},
                                 {"<DT_CfgCksums>", "design table: their checksums"},
                                 {"<DT_Files>", "design table: its files"},
                                 {"<DT_Maps>", "design table: mappings"},
                                 {"<OVSkippedOcc>", "occurrences that were left out"},
                                 {"<LinkedDocs>", "linked documents"},
                                 {"<StructLastModDate>", "structure's date when it was loaded"},
                                 {kDocumentLinks, "documents that the document itself points to"}};

Json jsonOf(const std::vector<std::string>& lines) {
    Json array = Json::array();
    for (const std::string& line : lines) array.push_back(line);
    return array;
}

/** A list of lines for every mapping that is closed. */
Json mapsOf(const std::vector<std::string>& lines) {
    Json maps = Json::array();
    std::vector<std::string> map;
    bool inside = false;
    for (const std::string& line : lines) {
        if (inside && line == DatLines::closing(kMapTag)) {
            maps.push_back(jsonOf(map));
            map.clear();
            inside = false;
        } else if (inside) {
            map.push_back(line);
        } else {
            inside = line == kMapTag;
        }
    }
    return maps;
}

/** Fields by their tags. */
using Fields = std::vector<std::pair<std::string, Json>>;

Fields fieldsOf(const DatLines& lines, const std::string& document) {
    const CATUnicodeString name = textOf(document);
    VornCache cache;
    cache.addDocument(name, nullptr);
    Fields fields;
    const auto add = [&](const char* tag) {
        CATUnicodeString text;
        cache.getDataAtLine(name, tag, text);
        fields.emplace_back(tag, bytesOf(text));
    };
    add(kVersionTag);
    if (lines.behind(kVersionTag) == "0")
        for (const char* const tag : kPositionalTags) add(tag);
    else
        for (const char* const tag : kSingleTags) add(tag);
    if (lines.has(kIdentifierTag)) fields.emplace_back(kIdentifierTag, lines.behind(kIdentifierTag));
    for (const char* const tag : kBlockTags) fields.emplace_back(tag, jsonOf(lines.block(tag)));
    fields.emplace_back(kMapsTag, mapsOf(lines.block(kMapsTag)));
    LinkMemory memory;
    const DocumentLinks links = readDocumentLinks(document, "", memory);
    fields.emplace_back(kDocumentLinks, links.read ? Json(links.countDocuments()) : Json());
    return fields;
}

Json jsonOf(const Fields& fields) {
    Json object = Json::object();
    for (const auto& [tag, value] : fields) object.add(tag, value);
    return object;
}

const char* meaningOf(const std::string& tag) {
    for (const Meaning& meaning : kMeanings)
        if (tag == meaning.tag) return meaning.text;
    return "";
}

/** A row a value, or a row a line; the lines of a mapping stay together. */
void printTable(const Fields& fields) {
    Table table({{"FIELD"}, {"MEANING"}, {"VALUE"}});
    const auto addRow = [&](const std::string& tag, const Json& value) {
        table.add({tag, meaningOf(tag), value.isNull() ? "no document" : value.cell(" | ")});
    };
    for (const auto& [tag, value] : fields) {
        if (!value.elements())
            addRow(tag, value);
        else
            for (const Json& line : *value.elements()) addRow(tag, line);
    }
    table.print();
}

/** A DAT file has its document's name and one suffix more. */
std::string documentOf(const std::string& name) {
    const std::string suffix = ".dat";
    const bool isDat =
        name.size() > suffix.size() && name.compare(name.size() - suffix.size(), suffix.size(), suffix) == 0;
    return isDat ? name.substr(0, name.size() - suffix.size()) : name;
}

int runDat(const DatOptions& options) {
    if (!options.common.loadSession()) return ExitUnusable;
    JournalFile journal(options.common.journal);
    const std::string document = fullNameOf(documentOf(options.file));
    const DatLines lines(document);
    const Fields fields = lines.read() ? fieldsOf(lines, document) : Fields();
    if (!journal.finish()) return ExitUnusable;
    if (!lines.read()) {
        complain("no DAT file can be read for " + documentOf(options.file));
        return ExitUnusable;
    }
    options.common.json ? printJson(jsonOf(fields)) : printTable(fields);
    return ExitFine;
}

} // namespace

void addDatCommand(Command& program) {
    const auto options = std::make_shared<DatOptions>();
    Command& command =
        program.command("dat", "Every field of a DAT file, and what it says", [options] { return runDat(*options); });
    command.value("file", "FILE", "The DAT file or its document", &options->file).required();
    options->common.addTo(command);
}
