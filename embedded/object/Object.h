#ifndef EMBEDDED_OBJECT_OBJECT_H
#define EMBEDDED_OBJECT_OBJECT_H

#include "CATErrorDef.h"
#include "CATMetaClass.h"
#include "IUnknown.h"
#include "embedded/Failures.h"

#include <memory>
#include <string>
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

} // namespace embedded

#endif
