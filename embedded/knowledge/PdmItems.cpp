#include "VornCATxPDMTools.h"
#include "embedded/Session.h"
#include "embedded/knowledge/KnowledgeData.h"

EMBEDDED_INTERFACE(VornCATIxPDMItem, CATBaseUnknown, 0x321);

namespace embedded {

HRESULT PdmItemObject::SetProperty(const CATUnicodeString& iName, const CATUnicodeString& iValue) {
    if (failing("VornCATIxPDMItem::SetProperty")) return E_FAIL;
    properties[toBytes(iName)] = toBytes(iValue);
    return S_OK;
}

} // namespace embedded

using namespace embedded;

HRESULT VornCATxPDMTools::getPDMItem(CATIProduct* iProduct, VornCATIxPDMItem*& oItem) {
    oItem = nullptr;
    const FaultFlavour flavour = Failures::get().ask("VornCATxPDMTools::getPDMItem");
    auto* const product = dynamic_cast<ProductObject*>(iProduct);
    ProductNode* const node = product ? referenceNodeOf(*product) : nullptr;
    if (flavour != FaultFlavour::none) {
        if (flavour == FaultFlavour::codeWithOutput && node) oItem = &node->item;
        return Failures::get().codeOf(flavour);
    }
    if (!node || !Session::current().environment().platformPdmConnection) return E_FAIL;
    oItem = handOut<VornCATIxPDMItem>(&node->item);
    return S_OK;
}
