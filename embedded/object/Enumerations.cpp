#include "embedded/object/Enumerations.h"

#include "embedded/object/Answers.h"
#include "embedded/object/Automation.h"

#include <algorithm>
#include <utility>

IID IID_IEnumVARIANT = {0x00020404, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

namespace embedded {

EnumerationObject::EnumerationObject(std::string name, Enumerated objects)
    : Object("Enumeration"), m_name(std::move(name)), m_objects(std::move(objects)) {}

HRESULT __stdcall EnumerationObject::QueryInterface(const IID& iid, void** result) {
    if (!result) return E_POINTER;
    *result = nullptr;
    const bool known = iid == IID_IEnumVARIANT || iid == IID_IUnknown;
    const FaultFlavour flavour = called("QueryInterface(IEnumVARIANT)");
    if (flavour == FaultFlavour::nullOutput) return S_OK;
    if (flavour == FaultFlavour::codeWithOutput) *result = static_cast<IEnumVARIANT*>(this);
    if (flavour != FaultFlavour::none || !known) return E_NOINTERFACE;
    *result = handOut<IEnumVARIANT>(this);
    return S_OK;
}

HRESULT __stdcall EnumerationObject::Next(ULONG iCount, CATVariant* oItems, ULONG* oFetched) {
    if (oFetched) *oFetched = 0;
    if (!oItems || (!oFetched && iCount != 1)) return E_POINTER;
    std::fill_n(oItems, iCount, emptyVariant());
    const FaultFlavour flavour = called("IEnumVARIANT::Next");
    if (flavour != FaultFlavour::none) {
        if (flavour != FaultFlavour::code && oFetched) *oFetched = iCount;
        if (flavour == FaultFlavour::codeWithOutput && m_next < m_objects.size())
            std::fill_n(oItems, iCount, variantOf(m_objects[m_next]));
        return Failures::get().codeOf(flavour);
    }
    ULONG fetched = 0;
    if (Failures::get().givesOtherKind()) ++fetched; // a variant that is empty
    for (; fetched < iCount && m_next < m_objects.size(); ++fetched, ++m_next) {
        oItems[fetched] = variantOf(handOut(m_objects[m_next]));
    }
    if (oFetched) *oFetched = fetched;
    return fetched == iCount ? S_OK : S_FALSE;
}

HRESULT __stdcall EnumerationObject::Skip(ULONG iCount) {
    if (failing("IEnumVARIANT::Skip")) return E_FAIL;
    const std::size_t left = m_objects.size() - m_next;
    m_next += std::min<std::size_t>(iCount, left);
    return iCount <= left ? S_OK : S_FALSE;
}

HRESULT __stdcall EnumerationObject::Reset() {
    if (failing("IEnumVARIANT::Reset")) return E_FAIL;
    m_next = 0;
    return S_OK;
}

HRESULT __stdcall EnumerationObject::Clone(IEnumVARIANT** oCopy) {
    if (!oCopy) return E_POINTER;
    const FaultFlavour flavour = called("IEnumVARIANT::Clone");
    if (flavour != FaultFlavour::none) return failedAnswer<IEnumVARIANT*>(flavour, *oCopy, nullptr, this);
    m_copies.push_back(std::make_unique<EnumerationObject>(m_name, m_objects));
    m_copies.back()->m_next = m_next;
    *oCopy = handOut<IEnumVARIANT>(m_copies.back().get());
    return S_OK;
}

} // namespace embedded
