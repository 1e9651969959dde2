#include "links/LinkScan.h"

#include <algorithm>
#include <unordered_set>

namespace vorntools {

namespace {

NamesOfLinks namesOf(const std::vector<const LinkedDocument*>& i_documents, LinkedNames& io_names) {
    NamesOfLinks names;
    names.reserve(i_documents.size());
    for (const LinkedDocument* const p_document : i_documents) names.push_back(&io_names.find(p_document->name));
    return names;
}

/** Those context parts that the document uses in one way, by index; null for all others. */
NamesOfLinks namesOfUse(DocumentScan& io_scan, ImportUse::Kind i_kind, LinkedNames& io_names) {
    const std::vector<const LinkedDocument*> parts = io_scan.used(LinkedDocument::ContextPart);
    const std::vector<ImportUse>& uses = io_scan.contextPartUses();
    NamesOfLinks names(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i)
        if (uses[i].kind == i_kind) names[i] = &io_names.find(parts[i]->name);
    return names;
}

/** The same link with its document as the image names it. */
FoundLink withName(FoundLink i_link, const LinkedName& i_name) {
    i_link.storedName = i_name.stored;
    i_link.exists = i_name.exists;
    return i_link;
}

bool hasUse(DocumentScan& io_scan, ImportUse::Kind i_kind) {
    const std::vector<ImportUse>& uses = io_scan.contextPartUses();
    return std::any_of(uses.begin(), uses.end(), [&](const ImportUse& i_use) { return i_use.kind == i_kind; });
}

} // namespace

NamesOfLinks multiModelNames(DocumentScan& io_scan, LinkedNames& io_names) {
    NamesOfLinks documents = namesOf(io_scan.used(LinkedDocument::PartFile), io_names);
    const std::size_t part_files = documents.size();
    const NamesOfLinks older = namesOfUse(io_scan, ImportUse::OlderForm, io_names);
    documents.insert(documents.end(), older.begin(), older.end());

    const std::vector<MultiModelLinks::Link>& links = io_scan.multiModelLinks().links;
    NamesOfLinks names;
    std::vector<bool> linked(documents.size());
    for (const MultiModelLinks::Link& link : links) {
        const bool known = link.document != MultiModelLinks::noDocument;
        names.push_back(known ? documents[link.document] : nullptr);
        if (known) linked[link.document] = true;
    }
    std::unordered_set<std::string_view> listed;
    for (std::size_t i = 0; i < documents.size(); ++i)
        if (linked[i] && documents[i]) listed.insert(documents[i]->path);
    for (std::size_t i = 0; i < part_files; ++i)
        if (listed.count(documents[i]->path) == 0) names.push_back(documents[i]);
    // A document that is imported in both forms keeps its place among the part files.
    for (std::size_t i = 0; i < part_files; ++i) listed.insert(documents[i]->path);
    for (const LinkedName* const p_name : older)
        if (p_name && listed.insert(p_name->path).second) names.push_back(p_name);
    return names;
}

LinkScan::LinkScan(DocumentScan& io_scan, std::string_view i_file_name, std::string_view i_directory,
                   KnownFolders& io_folders)
    : m_scan(io_scan), m_names(m_scan.stream().ownPath(), i_file_name, i_directory, io_folders) {}

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
    const NamesOfLinks names = multiModelNames(m_scan, m_names);
    const MultiModelLinks& found = m_scan.multiModelLinks();
    bool missing = false;
    m_links.reserve(m_links.size() + names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        const bool has_tag = i < found.links.size();
        const std::string_view tag = has_tag ? found.elements[found.links[i].element].tag : std::string_view();
        missing = missing || !names[i] || tag.empty();
        if (names[i]) m_links.push_back(withName(multiModelLink(names[i]->path, tag), *names[i]));
    }
    return missing;
}

void LinkScan::addDrawing() {
    std::unordered_set<std::string_view> known;
    for (const auto kind : {LinkedDocument::ContextProduct, LinkedDocument::ContextPart, LinkedDocument::Drawing})
        for (const LinkedName* const p_name : namesOf(m_scan.used(kind), m_names))
            if (known.insert(p_name->path).second)
                m_links.push_back(withName({kDrawingLink, p_name->path, {}}, *p_name));
}

bool LinkScan::addByType(std::string_view i_type) {
    const bool multi_model_only = i_type == "MML";
    if (!multi_model_only) addAssembly();
    if (i_type == "MMLASSY") return false;
    const bool missing = addMultiModel();
    return multi_model_only && missing;
}

bool LinkScan::addForSearch(std::string_view i_type) {
    if (i_type != kDrawingLink) return addByType(i_type);
    addDrawing();
    return false;
}

void LinkScan::addNames(const char* i_type, const NamesOfLinks& i_names) {
    for (const LinkedName* const p_name : i_names)
        if (p_name) m_links.push_back(withName({i_type, p_name->path, {}}, *p_name));
}

} // namespace vorntools
