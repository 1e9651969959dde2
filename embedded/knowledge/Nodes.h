// Attributes and what stands below what: the state behind the specification objects of the knowledgeware.
#ifndef EMBEDDED_KNOWLEDGE_NODES_H
#define EMBEDDED_KNOWLEDGE_NODES_H

#include "CATISpecAttrKey.h"
#include "CATISpecAttribute.h"
#include "embedded/object/CommonInterfaces.h"
#include "embedded/object/Implements.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace embedded {

EMBEDDED_IDENTITY(CATISpecAttrKey);
EMBEDDED_IDENTITY(CATISpecAttribute);

class DocumentObject;
class Node;

/** Key of an attribute; stands for the attribute itself, too. */
class KeyObject final : public Implements<CATBaseUnknown, CATISpecAttrKey, CATISpecAttribute> {
public:
    KeyObject(Node& owner, const std::string& name, CATAttrKind kind, CATAttrKind listKind);

    std::string objectName() const override { return "attribute " + name; }
    const Object* home() const override;

    CATUnicodeString GetName() const override;
    CATAttrKind GetType() const override;
    CATAttrKind GetListType() const override;

    Node& owner;
    const std::string name;
    const CATAttrKind kind;
    const CATAttrKind listKind; ///< tk_list for a single value
};

/** An attribute: a text or an object, or a list of texts, numbers or objects. */
struct Attribute {
    std::unique_ptr<KeyObject> key;
    std::vector<std::string> texts;
    std::vector<int> integers;
    std::vector<double> reals;
    std::vector<Node*> objects;

    bool isListOf(CATAttrKind kind) const { return key->kind == tk_list && key->listKind == kind; }
    std::size_t size() const;
};

/** What a specification object of the knowledgeware keeps; the objects below one have it as their parent. */
class Node {
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node() = default;

    virtual CATISpecObject* specObject() = 0;
    virtual Object& asObject() = 0;
    virtual std::string displayName() const = 0;
    /** Whether the object answers an interface: no failure point. */
    virtual bool responds(const IID& iid) = 0;
    /** Where the object is stored. */
    virtual DocumentObject* document() const = 0;

    Attribute* attribute(const std::string& name) const;
    /** Null for a name that exists and for kinds that this platform does not keep. */
    Attribute* addAttribute(const std::string& name, CATAttrKind kind, CATAttrKind listKind);
    /** The list that the parameters and sets below this object stand in; null while there is none. */
    Attribute* children() const;
    /** Puts an object that stands nowhere below this one. False when it cannot. */
    bool adopt(Attribute& attribute, Node& child);
    bool append(Node& child);
    bool remove(Node& child);
    /** Names down to this object, joined by backslashes, from below `root` or else from the top. */
    std::string path(const Node* root) const;

    Node* parent = nullptr;
    int redraws = 0;
    std::vector<std::unique_ptr<Attribute>> attributes;
    /** Relations that stand below this object; other topics make and keep them. */
    std::vector<Node*> relations;

protected:
    Node() = default;
    /** Name of the list that a first child makes. */
    virtual const char* childrenKey() const { return "UserParameters"; }
};

/** The node behind a specification object; null for one of another topic. */
Node* nodeOf(CATISpecObject* object);
inline Node* nodeOf(const CATISpecObject_var& object) { return nodeOf(static_cast<CATISpecObject*>(object)); }

} // namespace embedded

#endif
