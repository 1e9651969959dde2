#ifndef EMBEDDED_KNOWLEDGE_KNOWLEDGE_H
#define EMBEDDED_KNOWLEDGE_KNOWLEDGE_H

#include "CATIAlias.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATICkeRelationFactory.h"
#include "CATIContainer.h"
#include "CATIDrawing.h"
#include "CATIParmPublisher.h"
#include "CATIRedrawEvent.h"
#include "CATISpecAttrAccess.h"
#include "CATISpecAttribute.h"
#include "VornCATIxPDMItem.h"
#include "embedded/documents/SessionData.h"
#include "embedded/knowledge/Magnitudes.h"

#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace embedded {

EMBEDDED_IDENTITY(CATIContainer);
EMBEDDED_IDENTITY(CATICkeInst);
EMBEDDED_IDENTITY(CATICkeNaming);
EMBEDDED_IDENTITY(CATICkeParm);
EMBEDDED_IDENTITY(CATICkeParmFactory);
EMBEDDED_IDENTITY(CATICkeRelationFactory);
EMBEDDED_IDENTITY(CATIDrawing);
EMBEDDED_IDENTITY(CATIParmPublisher);
EMBEDDED_IDENTITY(CATIRedrawEvent);
EMBEDDED_IDENTITY(CATISpecAttrAccess);
EMBEDDED_IDENTITY(CATISpecAttrKey);
EMBEDDED_IDENTITY(CATISpecAttribute);
EMBEDDED_IDENTITY(VornCATIxPDMItem);
template <>
struct Identity<CATICkeParameterSet> {
    static bool has(const IID& iid) { return iid == IID_CATICkeParameterSet || iid == IID_CATICkeNaming; }
};

class Node;

/** Key of an attribute; stands for the attribute itself, too. */
class KeyObject final : public Implements<CATISpecAttrKey, CATISpecAttribute> {
public:
    KeyObject(Node& owner, const std::string& name, CATAttrKind kind, CATAttrKind listKind);

    std::string objectName() const override { return "attribute " + name; }

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

// The calls on attributes and publishers, for every class that offers them.
class AttributeCalls {
public:
    static CATISpecAttrKey* key(FaultFlavour flavour, const Node& node, const char* name);
    static Attribute* behind(const Node& node, const CATISpecAttrKey* key);
    static CATISpecObject* object(const Node& node, const CATISpecAttrKey* key, int position);
    static HRESULT setObject(Node& node, const CATISpecAttrKey* key, const CATISpecObject_var& object, int position);
    static CATISpecAttribute* add(Node& node, const CATUnicodeString& name, CATAttrKind kind, CATAttrKind listKind);
    static void listBelow(const Node& node, const char* interfaceName, bool all, CATListValCATISpecObject_var& list);
    static CATIContainer_var containerOf(const Node& node);
};

/** Attribute access for a class that derives from Base, which implements or extends CATISpecAttrAccess. */
template <class Base>
class WithAttributes : public Base, public Node {
public:
    using Base::Base;

    CATISpecAttrKey* GetAttrKey(const char* iName) const override {
        return AttributeCalls::key(this->called("CATISpecAttrAccess::GetAttrKey"), *this, iName);
    }
    CATBoolean TestAttributeValue(const CATISpecAttrKey* iKey) const override {
        if (this->failing("CATISpecAttrAccess::TestAttributeValue")) return FALSE;
        const Attribute* const found = AttributeCalls::behind(*this, iKey);
        return found && found->size() > 0 ? TRUE : FALSE;
    }
    int GetListSize(const CATISpecAttrKey* iKey) const override {
        if (this->failing("CATISpecAttrAccess::GetListSize")) return 0;
        const Attribute* const found = AttributeCalls::behind(*this, iKey);
        return found && found->key->kind == tk_list ? static_cast<int>(found->size()) : 0;
    }
    CATISpecObject* GetSpecObject(const CATISpecAttrKey* iKey, int iPosition) const override {
        return this->failing("CATISpecAttrAccess::GetSpecObject") ? nullptr
                                                                  : AttributeCalls::object(*this, iKey, iPosition);
    }
    CATListValCATUnicodeString* GetListString(const CATISpecAttrKey* iKey) const override {
        const Attribute* const found = list("CATISpecAttrAccess::GetListString", iKey, tk_string);
        if (!found) return nullptr;
        auto result = std::make_unique<CATListValCATUnicodeString>();
        for (const std::string& text : found->texts) result->Append(toText(text));
        return result.release();
    }
    CATRawCollint* GetListInteger(const CATISpecAttrKey* iKey) const override {
        const Attribute* const found = list("CATISpecAttrAccess::GetListInteger", iKey, tk_integer);
        if (!found) return nullptr;
        auto result = std::make_unique<CATRawCollint>();
        for (const int value : found->integers) result->Append(value);
        return result.release();
    }
    CATRawColldouble* GetListDouble(const CATISpecAttrKey* iKey) const override {
        const Attribute* const found = list("CATISpecAttrAccess::GetListDouble", iKey, tk_double);
        if (!found) return nullptr;
        auto result = std::make_unique<CATRawColldouble>();
        for (const double value : found->reals) result->Append(value);
        return result.release();
    }
    HRESULT SetSpecObject(const CATISpecAttrKey* iKey, const CATISpecObject_var& iObject, int iPosition) override {
        return this->failing("CATISpecAttrAccess::SetSpecObject")
                   ? E_FAIL
                   : AttributeCalls::setObject(*this, iKey, iObject, iPosition);
    }
    HRESULT SetListString(const CATISpecAttrKey* iKey, const CATListValCATUnicodeString& iValues) override {
        Attribute* const found = list("CATISpecAttrAccess::SetListString", iKey, tk_string);
        if (!found) return E_FAIL;
        found->texts.clear();
        for (int i = 1; i <= iValues.Size(); ++i) found->texts.push_back(toBytes(iValues[i]));
        return S_OK;
    }
    HRESULT SetListInteger(const CATISpecAttrKey* iKey, const CATRawCollint& iValues) override {
        Attribute* const found = list("CATISpecAttrAccess::SetListInteger", iKey, tk_integer);
        if (!found) return E_FAIL;
        found->integers.clear();
        for (int i = 1; i <= iValues.Size(); ++i) found->integers.push_back(iValues[i]);
        return S_OK;
    }
    HRESULT SetListDouble(const CATISpecAttrKey* iKey, const CATRawColldouble& iValues) override {
        Attribute* const found = list("CATISpecAttrAccess::SetListDouble", iKey, tk_double);
        if (!found) return E_FAIL;
        found->reals.clear();
        for (int i = 1; i <= iValues.Size(); ++i) found->reals.push_back(iValues[i]);
        return S_OK;
    }

private:
    Attribute* list(const char* site, const CATISpecAttrKey* key, CATAttrKind kind) const {
        if (this->failing(site)) return nullptr;
        Attribute* const found = AttributeCalls::behind(*this, key);
        return found && found->isListOf(kind) ? found : nullptr;
    }
};

/** The same with parameters below. Base implements or extends CATIParmPublisher and CATIRedrawEvent, too. */
template <class Base>
class WithParameters : public WithAttributes<Base> {
public:
    using WithAttributes<Base>::WithAttributes;

    void Append(const CATISpecObject_var& iObject) override {
        if (this->failing("CATIParmPublisher::Append")) return;
        if (Node* const child = nodeOf(iObject)) this->append(*child);
    }
    void RemoveChild(const CATISpecObject_var& iObject) override {
        if (this->failing("CATIParmPublisher::RemoveChild")) return;
        if (Node* const child = nodeOf(iObject)) this->remove(*child);
    }
    void GetDirectChildren(CATClassId iIntfName, CATListValCATISpecObject_var& ioList) override {
        if (!this->failing("CATIParmPublisher::GetDirectChildren"))
            AttributeCalls::listBelow(*this, iIntfName, false, ioList);
    }
    void GetAllChildren(CATClassId iIntfName, CATListValCATISpecObject_var& ioList) override {
        if (!this->failing("CATIParmPublisher::GetAllChildren"))
            AttributeCalls::listBelow(*this, iIntfName, true, ioList);
    }
    CATIContainer_var GetContainer() override {
        return this->failing("CATIParmPublisher::GetContainer") ? CATIContainer_var()
                                                                : AttributeCalls::containerOf(*this);
    }
    void Redraw() override {
        if (!this->failing("CATIRedrawEvent::Redraw")) ++this->redraws;
    }
};

using FeatureBase = Implements<CATISpecObject, CATISpecAttrAccess, CATIParmPublisher, CATIRedrawEvent, CATIAlias,
                               CATICkeParameterSet, CATIDrawing>;

/** A feature with parameters below it: a parameter set, the part of a part document, a drawing. */
class FeatureNode final : public WithParameters<FeatureBase> {
public:
    static constexpr const char* kSet = "ParameterSet";
    static constexpr const char* kDrawing = "Drawing";

    FeatureNode(DocumentObject& document, const std::string& type, const std::string& name);

    std::string objectName() const override { return m_type + " " + m_name; }
    CATISpecObject* specObject() override { return this; }
    Object& asObject() override { return *this; }
    std::string displayName() const override { return m_name; }
    bool responds(const IID& iid) override;
    DocumentObject* document() const override { return &m_document; }
    const std::string& type() const { return m_type; }
    void rename(const std::string& name) { m_name = name; }

    CATUnicodeString GetDisplayName() const override;
    CATUnicodeString GetType() const override;
    CATIContainer_var GetFeatContainer() const override;
    CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                    CATAttrInOut iInOut) override;
    CATBoolean IsUpToDate(CATIDomain_var iDomain) const override;
    CATUnicodeString GetAlias() override;
    void SetAlias(const CATUnicodeString& iAlias) override;
    CATCkeListOfParm Parameters() const override;

    /** Every document of the kind has the feature: nothing to keep until somebody names it or puts something below. */
    bool implied = false;

protected:
    bool answers(const IID& iid) const override;
    void* extended(const IID& iid) override { return extensionFor(*this, iid); }
    const char* childrenKey() const override { return m_type == kSet ? "Parameters" : "UserParameters"; }

private:
    DocumentObject& m_document;
    const std::string m_type;
    std::string m_name;
};

class ParameterObject;

/** What a parameter's value shows; always that of the moment. */
class ValueObject final : public Implements<CATICkeInst> {
public:
    explicit ValueObject(const ParameterObject& parameter);

    std::string objectName() const override;
    int AsInteger() const override;
    double AsReal() const override;
    CATCke::Boolean AsBoolean() const override;
    CATUnicodeString AsString() const override;

private:
    const ParameterObject& m_parameter;
};

class ParameterObject final : public WithAttributes<Implements<CATICkeParm, CATISpecObject, CATISpecAttrAccess>> {
public:
    ParameterObject(DocumentObject& document, TypeObject& type, const std::string& role);

    std::string objectName() const override { return "parameter " + displayName(); }
    CATISpecObject* specObject() override { return this; }
    Object& asObject() override { return *this; }
    std::string displayName() const override { return userName.empty() ? role : userName; }
    bool responds(const IID& iid) override;
    DocumentObject* document() const override { return &m_document; }

    TypeObject& type() const { return m_type; }
    /** The value as text; a dimension has its unit. */
    std::string shown() const;
    bool setText(const std::string& value);
    bool setInteger(int value);
    bool setReal(double value);
    bool setBoolean(bool value);

    const std::string role;
    std::string userName;
    bool isSet = true;
    bool driven = false; ///< by a relation
    CATICkeParm::UserAccessMode access = CATICkeParm::ReadWrite;
    std::string text;
    int integer = 0; ///< 0 or 1 for a truth value
    double real = 0.0;

    CATUnicodeString Name() const override;
    CATUnicodeString InternalRole() const override;
    CATUnicodeString RelativeName(const CATIParmPublisher_var& iRoot) const override;
    CATUnicodeString Pathname(const CATIParmPublisher_var& iRoot) const override;
    CATCke::Boolean IsNamed() const override;
    void Rename(const CATUnicodeString& iName) override;
    CATUnicodeString Show() const override;
    CATICkeInst_var Value() const override;
    CATICkeType_var Type() const override;
    CATCke::Boolean IsSet() const override;
    void Valuate(const int iValue) override;
    void Valuate(const double iValue) override;
    void Valuate(const CATCke::Boolean iValue) override;
    void Valuate(const CATUnicodeString& iValue) override;
    void ValuateReal(const CATUnicodeString& iValue) override;
    UserAccessMode UserAccess() const override;
    void SetUserAccess(const UserAccessMode iMode) override;
    CATCke::Boolean IsReadOnly() const override;

    CATUnicodeString GetDisplayName() const override;
    CATUnicodeString GetType() const override;
    CATIContainer_var GetFeatContainer() const override;
    CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                    CATAttrInOut iInOut) override;
    CATBoolean IsUpToDate(CATIDomain_var iDomain) const override;

private:
    bool changed();

    DocumentObject& m_document;
    TypeObject& m_type;
    mutable std::unique_ptr<ValueObject> m_value;
};

/** The container of a document. */
class ContainerObject final : public Implements<CATIContainer, CATICkeParmFactory, CATICkeRelationFactory, CATIAlias> {
public:
    explicit ContainerObject(DocumentObject& document);

    std::string objectName() const override;
    DocumentObject& document() const { return m_document; }
    CATLONG32 ListMembersHere(const CATIdent iInterfaceID, SEQUENCE(CATBaseUnknown_ptr) & ioMembers) override;
    CATICkeParm_var CreateString(const CATUnicodeString& iName, const CATUnicodeString& iValue) override;
    CATICkeParm_var CreateInteger(const CATUnicodeString& iName, const int iValue) override;
    CATICkeParm_var CreateReal(const CATUnicodeString& iName, const double iValue) override;
    CATICkeParm_var CreateBoolean(const CATUnicodeString& iName, const CATCke::Boolean iValue) override;
    CATIParmPublisher_var CreateParameterSet(const CATUnicodeString iName) override;
    CATUnicodeString GetAlias() override;
    void SetAlias(const CATUnicodeString& iAlias) override;

private:
    void* extended(const IID& iid) override { return extensionFor(*this, iid); }

    DocumentObject& m_document;
    std::string m_alias;
};

/** What the platform's own PDM connection keeps for a reference. */
class PdmItemObject final : public Implements<VornCATIxPDMItem> {
public:
    PdmItemObject() : Implements("PDMItem") {}

    std::string objectName() const override { return "PDM item"; }
    HRESULT SetProperty(const CATUnicodeString& iName, const CATUnicodeString& iValue) override;

    std::map<std::string, std::string> properties;
};

/** Attributes and parameters of a product, and what its reference has of properties. */
class ProductNode final
    : public WithParameters<Extends<ProductObject, CATISpecAttrAccess, CATIParmPublisher, CATIRedrawEvent>> {
public:
    explicit ProductNode(ProductObject& owner);

    CATISpecObject* specObject() override { return &product(); }
    Object& asObject() override { return product(); }
    std::string displayName() const override;
    bool responds(const IID& iid) override;
    DocumentObject* document() const override;
    ProductObject& product() const { return owner(); }
    /** Whether there is anything to keep. */
    bool isEmpty() const;

    std::string definition;
    std::string revision;
    std::string nomenclature;
    FeatureNode* userProperties = nullptr;
    PdmItemObject item;

private:
    bool answers(const IID& iid) const override;
};

/** Parameters in a list that stays the platform's own: whoever is shown it holds none of them. */
class LentParameters {
public:
    explicit LentParameters(std::vector<ParameterObject*> parameters);
    ~LentParameters();
    LentParameters(const LentParameters&) = delete;
    LentParameters& operator=(const LentParameters&) = delete;

    CATCkeListOfParm list() { return m_list.get(); }

private:
    const std::vector<ParameterObject*> m_parameters;
    std::unique_ptr<CATListValCATBaseUnknown_var> m_list;
};

/** What is stored in a document, so that the size of the session does not count. */
struct DocumentMembers {
    std::vector<Node*> features;
    std::vector<Node*> parameters; ///< those that stand nowhere, too
    std::vector<Node*> relations;
};

/** Everything of this topic that the session owns. */
class KnowledgeData final : public SessionPart {
public:
    static constexpr const char* kName = "parameters";
    explicit KnowledgeData(SessionData& session);
    static KnowledgeData& get();

    void addToDigest(std::string& text) const override;

    ContainerObject& container(DocumentObject& document);
    /** The feature of a kind in a document, made on first use; none but the given name's first maker names it. */
    FeatureNode& feature(DocumentObject& document, const std::string& type, const std::string& name);
    /** The same for a feature that every document of the kind has. */
    FeatureNode& impliedFeature(DocumentObject& document, const std::string& type, const std::string& name);
    FeatureNode& newFeature(DocumentObject& document, const std::string& type, const std::string& name);
    ParameterObject& newParameter(DocumentObject& document, const std::string& type, const std::string& role);
    FeatureNode& userProperties(ProductNode& reference);
    TypeObject* type(const std::string& name) const;
    /** Puts a relation that somebody else keeps as long as the session lives below an object. */
    void addRelation(Node& parent, Node& relation);

    SessionData& session;
    std::vector<std::unique_ptr<TypeObject>> types;
    std::vector<std::unique_ptr<FeatureNode>> features;
    std::vector<std::unique_ptr<ParameterObject>> parameters;
    std::vector<std::unique_ptr<LentParameters>> lent; ///< gone before the parameters
    std::map<DocumentObject*, std::unique_ptr<ContainerObject>> containers;
    std::unordered_map<const DocumentObject*, DocumentMembers> members;
    std::map<std::pair<DocumentObject*, std::string>, FeatureNode*> roots; ///< by document and type
    std::vector<std::string> logLines;
};

/** The node of a product, made on first use. */
inline ProductNode& nodeOf(ProductObject& product) { return extensionOf<ProductNode>(product); }

} // namespace embedded

#endif
