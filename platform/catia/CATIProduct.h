#ifndef CATIProduct_H
#define CATIProduct_H

#include "CATBaseUnknown.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATIProduct;

class CATIProduct_var;

/**
 * A product: a reference (stored in a document), an instance below a reference, or the occurrence of an instance in the
 * context of a product further up.
 */
class ExportedByCatia CATIProduct : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The reference that this product shows, itself for a reference; null while none is loaded. */
    virtual CATIProduct_var GetReferenceProduct() = 0;
    /** The product one level up in this product's context; null at the root. */
    virtual CATIProduct_var GetFatherProduct() = 0;
    /** S_OK for a reference, else E_FAIL. */
    virtual HRESULT IsReference() = 0;
    /** The occurrence of this product in the context of another; null when it does not occur there. */
    virtual CATIProduct_var FindInstance(const CATIProduct_var& iContext) = 0;
    virtual CATUnicodeString GetPartNumber() const = 0;
    /** For references; nothing happens at any other product. */
    virtual void SetPartNumber(const CATUnicodeString& iPartNumber) = 0;
    virtual HRESULT GetPrdInstanceName(CATUnicodeString& oName) = 0;
    /** @return E_FAIL when a brother has that name, and for a reference */
    virtual HRESULT SetPrdInstanceName(const CATUnicodeString iName) = 0;
    /** Direct children in this product's context, as objects of the named interface. The caller deletes the list;
     * null is possible. */
    virtual CATListValCATBaseUnknown_var* GetChildren(const char* iIntfId = "CATIProduct") const = 0;
    virtual int GetChildrenCount() const = 0;

protected:
    ~CATIProduct() override = default;
};

CATDeclareHandler(CATIProduct, CATBaseUnknown);

#endif
