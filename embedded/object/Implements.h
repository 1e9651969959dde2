// What a class of the session derives from: Implements for an object, Extends for further interfaces of one.
#ifndef EMBEDDED_OBJECT_IMPLEMENTS_H
#define EMBEDDED_OBJECT_IMPLEMENTS_H

#include "CATBaseUnknown.h"
#include "CATMetaClass.h"
#include "embedded/Accounting.h"
#include "embedded/object/Answers.h"
#include "embedded/object/Interfaces.h"
#include "embedded/object/Object.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <tuple>

namespace embedded {

/** One interface of an object: a pointer of its own with books of its own. Owner derives from it. */
template <class Owner, class I>
class Face : public I {
public:
    HRESULT __stdcall QueryInterface(const IID& iid, void** result) override {
        return object().query(m_held, iid, result);
    }
    ULONG __stdcall AddRef() override { return object().addReference(m_held); }
    ULONG __stdcall Release() override { return object().releaseReference(m_held); }

    const char* IsA() const override { return used("IsA").meta()->IsA(); }
    int IsAKindOf(const char* name) const override { return used("IsAKindOf").meta()->IsAKindOf(name); }
    int IsEqual(const CATBaseUnknown* other) const override {
        CATBaseUnknown* const own = used("IsEqual").implementation();
        return other && const_cast<CATBaseUnknown*>(other)->GetImpl() == own;
    }
    CATMetaClass* __stdcall GetMetaObject() const override { return used("GetMetaObject").meta(); }
    CATBaseUnknown* GetImpl() override { return used("GetImpl").implementation(); }

    Found found() { return Found{static_cast<I*>(this), &m_held}; }
    const Hold& held() const { return m_held; }
    void loseFace() { m_held.lose(); }

private:
    Object& object() const { return const_cast<Owner*>(static_cast<const Owner*>(this))->wholeObject(); }
    Object& used(const char* site) const {
        object().use(m_held, site);
        return object();
    }

    Hold m_held;
};

/** Whether a call such as "CATIProduct::GetFatherProduct" is one of interface I. */
template <class I>
bool isOf(const char* site) {
    const char* const name = I::ClassName();
    const std::size_t length = std::strlen(name);
    return std::strncmp(site, name, length) == 0 && site[length] == ':';
}

/** The interface among I that an identifier means. */
template <class Owner, class... I>
Found findFace(Owner& owner, const IID& iid) {
    Found found;
    static_cast<void>(((Identity<I>::has(iid) && (found = static_cast<Face<Owner, I>&>(owner).found(), true)) || ...));
    return found;
}

/** Whether the interface that a call is named after may be used; when it is one that another derives from, whether any
 * of them may. */
template <class Owner, class... I>
bool isFaceUsable(const Owner& owner, const char* site) {
    bool any = false;
    bool itself = false;
    const auto look = [&](const Hold& held, bool named) {
        any = any || held.isUsable();
        itself = held.isUsable();
        return named;
    };
    const bool named = (look(static_cast<const Face<Owner, I>&>(owner).held(), isOf<I>(site)) || ...);
    return named ? itself : any;
}

/**
 * An object of the session that implements the interfaces I. Each is a pointer of its own and counted by itself; the
 * first one stands for the object: CATBaseUnknown, or the platform's own class of such objects. Each derives from
 * CATBaseUnknown by itself, so name the object through unknown().
 */
template <class... I>
class Implements : public Object, public Face<Implements<I...>, I>... {
public:
    /** The one pointer that stands for the object. */
    CATBaseUnknown* unknown() { return static_cast<FirstFace*>(this); }
    CATBaseUnknown* implementation() override { return unknown(); }
    Found findInterface(const IID& iid) override {
        if (iid == IID_IUnknown || iid == IID_CATBaseUnknown) return static_cast<FirstFace*>(this)->found();
        if (!answers(iid)) return Found();
        const Found found = findFace<Implements, I...>(*this, iid);
        return found ? found : extended(iid);
    }
    Object& wholeObject() { return *this; }

protected:
    // The session's own objects come and go on demand: they are not among those that somebody must release.
    explicit Implements(const std::string& className, const std::string& baseName = "CATBaseUnknown")
        : Object(className, baseName) {
        Accounting::get().live().objects -= static_cast<long>(sizeof...(I));
    }
    ~Implements() override { Accounting::get().live().objects += static_cast<long>(sizeof...(I)); }

    /** Whether this very object answers an interface that its class implements. */
    virtual bool answers(const IID&) const { return true; }
    /** An interface that the class does not implement; see extensionFor. */
    virtual Found extended(const IID&) { return Found(); }
    bool isUsable(const char* site) const override { return isFaceUsable<Implements, I...>(*this, site); }
    void lose() override { (static_cast<Face<Implements, I>*>(this)->loseFace(), ...); }

private:
    using FirstFace = Face<Implements, std::tuple_element_t<0, std::tuple<I...>>>;
};

/**
 * An extension of objects of class T that implements the interfaces I. It has the object's identity. Make it known with
 * one `static const ExtensionOf<T, E>` in a source file.
 */
template <class T, class... I>
class Extends : public Extension, public Face<Extends<T, I...>, I>... {
public:
    /** Whether the extension is to be made for somebody who asks for this interface. */
    static bool offers(const IID& iid) { return (Identity<I>::has(iid) || ...); }

    Found find(const IID& iid) override { return answers(iid) ? findFace<Extends, I...>(*this, iid) : Found(); }
    void lose() override { (static_cast<Face<Extends, I>*>(this)->loseFace(), ...); }
    Object& wholeObject() { return m_owner; }

protected:
    explicit Extends(T& owner) : m_owner(owner) { Accounting::get().live().objects -= static_cast<long>(sizeof...(I)); }
    ~Extends() override { Accounting::get().live().objects += static_cast<long>(sizeof...(I)); }

    T& owner() const { return m_owner; }
    /** As for the object itself: opens every method of every interface. */
    FaultFlavour called(const char* site) const {
        if (!isFaceUsable<Extends, I...>(*this, site)) m_owner.recordUseAfterRelease(site);
        return Failures::get().ask(site);
    }
    bool failing(const char* site) const { return called(site) != FaultFlavour::none; }
    /** Whether this very object answers an interface of the extension. */
    virtual bool answers(const IID&) const { return true; }

private:
    T& m_owner;
};

} // namespace embedded

#endif
