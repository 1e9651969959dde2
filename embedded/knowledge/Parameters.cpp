#include "embedded/Parameters.h"

#include "embedded/knowledge/KnowledgeData.h"
#include "embedded/text/Numbers.h"

namespace embedded {

namespace {

template <class T, class Show>
std::string joined(const char* kind, const std::vector<T>& values, Show show) {
    std::string text = std::string(kind) + ":";
    for (std::size_t i = 0; i < values.size(); ++i) text += (i ? ", " : " ") + show(values[i]);
    return text;
}

Attribute* listOf(ParameterObject* object, const std::string& name, CATAttrKind kind) {
    if (!object) return nullptr;
    if (Attribute* const found = object->attribute(name)) return found->isListOf(kind) ? found : nullptr;
    return object->addAttribute(name, tk_list, kind);
}

template <class Set>
Parameter added(Node* node, const char* type, const std::string& role, Set set) {
    DocumentObject* const document = node ? node->document() : nullptr;
    if (!document || !KnowledgeData::get().type(type)) return Parameter();
    ParameterObject& made = KnowledgeData::get().newParameter(*document, type, role);
    set(made);
    return Parameter(node->append(made) ? &made : nullptr);
}

ProductNode* referenceNode(const Product& product) { return product ? referenceNodeOf(*product.object()) : nullptr; }

/** Another interface of an object, borrowed. */
template <class T>
T* borrowed(Node* node, const IID& iid) {
    if (!node) return nullptr;
    node->asObject().pin(iid);
    return dynamic_cast<T*>(node);
}

} // namespace

CATICkeParm* Parameter::get() const {
    if (m_object) m_object->pin(IID_CATICkeParm);
    return m_object;
}

CATISpecObject* Parameter::specObject() const {
    if (m_object) m_object->pin(IID_CATISpecObject);
    return m_object;
}

std::string Parameter::role() const { return m_object ? m_object->role : std::string(); }

Parameter& Parameter::userName(const std::string& name) {
    if (m_object) m_object->userName = name;
    return *this;
}

std::string Parameter::userName() const { return m_object ? m_object->userName : std::string(); }

std::string Parameter::type() const { return m_object ? m_object->type().name() : std::string(); }

std::string Parameter::shown() const { return m_object ? m_object->shown() : std::string(); }

Parameter& Parameter::access(int mode) {
    if (m_object) m_object->access = static_cast<CATICkeParm::UserAccessMode>(mode);
    return *this;
}

int Parameter::access() const { return m_object ? static_cast<int>(m_object->access) : 0; }

Parameter& Parameter::withoutValue() {
    if (m_object) m_object->isSet = false;
    return *this;
}

Parameter& Parameter::driven() {
    if (m_object) m_object->driven = true;
    return *this;
}

Parameter& Parameter::range(double least, double most) {
    if (!m_object) return *this;
    m_object->least = least;
    m_object->most = most;
    return *this;
}

Parameter& Parameter::list(const std::string& name, const std::vector<std::string>& texts) {
    if (Attribute* const found = listOf(m_object, name, tk_string)) found->texts = texts;
    return *this;
}

Parameter& Parameter::list(const std::string& name, const std::vector<int>& numbers) {
    if (Attribute* const found = listOf(m_object, name, tk_integer)) found->integers = numbers;
    return *this;
}

Parameter& Parameter::list(const std::string& name, const std::vector<double>& numbers) {
    if (Attribute* const found = listOf(m_object, name, tk_double)) found->reals = numbers;
    return *this;
}

std::string Parameter::list(const std::string& name) const {
    const Attribute* const found = m_object ? m_object->attribute(name) : nullptr;
    if (!found) return std::string();
    if (found->isListOf(tk_integer))
        return joined("integer", found->integers, [](int value) { return std::to_string(value); });
    if (found->isListOf(tk_double)) return joined("double", found->reals, shortestText);
    return joined("string", found->texts, [](const std::string& text) { return text; });
}

CATISpecObject* Publisher::get() const {
    if (!m_node) return nullptr;
    m_node->asObject().pin(IID_CATISpecObject);
    return m_node->specObject();
}

CATIParmPublisher* Publisher::publisher() const { return borrowed<CATIParmPublisher>(m_node, IID_CATIParmPublisher); }

CATICkeParameterSet* Publisher::set() const {
    return m_node && m_node->responds(IID_CATICkeParameterSet)
               ? borrowed<CATICkeParameterSet>(m_node, IID_CATICkeParameterSet)
               : nullptr;
}

CATICkeParmFactory* Publisher::factory() const {
    DocumentObject* const document = m_node ? m_node->document() : nullptr;
    if (!document) return nullptr;
    ContainerObject& container = KnowledgeData::get().container(*document);
    container.pin(IID_CATICkeParmFactory);
    return &container;
}

std::string Publisher::name() const { return m_node ? m_node->displayName() : std::string(); }

Parameter Publisher::add(const std::string& role, const char* text) const {
    return added(m_node, "String", role, [&](ParameterObject& made) { made.setText(text ? text : ""); });
}

Parameter Publisher::add(const std::string& role, int value) const {
    return added(m_node, "Integer", role, [&](ParameterObject& made) { made.setInteger(value); });
}

Parameter Publisher::add(const std::string& role, double value) const {
    return added(m_node, "Real", role, [&](ParameterObject& made) { made.setReal(value); });
}

Parameter Publisher::add(const std::string& role, bool value) const {
    return added(m_node, "Boolean", role, [&](ParameterObject& made) { made.setBoolean(value); });
}

Parameter Publisher::add(const std::string& magnitude, const std::string& role, double value) const {
    return added(m_node, magnitude.c_str(), role, [&](ParameterObject& made) { made.setReal(value); });
}

Publisher Publisher::addSet(const std::string& name) const {
    DocumentObject* const document = m_node ? m_node->document() : nullptr;
    if (!document) return Publisher();
    FeatureNode& made = KnowledgeData::get().newFeature(*document, FeatureNode::kSet, name);
    return Publisher(m_node->append(made) ? &made : nullptr);
}

Publisher& Publisher::keepIn(const std::string& attribute) {
    if (m_node && !m_node->children()) m_node->addAttribute(attribute, tk_list, tk_component);
    return *this;
}

Publisher Publisher::addSetAs(const std::string& attribute, const std::string& name) const {
    DocumentObject* const document = m_node ? m_node->document() : nullptr;
    Attribute* const added = document ? m_node->addAttribute(attribute, tk_component, tk_list) : nullptr;
    if (!added) return Publisher();
    FeatureNode& made = KnowledgeData::get().newFeature(*document, FeatureNode::kSet, name);
    return Publisher(m_node->adopt(*added, made) ? &made : nullptr);
}

Publisher& Publisher::text(const std::string& attribute, const std::string& value) {
    if (Attribute* const made = m_node ? m_node->addAttribute(attribute, tk_string, tk_list) : nullptr)
        made->texts = {value};
    return *this;
}

std::vector<Parameter> Publisher::parameters() const {
    std::vector<Parameter> result;
    const Attribute* const children = m_node ? m_node->children() : nullptr;
    if (!children) return result;
    for (Node* const child : children->objects)
        if (auto* const parameter = dynamic_cast<ParameterObject*>(child)) result.emplace_back(parameter);
    return result;
}

std::vector<Publisher> Publisher::sets() const {
    std::vector<Publisher> result;
    const Attribute* const children = m_node ? m_node->children() : nullptr;
    if (!children) return result;
    for (Node* const child : children->objects)
        if (child->responds(IID_CATICkeParameterSet)) result.emplace_back(child);
    return result;
}

Parameter Publisher::parameter(const std::string& name) const {
    for (const Parameter& parameter : parameters())
        if ((parameter.userName().empty() ? parameter.role() : parameter.userName()) == name) return parameter;
    return Parameter();
}

int Publisher::redraws() const { return m_node ? m_node->redraws : 0; }

Publisher parametersOf(const Product& product) {
    ProductObject* const object = product.object();
    return Publisher(object && object->reference() ? &nodeOf(*object) : nullptr);
}

Publisher parametersOf(const Document& document, const std::string& type, const std::string& name) {
    DocumentObject* const object = document.object();
    return Publisher(object ? &KnowledgeData::get().feature(*object, type, name) : nullptr);
}

Publisher userProperties(const Product& product) {
    ProductNode* const node = referenceNode(product);
    return Publisher(node ? &KnowledgeData::get().userProperties(*node) : nullptr);
}

Publisher existingUserProperties(const Product& product) {
    const ProductNode* const node = referenceNode(product);
    return Publisher(node ? node->userProperties : nullptr);
}

ReferenceProperties referenceProperties(const Product& product) {
    const ProductNode* const node = referenceNode(product);
    return node ? ReferenceProperties{node->definition, node->revision, node->nomenclature} : ReferenceProperties();
}

std::map<std::string, std::string> pdmProperties(const Product& product) {
    const ProductNode* const node = referenceNode(product);
    return node ? node->item.properties : std::map<std::string, std::string>();
}

bool selectUnit(const std::string& magnitude, const std::string& symbol) {
    TypeObject* const type = KnowledgeData::get().type(magnitude);
    return type && type->select(symbol);
}

} // namespace embedded
