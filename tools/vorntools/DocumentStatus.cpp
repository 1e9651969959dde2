#include "tools/vorntools/DocumentStatus.h"

#include "tools/vorntools/JournalFile.h"
#include "tools/vorntools/Output.h"

#include "VornCache.h"
#include "VornToolsCommon.h"

#include "embedded/Records.h"
#include "embedded/Session.h"

#include <array>
#include <string_view>
#include <utility>

namespace {

constexpr const char* kNoDatFile = "no DAT file";

/** The journal line that decides a status, by its beginning, in plain words. */
constexpr std::array<std::pair<std::string_view, const char*>, 5> kReasons = {{
    {"Modified Status to New Case 1", kNoDatFile},
    {"Modified Status to New Case 2", "no date in the DAT file"},
    {"Modified Status to Modified Case 1", "file changed since it was loaded"},
    {"Modified Status to Modified Case 2", "unsaved changes in the session"},
    {"Modified Status to Not Modified", "file and DAT file agree"},
}};

/** The first decision in the journal: a DAT file without a date is found new first, and compared all the same. */
const char* reasonInJournal() {
    const embedded::Journal& journal = embedded::Journal::get();
    for (std::size_t i = 0; i < journal.size(); ++i)
        for (const auto& reason : kReasons)
            if (journal.line(i).substr(0, reason.first.size()) == reason.first) return reason.second;
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

/** Beside the document, or where the library keeps that of a document without one. */
std::string datFileOf(const FoundDocument& found, const CATUnicodeString& name) {
    if (found.hasDat) return found.name + ".dat";
    CATUnicodeString managed;
    return VornToolsCommon::isAOvElement(nullptr, name, managed) ? bytesOf(managed) + ".dat" : std::string();
}

/** Only for a document whose DAT file was read; the file may say no version. */
void fillFields(VornCache& cache, const FoundDocument& found, const CATUnicodeString& name, DocumentStatus& row) {
    const std::string version = value(cache, name, "<DatFileVersion>");
    row.dat = datFileOf(found, name);
    row.layout = version == "0" ? "positional" : "tagged";
    row.itemRevision = value(cache, name, version == "0" ? "<ItemRevId>" : "<ItemRevUID>");
    row.dataset = value(cache, name, "<DatasetUID>");
    if (version != "0") row.namedReference = value(cache, name, "<NamedRefUID>");
    row.loadType = value(cache, name, "<LoadType>");
    // Links are only counted: with the document's own folder as the place to look, nobody looks for each of them.
    CATListValCATUnicodeString links, unresolved;
    const std::string folder = found.fullName.substr(0, found.fullName.find_last_of("/\\") + 1);
    cache.getLinkedDoc(name, textOf(folder.size() > 1 ? folder.substr(0, folder.size() - 1) : folder), links);
    cache.getLinkedUnresolvedDoc(name, unresolved);
    row.linked = links.Size();
    row.unresolved = unresolved.Size();
    row.designTable = cache.isDesignTable(name) != 0;
}

/** A document of the session file, by the name that was found or by its full name. */
CATDocument* documentInSession(const FoundDocument& found) {
    const embedded::Session& session = embedded::Session::current();
    if (session.documentCount() == 0) return nullptr;
    const embedded::Document document = session.find(found.name);
    return document ? document.get() : session.find(found.fullName).get();
}

/** Has the library decide on a document, and tells why. */
std::string addTo(VornCache& cache, const CATUnicodeString& name, CATDocument* document) {
    const JournalReading reading;
    cache.addDocument(name, document);
    return reasonInJournal();
}

} // namespace

DocumentStatus examine(const FoundDocument& found) {
    VornCache cache; // of its own, so that nothing hangs on what was asked before
    DocumentStatus row;
    row.document = found.name;
    const CATUnicodeString name = textOf(found.fullName);
    const std::string reason = addTo(cache, name, documentInSession(found));
    row.reason = found.exists ? reason : "a DAT file without its document";
    VornCache::EnumModifiedFlag status = VornCache::ModifiedFlagNew;
    cache.getModifiedStatus(name, status);
    row.status = nameOf(status);
    if (reason != kNoDatFile) fillFields(cache, found, name, row);
    return row;
}
