#ifndef EMBEDDED_OBJECT_INTERFACES_H
#define EMBEDDED_OBJECT_INTERFACES_H

#include "CATBaseUnknown.h"
#include "CATIABase.h"

#include <cstdint>

namespace embedded {

/** Identifier of an interface of this platform: they differ in their first field only. Each room has numbers of its
 * own: 0x000 what several share, 0x100 the frame, 0x200 the structure, 0x300 knowledge, 0x400 tables, 0x500 scenes and
 * masks, 0x600 documents. Below kInterfaceLimit. */
constexpr IID interfaceId(std::uint32_t number) {
    return {0x5E1A0000U + number, 0x7C31, 0x11D4, {0xB0, 0x5E, 0x00, 0x08, 0xC7, 0x4B, 0x52, 0x1F}};
}
constexpr std::uint32_t kInterfaceLimit = 0x1000;

/** Makes the failure point "QueryInterface(Name)" of an interface known. Both stay with the caller. */
struct InterfaceSite {
    InterfaceSite(const IID& iid, const char* site);
};

/** Failure point of a query for an interface, such as "QueryInterface(CATIProduct)"; owned by the platform. */
const char* querySite(const IID& iid);

/** Identifier of an interface by its name, such as "CATIProduct"; null for one that this platform does not know. */
const IID* interfaceNamed(const char* name);

/** Whether a pointer to interface I answers an identifier: its own and those of its bases below CATBaseUnknown. */
template <class I>
struct Identity {
    static bool has(const IID&) { return false; }
};

template <>
struct Identity<CATIABase> {
    static bool has(const IID& iid) { return iid == IID_CATIABase || iid == IID_CATBaseDispatch; }
};

} // namespace embedded

/** Defines what an interface declares about itself. Once an interface, in a source file, outside every namespace. */
#define EMBEDDED_INTERFACE(Name, Base, Number)                                                                         \
    IID IID_##Name = embedded::interfaceId(Number);                                                                    \
    CATImplementInterface(Name, Base);                                                                                 \
    static const embedded::InterfaceSite site_##Name(IID_##Name, "QueryInterface(" #Name ")")

// Identities, within namespace embedded, in the header of the class that implements the interface.
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

#endif
