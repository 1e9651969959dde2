#ifndef EMBEDDED_OBJECT_ENUMERATIONS_H
#define EMBEDDED_OBJECT_ENUMERATIONS_H

#include "CATBaseDispatch.h"
#include "IEnumVARIANT.h"
#include "embedded/object/Object.h"

#include <memory>
#include <string>
#include <vector>

namespace embedded {

/** An object for an enumeration; the enumeration hands out references to it. */
using Enumerated = std::vector<CATBaseDispatch*>;

/** A walk over objects. Its owner keeps it, like every object of the session, as long as the session lives. */
class EnumerationObject final : public Object, public IEnumVARIANT {
public:
    EnumerationObject(std::string name, Enumerated objects);

    std::string objectName() const override { return m_name; }

    HRESULT __stdcall QueryInterface(const IID& iid, void** result) override;
    ULONG __stdcall AddRef() override { return addReference(m_held); }
    ULONG __stdcall Release() override { return releaseReference(m_held); }

    HRESULT __stdcall Next(ULONG iCount, CATVariant* oItems, ULONG* oFetched) override;
    HRESULT __stdcall Skip(ULONG iCount) override;
    HRESULT __stdcall Reset() override;
    HRESULT __stdcall Clone(IEnumVARIANT** oCopy) override;

private:
    bool isUsable(const char*) const override { return m_held.isUsable(); }
    void lose() override { m_held.lose(); }

    Hold m_held;
    const std::string m_name;
    const Enumerated m_objects;
    std::size_t m_next = 0;
    std::vector<std::unique_ptr<EnumerationObject>> m_copies;
};

} // namespace embedded

#endif
