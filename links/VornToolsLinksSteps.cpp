#include "VornToolsLinks.h"

#include "VornToolsFolderMemory.h"
#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "links/DocumentFields.h"
#include "links/FolderSearch.h"
#include "links/ImageBytes.h"
#include "links/LinkLists.h"
#include "links/Markers.h"

#include <string_view>
#include <utility>
#include <vector>

// What the links are made of.

using namespace vorntools;

namespace {

/** The documents that are used, by their kind. @return 0 */
int nameLinked(const VornToolsString* ip_image, int i_position, const VornToolsString* ip_file_name,
               const CATUnicodeString& i_directory, Strings& o_part_files, Strings& o_context_products,
               Strings& o_context_parts, Strings& o_references, KnownFolders*& iop_folders) {
    const JournalFrame frame(VornToolsLinks::_CteCLASS_NAME, "getLinkedDocName");
    for (Strings* const list : {&o_part_files, &o_context_products, &o_context_parts, &o_references}) clear(*list);
    if (isMissing(frame, ip_image)) return 0;
    guarded([&] {
        const PropertyStream stream(viewOf(*ip_image), positionOf(i_position));
        LinkedNames names(stream.ownPath(), viewOf(ip_file_name), viewOf(i_directory), made(iop_folders));
        std::vector<std::string_view> of_kind[3], references;
        for (const LinkedDocument& document : stream.documents()) {
            if (document.uses == 0 || document.kind == LinkedDocument::Drawing) continue;
            of_kind[document.kind].push_back(names.resolve(document.name));
            if (document.kind == LinkedDocument::ContextPart) references.push_back(document.reference());
        }
        Strings found[] = {stringsOf(of_kind[LinkedDocument::PartFile]),
                           stringsOf(of_kind[LinkedDocument::ContextProduct]),
                           stringsOf(of_kind[LinkedDocument::ContextPart]), stringsOf(references)};
        o_part_files = std::move(found[0]);
        o_context_products = std::move(found[1]);
        o_context_parts = std::move(found[2]);
        o_references = std::move(found[3]);
    });
    return 0;
}

} // namespace

int VornToolsLinks::getLinkedDocName(VornToolsString* image, int position, VornToolsString* fileName,
                                     CATUnicodeString directory, VornToolsVector<VornToolsString>& partFiles,
                                     VornToolsVector<VornToolsString>& contextProducts,
                                     VornToolsVector<VornToolsString>& contextParts,
                                     VornToolsVector<VornToolsString>& contextPartReferences) {
    VornToolsFolderMemory folders;
    return nameLinked(image, position, fileName, directory, partFiles, contextProducts, contextParts,
                      contextPartReferences, folders.m_folders);
}

int VornToolsLinks::getLinkedDocName(VornToolsString* image, int position, VornToolsString* fileName,
                                     CATUnicodeString directory, VornToolsVector<VornToolsString>& partFiles,
                                     VornToolsVector<VornToolsString>& contextProducts,
                                     VornToolsVector<VornToolsString>& contextParts,
                                     VornToolsVector<VornToolsString>& contextPartReferences,
                                     VornToolsFolderMemory& folders) {
    return nameLinked(image, position, fileName, directory, partFiles, contextProducts, contextParts,
                      contextPartReferences, folders.m_folders);
}

int VornToolsLinks::getGhosts(VornToolsString* image, int position, VornToolsVector<VornToolsString>& ghosts) {
    const JournalFrame frame(_CteCLASS_NAME, "getGhosts");
    clear(ghosts);
    if (isMissing(frame, image)) return 0;
    guarded([&] {
        const PropertyStream stream(viewOf(*image), positionOf(position));
        std::vector<std::string_view> names;
        for (const LinkedDocument& document : stream.documents())
            if (document.uses == 0) names.push_back(document.name);
        ghosts = stringsOf(names);
    });
    return 0;
}

int VornToolsLinks::getOtherDocuments(VornToolsString* image, int position, VornToolsString* fileName,
                                      CATUnicodeString directory, VornToolsVector<VornToolsString>& names,
                                      VornToolsVector<VornToolsString>& kinds, VornToolsVector<int>& uses,
                                      VornToolsFolderMemory& folders) {
    const JournalFrame frame(_CteCLASS_NAME, "getOtherDocuments");
    clear(names);
    clear(kinds);
    clear(uses);
    if (isMissing(frame, image)) return 0;
    guarded([&] {
        const PropertyStream stream(viewOf(*image), positionOf(position));
        LinkedNames places(stream.ownPath(), viewOf(fileName), viewOf(directory), made(folders.m_folders));
        std::vector<std::string_view> of_names, of_kinds;
        VornToolsVector<int> of_uses;
        for (const OtherDocument& document : stream.others()) {
            of_names.push_back(places.resolve(document.name));
            of_kinds.push_back(document.kind);
            of_uses.append(document.uses);
        }
        Strings found[] = {stringsOf(of_names), stringsOf(of_kinds)};
        names = std::move(found[0]);
        kinds = std::move(found[1]);
        uses = std::move(of_uses);
    });
    return 0;
}

int VornToolsLinks::getExternalReference(VornToolsString* image, int, int applicationPosition, int propertyPosition,
                                         VornToolsVector<VornToolsString>& references) {
    const JournalFrame frame(_CteCLASS_NAME, "getExternalReference");
    clear(references);
    if (isMissing(frame, image)) return 0;
    guarded([&] {
        DocumentScan scan(viewOf(*image), positionOf(applicationPosition), positionOf(propertyPosition));
        references = stringsOf({scan.references().begin(), scan.references().end()});
    });
    return 0;
}

int VornToolsLinks::getVersion(VornToolsString* image, int& version, int& release, int& servicePack) {
    const JournalFrame frame(_CteCLASS_NAME, "getVersion");
    version = release = servicePack = 0;
    if (isMissing(frame, image)) return 0;
    const std::string_view bytes = viewOf(*image);
    const DocumentVersion found = readVersion(bytes, findMarker(bytes, marker::summary, 0));
    version = found.version;
    release = found.release;
    servicePack = found.servicePack;
    return found.complete ? 0 : 1;
}

VornToolsVector<VornToolsString> VornToolsLinks::findKey(VornToolsString* image, VornToolsString& key) {
    const JournalFrame frame(_CteCLASS_NAME, "findKey");
    const auto find = [&] {
        return isMissing(frame, image) ? Strings() : stringsOf(identifiersBehind(viewOf(*image), viewOf(key)));
    };
    return guarded(find, Strings::withoutSlots());
}

int VornToolsLinks::isKeyInFile(VornToolsString& image, VornToolsVector<VornToolsString>& keys) {
    const JournalFrame frame(_CteCLASS_NAME, "isKeyInFile");
    const auto is_published = [&] {
        std::vector<std::string_view> views;
        for (unsigned int i = 0; i < keys.size(); ++i) views.push_back(viewOf(keys[i]));
        return publishes(viewOf(image), views);
    };
    return guarded(is_published, false) ? 1 : 0;
}
