#include "embedded/object/Automation.h"

#include "CATAutoConversions.h"
#include "CATMathTransformation.h"
#include "embedded/Accounting.h"

#include <algorithm>
#include <cstring>
#include <utility>

const IID IID_IEnumVARIANT = {0x00020404, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

using namespace embedded;

namespace {

constexpr CATLONG32 kCoefficients = 12;

CATVariant emptyVariant() {
    CATVariant variant;
    std::memset(&variant, 0, sizeof variant);
    return variant;
}

/** Holds the object without a reference. */
CATVariant variantOf(CATBaseDispatch* object) {
    CATVariant variant = emptyVariant();
    variant.vt = VT_DISPATCH;
    variant.pdispVal = object;
    return variant;
}

} // namespace

HRESULT __stdcall CATIABase::GetItem(const CATBSTR&, CATBaseDispatch*& oObject) {
    oObject = nullptr;
    return E_FAIL;
}

HRESULT CATVariantClear(CATVariant* ioVariant) {
    if (!ioVariant) return E_INVALIDARG;
    if (ioVariant->vt == VT_DISPATCH && ioVariant->pdispVal) ioVariant->pdispVal->Release();
    *ioVariant = emptyVariant();
    return S_OK;
}

HRESULT ConvertVariant(const CATVariant& iVariant, CATBaseDispatch*& oObject) {
    CATBaseDispatch* const held =
        iVariant.vt == VT_DISPATCH ? static_cast<CATBaseDispatch*>(iVariant.pdispVal) : nullptr;
    const FaultFlavour flavour = Failures::get().ask("ConvertVariant");
    if (flavour != FaultFlavour::none) return failedAnswer<CATBaseDispatch*>(flavour, oObject, nullptr, held);
    oObject = held;
    return held ? S_OK : E_FAIL;
}

CATSafeArray::CATSafeArray(std::vector<double> numbers) : values(std::move(numbers)) {
    ++Accounting::get().live().lists;
}

CATSafeArray::~CATSafeArray() { --Accounting::get().live().lists; }

CATSafeArrayVariant* BuildSafeArrayVariant(const double* iValues, long iSize) {
    if (fails("BuildSafeArrayVariant") || !iValues || iSize <= 0) return nullptr;
    return new CATSafeArray(std::vector<double>(iValues, iValues + iSize));
}

long ConvertSafeArrayVariant(const CATSafeArrayVariant* iArray, double* oValues, long iSize) {
    if (fails("ConvertSafeArrayVariant") || !iArray || !oValues) return 0;
    const long present = static_cast<long>(iArray->values.size());
    const long count = iSize > 0 ? std::min(iSize, present) : present;
    std::copy_n(iArray->values.begin(), count, oValues);
    return count;
}

HRESULT FreeVariantSafeArray(CATSafeArrayVariant* iArray) {
    delete iArray;
    return S_OK;
}

CATMathTransformation::CATMathTransformation() : m_coefficients{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0} {}

HRESULT CATMathTransformation::SetCoefficients(const double iCoefficients[], const CATLONG32 iSize) {
    if (!iCoefficients || iSize != kCoefficients) return E_FAIL;
    std::copy_n(iCoefficients, kCoefficients, m_coefficients);
    return S_OK;
}

HRESULT CATMathTransformation::GetCoefficients(double oCoefficients[], const CATLONG32 iSize) const {
    if (!oCoefficients || iSize != kCoefficients) return E_FAIL;
    std::copy_n(m_coefficients, kCoefficients, oCoefficients);
    return S_OK;
}

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
    *result = static_cast<IEnumVARIANT*>(this);
    addReference();
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
        return flavour == FaultFlavour::nullOutput ? S_OK : E_FAIL;
    }
    ULONG fetched = 0;
    for (; fetched < iCount && m_next < m_objects.size(); ++fetched, ++m_next) {
        m_objects[m_next]->AddRef();
        oItems[fetched] = variantOf(m_objects[m_next]);
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
    m_copies.back()->AddRef();
    *oCopy = m_copies.back().get();
    return S_OK;
}

} // namespace embedded
