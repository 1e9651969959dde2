#ifndef IUnknown_H
#define IUnknown_H

#include "CATErrorDef.h"
#include "ExportedByCatia.h"

#include <cstdint>

#if defined(_WIN32)
#include <guiddef.h>
#else
/** Interface identifier: 16 bytes, laid out as on Windows. */
struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    unsigned char Data4[8];
};
typedef GUID IID;

inline bool operator==(const GUID& iLeft, const GUID& iRight) {
    if (iLeft.Data1 != iRight.Data1 || iLeft.Data2 != iRight.Data2 || iLeft.Data3 != iRight.Data3) return false;
    for (int i = 0; i < 8; ++i)
        if (iLeft.Data4[i] != iRight.Data4[i]) return false;
    return true;
}
inline bool operator!=(const GUID& iLeft, const GUID& iRight) { return !(iLeft == iRight); }
#endif
static_assert(sizeof(IID) == 16 && alignof(IID) == 4, "interface identifiers cross the boundary by layout");

/** Root of every interface. */
class IUnknown {
public:
    /**
     * Asks the object for another of its interfaces.
     * @param oPPV the interface, with a reference for the caller; null on failure.
     * @return S_OK; E_NOINTERFACE when the object does not answer it.
     */
    virtual HRESULT __stdcall QueryInterface(const IID& iIID, void** oPPV) = 0;
    /** Adds a reference; the new count. */
    virtual ULONG __stdcall AddRef() = 0;
    /** Gives a reference back; the new count. The object is gone at 0. */
    virtual ULONG __stdcall Release() = 0;

protected:
    ~IUnknown() = default;
};

extern ExportedByCatia IID IID_IUnknown;

#endif
