#ifndef EMBEDDED_OBJECT_OBJECT_H
#define EMBEDDED_OBJECT_OBJECT_H

#include "CATBaseUnknown.h"
#include "CATErrorDef.h"
#include "CATMetaClass.h"
#include "embedded/Failures.h"

#include <memory>
#include <string>
#include <vector>

namespace embedded {

/** Description of a class by its name and its base's name: one for each pair, made on first use and never released. */
CATMetaClass* metaClass(const std::string& name, const std::string& base);

/** What somebody outside holds of one interface of an object. */
struct Hold {
    long references = 0;
    long lost = 0;     ///< references from before the object was unloaded: good for being released only
    bool lent = false; ///< may be used without a reference

    bool isUsable() const { return references != 0 || lent; }
    /** The object is unloaded under whoever holds it. */
    void lose() {
        lost += references;
        references = 0;
        lent = false;
    }
};

/** An interface of an object as it is found: the pointer and what is held of it; null for none. */
struct Found {
    void* pointer = nullptr;
    Hold* hold = nullptr;

    explicit operator bool() const { return pointer != nullptr; }
};

/**
 * While one lives, the platform itself hands out references. Whoever takes one otherwise must hold one of that very
 * interface already.
 */
class HandingOut {
public:
    HandingOut() { ++s_depth; }
    ~HandingOut() { --s_depth; }
    HandingOut(const HandingOut&) = delete;
    HandingOut& operator=(const HandingOut&) = delete;

    static bool goesOn() { return s_depth != 0; }

private:
    static int s_depth;
};

/** A pointer with a reference for the one who is given it; null for null. */
template <class I>
I* handOut(I* pointer) {
    const HandingOut goesOn;
    if (pointer) pointer->AddRef();
    return pointer;
}

/** A handle of an object of the platform. */
template <class Handle, class I>
Handle handleOf(I* pointer) {
    const HandingOut goesOn;
    return Handle(pointer);
}

/**
 * Further interfaces of an object, with what they keep, beside those of its class. Made when somebody asks for one of
 * them or for the extension itself; the object owns it from then on.
 */
class Extension {
public:
    Extension(const Extension&) = delete;
    Extension& operator=(const Extension&) = delete;
    virtual ~Extension() = default;

    /** None when this extension does not answer the interface. */
    virtual Found find(const IID& iid) = 0;
    /** The object is unloaded under whoever holds it. */
    virtual void lose() = 0;

protected:
    Extension() = default;
};

/**
 * An object of the session: the books on its references, one for each interface, as adapters have it. The session owns
 * it and destroys it; AddRef and Release count what is handed out and never destroy anything, so that every wrong use
 * is named instead of crashing.
 */
class Object {
public:
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    /** Name for messages; the class name unless a class knows better. */
    virtual std::string objectName() const;
    /** Of all its interfaces. */
    long references() const { return m_references; }
    /** From now on an interface, the object's identity when none is named, may be used while nobody holds it. */
    void pin(const IID& iid = IID_IUnknown) {
        if (const Found found = findInterface(iid)) found.hold->lent = true;
    }
    /** The opposite, for an object that the platform has closed: every use by somebody without a reference is named. */
    void unpin(const IID& iid = IID_IUnknown) {
        if (const Found found = findInterface(iid)) found.hold->lent = false;
    }

    std::vector<std::unique_ptr<Extension>>& extensions() { return m_extensions; }
    /** An interface, none for one that the object does not answer: no failure point, no reference counted. */
    virtual Found findInterface(const IID&) { return Found(); }
    /** The one pointer that stands for the object. */
    virtual CATBaseUnknown* implementation() { return nullptr; }
    CATMetaClass* meta() const { return m_meta; }
    /** The document with which the object is unloaded; null for an object that stays. */
    virtual const Object* home() const { return nullptr; }
    /** Unloads everything whose home is a document: whoever holds a pointer to it may release it and nothing else.
     * @param root when given, it and the document itself stay */
    static void loseAllOf(const Object& document, const Object* root = nullptr);

    /**
     * Opens every method of every interface: records a use after the last release and asks whether the call is to fail.
     * @param site "CATIProduct::GetFatherProduct"; kept by pointer, so a literal.
     */
    FaultFlavour called(const char* site) const {
        if (!isUsable(site)) recordUseAfterRelease(site);
        return Failures::get().ask(site);
    }
    /** For methods without a result code: whether to answer nothing. */
    bool failing(const char* site) const { return called(site) != FaultFlavour::none; }

    // What every interface answers; `held` is what is held of the one that is asked.
    HRESULT query(const Hold& held, const IID& iid, void** result);
    ULONG addReference(Hold& held);
    ULONG releaseReference(Hold& held);
    void use(const Hold& held, const char* site) const {
        if (!held.isUsable()) recordUseAfterRelease(site);
    }
    void recordUseAfterRelease(const char* site) const;

protected:
    explicit Object(const std::string& className, const std::string& baseName = "CATBaseUnknown");
    virtual ~Object();

    void setClass(const std::string& className, const std::string& baseName);
    /** Whether somebody may call a method of the interface that the call is named after. */
    virtual bool isUsable(const char* site) const = 0;
    /** Of each interface of its own. */
    virtual void lose() = 0;

private:
    friend class Accounting;

    static Object* s_first;
    Object* m_previous = nullptr;
    Object* m_next = nullptr;
    CATMetaClass* m_meta;
    long m_references = 0;
    std::vector<std::unique_ptr<Extension>> m_extensions;
};

} // namespace embedded

#endif
