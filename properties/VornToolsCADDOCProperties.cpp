#include "VornToolsCADDOCProperties.h"

#include "foundation/Environment.h"
#include "foundation/Guarded.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "VornToolsCADDOCPropertiesDflt.h"
#include "VornToolsCADDOCPropertiesPX1.h"
#include "VornToolsCommon.h"
#include "VornToolsLibraryLoader.h"

#include <new>

using namespace vorntools;

const CATUnicodeString VornToolsCADDOCProperties::_CteCLASS_NAME("VornToolsCADDOCProperties::");
VornToolsCADDOCProperties* VornToolsCADDOCProperties::_singleton = nullptr;

VornToolsCADDOCProperties::VornToolsCADDOCProperties() = default;

VornToolsCADDOCProperties::~VornToolsCADDOCProperties() {
    releaseClassVariables();
    _singleton = nullptr;
}

HRESULT VornToolsCADDOCProperties::releaseClassVariables() { return S_OK; }

VornToolsCADDOCProperties* VornToolsCADDOCProperties::getInstance() {
    const JournalFrame frame(_CteCLASS_NAME, "getInstance");
    if (_singleton) return _singleton;
    if (environmentSays(&ENVManager::isPX1Available))
        _singleton = new (std::nothrow) VornToolsCADDOCPropertiesPX1;
    else
        _singleton = new (std::nothrow) VornToolsCADDOCPropertiesDflt;
    return _singleton;
}

HRESULT VornToolsCADDOCProperties::getElectricalParameters(CATDocument* ip_document,
                                                           CATListValCATUnicodeString& o_parameters) {
    JournalFrame frame(_CteCLASS_NAME, "getElectricalParameters");
    o_parameters.RemoveAll();
    if (!ip_document || !ip_document->IsAKindOf("CATPart")) return frame.endWith(E_INVALIDARG);
    InterfacePtr<CATIProduct> sp_product;
    sp_product.receive(
        [&](CATIProduct*& o_product) { return VornToolsCommon::getActiveCATIProduct(ip_document, o_product); });
    if (!sp_product) return frame.endWith(E_FAIL);
    const auto function = VornToolsLibraryLoader::getElectricalParametersFuncPtr();
    if (!function) return frame.endWith(S_OK);
    const HRESULT code = guarded([&] { return function(sp_product.get(), &o_parameters); }, E_FAIL);
    if (FAILED(code)) o_parameters.RemoveAll();
    return frame.endWith(code);
}
