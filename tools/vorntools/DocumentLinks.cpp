#include "tools/vorntools/DocumentLinks.h"

#include "tools/vorntools/Text.h"

#include "UTILFile.h"
#include "VornToolsCommon.h"
#include "VornToolsDocumentFile.h"
#include "VornToolsLinks.h"

#include <algorithm>
#include <memory>
#include <set>
#include <unordered_map>
#include <utility>

namespace {

using Strings = VornToolsVector<VornToolsString>;

constexpr const char* kDrawingType = "MMLDrawing";
constexpr const char* kMultiModelType = "MML";
constexpr const char* kReferenceType = "MMLAssy_Ref";

std::string bytesOf(const VornToolsString& text) { return {text.bytes(), text.size()}; }

std::vector<std::string> bytesOf(const Strings& list) {
    std::vector<std::string> result;
    for (unsigned int i = 0; i < list.size(); ++i) result.push_back(bytesOf(list[i]));
    return result;
}

NamedDocument named(std::string name) {
    const bool exists = !name.empty() && UTILFile::existingFile(textOf(name)) != 0;
    return {std::move(name), exists, {}, 0};
}

std::vector<NamedDocument> named(const Strings& list) {
    std::vector<NamedDocument> result;
    for (std::string& name : bytesOf(list)) result.push_back(named(std::move(name)));
    return result;
}

bool isDrawing(const std::string& document) {
    return VornToolsCommon::returnDocumentType(textOf(document)) == VornToolsCommon::DocumentTypeDrawing;
}

std::string folderOf(const std::string& document) {
    const std::size_t end = document.find_last_of("/\\");
    return document.substr(0, std::max<std::size_t>(end, 1));
}

/** One document image with what every question about it takes. */
class Image {
public:
    Image(VornToolsString& bytes, const std::string& document, LinkMemory& memory)
        : m_bytes(bytes), m_name(document.data(), static_cast<int>(document.size())),
          m_folder(textOf(folderOf(document))), m_memory(memory), m_folders(memory.folders),
          m_properties(positionOf("CATDocumentProperty")) {}

    void readNames(DocumentLinks& links) {
        VornToolsLinks::getVersion(&m_bytes, links.version, links.release, links.servicePack);
        VornToolsLinks::getLinkedDocName(&m_bytes, m_properties, &m_name, m_folder, m_memory.partFiles,
                                         m_memory.contextProducts, m_memory.contextParts, m_memory.identities,
                                         m_folders);
        VornToolsLinks::getGhosts(&m_bytes, m_properties, m_memory.ghosts);
        links.partFiles = named(m_memory.partFiles);
        links.contextProducts = named(m_memory.contextProducts);
        links.contextParts = named(m_memory.contextParts);
        links.ghosts = bytesOf(m_memory.ghosts);
        readOthers(links);
        readStored(links);
    }

    void readTyped(const std::string& type, DocumentLinks& links) {
        unsigned char missingTag = 0;
        const auto list =
            type == kDrawingType
                ? VornToolsLinks::getMMLDrawingLinks(&m_bytes, &m_name, m_folder, m_folders)
                : VornToolsLinks::getLinks(&m_bytes, textOf(type), &m_name, m_folder, missingTag, m_folders);
        links.links.reserve(list.size());
        for (unsigned int i = 0; i < list.size(); ++i) {
            links.links.push_back({::bytesOf(list[i].get_type()), named(::bytesOf(list[i].get_linkedFileName())),
                                   ::bytesOf(list[i].get_reference()), list[i].get_link_tag_found() != 0});
            takeStored(links.links.back().document);
        }
    }

    /** Typed links hold them already, unless they were asked for without. */
    void readReferences(const std::string& type, DocumentLinks& links) {
        if (type != kDrawingType && type != kMultiModelType) {
            for (const TypedLink& link : links.links)
                if (link.type == kReferenceType) links.externalReferences.push_back(link.reference);
            return;
        }
        Strings references;
        VornToolsLinks::getExternalReference(&m_bytes, links.release, positionOf("AppliCont"), m_properties,
                                             references);
        links.externalReferences = bytesOf(references);
    }

private:
    void readOthers(DocumentLinks& links) {
        Strings &names = m_memory.others, &kinds = m_memory.kinds;
        VornToolsVector<int>& uses = m_memory.uses;
        VornToolsLinks::getOtherDocuments(&m_bytes, m_properties, &m_name, m_folder, names, kinds, uses, m_folders);
        for (unsigned int i = 0; i < names.size(); ++i)
            links.others.push_back({bytesOf(kinds[i]), named(bytesOf(names[i])), uses[i]});
    }

    /** What the names of records were made of, kind by kind in the order of the records. */
    void readStored(DocumentLinks& links) {
        VornToolsString ownPath;
        VornToolsLinks::getStoredNames(&m_bytes, m_properties, ownPath, m_memory.stored, m_memory.storedKinds,
                                       m_memory.uses);
        links.savedPath = bytesOf(ownPath);
        std::vector<NamedDocument*> ofKind[VornToolsLinks::StoredOther + 1];
        for (NamedDocument& document : links.partFiles) ofKind[VornToolsLinks::StoredPartFile].push_back(&document);
        for (NamedDocument& document : links.contextProducts)
            ofKind[VornToolsLinks::StoredContextProduct].push_back(&document);
        for (NamedDocument& document : links.contextParts)
            ofKind[VornToolsLinks::StoredContextPart].push_back(&document);
        for (OtherNamed& other : links.others) ofKind[VornToolsLinks::StoredOther].push_back(&other.document);
        std::size_t next[VornToolsLinks::StoredOther + 1] = {};
        for (unsigned int i = 0; i < m_memory.stored.size(); ++i) {
            const VornToolsLinks::EnumStoredName kind = m_memory.storedKinds[i];
            const Stored stored{bytesOf(m_memory.stored[i]), m_memory.uses[i]};
            if (kind == VornToolsLinks::StoredDrawing) {
                m_drawings.emplace(fileNameOf(stored.name), stored);
            } else if (next[kind] < ofKind[kind].size()) {
                NamedDocument& document = *ofKind[kind][next[kind]++];
                document.stored = stored.name;
                document.uses = stored.uses;
                m_stored.emplace(document.name, stored);
            }
        }
    }

    /** Of a typed link: the record that led to the same file; every rule by which files are found keeps the last
     * name. */
    void takeStored(NamedDocument& document) const {
        const auto known = m_stored.find(document.name);
        const auto drawing = m_drawings.find(fileNameOf(document.name));
        const Stored* const stored = known != m_stored.end()       ? &known->second
                                     : drawing != m_drawings.end() ? &drawing->second
                                                                   : nullptr;
        document.stored = stored ? stored->name : document.name;
        document.uses = stored ? stored->uses : 0;
    }

    int positionOf(const std::string& marker) const {
        return m_bytes.indexOf(VornToolsString(marker.data(), static_cast<int>(marker.size())), 0, m_bytes.size(), 0);
    }

    VornToolsString& m_bytes;
    VornToolsString m_name;
    CATUnicodeString m_folder;
    LinkMemory& m_memory;
    VornToolsFolderMemory& m_folders;
    int m_properties;
    struct Stored {
        std::string name;
        int uses = 0;
    };
    std::unordered_map<std::string, Stored> m_stored;   ///< by the names found
    std::unordered_map<std::string, Stored> m_drawings; ///< by their last names
};

} // namespace

bool DocumentLinks::anyMissing() const {
    const auto isMissing = [](const NamedDocument& document) { return !document.exists; };
    return std::any_of(partFiles.begin(), partFiles.end(), isMissing) ||
           std::any_of(contextProducts.begin(), contextProducts.end(), isMissing) ||
           std::any_of(contextParts.begin(), contextParts.end(), isMissing) ||
           std::any_of(others.begin(), others.end(), [](const OtherNamed& other) { return !other.document.exists; }) ||
           std::any_of(links.begin(), links.end(), [](const TypedLink& link) { return link.isMissing(); });
}

std::size_t DocumentLinks::countDocuments() const {
    std::set<std::string> names;
    for (const auto* const list : {&partFiles, &contextProducts, &contextParts})
        for (const NamedDocument& document : *list) names.insert(document.name);
    return names.size();
}

DocumentLinks readDocumentLinks(const std::string& document, const std::string& filter, LinkMemory& memory) {
    DocumentLinks links;
    VornToolsDocumentFile file;
    if (FAILED(file.open(textOf(document)))) return links;
    const std::unique_ptr<VornToolsString> bytes(file.readLinkImage());
    links.read = bytes || file.getSize() == 0;
    if (!links.read) return links;
    links.condition = conditionOf(file, document);
    if (!bytes) return links;
    const std::string type = filter.empty() && isDrawing(document) ? kDrawingType : filter;
    Image image(*bytes, document, memory);
    image.readNames(links);
    image.readTyped(type, links);
    image.readReferences(type, links);
    return links;
}
