#include "tools/vorntools/DocumentStatus.h"

#include "tools/vorntools/Output.h"

#include "VornToolsCommon.h"

#include "embedded/Records.h"
#include "embedded/Session.h"

#include <array>
#include <filesystem>
#include <string_view>
#include <utility>

namespace fs = std::filesystem;

namespace {

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

void fillFields(VornCache& cache, const FoundDocument& found, const CATUnicodeString& name, DocumentStatus& row) {
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

} // namespace

DocumentStatus Examiner::examine(const FoundDocument& found) {
    // A cache keeps all that it was asked about: a new one now and then keeps the memory of a large folder small.
    if (m_asked++ % kAnswersPerCache == 0) m_cache = std::make_unique<VornCache>();
    DocumentStatus row;
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
