#include "embedded/documents/SessionData.h"

#include "embedded/documents/Profiles.h"
#include "embedded/text/TextBytes.h"

#include <utility>

namespace embedded {

SessionData::SessionData() { setSwitches(*switchesOf(profile())); }

void SessionData::setSwitches(const Switches& switches) {
    m_switches = switches;
    TextBytes::useCodePage(switches.codePage != CodePage::utf8);
}

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
