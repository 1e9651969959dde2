#include "tools/vorntools/Commands.h"
#include "tools/vorntools/DocumentLinks.h"
#include "tools/vorntools/Files.h"
#include "tools/vorntools/Output.h"

#include "VornCache.h"
#include "VornToolsCommon.h"

#include "embedded/Records.h"
#include "embedded/Session.h"

#include <array>
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
    Json documentLinks; ///< number of documents that the document itself points to; null when nobody looked
};

struct StatusOptions {
    CommonOptions common;
    bool links = false;
};

/** The journal line that decides a status, by its beginning, in plain words. */
constexpr std::array<std::pair<std::string_view, const char*>, 6> kReasons = {{
    {"Modified Status to New Case 1", "no DAT file"},
    {"Modified Status to New Case 2", "no date in the DAT file"},
    {"Modified Status to Modified Case 1", "file changed since it was loaded"},
    {"Modified Status to Modified Case 2", "unsaved changes in the session"},
    {"Modified Status to Not Modified", "file and DAT file agree"},
    {"Modified Status to Modified for", "no file yet"},
}};

/** The last decision in the journal: a DAT file without a date is found new first and then compared. */
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

std::string datFileOf(const FoundDocument& found, const CATUnicodeString& name) {
    if (found.hasDat) return found.name + ".dat";
    CATUnicodeString managed;
    return VornToolsCommon::isAOvElement(nullptr, name, managed) ? bytesOf(managed) + ".dat" : std::string();
}

void fillFields(VornCache& cache, const FoundDocument& found, const CATUnicodeString& name, Row& row) {
    const std::string version = value(cache, name, "<DatFileVersion>");
    if (version.empty()) return;
    row.dat = datFileOf(found, name);
    row.layout = version == "0" ? "positional" : "tagged";
    row.itemRevision = value(cache, name, version == "0" ? "<ItemRevId>" : "<ItemRevUID>");
    row.dataset = value(cache, name, "<DatasetUID>");
    if (version != "0") row.namedReference = value(cache, name, "<NamedRefUID>");
    row.loadType = value(cache, name, "<LoadType>");
    // Links are only counted: with the document's own folder as the place to look, nobody looks for each of them.
    CATListValCATUnicodeString links, unresolved;
    const std::string folder = found.name.substr(0, found.name.find_last_of("/\\") + 1);
    cache.getLinkedDoc(name, textOf(folder.size() > 1 ? folder.substr(0, folder.size() - 1) : folder), links);
    cache.getLinkedUnresolvedDoc(name, unresolved);
    row.linked = links.Size();
    row.unresolved = unresolved.Size();
    row.designTable = cache.isDesignTable(name) != 0;
}

/** A document of the session file, by the name that was found or by its absolute form. */
CATDocument* documentInSession(const std::string& name) {
    const embedded::Session& session = embedded::Session::current();
    if (session.documentCount() == 0) return nullptr;
    if (const embedded::Document document = session.find(name)) return document.get();
    std::error_code error;
    const fs::path absolute = fs::absolute(fs::u8path(name), error).lexically_normal();
    return error ? nullptr : session.find(absolute.u8string()).get();
}

/** Asks the library about one document after the other. */
class Examiner {
public:
    Row examine(const FoundDocument& found) {
        // A cache keeps all that it was asked about: a new one now and then keeps the memory of a large folder small.
        if (m_asked++ % kAnswersPerCache == 0) m_cache = std::make_unique<VornCache>();
        Row row;
        row.document = found.name;
        const CATUnicodeString name = textOf(found.name);
        m_cache->addDocument(name, documentInSession(found.name));
        row.reason = found.exists ? reasonInJournal() : "a DAT file without its document";
        VornCache::EnumModifiedFlag status = VornCache::ModifiedFlagNew;
        m_cache->getModifiedStatus(name, status);
        row.status = nameOf(status);
        fillFields(*m_cache, found, name, row);
        return row;
    }

private:
    static constexpr std::size_t kAnswersPerCache = 64;

    std::unique_ptr<VornCache> m_cache;
    std::size_t m_asked = 0;
};

/** Null when the document cannot be read. */
Json countLinksOf(const FoundDocument& found) {
    const DocumentLinks links = readDocumentLinks(found.name, "");
    return links.read ? Json(links.countDocuments()) : Json();
}

Json jsonOf(const Row& row, bool withLinks) {
    Json json = Json::object();
    auto& members = json.get_ref<Json::object_t&>();
    constexpr std::size_t kMembers = 13;
    members.reserve(kMembers);
    members.emplace_back("document", row.document);
    members.emplace_back("dat", textOrNull(row.dat));
    members.emplace_back("layout", textOrNull(row.layout));
    members.emplace_back("item_revision", row.itemRevision);
    members.emplace_back("dataset", row.dataset);
    members.emplace_back("named_reference", row.namedReference);
    members.emplace_back("load_type", row.loadType);
    members.emplace_back("status", row.status);
    members.emplace_back("reason", row.reason);
    members.emplace_back("linked", row.linked);
    members.emplace_back("unresolved", row.unresolved);
    members.emplace_back("design_table", row.designTable);
    if (withLinks) members.emplace_back("document_links", row.documentLinks);
    return json;
}

std::vector<std::string> cellsOf(const Row& row) {
    const std::string inDocument = row.documentLinks.is_null() ? "" : " / " + row.documentLinks.dump();
    return {row.status,
            row.reason,
            row.layout.empty() ? "-" : row.layout,
            row.itemRevision,
            row.loadType,
            std::to_string(row.linked) + inDocument,
            std::to_string(row.unresolved),
            row.designTable ? "yes" : "no",
            row.document};
}

int runStatus(const StatusOptions& statusOptions) {
    const CommonOptions& options = statusOptions.common;
    if (!options.loadSession()) return ExitUnusable;
    DocumentSearch documents;
    const bool complete = documents.search(options.names);

    JournalFile journal(options.journal);
    journal.take();
    Table table({{"STATUS"},
                 {"REASON"},
                 {"DAT"},
                 {"ITEM REVISION"},
                 {"LOAD TYPE"},
                 {statusOptions.links ? "LINKS DAT / DOCUMENT" : "LINKS", true},
                 {"UNRESOLVED", true},
                 {"TABLE"},
                 {"DOCUMENT"}});
    bool findings = false;
    {
        Progress progress(documents.found().size(), "documents");
        Examiner examiner;
        for (const FoundDocument& found : documents.found()) {
            Row row = examiner.examine(found);
            if (statusOptions.links) row.documentLinks = countLinksOf(found);
            findings = findings || row.status != "not modified" || row.unresolved > 0;
            options.json ? printJson(jsonOf(row, statusOptions.links)) : table.add(cellsOf(row));
            journal.take();
            progress.step();
        }
    }
    table.print();
    if (!journal.finish() || !complete) return ExitUnusable;
    return findings ? ExitFindings : ExitFine;
}

} // namespace

void addStatusCommand(Program& program) {
    const auto options = std::make_shared<StatusOptions>();
    CLI::App& command = program.add("status", "New, modified or not modified: every document of a folder, and why",
                                    [options] { return runStatus(*options); });
    command.add_option("folder", options->common.names, "Folders, searched with all below them, and documents")
        ->required()
        ->type_name("FOLDER");
    command.add_flag("--links", options->links,
                     "Also count the links in the documents themselves, which reads every one of them");
    options->common.addTo(command);
}
