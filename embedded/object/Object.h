#ifndef EMBEDDED_OBJECT_OBJECT_H
#define EMBEDDED_OBJECT_OBJECT_H

#include "CATBaseUnknown.h"
#include "CATIADocument.h"
#include "CATIAProduct.h"
#include "CATIDocId.h"
#include "CATIDocRoots.h"
#include "CATIDomain.h"
#include "CATILinkableObject.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "CATISpecObject.h"
#include "CATMetaClass.h"
#include "embedded/Accounting.h"
#include "embedded/Failures.h"
#include "embedded/object/Answers.h"
#include "embedded/object/Interfaces.h"

#include <cstddef>
#include <memory>
#include <string>
#include <tuple>
#include <typeinfo>
#include <vector>

namespace embedded {

/** Description of a class by its name and its base's name: one for each pair, made on first use and never released. */
CATMetaClass* metaClass(const std::string& name, const std::string& base);

/**
 * Further interfaces of an object, with what they keep, beside those of its class. Made when somebody asks for one of
 * them or for the extension itself; the object owns it from then on.
 */
class Extension {
public:
    Extension(const Extension&) = delete;
    Extension& operator=(const Extension&) = delete;
    virtual ~Extension() = default;

    /** The pointer for an interface; null when this extension does not answer it. */
    virtual void* find(const IID& iid) = 0;

protected:
    Extension() = default;
};

/**
 * An object of the session: the books on its references. The session owns it and destroys it; AddRef and Release count
 * what is handed out and never destroy anything, so that every wrong use is named instead of crashing.
 */
class Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    /** Name for messages; the class name unless a class knows better. */
    virtual std::string objectName() const;
    long references() const { return m_references; }
    /** From now on the object may be called while nobody holds a reference. */
    void pin() { m_pinned = true; }
    /** The opposite, for an object that the platform has closed: every use by somebody without a reference is named. */
    void unpin() { m_pinned = false; }

    std::vector<std::unique_ptr<Extension>>& extensions() { return m_extensions; }
    /** The pointer for an interface, null for none: no failure point, no reference counted. */
    virtual void* findInterface(const IID&) { return nullptr; }

    /**
     * Opens every method of every interface: records a use after the last release and asks whether the call is to fail.
     * @param site "CATIProduct::GetFatherProduct"; kept by pointer, so a literal.
     */
    FaultFlavour called(const char* site) const {
        if (m_references == 0 && !m_pinned) recordUseAfterRelease(site);
        return Failures::get().ask(site);
    }
    /** For methods without a result code: whether to answer nothing. */
    bool failing(const char* site) const { return called(site) != FaultFlavour::none; }

protected:
    explicit Object(const std::string& className, const std::string& baseName = "CATBaseUnknown");
    virtual ~Object();

    void setClass(const std::string& className, const std::string& baseName);
    CATMetaClass* meta() const { return m_meta; }

    ULONG addReference();
    ULONG releaseReference();

private:
    friend class Accounting;

    void recordUseAfterRelease(const char* site) const;

    static Object* s_first;
    Object* m_previous = nullptr;
    Object* m_next = nullptr;
    CATMetaClass* m_meta;
    long m_references = 0;
    bool m_pinned = false;
    std::vector<std::unique_ptr<Extension>> m_extensions;
};

template <>
struct Identity<CATIABase> {
    static bool has(const IID& iid) { return iid == IID_CATIABase || iid == IID_CATBaseDispatch; }
};
EMBEDDED_AUTOMATION_IDENTITY(CATIADocument);
EMBEDDED_AUTOMATION_IDENTITY(CATIAProduct);
EMBEDDED_IDENTITY(CATIDocId);
EMBEDDED_IDENTITY(CATIDocRoots);
EMBEDDED_IDENTITY(CATIDomain);
EMBEDDED_IDENTITY(CATILinkableObject);
EMBEDDED_IDENTITY(CATIPrdProperties);
EMBEDDED_IDENTITY(CATIProduct);
EMBEDDED_IDENTITY(CATISpecObject);

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

/** How to make the extensions of a class. */
template <class T>
struct ExtensionMaker {
    bool (*offers)(const IID& iid);
    std::unique_ptr<Extension> (*make)(T& object);
    const std::type_info* type;

    static std::vector<ExtensionMaker>& all() {
        static std::vector<ExtensionMaker> makers;
        return makers;
    }
};

/** Makes extension E of class T known, for as long as the process lives. */
template <class T, class E>
struct ExtensionOf {
    ExtensionOf() {
        ExtensionMaker<T>::all().push_back(
            {&E::offers, [](T& object) -> std::unique_ptr<Extension> { return std::make_unique<E>(object); },
             &typeid(E)});
    }
};

/** The object's extension E, made now when it had none; for the builder. E need not be made known. */
template <class E, class T>
E& extensionOf(T& object) {
    for (const auto& extension : object.extensions())
        if (E* const found = dynamic_cast<E*>(extension.get())) return *found;
    object.extensions().push_back(std::make_unique<E>(object));
    return static_cast<E&>(*object.extensions().back());
}

/** The object's extension E; null when it has none. */
template <class E, class T>
E* existingExtension(T& object) {
    for (const auto& extension : object.extensions())
        if (E* const found = dynamic_cast<E*>(extension.get())) return found;
    return nullptr;
}

/** The pointer for an interface that one of the object's extensions answers, made now when need be; null for none. */
template <class T>
void* extensionFor(T& object, const IID& iid) {
    for (const auto& extension : object.extensions())
        if (void* const found = extension->find(iid)) return found;
    for (const ExtensionMaker<T>& maker : ExtensionMaker<T>::all()) {
        if (!maker.offers(iid)) continue;
        bool made = false;
        for (const auto& extension : object.extensions()) {
            const Extension& present = *extension;
            made = made || typeid(present) == *maker.type;
        }
        if (made) continue;
        object.extensions().push_back(maker.make(object));
        if (void* const found = object.extensions().back()->find(iid)) return found;
    }
    return nullptr;
}

} // namespace embedded

#endif
