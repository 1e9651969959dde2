#include "VornToolsCommon.h"

#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATIDocRoots.h"
#include "CATIProduct.h"

#include <memory>

using namespace vorntools;

HRESULT VornToolsCommon::getActiveCATIProduct(CATDocument* ip_active_document, CATIProduct*& opi_active_product) {
    const JournalFrame frame(_CteCLASS_NAME, "getActiveCATIProduct");
    opi_active_product = nullptr;
    if (!ip_active_document) return frame.badInput("ip_active_document");
    const auto sp_main_doc_roots = queryInterface<CATIDocRoots>(ip_active_document);
    if (!sp_main_doc_roots) return frame.missing("pi_main_doc_roots");
    const std::unique_ptr<CATListValCATBaseUnknown_var> sp_roots(sp_main_doc_roots->GiveDocRoots());
    if (!sp_roots || sp_roots->Size() == 0) return S_OK;
    opi_active_product = queryInterface<CATIProduct>(static_cast<CATBaseUnknown*>((*sp_roots)[1])).detach();
    return opi_active_product ? S_OK : frame.missing("opi_active_product");
}
