#include "embedded/knowledge/NodeCalls.h"

#include "embedded/knowledge/KnowledgeData.h"

EMBEDDED_INTERFACE(CATISpecAttrAccess, CATBaseUnknown, 0x314);
EMBEDDED_INTERFACE(CATIRedrawEvent, CATBaseUnknown, 0x315);
EMBEDDED_INTERFACE(CATIParmPublisher, CATBaseUnknown, 0x31A);

namespace embedded {

namespace {

void collectBelow(const Node& node, const IID& iid, bool all, std::vector<Node*>& found) {
    if (const Attribute* const children = node.children())
        for (Node* const child : children->objects) {
            if (child->responds(iid)) found.push_back(child);
            if (all) collectBelow(*child, iid, all, found);
        }
    for (Node* const relation : node.relations)
        if (relation->responds(iid)) found.push_back(relation);
}

bool isSet(const Node& node) {
    const auto* const feature = dynamic_cast<const FeatureNode*>(&node);
    return feature && feature->type() == FeatureNode::kSet;
}

} // namespace

CATISpecAttrKey* AttributeCalls::key(FaultFlavour flavour, const Node& node, const char* name) {
    Attribute* const found = name ? node.attribute(fromEightBit(name)) : nullptr;
    if (flavour != FaultFlavour::none || !found) return nullptr;
    return handOut<CATISpecAttrKey>(found->key.get());
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
    if (Failures::get().givesOtherKind()) return handOut<CATISpecObject>(&StrangerObject::get());
    return handOut(found->objects[index]->specObject());
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
    written(node);
    return handOut<CATISpecAttribute>(added->key.get());
}

void AttributeCalls::listBelow(const Node& node, const char* interfaceName, bool all,
                               CATListValCATISpecObject_var& list) {
    const IID* const iid = interfaceNamed(interfaceName);
    if (!iid) return;
    for (Node* const child : below(node, *iid, all)) list.Append(handleOf<CATISpecObject_var>(child->specObject()));
}

CATIContainer_var AttributeCalls::containerOf(const Node& node) {
    if (Failures::get().givesOtherKind()) return handleOf<CATIContainer_var>(&strangeContainer());
    DocumentObject* const document = node.document();
    if (!document) return CATIContainer_var();
    return handleOf<CATIContainer_var>(static_cast<CATIContainer*>(&KnowledgeData::get().container(*document)));
}

void AttributeCalls::written(const Node& node) {
    const bool standsNowhere = !node.parent && (dynamic_cast<const ParameterObject*>(&node) || isSet(node));
    DocumentObject* const document = standsNowhere ? nullptr : node.document();
    if (document) document->written();
}

std::vector<Node*> AttributeCalls::below(const Node& node, const IID& iid, bool all) {
    std::vector<Node*> found;
    collectBelow(node, iid, all, found);
    return found;
}

} // namespace embedded
