#include "CATBaseUnknown.h"
#include "CATMetaClass.h"
#include "embedded/Accounting.h"

#include <cstring>
#include <stdexcept>

using embedded::Accounting;

CATBaseUnknown::CATBaseUnknown() : m_cRef(1) { ++Accounting::get().live().objects; }

CATBaseUnknown::CATBaseUnknown(const CATBaseUnknown&) : CATBaseUnknown() {}

CATBaseUnknown::~CATBaseUnknown() { --Accounting::get().live().objects; }

HRESULT __stdcall CATBaseUnknown::QueryInterface(const IID& iIID, void** oPPV) {
    if (!oPPV) return E_POINTER;
    *oPPV = nullptr;
    if (!(iIID == IID_IUnknown) && !(iIID == IID_CATBaseUnknown)) return E_NOINTERFACE;
    AddRef();
    *oPPV = this;
    return S_OK;
}

ULONG __stdcall CATBaseUnknown::AddRef() { return ++m_cRef; }

ULONG __stdcall CATBaseUnknown::Release() {
    const ULONG left = --m_cRef;
    if (left == 0) delete this;
    return left;
}

const char* CATBaseUnknown::IsA() const { return ClassName(); }

int CATBaseUnknown::IsAKindOf(const char* iName) const { return GetMetaObject()->IsAKindOf(iName); }

int CATBaseUnknown::IsEqual(const CATBaseUnknown* iobject) const {
    return iobject && const_cast<CATBaseUnknown*>(iobject)->GetImpl() == const_cast<CATBaseUnknown*>(this)->GetImpl();
}

CATMetaClass* __stdcall CATBaseUnknown::GetMetaObject() const {
    static CATMetaClass meta(ClassName(), nullptr);
    return &meta;
}

CATBaseUnknown* CATBaseUnknown::GetImpl() { return this; }

const char* __stdcall CATBaseUnknown::ClassName() { return "CATBaseUnknown"; }

CATClassId CATBaseUnknown::ClassId() { return ClassName(); }

#if defined(__clang__)
// A null handle has nothing to give back.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wexit-time-destructors"
#endif
const CATBaseUnknown_var NULL_var;
#if defined(__clang__)
#pragma clang diagnostic pop
#endif

void CATBaseUnknown_var::ThrowErrorNullVar() const {
    Accounting::get().breach("use of a null handle");
    throw std::logic_error("use of a null handle");
}

int CATMetaClass::IsAKindOf(const char* iName) const {
    if (!iName) return 0;
    for (const CATMetaClass* meta = this; meta; meta = meta->m_base)
        if (std::strcmp(meta->m_name, iName) == 0) return 1;
    return 0;
}
