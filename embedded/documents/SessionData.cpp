#include "embedded/documents/SessionData.h"

#include <utility>

namespace embedded {

Reference& SessionData::newReference(DocumentObject& document, bool component) {
    references.push_back(std::make_unique<Reference>());
    Reference& reference = *references.back();
    reference.document = &document;
    reference.component = component;
    reference.node = newProduct(std::make_unique<ProductObject>(*this, reference));
    return reference;
}

ProductObject* SessionData::newProduct(std::unique_ptr<ProductObject> product) {
    products.push_back(std::move(product));
    return products.back().get();
}

DocumentObject* SessionData::documentBehind(const CATDocument* pointer) const {
    for (const auto& document : documents)
        if (document.get() == pointer) return document.get();
    return nullptr;
}

} // namespace embedded
