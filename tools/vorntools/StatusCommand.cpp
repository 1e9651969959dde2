#include "tools/vorntools/Commands.h"

#include "VornCache.h"
#include "VornToolsCommon.h"

#include "embedded/Records.h"
#include "embedded/Session.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace fs = std::filesystem;

namespace {

/** One document as it is shown. */
struct Row {
    std::string document, dat, layout, itemRevision, dataset, namedReference, loadType, status, reason;
    int linked = 0;
    int unresolved = 0;
    bool designTable = false;
};

constexpr std::array<std::string_view, 13> kSuffixes = {"catpart",
                                                        "catproduct",
                                                        "catdrawing",
                                                        "catprocess",
                                                        "catanalysis",
                                                        "catalog",
                                                        "wrl",
                                                        "catshape",
                                                        "model",
                                                        "cgr",
                                                        "jt",
                                                        "catanalysisresults",
                                                        "catanalysiscomputations"};

/** The journal line that decides a status, by its beginning, in plain words. */
constexpr std::array<std::pair<std::string_view, const char*>, 6> kReasons = {{
    {"Modified Status to New Case 1", "no DAT file"},
    {"Modified Status to New Case 2", "no date in the DAT file"},
    {"Modified Status to Modified Case 1", "file changed since it was loaded"},
    {"Modified Status to Modified Case 2", "unsaved changes in the session"},
    {"Modified Status to Not Modified", "file and DAT file agree"},
    {"Modified Status to Modified for", "no file yet"},
}};

std::string bytesOf(const CATUnicodeString& text) {
    return {text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte())};
}

bool isDocument(const std::string& name) {
    const std::size_t dot = name.find_last_of('.');
    if (dot == std::string::npos) return false;
    std::string suffix = name.substr(dot + 1);
    for (char& letter : suffix)
        if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
    return std::find(kSuffixes.begin(), kSuffixes.end(), suffix) != kSuffixes.end();
}

/** The documents of a folder and of those below it, sorted. Links to folders are not followed. */
void collect(const fs::path& folder, std::vector<std::string>& documents) {
    const std::size_t first = documents.size();
    for (const fs::directory_entry& entry :
         fs::recursive_directory_iterator(folder, fs::directory_options::skip_permission_denied)) {
        std::string name = entry.path().u8string();
        if (isDocument(name) && !entry.is_directory()) documents.push_back(std::move(name));
    }
    std::sort(documents.begin() + static_cast<std::ptrdiff_t>(first), documents.end());
}

bool collectAll(const std::vector<std::string>& names, std::vector<std::string>& documents) {
    for (const std::string& name : names) {
        const fs::path path = fs::u8path(name);
        std::error_code error;
        if (fs::is_directory(path, error)) {
            collect(path, documents);
        } else if (fs::is_regular_file(path, error)) {
            documents.push_back(name);
        } else {
            std::fprintf(stderr, "vorntools: no such file or folder: %s\n", name.c_str());
            return false;
        }
    }
    return true;
}

std::string reasonInJournal() {
    const embedded::Journal& journal = embedded::Journal::get();
    for (std::size_t i = journal.size(); i > 0; --i)
        for (const auto& reason : kReasons)
            if (journal.line(i - 1).substr(0, reason.first.size()) == reason.first) return reason.second;
    return "the document could not be asked";
}

const char* nameOf(VornCache::EnumModifiedFlag status) {
    if (status == VornCache::ModifiedFlagNotModified) return "not modified";
    return status == VornCache::ModifiedFlagModified ? "modified" : "new";
}

std::string value(VornCache& cache, const CATUnicodeString& name, const char* tag) {
    CATUnicodeString text;
    cache.getDataAtLine(name, tag, text);
    return bytesOf(text);
}

void fillFields(VornCache& cache, const CATUnicodeString& name, Row& row) {
    const std::string version = value(cache, name, "<DatFileVersion>");
    if (version.empty()) return;
    CATUnicodeString managed;
    if (VornToolsCommon::isAOvElement(nullptr, name, managed)) row.dat = bytesOf(managed) + ".dat";
    row.layout = version == "0" ? "positional" : "tagged";
    row.itemRevision = value(cache, name, version == "0" ? "<ItemRevId>" : "<ItemRevUID>");
    row.dataset = value(cache, name, "<DatasetUID>");
    row.namedReference = value(cache, name, "<NamedRefUID>");
    row.loadType = value(cache, name, "<LoadType>");
    CATListValCATUnicodeString links, unresolved;
    cache.getLinkedDoc(name, CATUnicodeString(), links);
    cache.getLinkedUnresolvedDoc(name, unresolved);
    row.linked = links.Size();
    row.unresolved = unresolved.Size();
    row.designTable = cache.isDesignTable(name) != 0;
}

Row examine(const std::string& document) {
    Row row;
    row.document = document;
    const CATUnicodeString name(document.data(), document.size());
    VornCache cache;
    cache.addDocument(name, embedded::Session::current().find(document).get());
    row.reason = reasonInJournal();
    VornCache::EnumModifiedFlag status = VornCache::ModifiedFlagNew;
    cache.getModifiedStatus(name, status);
    row.status = nameOf(status);
    fillFields(cache, name, row);
    return row;
}

nlohmann::ordered_json textOrNull(const std::string& text) {
    return text.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(text);
}

void printJson(const Row& row) {
    const nlohmann::ordered_json object = {{"document", row.document},
                                           {"dat", textOrNull(row.dat)},
                                           {"layout", textOrNull(row.layout)},
                                           {"item_revision", row.itemRevision},
                                           {"dataset", row.dataset},
                                           {"named_reference", row.namedReference},
                                           {"load_type", row.loadType},
                                           {"status", row.status},
                                           {"reason", row.reason},
                                           {"linked", row.linked},
                                           {"unresolved", row.unresolved},
                                           {"design_table", row.designTable}};
    // Names are bytes; what is not UTF-8 is shown replaced.
    std::puts(object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace).c_str());
}

void printRow(const Row& row) {
    std::printf("%-12s  %-33s  %-10s  %-16s  %-16s  %5d  %10d  %-5s  %s\n", row.status.c_str(), row.reason.c_str(),
                row.layout.empty() ? "-" : row.layout.c_str(), row.itemRevision.c_str(), row.loadType.c_str(),
                row.linked, row.unresolved, row.designTable ? "yes" : "no", row.document.c_str());
}

void printHeading() {
    std::printf("%-12s  %-33s  %-10s  %-16s  %-16s  %5s  %10s  %-5s  %s\n", "STATUS", "REASON", "DAT", "ITEM REVISION",
                "LOAD TYPE", "LINKS", "UNRESOLVED", "TABLE", "DOCUMENT");
}

} // namespace

int runStatus(const CommonOptions& options) {
    std::vector<std::string> documents;
    if (!loadSessionOf(options) || !collectAll(options.names, documents)) return ExitUnusable;

    JournalFile journal(options.journal);
    if (!options.json) printHeading();
    int findings = 0;
    for (const std::string& document : documents) {
        const Row row = examine(document);
        if (row.status != "not modified" || row.unresolved > 0) ++findings;
        options.json ? printJson(row) : printRow(row);
        if (!journal.take()) {
            std::fprintf(stderr, "vorntools: cannot write %s\n", options.journal.c_str());
            return ExitUnusable;
        }
    }
    return findings > 0 ? ExitFindings : ExitFine;
}
