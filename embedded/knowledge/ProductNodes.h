#ifndef EMBEDDED_KNOWLEDGE_PRODUCT_NODES_H
#define EMBEDDED_KNOWLEDGE_PRODUCT_NODES_H

#include "VornCATIxPDMItem.h"
#include "embedded/knowledge/NodeCalls.h"
#include "embedded/structure/Products.h"

#include <map>
#include <string>

namespace embedded {

EMBEDDED_IDENTITY(VornCATIxPDMItem);

class FeatureNode;

/** What the platform's own PDM connection keeps for a reference. */
class PdmItemObject final : public Implements<CATBaseUnknown, VornCATIxPDMItem> {
public:
    PdmItemObject() : Implements("PDMItem") {}

    std::string objectName() const override { return "PDM item"; }
    HRESULT SetProperty(const CATUnicodeString& iName, const CATUnicodeString& iValue) override;

    std::map<std::string, std::string> properties;
};

/** Attributes and parameters of a product, and what its reference has of properties. */
class ProductNode final
    : public WithParameters<Extends<ProductObject, CATISpecAttrAccess, CATIParmPublisher, CATIRedrawEvent>> {
public:
    explicit ProductNode(ProductObject& owner);

    CATISpecObject* specObject() override { return &product(); }
    Object& asObject() override { return product(); }
    std::string displayName() const override;
    bool responds(const IID& iid) override;
    DocumentObject* document() const override;
    ProductObject& product() const { return owner(); }
    /** Whether there is anything to keep. */
    bool isEmpty() const;

    std::string definition;
    std::string revision;
    std::string nomenclature;
    FeatureNode* userProperties = nullptr;
    PdmItemObject item;

private:
    bool answers(const IID& iid) const override;
};

/** The node of a product, made on first use. */
inline ProductNode& nodeOf(ProductObject& product) { return extensionOf<ProductNode>(product); }

/** The node of the reference that a product shows; null for one that is not loaded. */
ProductNode* referenceNodeOf(const ProductObject& product);

} // namespace embedded

#endif
