// The builder's name of a product.
#include "embedded/Session.h"
#include "embedded/documents/SessionData.h"

namespace embedded {

namespace {

/** The handle of a new instance as seen from where it was added. */
Product added(ProductObject* place, ProductObject* instance) {
    return Product(instance ? place->child(instance->index()) : nullptr);
}

Reference* referenceOf(ProductObject* object) { return object ? object->reference() : nullptr; }

} // namespace

CATIProduct* Product::get() const {
    if (m_object) m_object->pin(IID_CATIProduct);
    return m_object;
}

Product Product::add(const Document& child, const std::string& instanceName) const {
    return add(child.root(), instanceName);
}

Product Product::add(const Product& reference, const std::string& instanceName) const {
    Reference* const father = referenceOf(m_object);
    Reference* const child = referenceOf(reference.m_object);
    if (!father || !child || (child->component && child->document != father->document)) return Product();
    return added(m_object, father->node->addInstance(child, instanceName));
}

Product Product::addComponent(const std::string& partNumber, const std::string& instanceName) const {
    Reference* const father = referenceOf(m_object);
    if (!father || father->instanceIndex.count(instanceName) != 0) return Product();
    Reference& component = Session::current().data().newReference(*father->document, true);
    component.partNumber = partNumber;
    return added(m_object, father->node->addInstance(&component, instanceName));
}

Product Product::addUnresolved(const std::string& instanceName) const {
    Reference* const father = referenceOf(m_object);
    return father ? added(m_object, father->node->addInstance(nullptr, instanceName)) : Product();
}

Product Product::reference() const {
    Reference* const reference = referenceOf(m_object);
    return Product(reference ? reference->node : nullptr);
}

Product Product::father() const { return Product(m_object ? m_object->father() : nullptr); }

std::vector<Product> Product::children() const {
    std::vector<Product> result;
    for (std::size_t i = 0; m_object && i < m_object->childCount(); ++i) result.emplace_back(m_object->child(i));
    return result;
}

Product Product::at(const std::vector<std::string>& instanceNames) const {
    ProductObject* place = m_object;
    for (const std::string& name : instanceNames)
        if (place) place = place->childNamed(name);
    return Product(place);
}

Product& Product::partNumber(const std::string& text) {
    if (Reference* const reference = referenceOf(m_object)) reference->partNumber = text;
    return *this;
}

std::string Product::partNumber() const { return m_object ? m_object->partNumber() : std::string(); }

Product& Product::instanceName(const std::string& text) {
    if (m_object) m_object->rename(text);
    return *this;
}

std::string Product::instanceName() const { return m_object ? m_object->instanceName() : std::string(); }

Product& Product::description(const std::string& text) {
    if (m_object && !m_object->isReference()) m_object->setDescription(text);
    return *this;
}

std::string Product::description() const { return m_object ? m_object->description() : std::string(); }

Product& Product::referenceDescription(const std::string& text) {
    if (Reference* const reference = referenceOf(m_object)) reference->description = text;
    return *this;
}

std::string Product::referenceDescription() const {
    const Reference* const reference = referenceOf(m_object);
    return reference ? reference->description : std::string();
}

Product& Product::masterShape(const std::string& path) {
    if (Reference* const reference = referenceOf(m_object)) reference->masterShape = path;
    return *this;
}

Product& Product::shape(const std::string& name, const std::string& path) {
    if (Reference* const reference = referenceOf(m_object)) reference->shapes.emplace_back(name, path);
    return *this;
}

Product& Product::withoutProperties() {
    if (m_object) m_object->withoutProperties();
    return *this;
}

Product& Product::withoutLinkableObject() {
    if (Reference* const reference = referenceOf(m_object)) reference->linkable = false;
    return *this;
}

} // namespace embedded
