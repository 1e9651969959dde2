#include "VornToolsLinks.h"

#include "VornToolsFolderMemory.h"
#include "foundation/JournalFrame.h"
#include "links/DocumentFields.h"
#include "links/ImageBytes.h"
#include "links/LinkLists.h"
#include "links/Markers.h"

// What the links are made of.

using namespace vorntools;

int VornToolsLinks::getLinkedDocName(VornToolsString* image, int position, VornToolsString* fileName,
                                     CATUnicodeString directory, VornToolsVector<VornToolsString>& partFiles,
                                     VornToolsVector<VornToolsString>& contextProducts,
                                     VornToolsVector<VornToolsString>& contextParts,
                                     VornToolsVector<VornToolsString>& contextPartReferences) {
    VornToolsFolderMemory folders;
    return getLinkedDocName(image, position, fileName, directory, partFiles, contextProducts, contextParts,
                            contextPartReferences, folders);
}

int VornToolsLinks::getLinkedDocName(VornToolsString* image, int position, VornToolsString* fileName,
                                     CATUnicodeString directory, VornToolsVector<VornToolsString>& partFiles,
                                     VornToolsVector<VornToolsString>& contextProducts,
                                     VornToolsVector<VornToolsString>& contextParts,
                                     VornToolsVector<VornToolsString>& contextPartReferences,
                                     VornToolsFolderMemory& folders) {
    const JournalFrame frame(_CteCLASS_NAME, "getLinkedDocName");
    for (Strings* const list : {&partFiles, &contextProducts, &contextParts, &contextPartReferences}) clear(*list);
    if (isMissing(frame, image)) return 0;
    const PropertyStream stream(viewOf(*image), positionOf(position));
    LinkedNames names(stream.ownPath(), viewOf(fileName), viewOf(directory), *folders.m_folders);
    for (const LinkedDocument& document : stream.documents()) {
        if (document.uses == 0 || document.kind == LinkedDocument::Drawing) continue;
        Strings& list = document.kind == LinkedDocument::PartFile         ? partFiles
                        : document.kind == LinkedDocument::ContextProduct ? contextProducts
                                                                          : contextParts;
        list.append(stringOf(names.resolve(document.name)));
        if (document.kind == LinkedDocument::ContextPart) contextPartReferences.append(stringOf(document.reference()));
    }
    return 0;
}

int VornToolsLinks::getGhosts(VornToolsString* image, int position, VornToolsVector<VornToolsString>& ghosts) {
    const JournalFrame frame(_CteCLASS_NAME, "getGhosts");
    clear(ghosts);
    if (isMissing(frame, image)) return 0;
    const PropertyStream stream(viewOf(*image), positionOf(position));
    for (const LinkedDocument& document : stream.documents())
        if (document.uses == 0) ghosts.append(stringOf(document.name));
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
    const PropertyStream stream(viewOf(*image), positionOf(position));
    LinkedNames found(stream.ownPath(), viewOf(fileName), viewOf(directory), *folders.m_folders);
    for (const OtherDocument& document : stream.others()) {
        names.append(stringOf(found.resolve(document.name)));
        kinds.append(stringOf(document.kind));
        uses.append(document.uses);
    }
    return 0;
}

int VornToolsLinks::getExternalReference(VornToolsString* image, int, int applicationPosition, int propertyPosition,
                                         VornToolsVector<VornToolsString>& references) {
    const JournalFrame frame(_CteCLASS_NAME, "getExternalReference");
    clear(references);
    if (isMissing(frame, image)) return 0;
    DocumentScan scan(viewOf(*image), positionOf(applicationPosition), positionOf(propertyPosition));
    for (const std::string& reference : scan.references()) references.append(stringOf(reference));
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
    if (isMissing(frame, image)) return Strings();
    return stringsOf(identifiersBehind(viewOf(*image), viewOf(key)));
}

int VornToolsLinks::isKeyInFile(VornToolsString& image, VornToolsVector<VornToolsString>& keys) {
    const JournalFrame frame(_CteCLASS_NAME, "isKeyInFile");
    std::vector<std::string_view> views;
    for (unsigned int i = 0; i < keys.size(); ++i) views.push_back(viewOf(keys[i]));
    return publishes(viewOf(image), views) ? 1 : 0;
}
