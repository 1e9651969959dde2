#include "examples/library/Examples.h"

#include "CATListOfCATBaseUnknown.h"
#include "VornCache.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"

#include <cstdio>

void useVornCache() {
    //! [VornCache]
    VornCache cache;
    for (const char* const document :
         {"workspace/DriveGear.CATPart", "workspace/Shaft.CATPart", "workspace/Key.CATPart"}) {
        cache.addDocument(document, nullptr); // the date of the file decides
        VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
        cache.getModifiedStatus(document, flag);
        CATUnicodeString itemRevision;
        cache.getItemRevUID(document, itemRevision);
        std::printf("%s: %s, item revision %s\n", document,
                    flag == VornCache::ModifiedFlagNew        ? "new"
                    : flag == VornCache::ModifiedFlagModified ? "modified"
                                                              : "not modified",
                    itemRevision.IsNull() ? "unknown" : itemRevision.ConvertToChar());
    }
    //! [VornCache]
}

void useVornToolsCommon() {
    //! [VornToolsCommon]
    // What the PDM knows of the selected products.
    CATListPtrCATBaseUnknown selected;
    if (FAILED(VornToolsCommon::getSelectedProducts(selected))) return;
    VornCache cache;
    for (int i = 1; i <= selected.Size(); ++i) {
        const ProductPtr product(static_cast<CATIProduct*>(selected[i])); // its reference is ours
        CATUnicodeString path, itemRevision, dataset, namedReference, fileName;
        unsigned char isManaged = 0;
        VornToolsCommon::getProductPath(product.get(), path);
        VornToolsCommon::getOrvaneInformations(product.get(), &cache, itemRevision, dataset, namedReference, fileName,
                                               isManaged);
        std::printf("%s: %s\n", path.ConvertToChar(), isManaged ? itemRevision.ConvertToChar() : "not managed");
    }
    //! [VornToolsCommon]
}

void useVornToolsSwitchMgt() {
    //! [VornToolsSwitchMgt]
    using Modes = VornToolsWorkModeServices;
    const ProductPtr housing = productShowing("Housing.CATPart");
    Modes::setCatiaCacheActivated(1);
    VornToolsSwitchMgt switcher(1); // one for each operation
    switcher.setWorkMode(housing.get(), Modes::WorkModeDesign, Modes::WorkModeUnknown, "", 0);
    Modes::EnumWorkMode mode = Modes::WorkModeUnknown;
    Modes::getWorkMode(housing.get(), mode);
    std::printf("mode %d for the operation", mode); // which reads what has to be loaded
    switcher.restoreAll(0);
    Modes::getWorkMode(housing.get(), mode);
    std::printf(", mode %d afterwards\n", mode);
    //! [VornToolsSwitchMgt]
}

void useVornToolsWorkModeServices() {
    //! [VornToolsWorkModeServices]
    using Modes = VornToolsWorkModeServices;
    const ProductPtr housing = productShowing("Housing.CATPart");
    const HRESULT refused = Modes::setWorkMode(housing.get(), Modes::WorkModeDesign);
    Modes::setCatiaCacheActivated(1); // the integration knows that the cache is
    const HRESULT done = Modes::setWorkMode(housing.get(), Modes::WorkModeDesign);
    Modes::EnumWorkMode mode = Modes::WorkModeUnknown;
    Modes::getWorkMode(housing.get(), mode);
    std::printf("%s, then mode %d\n", refused == S_FALSE ? "forbidden" : "allowed", SUCCEEDED(done) ? mode : 0);
    //! [VornToolsWorkModeServices]
}
