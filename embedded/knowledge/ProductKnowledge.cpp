#include "CATIDftDocumentServices.h"
#include "UTILConversion.h"
#include "UTILLog.h"
#include "VornCATxPDMTools.h"
#include "VornLocaleEnv.h"
#include "embedded/Session.h"
#include "embedded/knowledge/Knowledge.h"

EMBEDDED_INTERFACE(CATIDftDocumentServices, CATBaseUnknown, 0x320);
EMBEDDED_INTERFACE(VornCATIxPDMItem, CATBaseUnknown, 0x321);

namespace embedded {

EMBEDDED_IDENTITY(CATIDftDocumentServices);

namespace {

/** What a drawing document answers beside its own interfaces. */
class DrawingServices final : public Extends<DocumentObject, CATIDftDocumentServices> {
public:
    explicit DrawingServices(DocumentObject& document) : Extends(document) {}

    HRESULT GetDrawing(const IID iIID, void** oDrawing) override {
        if (!oDrawing) return E_POINTER;
        const FaultFlavour flavour = called("CATIDftDocumentServices::GetDrawing");
        FeatureNode& drawing = KnowledgeData::get().feature(owner(), FeatureNode::kDrawing, "Drawing");
        *oDrawing = flavour == FaultFlavour::codeWithOutput ? drawing.unknown() : nullptr;
        if (flavour != FaultFlavour::none) return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
        drawing.AddRef(); // it is asked while nobody else holds it
        const HRESULT code = drawing.QueryInterface(iIID, oDrawing);
        drawing.Release();
        return code;
    }

private:
    bool answers(const IID&) const override { return owner().type() == "CATDrawing"; }
};

const ExtensionOf<DocumentObject, DrawingServices> known;

/** The node of the reference that a product shows; null for one that is not loaded. */
ProductNode* referenceNode(const ProductObject& product) {
    return product.reference() ? &nodeOf(*product.reference()->node) : nullptr;
}

} // namespace

ProductNode::ProductNode(ProductObject& place) : WithParameters(place) {}

std::string ProductNode::displayName() const {
    return product().isReference() ? product().partNumber() : product().instanceName();
}

bool ProductNode::responds(const IID& iid) {
    return answers(iid) && (iid == IID_CATISpecObject || iid == IID_CATISpecAttrAccess ||
                            iid == IID_CATIParmPublisher || iid == IID_CATIRedrawEvent || iid == IID_CATIProduct);
}

/** An instance is stored in the document of the product that it is an instance in. */
DocumentObject* ProductNode::document() const {
    const ProductObject* const holder = product().isReference() ? &product() : product().father();
    return holder->reference() ? holder->reference()->document : nullptr;
}

bool ProductNode::answers(const IID&) const { return product().reference() != nullptr; }

bool ProductNode::isEmpty() const {
    return attributes.empty() && definition.empty() && revision.empty() && nomenclature.empty() && !userProperties &&
           item.properties.empty();
}

HRESULT PdmItemObject::SetProperty(const CATUnicodeString& iName, const CATUnicodeString& iValue) {
    if (failing("VornCATIxPDMItem::SetProperty")) return E_FAIL;
    properties[toBytes(iName)] = toBytes(iValue);
    return S_OK;
}

HRESULT ProductObject::SetDefinition(const CATUnicodeString& iDefinition) {
    ProductNode* const node = referenceNode(*this);
    if (failing("CATIPrdProperties::SetDefinition") || !node) return E_FAIL;
    node->definition = toBytes(iDefinition);
    return S_OK;
}

HRESULT ProductObject::SetRevision(const CATUnicodeString& iRevision) {
    ProductNode* const node = referenceNode(*this);
    if (failing("CATIPrdProperties::SetRevision") || !node) return E_FAIL;
    node->revision = toBytes(iRevision);
    return S_OK;
}

HRESULT ProductObject::SetNomenclature(const CATUnicodeString& iNomenclature) {
    ProductNode* const node = referenceNode(*this);
    if (failing("CATIPrdProperties::SetNomenclature") || !node) return E_FAIL;
    node->nomenclature = toBytes(iNomenclature);
    return S_OK;
}

HRESULT ProductObject::GetUserProperties(CATIParmPublisher*& oPublisher, CATBoolean iCreate) {
    oPublisher = nullptr;
    const FaultFlavour flavour = called("CATIPrdProperties::GetUserProperties");
    ProductNode* const node = referenceNode(*this);
    if (flavour != FaultFlavour::none) {
        if (flavour == FaultFlavour::codeWithOutput && node) oPublisher = node->userProperties;
        return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
    }
    if (!node || (!node->userProperties && !iCreate)) return E_FAIL;
    oPublisher = &KnowledgeData::get().userProperties(*node);
    oPublisher->AddRef();
    return S_OK;
}

CATUnicodeString ProductObject::GetDisplayName() const {
    return failing("CATISpecObject::GetDisplayName") ? CATUnicodeString()
                                                     : toText(isReference() ? partNumber() : instanceName());
}

CATUnicodeString ProductObject::GetType() const {
    return failing("CATISpecObject::GetType") ? CATUnicodeString() : toText("ASMPRODUCT");
}

CATIContainer_var ProductObject::GetFeatContainer() const {
    return failing("CATISpecObject::GetFeatContainer")
               ? CATIContainer_var()
               : AttributeCalls::containerOf(nodeOf(const_cast<ProductObject&>(*this)));
}

CATISpecAttribute* ProductObject::AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                               CATAttrInOut) {
    return failing("CATISpecObject::AddAttribute") ? nullptr
                                                   : AttributeCalls::add(nodeOf(*this), iName, iKind, iListKind);
}

} // namespace embedded

using namespace embedded;

HRESULT VornCATxPDMTools::getPDMItem(CATIProduct* iProduct, VornCATIxPDMItem*& oItem) {
    oItem = nullptr;
    const FaultFlavour flavour = Failures::get().ask("VornCATxPDMTools::getPDMItem");
    auto* const product = dynamic_cast<ProductObject*>(iProduct);
    ProductNode* const node = product ? referenceNode(*product) : nullptr;
    if (flavour != FaultFlavour::none) {
        if (flavour == FaultFlavour::codeWithOutput && node) oItem = &node->item;
        return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
    }
    if (!node || !Session::current().environment().platformPdmConnection) return E_FAIL;
    oItem = &node->item;
    oItem->AddRef();
    return S_OK;
}

CATUnicodeString VornLocaleEnv::getDecimalSeparatorSymbol() {
    return fails("VornLocaleEnv::getDecimalSeparatorSymbol")
               ? CATUnicodeString()
               : toText(Session::current().environment().decimalSeparator);
}

CATUnicodeString UTILConversion::booleanToString(unsigned char iValue) { return iValue ? "true" : "false"; }

HRESULT UTILLog::writeInLogFile(const CATUnicodeString& iTitle, const CATUnicodeString& iText) {
    if (fails("UTILLog::writeInLogFile")) return E_FAIL;
    KnowledgeData::get().logLines.push_back(toBytes(iTitle) + "\n" + toBytes(iText));
    return S_OK;
}
