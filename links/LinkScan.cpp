#include "links/LinkScan.h"

#include <algorithm>
#include <unordered_set>

namespace vorntools {

namespace {

using Names = std::vector<std::string_view>;

Names namesOf(const std::vector<const LinkedDocument*>& i_documents, LinkedNames& io_names) {
    Names names;
    for (const LinkedDocument* const p_document : i_documents) names.push_back(io_names.resolve(p_document->name));
    return names;
}

/** Those context parts that the document uses in one way, by index; empty for all others. */
Names namesOfUse(DocumentScan& io_scan, ImportUse::Kind i_kind, LinkedNames& io_names) {
    const std::vector<const LinkedDocument*> parts = io_scan.used(LinkedDocument::ContextPart);
    const std::vector<ImportUse>& uses = io_scan.contextPartUses();
    Names names(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (uses[i].kind == i_kind) names[i] = io_names.resolve(parts[i]->name);
    return names;
}

bool hasUse(DocumentScan& io_scan, ImportUse::Kind i_kind) {
    const std::vector<ImportUse>& uses = io_scan.contextPartUses();
    return std::any_of(uses.begin(), uses.end(), [&](const ImportUse& i_use) { return i_use.kind == i_kind; });
}

} // namespace

std::vector<std::string_view> multiModelNames(DocumentScan& io_scan, LinkedNames& io_names) {
    Names documents = namesOf(io_scan.used(LinkedDocument::PartFile), io_names);
    const std::size_t part_files = documents.size();
    const Names older = namesOfUse(io_scan, ImportUse::OlderForm, io_names);
    documents.insert(documents.end(), older.begin(), older.end());

    const std::vector<MultiModelLinks::Link>& links = io_scan.multiModelLinks().links;
    Names names;
    names.reserve(links.size() + documents.size());
    std::vector<bool> linked(documents.size());
    for (const MultiModelLinks::Link& link : links) {
        const bool known = link.document != MultiModelLinks::noDocument;
        names.push_back(known ? documents[link.document] : std::string_view());
        if (known) linked[link.document] = true;
    }
    std::unordered_set<std::string_view> listed;
    for (std::size_t i = 0; i < documents.size(); ++i)
        if (linked[i]) listed.insert(documents[i]);
    for (std::size_t i = 0; i < part_files; ++i)
        if (listed.count(documents[i]) == 0) names.push_back(documents[i]);
    // A document that is imported in both forms keeps its place among the part files.
    listed.insert(documents.begin(), documents.begin() + static_cast<std::ptrdiff_t>(part_files));
    for (const std::string_view name : older)
        if (!name.empty() && listed.insert(name).second) names.push_back(name);
    return names;
}

LinkScan::LinkScan(std::string_view i_image, std::string_view i_file_name, std::string_view i_directory,
                   KnownFolders& io_folders)
    : m_scan(i_image), m_names(m_scan.stream().ownPath(), i_file_name, i_directory, io_folders) {}

void LinkScan::addContext() { addNames(kContextLink, namesOf(m_scan.used(LinkedDocument::ContextProduct), m_names)); }

void LinkScan::addReferences() {
    for (const std::string& reference : m_scan.references()) m_links.push_back({kReferenceLink, {}, reference});
}

void LinkScan::addUnpublished() { addNames(kUnpublishedLink, namesOfUse(m_scan, ImportUse::Unpublished, m_names)); }

void LinkScan::addAssembly() {
    addContext();
    addReferences();
    addUnpublished();
}

bool LinkScan::addMultiModel() {
    if (m_scan.used(LinkedDocument::PartFile).empty() && !hasUse(m_scan, ImportUse::OlderForm)) return false;
    const Names names = multiModelNames(m_scan, m_names);
    const MultiModelLinks& found = m_scan.multiModelLinks();
    bool missing = false;
    m_links.reserve(m_links.size() + names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool has_tag = i < found.links.size();
        const std::string_view tag = has_tag ? found.elements[found.links[i].element].tag : std::string_view();
        missing = missing || names[i].empty() || tag.empty();
        if (!names[i].empty()) m_links.push_back(multiModelLink(names[i], tag));
    }
    return missing;
}

void LinkScan::addDrawing() {
    std::unordered_set<std::string_view> known;
    for (const auto kind : {LinkedDocument::ContextProduct, LinkedDocument::ContextPart, LinkedDocument::Drawing})
        for (const std::string_view name : namesOf(m_scan.used(kind), m_names))
            if (known.insert(name).second) m_links.push_back({kDrawingLink, name, {}});
}

void LinkScan::addNames(const char* i_type, const std::vector<std::string_view>& i_names) {
    for (const std::string_view name : i_names)
        if (!name.empty()) m_links.push_back({i_type, name, {}});
}

} // namespace vorntools
