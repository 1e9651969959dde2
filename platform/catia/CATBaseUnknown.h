#ifndef CATBaseUnknown_H
#define CATBaseUnknown_H

#include "CATBoolean.h"
#include "CATDataType.h"
#include "CATErrorDef.h"
#include "ExportedByCatia.h"
#include "IDispatch.h"

class CATMetaClass;

typedef const char* CATClassId;
typedef const char* CATIdent;

/**
 * Root of every object and interface of the platform: reference counted, one reference for whoever created it.
 * A raw interface pointer that a call hands out carries a reference for the caller unless its declaration says
 * otherwise.
 */
class ExportedByCatia CATBaseUnknown : public IDispatch {
public:
    CATBaseUnknown();
    CATBaseUnknown(const CATBaseUnknown& iOther);
    CATBaseUnknown& operator=(const CATBaseUnknown&) { return *this; }
    virtual ~CATBaseUnknown();

    HRESULT __stdcall QueryInterface(const IID& iIID, void** oPPV) override;
    ULONG __stdcall AddRef() override;
    ULONG __stdcall Release() override;

    /** Class name of the object; owned by the platform. Proposed: the qualifiers. */
    virtual const char* IsA() const;
    /** Non-zero when the object's class or one it derives from has that name. */
    virtual int IsAKindOf(const char* iName) const;
    /** 1 when both pointers lead to the same implementation, whatever interface each shows. */
    virtual int IsEqual(const CATBaseUnknown* iobject) const;
    /** Description of the class; owned by the platform, never released. Proposed: whole. */
    virtual CATMetaClass* __stdcall GetMetaObject() const;
    /** The implementation behind this interface; no reference is added. Proposed: the qualifiers. */
    virtual CATBaseUnknown* GetImpl();

    /** Proposed: the types. */
    static const char* __stdcall ClassName();
    static CATClassId ClassId();

private:
    ULONG m_cRef;
};

typedef CATBaseUnknown* CATBaseUnknown_ptr;

extern ExportedByCatia IID IID_CATBaseUnknown;

#include "CATBaseUnknown_var.h"

#endif
