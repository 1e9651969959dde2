// A product as the platform shows it; its shapes, scenes and knowledgeware stand with those topics.
#include "embedded/Profile.h"
#include "embedded/documents/SessionData.h"
#include "embedded/object/Stranger.h"
#include "embedded/structure/Products.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>

EMBEDDED_INTERFACE(CATIAProduct, CATIABase, 0x200);
EMBEDDED_INTERFACE(CATIPrdProperties, CATBaseUnknown, 0x201);
EMBEDDED_INTERFACE(CATIProduct, CATBaseUnknown, 0x202);

namespace embedded {

namespace {

CATIProduct_var handleOfProduct(ProductObject* product) {
    return handleOf<CATIProduct_var>(static_cast<CATIProduct*>(product));
}

/** Whether users may type an instance name or a part number. */
bool isTypeable(const std::string& name) {
    return !name.empty() && name.back() != ' ' && name.find_first_of("!:") == std::string::npos;
}

bool isAllowed(const std::string& name) { return !switches().oddNamesAreRefused || isTypeable(name); }

} // namespace

HRESULT __stdcall ProductObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIAProduct::get_Name"), isReference() ? partNumber() : instanceName(), oName);
}

CATIProduct_var ProductObject::GetReferenceProduct() {
    if (failing("CATIProduct::GetReferenceProduct") || !tellsReference()) return CATIProduct_var();
    return handleOfProduct(m_reference->node);
}

CATIProduct_var ProductObject::GetFatherProduct() {
    return failing("CATIProduct::GetFatherProduct") ? CATIProduct_var() : handleOfProduct(m_father);
}

HRESULT ProductObject::IsReference() { return failing("CATIProduct::IsReference") || !isReference() ? E_FAIL : S_OK; }

CATIProduct_var ProductObject::FindInstance(const CATIProduct_var& iContext) {
    if (failing("CATIProduct::FindInstance")) return CATIProduct_var();
    const auto* const context = dynamic_cast<const ProductObject*>(static_cast<CATIProduct*>(iContext));
    return context ? handleOfProduct(findInstance(*context)) : CATIProduct_var();
}

CATUnicodeString ProductObject::GetPartNumber() const {
    return failing("CATIProduct::GetPartNumber") || !tellsReference() ? CATUnicodeString() : toText(partNumber());
}

void ProductObject::SetPartNumber(const CATUnicodeString& iPartNumber) {
    const bool fails = failing("CATIProduct::SetPartNumber");
    const std::string name = toBytes(iPartNumber);
    if (fails || !isReference() || !isAllowed(name)) return;
    m_reference->partNumber = name;
    m_reference->document->written();
}

HRESULT ProductObject::GetPrdInstanceName(CATUnicodeString& oName) {
    const FaultFlavour flavour = called("CATIProduct::GetPrdInstanceName");
    const bool refused = isReference() && switches().rootsRefuseInstanceName;
    return textAnswer(refused && flavour == FaultFlavour::none ? FaultFlavour::code : flavour, instanceName(), oName);
}

HRESULT ProductObject::SetPrdInstanceName(const CATUnicodeString iName) {
    const bool fails = failing("CATIProduct::SetPrdInstanceName");
    const std::string name = toBytes(iName);
    if (fails || !isAllowed(name) || !rename(name)) return E_FAIL;
    storedIn().written();
    return S_OK;
}

CATListValCATBaseUnknown_var* ProductObject::GetChildren(const char* iIntfId) const {
    static const std::pair<const char*, const IID*> interfaces[] = {{"CATIProduct", &IID_CATIProduct},
                                                                    {"CATIPrdProperties", &IID_CATIPrdProperties},
                                                                    {"CATIAProduct", &IID_CATIAProduct},
                                                                    {"CATISpecObject", &IID_CATISpecObject}};
    if (failing("CATIProduct::GetChildren")) return nullptr;
    if (childCount() == 0 && switches().childlessGiveNoList) return nullptr;
    const auto* const wanted = std::find_if(std::begin(interfaces), std::end(interfaces), [iIntfId](const auto& entry) {
        return std::strcmp(entry.first, iIntfId ? iIntfId : "CATIProduct") == 0;
    });
    auto list = std::make_unique<CATListValCATBaseUnknown_var>();
    addStrangers<CATBaseUnknown_var>(*list);
    if (wanted == std::end(interfaces)) return list.release();
    for (std::size_t i = 0; i < childCount(); ++i) {
        ProductObject* const place = child(i);
        if (place->answers(*wanted->second)) list->Append(handleOf<CATBaseUnknown_var>(place->unknown()));
    }
    return list.release();
}

int ProductObject::GetChildrenCount() const {
    return failing("CATIProduct::GetChildrenCount") ? 0 : static_cast<int>(childCount());
}

HRESULT ProductObject::GetDescriptionInst(CATUnicodeString& oDescription) {
    return textAnswer(called("CATIPrdProperties::GetDescriptionInst"), description(), oDescription);
}

HRESULT ProductObject::SetDescriptionInst(const CATUnicodeString& iDescription) {
    if (failing("CATIPrdProperties::SetDescriptionInst") || isReference()) return E_FAIL;
    setDescription(toBytes(iDescription));
    storedIn().written();
    return S_OK;
}

HRESULT ProductObject::SetDescriptionRef(const CATUnicodeString& iDescription) {
    if (failing("CATIPrdProperties::SetDescriptionRef") || !tellsReference()) return E_FAIL;
    m_reference->description = toBytes(iDescription);
    m_reference->document->written();
    return S_OK;
}

CATDocument* ProductObject::GetDocument() {
    return failing("CATILinkableObject::GetDocument") ? nullptr : documentOrStranger(&storedIn());
}

CATBoolean ProductObject::IsUpToDate(CATIDomain_var) const {
    return !failing("CATISpecObject::IsUpToDate") && m_reference && m_reference->document->upToDate ? TRUE : FALSE;
}

} // namespace embedded
