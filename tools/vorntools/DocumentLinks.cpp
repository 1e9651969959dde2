#include "tools/vorntools/DocumentLinks.h"

#include "tools/vorntools/Output.h"

#include "UTILFile.h"
#include "VornToolsCommon.h"
#include "VornToolsLinks.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <set>

namespace {

using Strings = VornToolsVector<VornToolsString>;

std::string bytesOf(const VornToolsString& text) { return {text.bytes(), text.size()}; }

std::vector<std::string> bytesOf(const Strings& list) {
    std::vector<std::string> result;
    for (unsigned int i = 0; i < list.size(); ++i) result.push_back(bytesOf(list[i]));
    return result;
}

NamedDocument named(const std::string& name) {
    return {name, !name.empty() && UTILFile::existingFile(textOf(name)) != 0};
}

std::vector<NamedDocument> named(const Strings& list) {
    std::vector<NamedDocument> result;
    for (unsigned int i = 0; i < list.size(); ++i) result.push_back(named(bytesOf(list[i])));
    return result;
}

bool isDrawing(const std::string& document) {
    return VornToolsCommon::returnDocumentType(textOf(document)) == VornToolsCommon::DocumentTypeDrawing;
}

std::string folderOf(const std::string& document) {
    const std::size_t end = document.find_last_of("/\\");
    return end == std::string::npos ? "." : document.substr(0, std::max<std::size_t>(end, 1));
}

/** One document image with what every question about it takes. */
class Image {
public:
    Image(VornToolsString& bytes, const std::string& document, VornToolsFolderMemory& folders)
        : m_bytes(bytes), m_name(document.data(), static_cast<int>(document.size())),
          m_folder(textOf(folderOf(document))), m_folders(folders), m_properties(positionOf("CATDocumentProperty")),
          m_application(positionOf("AppliCont")) {}

    void readNames(DocumentLinks& links) {
        VornToolsLinks::getVersion(&m_bytes, links.version, links.release, links.servicePack);
        Strings partFiles, contextProducts, contextParts, identities, references, ghosts;
        VornToolsLinks::getLinkedDocName(&m_bytes, m_properties, &m_name, m_folder, partFiles, contextProducts,
                                         contextParts, identities, m_folders);
        VornToolsLinks::getExternalReference(&m_bytes, links.release, m_application, m_properties, references);
        VornToolsLinks::getGhosts(&m_bytes, m_properties, ghosts);
        links.partFiles = named(partFiles);
        links.contextProducts = named(contextProducts);
        links.contextParts = named(contextParts);
        links.externalReferences = bytesOf(references);
        links.ghosts = bytesOf(ghosts);
    }

    void readTyped(const std::string& type, DocumentLinks& links) {
        unsigned char missingTag = 0;
        const auto list =
            type == "MMLDrawing"
                ? VornToolsLinks::getMMLDrawingLinks(&m_bytes, &m_name, m_folder, m_folders)
                : VornToolsLinks::getLinks(&m_bytes, textOf(type), &m_name, m_folder, missingTag, m_folders);
        for (unsigned int i = 0; i < list.size(); ++i)
            links.links.push_back({::bytesOf(list[i].get_type()), named(::bytesOf(list[i].get_linkedFileName())),
                                   ::bytesOf(list[i].get_reference()), list[i].get_link_tag_found() != 0});
    }

private:
    int positionOf(const char* stream) const {
        return m_bytes.indexOf(VornToolsString(stream, static_cast<int>(std::strlen(stream))), 0, 0xFFFFFFFFU, 0);
    }

    VornToolsString& m_bytes;
    VornToolsString m_name;
    CATUnicodeString m_folder;
    VornToolsFolderMemory& m_folders;
    int m_properties;
    int m_application;
};

} // namespace

bool DocumentLinks::anyMissing() const {
    const auto isMissing = [](const NamedDocument& document) { return !document.exists; };
    return std::any_of(partFiles.begin(), partFiles.end(), isMissing) ||
           std::any_of(contextProducts.begin(), contextProducts.end(), isMissing) ||
           std::any_of(contextParts.begin(), contextParts.end(), isMissing) ||
           std::any_of(links.begin(), links.end(),
                       [](const TypedLink& link) { return !link.document.name.empty() && !link.document.exists; });
}

std::size_t DocumentLinks::countDocuments() const {
    std::set<std::string> names;
    for (const auto* const list : {&partFiles, &contextProducts, &contextParts})
        for (const NamedDocument& document : *list) names.insert(document.name);
    return names.size();
}

DocumentLinks readDocumentLinks(const std::string& document, const std::string& filter,
                                VornToolsFolderMemory& folders) {
    DocumentLinks links;
    const std::unique_ptr<VornToolsString> bytes(VornToolsCommon::readBinaryFile(textOf(document)));
    if (!bytes) return links;
    links.read = true;
    Image image(*bytes, document, folders);
    image.readNames(links);
    image.readTyped(filter.empty() && isDrawing(document) ? "MMLDrawing" : filter, links);
    return links;
}
