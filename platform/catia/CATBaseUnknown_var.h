#ifndef CATBaseUnknown_var_H
#define CATBaseUnknown_var_H

#include "CATBaseUnknown.h"

#include <cstddef>

/**
 * Counting handle. It adds a reference of its own to whatever it is given and gives it back at its end; a raw pointer
 * that came with a reference must therefore still be released once by whoever received it.
 */
class ExportedByCatia CATBaseUnknown_var {
public:
    CATBaseUnknown_var() : m_object(nullptr) {}
    /** Proposed: whole. */
    CATBaseUnknown_var(std::nullptr_t) : m_object(nullptr) {}
    CATBaseUnknown_var(CATBaseUnknown* iObject) : m_object(iObject) {
        if (m_object) m_object->AddRef();
    }
    CATBaseUnknown_var(const CATBaseUnknown_var& iOther) : CATBaseUnknown_var(iOther.m_object) {}
    ~CATBaseUnknown_var() {
        if (m_object) m_object->Release();
    }
    CATBaseUnknown_var& operator=(const CATBaseUnknown_var& iOther) {
        CATBaseUnknown* const old = m_object;
        m_object = iOther.m_object;
        if (m_object) m_object->AddRef();
        if (old) old->Release();
        return *this;
    }

    operator CATBaseUnknown*() const { return m_object; }
    CATBaseUnknown* operator->() const {
        if (!m_object) ThrowErrorNullVar();
        return m_object;
    }
    int operator!() const { return m_object == nullptr; }
    int operator==(CATBaseUnknown* iObject) const { return m_object == iObject; }
    int operator!=(CATBaseUnknown* iObject) const { return m_object != iObject; }
    /** Proposed: these two between handles. */
    int operator==(const CATBaseUnknown_var& iOther) const { return m_object == iOther.m_object; }
    int operator!=(const CATBaseUnknown_var& iOther) const { return m_object != iOther.m_object; }

    /** Raised by every use of a null handle. */
    [[noreturn]] void ThrowErrorNullVar() const;

private:
    CATBaseUnknown* m_object;
};

/** The null handle; converts to a handle of any interface. Proposed: its type. */
extern ExportedByCatia const CATBaseUnknown_var NULL_var;

/**
 * The handle of one interface: built from any pointer or handle it asks for the interface itself and is null when the
 * object does not answer it. Proposed: what the macro stands for.
 */
#define CATDeclareHandler(interfac, baseclass)                                                                         \
    class interfac##_var : public baseclass##_var {                                                                    \
    public:                                                                                                            \
        interfac##_var() : m_interface(nullptr) {}                                                                     \
        interfac##_var(std::nullptr_t) : m_interface(nullptr) {}                                                       \
        interfac##_var(interfac* iPointer) : baseclass##_var(iPointer), m_interface(iPointer) {}                       \
        interfac##_var(CATBaseUnknown* iObject) : interfac##_var(Query{iObject}) {}                                    \
        interfac##_var(const CATBaseUnknown_var& iOther)                                                               \
            : interfac##_var(Query{static_cast<CATBaseUnknown*>(iOther)}) {}                                           \
        interfac##_var(const interfac##_var& iOther) = default;                                                        \
        interfac##_var& operator=(const interfac##_var& iOther) = default;                                             \
        operator interfac*() const { return m_interface; }                                                             \
        interfac* operator->() const {                                                                                 \
            if (!m_interface) this->ThrowErrorNullVar();                                                               \
            return m_interface;                                                                                        \
        }                                                                                                              \
                                                                                                                       \
    private:                                                                                                           \
        struct Query {                                                                                                 \
            explicit Query(CATBaseUnknown* iObject) : found(nullptr) {                                                 \
                void* pointer = nullptr;                                                                               \
                if (iObject && SUCCEEDED(iObject->QueryInterface(IID_##interfac, &pointer)))                           \
                    found = static_cast<interfac*>(pointer);                                                           \
            }                                                                                                          \
            ~Query() {                                                                                                 \
                if (found) found->Release();                                                                           \
            }                                                                                                          \
            Query(const Query&) = delete;                                                                              \
            Query& operator=(const Query&) = delete;                                                                   \
            interfac* found;                                                                                           \
        };                                                                                                             \
        explicit interfac##_var(const Query& iQuery) : interfac##_var(iQuery.found) {}                                 \
        interfac* m_interface;                                                                                         \
    }

#endif
