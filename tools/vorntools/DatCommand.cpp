#include "tools/vorntools/Commands.h"

#include "VornCache.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <filesystem>

namespace {

using Json = nlohmann::ordered_json;
using ListGetter = HRESULT (VornCache::*)(CATUnicodeString, CATListValCATUnicodeString&);

constexpr const char* kPositionalTags[] = {"<ItemId>",      "<ItemRevId>",        "<ItemRevName>",
                                           "<DatasetUID>",  "<DatasetVersion>",   "<LoadType>",
                                           "<DatasetType>", "<LocalLastModDate>", "<DbLastModDate>"};
constexpr const char* kSingleTags[] = {"<ItemRevUID>", "<DatasetUID>", "<NamedRefUID>", "<LoadType>",
                                       "<LocalLastModDate>"};

/** A block of lines and the question that answers it. */
struct Block {
    const char* tag;
    ListGetter getter;
};
constexpr Block kBlocks[] = {
    {"<Configuration>", &VornCache::getConfiguration}, {"<DT_Sheets>", &VornCache::getDesignTableSheets},
    {"<DT_Cfgs>", &VornCache::getDesignTableConfigs},  {"<DT_CfgCksums>", &VornCache::getDesignTableCksums},
    {"<OVSkippedOcc>", &VornCache::getSkippedOccList}, {"<DT_Maps>", &VornCache::getDesignTableMaps}};

std::string bytesOf(const CATUnicodeString& text) {
    return {text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte())};
}

/** What is said of files is their names alone: the place of a linked file is another question. */
std::string fileNameOf(const std::string& name) { return name.substr(name.find_last_of("/\\") + 1); }

Json arrayOf(const CATListValCATUnicodeString& list, bool namesOnly) {
    Json array = Json::array();
    for (int i = 1; i <= list.Size(); ++i) array.push_back(namesOnly ? fileNameOf(bytesOf(list[i])) : bytesOf(list[i]));
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
        fields[block.tag] = arrayOf(list, false);
    }
    cache.getLinkedDoc(name, CATUnicodeString(), list);
    fields["<LinkedDocs>"] = arrayOf(list, true);
    cache.getDesignTableFiles(name, CATUnicodeString(), list);
    fields["<DT_Files>"] = arrayOf(list, true);
    fields["<DT_Maps>"] = Json::array();
    cache.getDesignTableMaps(name, list);
    for (int i = 1; i <= list.Size(); ++i) fields["<DT_Maps>"].push_back(linesOfMap(bytesOf(list[i])));
    CATUnicodeString date;
    cache.getBVRDate(name, date);
    fields["<StructLastModDate>"] = Json::array();
    if (!date.IsNull()) fields["<StructLastModDate>"].push_back(bytesOf(date));
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
    addBlocks(cache, name, fields);
    return fields;
}

std::string shown(const Json& value) {
    if (value.is_string()) return value.get<std::string>();
    std::string text;
    for (const auto& line : value) text += (text.empty() ? "" : " | ") + line.get<std::string>();
    return text;
}

void print(const Json& fields) {
    for (const auto& field : fields.items()) {
        if (!field.value().is_array()) {
            std::printf("%-20s %s\n", field.key().c_str(), shown(field.value()).c_str());
            continue;
        }
        for (const auto& line : field.value()) std::printf("%-20s %s\n", field.key().c_str(), shown(line).c_str());
    }
}

} // namespace

int runDat(const CommonOptions& options) {
    if (!loadSessionOf(options)) return ExitUnusable;
    std::string document = options.names.front();
    const std::string suffix = ".dat";
    if (document.size() > suffix.size() &&
        document.compare(document.size() - suffix.size(), suffix.size(), suffix) == 0)
        document.resize(document.size() - suffix.size());

    JournalFile journal(options.journal);
    VornCache cache;
    const CATUnicodeString name(document.data(), document.size());
    cache.addDocument(name, nullptr);
    const Json fields = fieldsOf(cache, name);
    if (!journal.take()) std::fprintf(stderr, "vorntools: cannot write %s\n", options.journal.c_str());
    if (fields["<DatFileVersion>"] == "") {
        std::fprintf(stderr, "vorntools: no DAT file can be read for %s\n", document.c_str());
        return ExitUnusable;
    }
    if (options.json)
        std::puts(fields.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
    else
        print(fields);
    return ExitFine;
}
