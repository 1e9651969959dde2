#include "embedded/structure/Products.h"

#include "embedded/documents/LoadedDocuments.h"
#include "embedded/files/FileNames.h"
#include "embedded/structure/Containment.h"

#include <memory>
#include <utility>

namespace embedded {

ProductObject::ProductObject(SessionData& session, Reference& reference)
    : Implements("ProductReference"), m_session(session), m_father(nullptr), m_instance(nullptr),
      m_reference(&reference), m_index(0) {}

ProductObject::ProductObject(ProductObject& father, std::size_t index, ProductObject* instance, Reference* reference)
    : Implements("ProductInstance"), m_session(father.m_session), m_father(&father),
      m_instance(instance ? instance : this), m_reference(reference), m_index(index) {}

std::string ProductObject::objectName() const {
    std::vector<const ProductObject*> path;
    for (const ProductObject* place = this; place; place = place->m_father) path.push_back(place);
    std::string name = "product " + path.back()->partNumber();
    for (auto place = path.rbegin() + 1; place != path.rend(); ++place) name += "/" + (*place)->instanceName();
    return name;
}

const Object* ProductObject::home() const { return isReference() ? m_reference->document : nullptr; }

std::size_t ProductObject::childCount() const { return m_reference ? m_reference->node->m_children.size() : 0; }

ProductObject* ProductObject::child(std::size_t index) const {
    if (index >= childCount()) return nullptr;
    if (m_children.size() < childCount()) m_children.resize(childCount());
    ProductObject*& place = m_children[index];
    if (!place) {
        ProductObject* const instance = m_reference->node->m_children[index];
        place = m_session.newProduct(
            std::make_unique<ProductObject>(const_cast<ProductObject&>(*this), index, instance, instance->m_reference));
    }
    return place;
}

ProductObject* ProductObject::childNamed(const std::string& instanceName) const {
    if (!m_reference) return nullptr;
    const auto found = m_reference->instanceIndex.find(instanceName);
    return found == m_reference->instanceIndex.end() ? nullptr : child(found->second);
}

ProductObject* ProductObject::addInstance(Reference* child, const std::string& instanceName) {
    if (!isReference() || m_reference->instanceIndex.count(instanceName) != 0) return nullptr;
    if (child && holds(m_session, *child, *m_reference)) return nullptr;
    ProductObject* const instance =
        m_session.newProduct(std::make_unique<ProductObject>(*this, m_children.size(), nullptr, child));
    instance->m_name = instanceName;
    m_reference->instanceIndex.emplace(instanceName, m_children.size());
    m_children.push_back(instance);
    if (child) child->usedIn.push_back(m_reference);
    return instance;
}

const std::string& ProductObject::instanceName() const { return m_instance ? m_instance->m_name : m_name; }

bool ProductObject::rename(const std::string& instanceName) {
    if (!m_instance) return false;
    auto& brothers = m_instance->m_father->m_reference->instanceIndex;
    if (!brothers.emplace(instanceName, m_index).second) return instanceName == m_instance->m_name;
    brothers.erase(m_instance->m_name);
    m_instance->m_name = instanceName;
    return true;
}

DocumentObject& ProductObject::storedIn() const {
    return *(m_instance ? m_instance->m_father : this)->m_reference->document;
}

void ProductObject::setWorkMode(int mode) {
    const bool wasVisualised = std::exchange(m_workMode, mode) == 0;
    if (!m_reference) return;
    if (isReference()) {
        // The document of a part that is open by itself stays, what is in it does not.
        const DocumentObject& document = *m_reference->document;
        if (isVisualised() && !wasVisualised && foldedName(document.type()) == "catpart") loseAllOf(document, this);
        return;
    }
    if (isVisualised())
        m_reference->pictures.insert(this);
    else
        m_reference->pictures.erase(this);
    LoadedDocuments(m_session).settle(*m_reference->document);
}

std::string ProductObject::description() const {
    if (m_description) return *m_description;
    return m_instance && m_instance != this ? m_instance->description() : std::string();
}

bool ProductObject::answers(const IID& iid) const {
    if (iid == IID_CATIPrdProperties) return m_hasProperties;
    if (iid == IID_CATILinkableObject) return !isReference() || m_reference->linkable;
    if (iid == IID_CATISpecObject) return m_reference != nullptr;
    return true;
}

/**
 * From this place upwards, the first place that shows the context's reference stands for the context: the way from
 * there down to this place, taken below the context, leads to the answer. A product does not occur in itself.
 */
ProductObject* ProductObject::findInstance(const ProductObject& context) const {
    if (!context.m_reference) return nullptr;
    std::vector<std::size_t> way;
    const ProductObject* place = this;
    do {
        if (!place->m_father) return nullptr;
        way.push_back(place->m_index);
        place = place->m_father;
    } while (place->m_reference != context.m_reference);
    ProductObject* found = const_cast<ProductObject*>(&context);
    for (auto index = way.rbegin(); index != way.rend(); ++index) found = found->child(*index);
    return found;
}

} // namespace embedded
