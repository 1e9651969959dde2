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
    CATUnicodeString date;
    cache.getBVRDate(name, date);
    fields["<StructLastModDate>"] = bytesOf(date);
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

void print(const Json& fields) {
    for (const auto& field : fields.items()) {
        if (!field.value().is_array()) {
            std::printf("%-20s %s\n", field.key().c_str(), field.value().get<std::string>().c_str());
            continue;
        }
        for (const auto& line : field.value())
            std::printf("%-20s %s\n", field.key().c_str(), line.get<std::string>().c_str());
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
