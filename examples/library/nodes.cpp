// Products that are special: dummy parts, references, ignore nodes, masks and scenes.

#include "examples/library/Examples.h"

#include "CATDocument.h"
#include "VornToolsCommon.h"
#include "VornToolsDummyPart.h"
#include "VornToolsExportAsReference.h"
#include "VornToolsIgnoreNodes.h"
#include "VornToolsMask.h"
#include "VornToolsScenes.h"

#include <cstdio>

void useVornToolsDummyPart() {
    //! [VornToolsDummyPart]
    VornToolsDummyPart& dummyParts = *VornToolsDummyPart::getInstance();
    for (const char* const file : {"data/Pin.CATPart", "workspace/Key.CATPart"})
        std::printf("%s: %s\n", file, dummyParts.isADummyPart(file) ? "dummy part" : "real part");
    VornToolsDummyPart::kill(); // with the session
    //! [VornToolsDummyPart]
}

void useVornToolsExportAsReference() {
    //! [VornToolsExportAsReference]
    VornToolsExportAsReference references; // the environment's prefix here is "STD_"
    for (const char* const file : {"STD_Screw.CATPart", "Shaft.CATPart"}) {
        unsigned char isReference = 0;
        references.isAnExportAsReference(file, isReference);
        std::printf("%s: %s\n", file, isReference ? "from the reference library" : "own");
    }
    //! [VornToolsExportAsReference]
}

void useVornToolsIgnoreNodes() {
    //! [VornToolsIgnoreNodes]
    VornToolsIgnoreNodes ignoreNodes; // data/IgnoreNodesIdentifiers.txt has the prefix "Key"
    for (const char* const file : {"Key.CATPart", "Shaft.CATPart"}) {
        const ProductPtr product = productShowing(file);
        unsigned char isIgnored = 0;
        ignoreNodes.isAnIgnoreNode(product.get(), file, VornToolsIgnoreNodes::NodeKindElement, isIgnored);
        std::printf("%s: %s\n", file, isIgnored ? "left out" : "saved");
    }
    //! [VornToolsIgnoreNodes]
}

void useVornToolsMask() {
    //! [VornToolsMask]
    const ProductPtr shaft = productShowing("Shaft.CATPart");
    int before = 0, after = 0;
    VornToolsMask::getMask(shaft.get(), &before);
    VornToolsMask::setMask(shaft.get(), 2, 0);
    VornToolsMask::getMask(shaft.get(), &after);
    std::printf("mask %d, then %d\n", before, after);
    //! [VornToolsMask]
}

void useVornToolsScenes() {
    //! [VornToolsScenes]
    CATDocument* active = nullptr;
    CATIProduct* received = nullptr;
    VornToolsCommon::getActiveCATDocument(active, 0);
    if (FAILED(VornToolsCommon::getActiveCATIProduct(active, received)) || !received) return;
    const ProductPtr root(received);
    CATListValCATUnicodeString names, data;
    VornToolsScenes::readScenesNamesInAssy(root.get(), names);
    VornToolsScenes::readScenesDataInAssy(active->StorageName(), root.get(), nullptr, {}, 0, data);
    std::printf("%s in %s:\n", names[1].ConvertToChar(), data[2].ConvertToChar());
    for (int i = 3; i + 3 < data.Size(); i += 4) // path, scene, position, hidden
        if (data[i + 3] == "TRUE") std::printf("%s is hidden\n", data[i].ConvertToChar());
    //! [VornToolsScenes]
}
