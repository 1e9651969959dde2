#include "embedded/knowledge/Nodes.h"

#include "embedded/knowledge/ProductNodes.h"

#include <algorithm>

EMBEDDED_INTERFACE(CATISpecAttribute, CATBaseUnknown, 0x312);
EMBEDDED_INTERFACE(CATISpecAttrKey, CATBaseUnknown, 0x313);

namespace embedded {

namespace {

/** Sets in sets: deeper ones cannot be written to a session file. */
constexpr int kDeepestNode = 200;
constexpr const char* kPathSeparator = "\\";
constexpr const char* kChildrenKeys[] = {"_AttrForLiterals", "_FtrList", "UserParameters", "Parameters"};

} // namespace

KeyObject::KeyObject(Node& keyOwner, const std::string& keyName, CATAttrKind keyKind, CATAttrKind keyListKind)
    : Implements("SpecAttrKey"), owner(keyOwner), name(keyName), kind(keyKind), listKind(keyListKind) {}

const Object* KeyObject::home() const { return owner.asObject().home(); }

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

} // namespace embedded
