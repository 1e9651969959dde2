#include "embedded/knowledge/ProductNodes.h"

#include "embedded/knowledge/KnowledgeData.h"

namespace embedded {

namespace {

const ExtensionOf<ProductObject, ProductNode> productNodeKnown;

} // namespace

ProductNode* referenceNodeOf(const ProductObject& product) {
    return product.reference() ? &nodeOf(*product.reference()->node) : nullptr;
}

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

HRESULT ProductObject::SetDefinition(const CATUnicodeString& iDefinition) {
    ProductNode* const node = referenceNodeOf(*this);
    if (failing("CATIPrdProperties::SetDefinition") || !node || !tellsReference()) return E_FAIL;
    node->definition = toBytes(iDefinition);
    AttributeCalls::written(*node);
    return S_OK;
}

HRESULT ProductObject::SetRevision(const CATUnicodeString& iRevision) {
    ProductNode* const node = referenceNodeOf(*this);
    if (failing("CATIPrdProperties::SetRevision") || !node || !tellsReference()) return E_FAIL;
    node->revision = toBytes(iRevision);
    AttributeCalls::written(*node);
    return S_OK;
}

HRESULT ProductObject::SetNomenclature(const CATUnicodeString& iNomenclature) {
    ProductNode* const node = referenceNodeOf(*this);
    if (failing("CATIPrdProperties::SetNomenclature") || !node || !tellsReference()) return E_FAIL;
    node->nomenclature = toBytes(iNomenclature);
    AttributeCalls::written(*node);
    return S_OK;
}

HRESULT ProductObject::GetUserProperties(CATIParmPublisher*& oPublisher, CATBoolean iCreate) {
    oPublisher = nullptr;
    const FaultFlavour flavour = called("CATIPrdProperties::GetUserProperties");
    ProductNode* const node = referenceNodeOf(*this);
    if (flavour != FaultFlavour::none) {
        if (flavour == FaultFlavour::codeWithOutput && node) oPublisher = node->userProperties;
        return Failures::get().codeOf(flavour);
    }
    if (!node || (!node->userProperties && !iCreate)) return E_FAIL;
    oPublisher = handOut<CATIParmPublisher>(&KnowledgeData::get().userProperties(*node));
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
