// The platform's calls on attributes and publishers, for every class that offers them.
#ifndef EMBEDDED_KNOWLEDGE_NODE_CALLS_H
#define EMBEDDED_KNOWLEDGE_NODE_CALLS_H

#include "CATIParmPublisher.h"
#include "CATIRedrawEvent.h"
#include "CATISpecAttrAccess.h"
#include "embedded/knowledge/Nodes.h"
#include "embedded/object/Stranger.h"

#include <memory>
#include <vector>

namespace embedded {

EMBEDDED_IDENTITY(CATIParmPublisher);
EMBEDDED_IDENTITY(CATIRedrawEvent);
EMBEDDED_IDENTITY(CATISpecAttrAccess);

/** What the calls below have in common. */
class AttributeCalls {
public:
    static CATISpecAttrKey* key(FaultFlavour flavour, const Node& node, const char* name);
    static Attribute* behind(const Node& node, const CATISpecAttrKey* key);
    static CATISpecObject* object(const Node& node, const CATISpecAttrKey* key, int position);
    static HRESULT setObject(Node& node, const CATISpecAttrKey* key, const CATISpecObject_var& object, int position);
    static CATISpecAttribute* add(Node& node, const CATUnicodeString& name, CATAttrKind kind, CATAttrKind listKind);
    static void listBelow(const Node& node, const char* interfaceName, bool all, CATListValCATISpecObject_var& list);
    /** What stands below a node and answers an interface: directly, or at any depth. */
    static std::vector<Node*> below(const Node& node, const IID& iid, bool all);
    static CATIContainer_var containerOf(const Node& node);
    /** What is written into a node is written into its document, unless the node stands nowhere yet. */
    static void written(const Node& node);
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
        if (this->failing("CATISpecAttrAccess::SetSpecObject")) return E_FAIL;
        const HRESULT code = AttributeCalls::setObject(*this, iKey, iObject, iPosition);
        if (code == S_OK) AttributeCalls::written(*this);
        return code;
    }
    HRESULT SetListString(const CATISpecAttrKey* iKey, const CATListValCATUnicodeString& iValues) override {
        Attribute* const found = list("CATISpecAttrAccess::SetListString", iKey, tk_string);
        if (!found) return E_FAIL;
        AttributeCalls::written(*this);
        found->texts.clear();
        for (int i = 1; i <= iValues.Size(); ++i) found->texts.push_back(toBytes(iValues[i]));
        return S_OK;
    }
    HRESULT SetListInteger(const CATISpecAttrKey* iKey, const CATRawCollint& iValues) override {
        Attribute* const found = list("CATISpecAttrAccess::SetListInteger", iKey, tk_integer);
        if (!found) return E_FAIL;
        AttributeCalls::written(*this);
        found->integers.clear();
        for (int i = 1; i <= iValues.Size(); ++i) found->integers.push_back(iValues[i]);
        return S_OK;
    }
    HRESULT SetListDouble(const CATISpecAttrKey* iKey, const CATRawColldouble& iValues) override {
        Attribute* const found = list("CATISpecAttrAccess::SetListDouble", iKey, tk_double);
        if (!found) return E_FAIL;
        AttributeCalls::written(*this);
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
        Node* const child = nodeOf(iObject);
        if (child && this->append(*child)) AttributeCalls::written(*this);
    }
    void RemoveChild(const CATISpecObject_var& iObject) override {
        if (this->failing("CATIParmPublisher::RemoveChild")) return;
        Node* const child = nodeOf(iObject);
        if (child && this->remove(*child)) AttributeCalls::written(*this);
    }
    void GetDirectChildren(CATClassId iIntfName, CATListValCATISpecObject_var& ioList) override {
        if (this->failing("CATIParmPublisher::GetDirectChildren")) return;
        addStrangers<CATISpecObject_var>(ioList);
        AttributeCalls::listBelow(*this, iIntfName, false, ioList);
    }
    void GetAllChildren(CATClassId iIntfName, CATListValCATISpecObject_var& ioList) override {
        if (this->failing("CATIParmPublisher::GetAllChildren")) return;
        addStrangers<CATISpecObject_var>(ioList);
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

} // namespace embedded

#endif
