#include "embedded/object/Automation.h"

#include "CATAutoConversions.h"
#include "embedded/Accounting.h"
#include "embedded/object/Answers.h"

#include <algorithm>
#include <cstring>
#include <utility>

using namespace embedded;

CATVariant embedded::emptyVariant() {
    CATVariant variant;
    std::memset(&variant, 0, sizeof variant);
    return variant;
}

CATVariant embedded::variantOf(CATBaseDispatch* object) {
    CATVariant variant = emptyVariant();
    variant.vt = VT_DISPATCH;
    variant.pdispVal = object;
    return variant;
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
