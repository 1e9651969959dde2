#include "embedded/Session.h"

#include "embedded/Records.h"
#include "embedded/documents/LoadedDocuments.h"
#include "embedded/documents/SessionData.h"
#include "embedded/files/FileNames.h"

#include <algorithm>

namespace embedded {

namespace {

std::vector<std::size_t> positionBelowInstance(const ProductObject& product) {
    std::vector<std::size_t> position;
    for (const ProductObject* place = &product; !place->isDirectInstance(); place = place->father())
        position.push_back(place->index());
    std::reverse(position.begin(), position.end());
    return position;
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\') result += '\\';
        result += character;
    }
    return result + "\" ";
}

/** Writes what a session stores, in the order of the structure. */
class Digest {
public:
    explicit Digest(const SessionData& session) : m_own(ownOccurrences(session)) {
        for (const auto& document : session.documents) addDocument(*document);
    }
    std::string take() { return std::move(m_text); }

private:
    void addFlag(bool set, const char* name) {
        if (set) m_text.append(name).append(" ");
    }

    void addDocument(DocumentObject& document) {
        m_text += "document " + quoted(document.name()) + quoted(document.type()) + document.uuidText() + " ";
        addFlag(document.saved, "saved");
        addFlag(document.onDisk, "on_disk");
        addFlag(document.upToDate, "up_to_date");
        addFlag(!document.hasDescriptor, "without_descriptor");
        addFlag(!document.hasAutomation, "without_automation");
        addFlag(!document.hasRoots, "without_roots");
        m_text += "\n";
        if (ProductObject* const root = document.rootProduct()) addStructure(*root->reference());
    }

    void addStructure(const Reference& root) {
        m_references = {&root};
        m_numbers.clear();
        for (std::size_t next = 0; next < m_references.size(); ++next) addReference(*m_references[next]);
    }

    void addReference(const Reference& reference) {
        m_text += " reference " + quoted(reference.partNumber) + quoted(reference.description) +
                  quoted(reference.masterShape);
        for (const auto& shape : reference.shapes) m_text += quoted(shape.first) + quoted(shape.second);
        addFlag(!reference.linkable, "without_linkable_object");
        addFlag(!reference.node->hasProperties(), "without_properties");
        m_text += "\n";
        for (std::size_t i = 0; i < reference.node->childCount(); ++i) addInstance(*reference.node->child(i));
    }

    void addInstance(const ProductObject& instance) {
        m_text += "  instance " + quoted(instance.instanceName()) + nameOf(instance.reference());
        addOwn(instance);
        const auto own = m_own.find(&instance);
        if (own == m_own.end()) return;
        for (const ProductObject* occurrence : own->second) {
            m_text += "   occurrence ";
            for (const std::string& name : pathBelowInstance(*occurrence)) m_text += quoted(name);
            addOwn(*occurrence);
        }
    }

    void addOwn(const ProductObject& place) {
        if (!place.isDirectInstance() && place.ownDescription()) m_text += "own ";
        m_text += quoted(place.description());
        addFlag(!place.hasProperties(), "without_properties");
        m_text += "\n";
    }

    /** Components have no name of their own: they are counted as they are met. */
    std::string nameOf(const Reference* reference) {
        if (!reference) return "unresolved ";
        if (!reference->component) return quoted(reference->document->name());
        const auto number = m_numbers.emplace(reference, m_references.size());
        if (number.second) m_references.push_back(reference);
        return "component " + std::to_string(number.first->second) + " ";
    }

    const std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> m_own;
    std::vector<const Reference*> m_references;
    std::unordered_map<const Reference*, std::size_t> m_numbers;
    std::string m_text;
};

/** The handle of a new instance as seen from where it was added. */
Product added(ProductObject* place, ProductObject* instance) {
    return Product(instance ? place->child(instance->index()) : nullptr);
}

Reference* referenceOf(ProductObject* object) { return object ? object->reference() : nullptr; }

} // namespace

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

std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> ownOccurrences(const SessionData& session) {
    std::unordered_map<const ProductObject*, std::vector<const ProductObject*>> result;
    for (const auto& product : session.products) {
        if (product->isReference() || product->isDirectInstance()) continue;
        if (!product->ownDescription() && product->hasProperties()) continue;
        const ProductObject* instance = product.get();
        while (!instance->isDirectInstance()) instance = instance->father();
        result[instance].push_back(product.get());
    }
    for (auto& below : result)
        std::sort(below.second.begin(), below.second.end(), [](const ProductObject* left, const ProductObject* right) {
            return positionBelowInstance(*left) < positionBelowInstance(*right);
        });
    return result;
}

std::vector<std::string> pathBelowInstance(const ProductObject& product) {
    std::vector<std::string> path;
    for (const ProductObject* place = &product; !place->isDirectInstance(); place = place->father())
        path.push_back(place->instanceName());
    std::reverse(path.begin(), path.end());
    return path;
}

CATDocument* Document::get() const { return m_object; }

std::string Document::name() const { return m_object ? m_object->name() : std::string(); }

Document& Document::uuid(const std::string& text) {
    std::string copy = text;
    if (m_object) m_object->uuid = CATUuid(copy.data());
    return *this;
}

std::string Document::uuid() const { return m_object ? m_object->uuidText() : std::string(); }

Document& Document::withoutDescriptor() {
    if (m_object) m_object->hasDescriptor = false;
    return *this;
}

Document& Document::saved(bool value) {
    if (m_object) m_object->saved = value;
    return *this;
}

bool Document::saved() const { return m_object && m_object->saved; }

Document& Document::onDisk(bool value) {
    if (m_object) m_object->onDisk = value;
    return *this;
}

bool Document::onDisk() const { return m_object && m_object->onDisk; }

Document& Document::type(const std::string& text) {
    if (m_object) m_object->setType(text);
    return *this;
}

std::string Document::type() const { return m_object ? m_object->type() : std::string(); }

Document& Document::upToDate(bool value) {
    if (m_object) m_object->upToDate = value;
    return *this;
}

bool Document::upToDate() const { return m_object && m_object->upToDate; }

Document& Document::withoutAutomation() {
    if (m_object) m_object->hasAutomation = false;
    return *this;
}

Document& Document::withoutRoots() {
    if (m_object) m_object->hasRoots = false;
    return *this;
}

bool Document::loaded() const {
    return m_object && m_object->inSession && LoadedDocuments(Session::current().data()).contains(*m_object);
}

Product Document::root() const { return Product(m_object ? m_object->rootProduct() : nullptr); }

CATIProduct* Product::get() const {
    if (m_object) m_object->pin();
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

Session& Session::current() {
    // Whatever the process still holds of the session at its very end stays valid.
    static Session& session = *new Session;
    return session;
}

Session::Session() : m_data(std::make_unique<SessionData>()) {}

Session::~Session() = default;

void Session::reset() {
    // In place: the environment keeps its address.
    m_data->environment = Environment();
    m_data->updatedDrawings.clear();
    // They refer to the objects below.
    m_data->parts.clear();
    m_data->documentIndex.clear();
    m_data->documents.clear();
    m_data->products.clear();
    m_data->references.clear();
    Journal::get().clear();
    ErrorReports::get().take();
    Messages::get().take();
}

Environment& Session::environment() { return m_data->environment; }

Document Session::document(const std::string& storageName) {
    const auto place = m_data->documentIndex.emplace(foldedName(storageName), nullptr);
    if (place.second) {
        m_data->documents.push_back(std::make_unique<DocumentObject>(*m_data, storageName));
        place.first->second = m_data->documents.back().get();
    }
    return Document(place.first->second);
}

Document Session::find(const std::string& storageName) const {
    const auto found = m_data->documentIndex.find(foldedName(storageName));
    return Document(found == m_data->documentIndex.end() ? nullptr : found->second);
}

std::size_t Session::documentCount() const { return m_data->documents.size(); }

Document Session::documentAt(std::size_t index) const {
    return Document(index < documentCount() ? m_data->documents[index].get() : nullptr);
}

std::vector<std::string>& Session::updatedDrawings() { return m_data->updatedDrawings; }

std::string Session::digest() const {
    std::string text = Digest(*m_data).take();
    for (const auto& part : m_data->parts) part.second->addToDigest(text);
    return text;
}

} // namespace embedded
