#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/Output.h"

#include "VornCache.h"
#include "VornToolsCommon.h"

#include <array>
#include <cstdio>
#include <memory>

namespace {

using ListGetter = HRESULT (VornCache::*)(CATUnicodeString, CATListValCATUnicodeString&);

constexpr const char* kPositionalTags[] = {"<ItemId>",      "<ItemRevId>",        "<ItemRevName>",
                                           "<DatasetUID>",  "<DatasetVersion>",   "<LoadType>",
                                           "<DatasetType>", "<LocalLastModDate>", "<DbLastModDate>"};
constexpr const char* kSingleTags[] = {"<ItemRevUID>", "<DatasetUID>", "<NamedRefUID>", "<LoadType>",
                                       "<LocalLastModDate>"};
constexpr const char* kIdentifierTag = "<CatiaUUID>";
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

/** A block of lines and the question that answers it. */
struct Block {
    const char* tag;
    ListGetter getter;
};
constexpr Block kBlocks[] = {{"<Configuration>", &VornCache::getConfiguration},
                             {"<DT_Sheets>", &VornCache::getDesignTableSheets},
                             {"<DT_Cfgs>", &VornCache::getDesignTableConfigs},
                             {"<DT_CfgCksums>", &VornCache::getDesignTableCksums},
                             {"<OVSkippedOcc>", &VornCache::getSkippedOccList}};

/** What is said of files is their names alone: the place of a linked file is another question. */
Json namesOf(const CATListValCATUnicodeString& list) {
    Json array = Json::array();
    for (int i = 1; i <= list.Size(); ++i) array.push_back(fileNameOf(bytesOf(list[i])));
    return array;
}

/** A mapping's lines; each stands behind "!!!". */
Json linesOfMap(const std::string& map) {
    const std::string mark = "!!!";
    Json lines = Json::array();
    for (std::size_t at = map.find(mark); at != std::string::npos;) {
        const std::size_t next = map.find(mark, at + mark.size());
        lines.push_back(map.substr(at + mark.size(), next == std::string::npos ? next : next - at - mark.size()));
        at = next;
    }
    return lines;
}

void addBlocks(VornCache& cache, const CATUnicodeString& name, Json& fields) {
    CATListValCATUnicodeString list;
    for (const Block& block : kBlocks) {
        (cache.*block.getter)(name, list);
        fields[block.tag] = arrayOf(list);
    }
    cache.getLinkedDoc(name, CATUnicodeString(), list);
    fields["<LinkedDocs>"] = namesOf(list);
    cache.getDesignTableFiles(name, CATUnicodeString(), list);
    fields["<DT_Files>"] = namesOf(list);
    fields["<DT_Maps>"] = Json::array();
    cache.getDesignTableMaps(name, list);
    for (int i = 1; i <= list.Size(); ++i) fields["<DT_Maps>"].push_back(linesOfMap(bytesOf(list[i])));
    CATUnicodeString date;
    cache.getBVRDate(name, date);
    fields["<StructLastModDate>"] = Json::array();
    if (!date.IsNull()) fields["<StructLastModDate>"].push_back(bytesOf(date));
}

/** The cache has no use for the identifier of the document: it is read from the lines. */
void addIdentifier(const CATUnicodeString& name, Json& fields) {
    CATListValCATUnicodeString lines;
    if (FAILED(VornToolsCommon::readDatTools(name, CATUnicodeString(), lines))) return;
    const int tag = lines.Locate(kIdentifierTag);
    if (tag > 0 && tag < lines.Size()) fields[kIdentifierTag] = bytesOf(lines[tag + 1]);
}

Json fieldsOf(VornCache& cache, const CATUnicodeString& name) {
    Json fields;
    CATUnicodeString text;
    const auto add = [&](const char* tag) {
        cache.getDataAtLine(name, tag, text);
        fields[tag] = bytesOf(text);
    };
    add("<DatFileVersion>");
    const bool positional = fields["<DatFileVersion>"] == "0";
    if (positional)
        for (const char* const tag : kPositionalTags) add(tag);
    else
        for (const char* const tag : kSingleTags) add(tag);
    addIdentifier(name, fields);
    addBlocks(cache, name, fields);
    VornToolsFolderMemory folders;
    const DocumentLinks links = readDocumentLinks(bytesOf(name), "", folders);
    fields[kDocumentLinks] = links.read ? Json(links.countDocuments()) : Json();
    return fields;
}

std::string shown(const Json& value) {
    if (value.is_string()) return value.get<std::string>();
    if (value.is_null()) return "no document";
    if (!value.is_array()) return value.dump();
    std::string text;
    for (const auto& line : value) text += (text.empty() ? "" : " | ") + line.get<std::string>();
    return text;
}

const char* meaningOf(const std::string& tag) {
    for (const Meaning& meaning : kMeanings)
        if (tag == meaning.tag) return meaning.text;
    return "";
}

void print(const Json& fields) {
    Table table({{"FIELD"}, {"MEANING"}, {"VALUE"}});
    for (const auto& field : fields.items()) {
        if (!field.value().is_array()) table.add({field.key(), meaningOf(field.key()), shown(field.value())});
        for (const auto& line : field.value().is_array() ? field.value() : Json::array())
            table.add({field.key(), meaningOf(field.key()), shown(line)});
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

int runDat(const CommonOptions& options) {
    if (!options.loadSession()) return ExitUnusable;
    JournalFile journal(options.journal);
    const CATUnicodeString name = textOf(documentOf(options.names.front()));
    VornCache cache;
    cache.addDocument(name, nullptr);
    const Json fields = fieldsOf(cache, name);
    if (!journal.finish()) return ExitUnusable;
    if (fields["<DatFileVersion>"].get<std::string>().empty()) {
        complain("no DAT file can be read for " + bytesOf(name));
        return ExitUnusable;
    }
    options.json ? printJson(fields) : print(fields);
    return ExitFine;
}

} // namespace

void addDatCommand(Program& program) {
    const auto options = std::make_shared<CommonOptions>();
    CLI::App& command =
        program.add("dat", "Every field of a DAT file, and what it says", [options] { return runDat(*options); });
    command.add_option("file", options->names, "The DAT file or its document")
        ->required()
        ->expected(1)
        ->type_name("FILE");
    options->addTo(command);
}
