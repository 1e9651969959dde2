#include "examples/library/Examples.h"

#include "CATDocument.h"
#include "VornToolsCommon.h"
#include "VornToolsDocument.h"
#include "VornToolsDocumentFile.h"
#include "VornToolsDocumentLinks.h"
#include "VornToolsFolderMemory.h"
#include "VornToolsLinks.h"

#include <cstdio>
#include <cstring>

void useVornToolsDocument() {
    //! [VornToolsDocument]
    CATDocument* active = nullptr;
    VornToolsCommon::getActiveCATDocument(active, 0);
    for (const CATUnicodeString& name : {active->StorageName(), CATUnicodeString("workspace/housing/Cover.CATPart")}) {
        CATDocument* found = nullptr;
        VornToolsDocument::getDocumentInSession(name, found);
        std::printf("%s is %s\n", fileNameOf(name).ConvertToChar(), found ? "loaded" : "not");
    }
    //! [VornToolsDocument]
}

void useVornToolsDocumentFile() {
    //! [VornToolsDocumentFile]
    VornToolsDocumentFile file;
    if (FAILED(file.open("workspace/Shaft.CATPart"))) return;
    const bool isIntact = file.getCondition() == VornToolsDocumentFile::DocumentIntact;
    int streams = 0;
    for (int i = 1; i <= file.getEntryCount(); ++i) {
        CATUnicodeString name;
        int parent = 0, pieces = 0;
        unsigned char isStream = 0;
        unsigned int size = 0;
        if (SUCCEEDED(file.getEntry(i, name, parent, isStream, size, pieces))) streams += isStream;
    }
    const std::unique_ptr<VornToolsString> picture(file.readPreview());
    std::printf("%llu bytes, %s, %d streams, a picture of %u bytes\n", file.getSize(), isIntact ? "intact" : "damaged",
                streams, picture ? picture->size() : 0);
    //! [VornToolsDocumentFile]
}

void useVornToolsDocumentLinks() {
    //! [VornToolsDocumentLinks]
    VornToolsFolderMemory folders; // for all documents
    VornToolsDocumentLinks links;
    if (FAILED(links.read("workspace/GearPump.CATProduct", "", "", folders))) return;
    unsigned int count = 0;
    const VornToolsDocumentLinks::NamedDocument* const documents = links.getDocuments(count);
    for (unsigned int i = 0; i < count; ++i)
        std::printf("%s: %s\n", fileNameOf(documents[i].foundName.bytes).ConvertToChar(),
                    documents[i].uses == 0 ? "no longer used"
                    : documents[i].isFound ? "found"
                                           : "missing");
    //! [VornToolsDocumentLinks]
}

void useVornToolsFolderMemory() {
    //! [VornToolsFolderMemory]
    const struct {
        const char* document;
        const char* linkType;
    } asked[] = {{"workspace/GearPump.CATDrawing", "MMLDrawing"}, {"workspace/Shaft.CATPart", "MML"}};
    VornToolsFolderMemory folders; // those below workspace/ are read once
    for (const auto& each : asked) {
        double count = 0;
        CATListValCATUnicodeString files, types, references, sixth, seventh;
        VornToolsVector<unsigned char> tagFound;
        unsigned char missingTag = 0;
        VornToolsLinks::searchLinks(each.document, each.linkType, "", count, files, types, references, sixth, seventh,
                                    tagFound, missingTag, folders);
        std::printf("%s: %g links\n", each.document, count);
    }
    //! [VornToolsFolderMemory]
}

void useVornToolsLink() {
    //! [VornToolsLink]
    const char path[] = "workspace/Shaft.CATPart";
    const std::unique_ptr<VornToolsString> image(VornToolsCommon::readBinaryFile(path));
    if (!image) return;
    VornToolsString fileName(path, sizeof path - 1);
    const VornToolsVector<VornToolsLink> links = VornToolsLinks::getMMLLinks(image.get(), &fileName, "");
    for (unsigned int i = 0; i < links.size(); ++i)
        std::printf("%s to %s, %s %s\n", links[i].get_type().ConvertToChar(),
                    fileNameOf(links[i].get_linkedFileName()).ConvertToChar(),
                    links[i].get_link_tag_found() ? "tag" : "no tag", links[i].get_reference().ConvertToChar());
    //! [VornToolsLink]
}

void useVornToolsLinks() {
    //! [VornToolsLinks]
    double count = 0;
    CATListValCATUnicodeString files, types, references, sixth, seventh;
    VornToolsVector<unsigned char> tagFound;
    unsigned char missingTag = 0;
    VornToolsLinks::searchLinks("workspace/Shaft.CATPart", "", "", count, files, types, references, sixth, seventh,
                                tagFound, missingTag);
    for (int i = 1; i <= files.Size(); ++i)
        std::printf("%s: %s\n", types[i].ConvertToChar(),
                    files[i].IsNull() ? references[i].ConvertToChar() : fileNameOf(files[i]).ConvertToChar());
    //! [VornToolsLinks]
}
