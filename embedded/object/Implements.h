// What a class of the session derives from: Implements for an object, Extends for further interfaces of one.
#ifndef EMBEDDED_OBJECT_IMPLEMENTS_H
#define EMBEDDED_OBJECT_IMPLEMENTS_H

#include "CATBaseUnknown.h"
#include "CATMetaClass.h"
#include "embedded/Accounting.h"
#include "embedded/object/Answers.h"
#include "embedded/object/Interfaces.h"
#include "embedded/object/Object.h"

#include <string>
#include <tuple>

namespace embedded {

/**
 * An object of the session that implements the interfaces I. All of them share one reference count and one identity;
 * each interface derives from CATBaseUnknown by itself, so name the object through unknown().
 */
template <class... I>
class Implements : public Object, public I... {
public:
    HRESULT __stdcall QueryInterface(const IID& iid, void** result) override {
        if (!result) return E_POINTER;
        *result = nullptr;
        void* const found = findInterface(iid);
        const FaultFlavour flavour = called(querySite(iid));
        if (flavour == FaultFlavour::nullOutput) return S_OK;
        if (flavour == FaultFlavour::codeWithOutput) *result = found ? found : unknown();
        if (flavour != FaultFlavour::none) return E_FAIL;
        if (!found) return E_NOINTERFACE;
        *result = found;
        addReference();
        return S_OK;
    }
    ULONG __stdcall AddRef() override { return addReference(); }
    ULONG __stdcall Release() override { return releaseReference(); }

    const char* IsA() const override { return meta()->IsA(); }
    int IsAKindOf(const char* name) const override { return meta()->IsAKindOf(name); }
    int IsEqual(const CATBaseUnknown* other) const override {
        return other && const_cast<CATBaseUnknown*>(other)->GetImpl() == const_cast<Implements*>(this)->unknown();
    }
    CATMetaClass* __stdcall GetMetaObject() const override { return meta(); }
    CATBaseUnknown* GetImpl() override { return unknown(); }

    /** The one pointer that stands for the object. */
    CATBaseUnknown* unknown() {
        using First = std::tuple_element_t<0, std::tuple<I...>>;
        return static_cast<First*>(this);
    }
    void* findInterface(const IID& iid) override {
        if (iid == IID_IUnknown || iid == IID_CATBaseUnknown) return unknown();
        if (!answers(iid)) return nullptr;
        void* found = nullptr;
        static_cast<void>(((Identity<I>::has(iid) && (found = static_cast<I*>(this))) || ...));
        return found ? found : extended(iid);
    }

protected:
    // The session's own objects come and go on demand: they are not among those that somebody must release.
    explicit Implements(const std::string& className, const std::string& baseName = "CATBaseUnknown")
        : Object(className, baseName) {
        Accounting::get().live().objects -= static_cast<long>(sizeof...(I));
    }
    ~Implements() override { Accounting::get().live().objects += static_cast<long>(sizeof...(I)); }

    /** Whether this very object answers an interface that its class implements. */
    virtual bool answers(const IID&) const { return true; }
    /** The pointer for an interface that the class does not implement; see extensionFor. */
    virtual void* extended(const IID&) { return nullptr; }
};

/**
 * An extension of objects of class T that implements the interfaces I. It has the object's identity and reference
 * count. Make it known with one `static const ExtensionOf<T, E>` in a source file.
 */
template <class T, class... I>
class Extends : public Extension, public I... {
public:
    /** Whether the extension is to be made for somebody who asks for this interface. */
    static bool offers(const IID& iid) { return (Identity<I>::has(iid) || ...); }

    HRESULT __stdcall QueryInterface(const IID& iid, void** result) override {
        return m_owner.QueryInterface(iid, result);
    }
    ULONG __stdcall AddRef() override { return m_owner.AddRef(); }
    ULONG __stdcall Release() override { return m_owner.Release(); }

    const char* IsA() const override { return m_owner.IsA(); }
    int IsAKindOf(const char* name) const override { return m_owner.IsAKindOf(name); }
    int IsEqual(const CATBaseUnknown* other) const override { return m_owner.IsEqual(other); }
    CATMetaClass* __stdcall GetMetaObject() const override { return m_owner.GetMetaObject(); }
    CATBaseUnknown* GetImpl() override { return m_owner.GetImpl(); }

    void* find(const IID& iid) override {
        if (!answers(iid)) return nullptr;
        void* found = nullptr;
        static_cast<void>(((Identity<I>::has(iid) && (found = static_cast<I*>(this))) || ...));
        return found;
    }

protected:
    explicit Extends(T& owner) : m_owner(owner) { Accounting::get().live().objects -= static_cast<long>(sizeof...(I)); }
    ~Extends() override { Accounting::get().live().objects += static_cast<long>(sizeof...(I)); }

    T& owner() const { return m_owner; }
    /** As for the object itself: opens every method of every interface. */
    FaultFlavour called(const char* site) const { return m_owner.called(site); }
    bool failing(const char* site) const { return m_owner.failing(site); }
    /** Whether this very object answers an interface of the extension. */
    virtual bool answers(const IID&) const { return true; }

private:
    T& m_owner;
};

} // namespace embedded

#endif
