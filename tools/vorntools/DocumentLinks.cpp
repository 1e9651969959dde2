#include "tools/vorntools/DocumentLinks.h"

#include "tools/vorntools/Files.h"
#include "tools/vorntools/Text.h"

#include "VornToolsCommon.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace {

using Library = VornToolsDocumentLinks;

constexpr const char* kDrawingType = "MMLDrawing";

std::string bytesOf(const Library::Text& text) { return {text.bytes, text.length}; }

/** What the library lists of a document or a link that names one. */
template <class Named>
NamedDocument named(const Named& document, int uses) {
    return {bytesOf(document.foundName), document.isFound != 0, bytesOf(document.storedName), uses};
}

std::string folderOf(const std::string& document) {
    const std::size_t end = document.find_last_of("/\\");
    return document.substr(0, std::max<std::size_t>(end, 1));
}

/** Uses of the first record of each name. */
using UsesOfNames = std::unordered_map<std::string_view, int>;

std::string_view viewOf(const Library::Text& text) { return {text.bytes, text.length}; }

void fillDocuments(const Library& found, DocumentLinks& links, UsesOfNames& usesOfNames) {
    unsigned int count = 0;
    const Library::NamedDocument* const documents = found.getDocuments(count);
    for (unsigned int i = 0; i < count; ++i) {
        const Library::NamedDocument& document = documents[i];
        if (document.uses == 0) {
            links.ghosts.push_back(bytesOf(document.storedName));
            continue;
        }
        usesOfNames.emplace(viewOf(document.foundName), document.uses);
        switch (document.kind) {
        case Library::KindPartFile: links.partFiles.push_back(named(document, document.uses)); break;
        case Library::KindContextProduct: links.contextProducts.push_back(named(document, document.uses)); break;
        case Library::KindContextPart: links.contextParts.push_back(named(document, document.uses)); break;
        case Library::KindDrawing: break;
        case Library::KindOther:
            links.others.push_back({bytesOf(document.type), named(document, document.uses), document.uses});
        }
    }
}

void fillLinks(const Library& found, const UsesOfNames& usesOfNames, DocumentLinks& links) {
    unsigned int count = 0;
    const Library::Link* const list = found.getLinks(count);
    links.links.reserve(count);
    for (unsigned int i = 0; i < count; ++i) {
        const auto uses = usesOfNames.find(viewOf(list[i].foundName));
        links.links.push_back({bytesOf(list[i].type), named(list[i], uses == usesOfNames.end() ? 0 : uses->second),
                               bytesOf(list[i].reference), list[i].isTagFound != 0});
    }
    const Library::Text* const references = found.getExternalReferences(count);
    for (unsigned int i = 0; i < count; ++i) links.externalReferences.push_back(bytesOf(references[i]));
}

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
    const CATUnicodeString name = textOf(document);
    const int type = VornToolsCommon::returnDocumentType(name);
    const bool isDrawing = type == VornToolsCommon::DocumentTypeDrawing;
    const CATUnicodeString linkType = filter.empty() && isDrawing ? CATUnicodeString(kDrawingType) : textOf(filter);
    Library& found = memory.reader;
    links.read = SUCCEEDED(found.read(name, linkType, textOf(folderOf(document)), memory.folders));
    if (!links.read) return links;
    if (isCatiaType(type)) links.condition = conditionOf(found.getCondition(), found.getSize(), document);
    found.getVersion(links.version, links.release, links.servicePack);
    const Library::Text savedPath = found.getSavedPath();
    links.savedPath = bytesOf(savedPath);
    links.save = bytesOf(found.getSave());
    UsesOfNames usesOfNames;
    fillDocuments(found, links, usesOfNames);
    fillLinks(found, usesOfNames, links);
    return links;
}
