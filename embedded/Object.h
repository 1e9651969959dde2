#ifndef EMBEDDED_OBJECT_H
#define EMBEDDED_OBJECT_H

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
#include "embedded/Answers.h"
#include "embedded/Failures.h"

#include <cstddef>
#include <string>
#include <tuple>

namespace embedded {

/** Description of a class by its name and its base's name: one for each pair, made on first use and never released. */
CATMetaClass* metaClass(const std::string& name, const std::string& base);

/** Failure point of a query for an interface, such as "QueryInterface(CATIProduct)"; owned by the platform. */
const char* querySite(const IID& iid);

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

protected:
    explicit Object(const std::string& className, const std::string& baseName = "CATBaseUnknown");
    virtual ~Object();

    void setClass(const std::string& className, const std::string& baseName);
    CATMetaClass* meta() const { return m_meta; }

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
};

/** The identifiers that a pointer to interface I answers, I's own and those of its bases below CATBaseUnknown. */
template <class I>
struct Identity {
    static bool has(const IID&) { return false; }
};

#define EMBEDDED_IDENTITY(Name)                                                                                        \
    template <>                                                                                                        \
    struct Identity<Name> {                                                                                            \
        static bool has(const IID& iid) { return iid == IID_##Name; }                                                  \
    }
#define EMBEDDED_AUTOMATION_IDENTITY(Name)                                                                             \
    template <>                                                                                                        \
    struct Identity<Name> {                                                                                            \
        static bool has(const IID& iid) {                                                                              \
            return iid == IID_##Name || iid == IID_CATIABase || iid == IID_CATBaseDispatch;                            \
        }                                                                                                              \
    }

EMBEDDED_AUTOMATION_IDENTITY(CATIADocument);
EMBEDDED_AUTOMATION_IDENTITY(CATIAProduct);
EMBEDDED_IDENTITY(CATIDocId);
EMBEDDED_IDENTITY(CATIDocRoots);
EMBEDDED_IDENTITY(CATIDomain);
EMBEDDED_IDENTITY(CATILinkableObject);
EMBEDDED_IDENTITY(CATIPrdProperties);
EMBEDDED_IDENTITY(CATIProduct);
EMBEDDED_IDENTITY(CATISpecObject);

#undef EMBEDDED_IDENTITY
#undef EMBEDDED_AUTOMATION_IDENTITY

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
        if (flavour != FaultFlavour::none || !found) return E_NOINTERFACE;
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

protected:
    // The session's own objects come and go on demand: they are not among those that somebody must release.
    explicit Implements(const std::string& className, const std::string& baseName = "CATBaseUnknown")
        : Object(className, baseName) {
        Accounting::get().live().objects -= static_cast<long>(sizeof...(I));
    }
    ~Implements() override { Accounting::get().live().objects += static_cast<long>(sizeof...(I)); }

    /** Whether this very object answers an interface that its class implements. */
    virtual bool answers(const IID&) const { return true; }

private:
    void* findInterface(const IID& iid) {
        if (iid == IID_IUnknown || iid == IID_CATBaseUnknown) return unknown();
        if (!answers(iid)) return nullptr;
        void* found = nullptr;
        static_cast<void>(((Identity<I>::has(iid) && (found = static_cast<I*>(this))) || ...));
        return found;
    }
};

} // namespace embedded

#endif
