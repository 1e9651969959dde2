#include "embedded/knowledge/Knowledge.h"

#include "embedded/Session.h"
#include "embedded/text/Numbers.h"

#include <algorithm>

EMBEDDED_INTERFACE(CATIContainer, CATBaseUnknown, 0x310);
EMBEDDED_INTERFACE(CATISpecAttribute, CATBaseUnknown, 0x312);
EMBEDDED_INTERFACE(CATISpecAttrKey, CATBaseUnknown, 0x313);
EMBEDDED_INTERFACE(CATISpecAttrAccess, CATBaseUnknown, 0x314);
EMBEDDED_INTERFACE(CATIRedrawEvent, CATBaseUnknown, 0x315);
EMBEDDED_INTERFACE(CATICkeNaming, CATBaseUnknown, 0x316);
EMBEDDED_INTERFACE(CATICkeParameterSet, CATICkeNaming, 0x317);
EMBEDDED_INTERFACE(CATICkeInst, CATBaseUnknown, 0x318);
EMBEDDED_INTERFACE(CATICkeParm, CATBaseUnknown, 0x319);
EMBEDDED_INTERFACE(CATIParmPublisher, CATBaseUnknown, 0x31A);
EMBEDDED_INTERFACE(CATICkeParmFactory, CATBaseUnknown, 0x31B);
EMBEDDED_INTERFACE(CATICkeRelationFactory, CATBaseUnknown, 0x31C);
EMBEDDED_INTERFACE(CATIDrawing, CATBaseUnknown, 0x31D);

const CATCke::Boolean CATCke::True(1);
const CATCke::Boolean CATCke::False(0);

namespace embedded {

namespace {

/** Sets in sets: deeper ones cannot be written to a session file. */
constexpr int kDeepestNode = 200;
constexpr const char* kPathSeparator = "\\";
constexpr const char* kChildrenKeys[] = {"_AttrForLiterals", "_FtrList", "UserParameters", "Parameters"};

const ExtensionOf<ProductObject, ProductNode> known;

CATICkeParm_var handleOf(ParameterObject& parameter) { return CATICkeParm_var(static_cast<CATICkeParm*>(&parameter)); }

void collectBelow(const Node& node, const IID& iid, bool all, std::vector<Node*>& found) {
    if (const Attribute* const children = node.children())
        for (Node* const child : children->objects) {
            if (child->responds(iid)) found.push_back(child);
            if (all) collectBelow(*child, iid, all, found);
        }
    for (Node* const relation : node.relations)
        if (relation->responds(iid)) found.push_back(relation);
}

} // namespace

KeyObject::KeyObject(Node& keyOwner, const std::string& keyName, CATAttrKind keyKind, CATAttrKind keyListKind)
    : Implements("SpecAttrKey"), owner(keyOwner), name(keyName), kind(keyKind), listKind(keyListKind) {}

CATUnicodeString KeyObject::GetName() const {
    return failing("CATISpecAttrKey::GetName") ? CATUnicodeString() : toText(name);
}

CATAttrKind KeyObject::GetType() const { return failing("CATISpecAttrKey::GetType") ? tk_external : kind; }

CATAttrKind KeyObject::GetListType() const { return failing("CATISpecAttrKey::GetListType") ? tk_list : listKind; }

std::size_t Attribute::size() const {
    if (key->kind == tk_string) return texts.empty() || texts.front().empty() ? 0 : 1;
    return texts.size() + integers.size() + reals.size() + objects.size();
}

Attribute* Node::attribute(const std::string& name) const {
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& attribute) { return attribute->key->name == name; });
    return found == attributes.end() ? nullptr : found->get();
}

Attribute* Node::addAttribute(const std::string& name, CATAttrKind kind, CATAttrKind listKind) {
    const CATAttrKind element = kind == tk_list ? listKind : kind;
    const bool kept = element == tk_component || element == tk_string ||
                      (kind == tk_list && (element == tk_integer || element == tk_double));
    if (!kept || attribute(name)) return nullptr;
    attributes.push_back(std::make_unique<Attribute>());
    attributes.back()->key = std::make_unique<KeyObject>(*this, name, kind, kind == tk_list ? listKind : tk_list);
    return attributes.back().get();
}

Attribute* Node::children() const {
    for (const char* const key : kChildrenKeys) {
        Attribute* const found = attribute(key);
        if (found && found->isListOf(tk_component)) return found;
    }
    return nullptr;
}

bool Node::adopt(Attribute& list, Node& child) {
    if (child.parent || &child == this || child.document() != document()) return false;
    int depth = 0;
    for (const Node* above = this; above; above = above->parent)
        if (above == &child || ++depth > kDeepestNode) return false;
    child.parent = this;
    list.objects.push_back(&child);
    return true;
}

bool Node::append(Node& child) {
    Attribute* list = children();
    if (!list) list = addAttribute(childrenKey(), tk_list, tk_component);
    return list && adopt(*list, child);
}

bool Node::remove(Node& child) {
    Attribute* const list = children();
    if (!list) return false;
    const auto found = std::find(list->objects.begin(), list->objects.end(), &child);
    if (found == list->objects.end()) return false;
    list->objects.erase(found);
    child.parent = nullptr;
    return true;
}

std::string Node::path(const Node* root) const {
    std::string result = displayName();
    for (const Node* above = parent; above && above != root; above = above->parent)
        result = above->displayName() + kPathSeparator + result;
    return result;
}

Node* nodeOf(CATISpecObject* object) {
    if (auto* const product = dynamic_cast<ProductObject*>(object)) return &nodeOf(*product);
    return dynamic_cast<Node*>(object);
}

CATISpecAttrKey* AttributeCalls::key(FaultFlavour flavour, const Node& node, const char* name) {
    Attribute* const found = name ? node.attribute(name) : nullptr;
    if (flavour != FaultFlavour::none || !found) return nullptr;
    found->key->AddRef();
    return found->key.get();
}

Attribute* AttributeCalls::behind(const Node& node, const CATISpecAttrKey* key) {
    const auto* const object = dynamic_cast<const KeyObject*>(key);
    return object && &object->owner == &node ? node.attribute(object->name) : nullptr;
}

CATISpecObject* AttributeCalls::object(const Node& node, const CATISpecAttrKey* key, int position) {
    const Attribute* const found = behind(node, key);
    if (!found) return nullptr;
    const bool list = found->isListOf(tk_component);
    if (list != (position > 0)) return nullptr;
    const std::size_t index = list ? static_cast<std::size_t>(position - 1) : 0;
    if (index >= found->objects.size()) return nullptr;
    CATISpecObject* const result = found->objects[index]->specObject();
    result->AddRef();
    return result;
}

HRESULT AttributeCalls::setObject(Node& node, const CATISpecAttrKey* key, const CATISpecObject_var& object,
                                  int position) {
    Attribute* const found = behind(node, key);
    Node* const child = nodeOf(object);
    if (!found || !child || position != 0) return E_FAIL;
    if (found->key->kind == tk_component && !found->objects.empty()) return E_FAIL;
    if (found->key->kind != tk_component && !found->isListOf(tk_component)) return E_FAIL;
    return node.adopt(*found, *child) ? S_OK : E_FAIL;
}

CATISpecAttribute* AttributeCalls::add(Node& node, const CATUnicodeString& name, CATAttrKind kind,
                                       CATAttrKind listKind) {
    Attribute* const added = node.addAttribute(toBytes(name), kind, listKind);
    if (!added) return nullptr;
    added->key->AddRef();
    return added->key.get();
}

void AttributeCalls::listBelow(const Node& node, const char* interfaceName, bool all,
                               CATListValCATISpecObject_var& list) {
    const IID* const iid = interfaceNamed(interfaceName);
    if (!iid) return;
    std::vector<Node*> found;
    collectBelow(node, *iid, all, found);
    for (Node* const child : found) list.Append(CATISpecObject_var(child->specObject()));
}

CATIContainer_var AttributeCalls::containerOf(const Node& node) {
    DocumentObject* const document = node.document();
    if (!document) return CATIContainer_var();
    return CATIContainer_var(static_cast<CATIContainer*>(&KnowledgeData::get().container(*document)));
}

FeatureNode::FeatureNode(DocumentObject& document, const std::string& type, const std::string& name)
    : WithParameters(type), m_document(document), m_type(type), m_name(name) {}

bool FeatureNode::answers(const IID& iid) const {
    if (iid == IID_CATICkeParameterSet || iid == IID_CATICkeNaming) return m_type == kSet;
    return iid != IID_CATIDrawing || m_type == kDrawing;
}

bool FeatureNode::responds(const IID& iid) {
    if (!answers(iid)) return false;
    const IID* const own[] = {&IID_CATISpecObject,  &IID_CATISpecAttrAccess, &IID_CATIParmPublisher,
                              &IID_CATIRedrawEvent, &IID_CATIAlias,          &IID_CATICkeParameterSet,
                              &IID_CATICkeNaming,   &IID_CATIDrawing};
    const bool found = std::any_of(std::begin(own), std::end(own), [&](const IID* one) { return *one == iid; });
    return found || extensionFor(*this, iid) != nullptr;
}

CATUnicodeString FeatureNode::GetDisplayName() const {
    return failing("CATISpecObject::GetDisplayName") ? CATUnicodeString() : toText(m_name);
}

CATUnicodeString FeatureNode::GetType() const {
    return failing("CATISpecObject::GetType") ? CATUnicodeString() : toText(m_type);
}

CATIContainer_var FeatureNode::GetFeatContainer() const {
    return failing("CATISpecObject::GetFeatContainer") ? CATIContainer_var() : AttributeCalls::containerOf(*this);
}

CATISpecAttribute* FeatureNode::AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                             CATAttrInOut) {
    return failing("CATISpecObject::AddAttribute") ? nullptr : AttributeCalls::add(*this, iName, iKind, iListKind);
}

CATBoolean FeatureNode::IsUpToDate(CATIDomain_var) const {
    return !failing("CATISpecObject::IsUpToDate") && m_document.upToDate ? TRUE : FALSE;
}

CATUnicodeString FeatureNode::GetAlias() {
    return failing("CATIAlias::GetAlias") ? CATUnicodeString() : toText(m_name);
}

void FeatureNode::SetAlias(const CATUnicodeString& iAlias) {
    if (!failing("CATIAlias::SetAlias")) m_name = toBytes(iAlias);
}

CATCkeListOfParm FeatureNode::Parameters() const {
    if (failing("CATICkeParameterSet::Parameters")) return nullptr;
    auto list = std::make_unique<CATListValCATBaseUnknown_var>();
    std::vector<Node*> found;
    collectBelow(*this, IID_CATICkeParm, false, found);
    for (Node* const child : found) list->Append(CATBaseUnknown_var(child->specObject()));
    return list.release();
}

ContainerObject::ContainerObject(DocumentObject& document)
    : Implements("Container"), m_document(document), m_alias(document.type() + "Cont") {}

std::string ContainerObject::objectName() const { return "container of " + m_document.objectName(); }

CATLONG32 ContainerObject::ListMembersHere(const CATIdent iInterfaceID, SEQUENCE(CATBaseUnknown_ptr) & ioMembers) {
    const IID* const iid = interfaceNamed(iInterfaceID);
    if (failing("CATIContainer::ListMembersHere") || !iid) return 0;
    const auto members = KnowledgeData::get().members.find(&m_document);
    if (members == KnowledgeData::get().members.end()) return 0;
    CATLONG32 count = 0;
    const auto add = [&](Node& node) {
        if (!node.responds(*iid)) return;
        CATBaseUnknown* const member = node.specObject();
        member->AddRef();
        ioMembers[ioMembers.length()] = member;
        ++count;
    };
    for (Node* const feature : members->second.features) add(*feature);
    for (Node* const parameter : members->second.parameters)
        if (parameter->parent) add(*parameter);
    for (Node* const relation : members->second.relations) add(*relation);
    return count;
}

CATICkeParm_var ContainerObject::CreateString(const CATUnicodeString& iName, const CATUnicodeString& iValue) {
    if (failing("CATICkeParmFactory::CreateString")) return CATICkeParm_var();
    ParameterObject& made = KnowledgeData::get().newParameter(m_document, "String", toBytes(iName));
    made.setText(toBytes(iValue));
    return handleOf(made);
}

CATICkeParm_var ContainerObject::CreateInteger(const CATUnicodeString& iName, const int iValue) {
    if (failing("CATICkeParmFactory::CreateInteger")) return CATICkeParm_var();
    ParameterObject& made = KnowledgeData::get().newParameter(m_document, "Integer", toBytes(iName));
    made.setInteger(iValue);
    return handleOf(made);
}

CATICkeParm_var ContainerObject::CreateReal(const CATUnicodeString& iName, const double iValue) {
    if (failing("CATICkeParmFactory::CreateReal")) return CATICkeParm_var();
    ParameterObject& made = KnowledgeData::get().newParameter(m_document, "Real", toBytes(iName));
    made.setReal(iValue);
    return handleOf(made);
}

CATICkeParm_var ContainerObject::CreateBoolean(const CATUnicodeString& iName, const CATCke::Boolean iValue) {
    if (failing("CATICkeParmFactory::CreateBoolean")) return CATICkeParm_var();
    ParameterObject& made = KnowledgeData::get().newParameter(m_document, "Boolean", toBytes(iName));
    made.setBoolean(iValue != 0);
    return handleOf(made);
}

CATIParmPublisher_var ContainerObject::CreateParameterSet(const CATUnicodeString iName) {
    if (failing("CATICkeRelationFactory::CreateParameterSet")) return CATIParmPublisher_var();
    FeatureNode& made = KnowledgeData::get().newFeature(m_document, FeatureNode::kSet, toBytes(iName));
    return CATIParmPublisher_var(static_cast<CATIParmPublisher*>(&made));
}

CATUnicodeString ContainerObject::GetAlias() {
    return failing("CATIAlias::GetAlias") ? CATUnicodeString() : toText(m_alias);
}

void ContainerObject::SetAlias(const CATUnicodeString& iAlias) {
    if (!failing("CATIAlias::SetAlias")) m_alias = toBytes(iAlias);
}

LentParameters::LentParameters(std::vector<ParameterObject*> parameters)
    : m_parameters(std::move(parameters)), m_list(std::make_unique<CATListValCATBaseUnknown_var>()) {
    --Accounting::get().live().lists;
    for (ParameterObject* const parameter : m_parameters) {
        parameter->pin();
        m_list->Append(CATBaseUnknown_var(static_cast<CATICkeParm*>(parameter)));
        parameter->Release();
    }
}

LentParameters::~LentParameters() {
    for (ParameterObject* const parameter : m_parameters) parameter->AddRef();
    m_list.reset();
    ++Accounting::get().live().lists;
}

KnowledgeData::KnowledgeData(SessionData& sessionData) : session(sessionData), types(makeTypes()) {}

KnowledgeData& KnowledgeData::get() { return Session::current().data().part<KnowledgeData>(); }

ContainerObject& KnowledgeData::container(DocumentObject& document) {
    auto& container = containers[&document];
    if (!container) container = std::make_unique<ContainerObject>(document);
    return *container;
}

FeatureNode& KnowledgeData::newFeature(DocumentObject& document, const std::string& featureType,
                                       const std::string& name) {
    features.push_back(std::make_unique<FeatureNode>(document, featureType, name));
    members[&document].features.push_back(features.back().get());
    return *features.back();
}

FeatureNode& KnowledgeData::feature(DocumentObject& document, const std::string& featureType, const std::string& name) {
    FeatureNode*& root = roots[{&document, featureType}];
    if (!root) root = &newFeature(document, featureType, name);
    if (root->implied) root->rename(name);
    root->implied = false;
    return *root;
}

FeatureNode& KnowledgeData::impliedFeature(DocumentObject& document, const std::string& featureType,
                                           const std::string& name) {
    FeatureNode*& root = roots[{&document, featureType}];
    if (!root) {
        root = &newFeature(document, featureType, name);
        root->implied = true;
    }
    return *root;
}

ParameterObject& KnowledgeData::newParameter(DocumentObject& document, const std::string& typeName,
                                             const std::string& role) {
    parameters.push_back(std::make_unique<ParameterObject>(document, *type(typeName), role));
    members[&document].parameters.push_back(parameters.back().get());
    return *parameters.back();
}

FeatureNode& KnowledgeData::userProperties(ProductNode& reference) {
    if (!reference.userProperties) {
        reference.userProperties = &newFeature(*reference.document(), FeatureNode::kSet, "Properties");
        reference.userProperties->parent = &reference;
    }
    return *reference.userProperties;
}

void KnowledgeData::addRelation(Node& parent, Node& relation) {
    relation.parent = &parent;
    parent.relations.push_back(&relation);
    members[relation.document()].relations.push_back(&relation);
}

TypeObject* KnowledgeData::type(const std::string& name) const {
    const auto found = std::find_if(types.begin(), types.end(), [&](const auto& one) { return one->name() == name; });
    return found == types.end() ? nullptr : found->get();
}

} // namespace embedded
