#ifndef CATIPrdProperties_H
#define CATIPrdProperties_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia const IID IID_CATIPrdProperties;

/**
 * Properties of a product. The setters are not on any public page and follow the getters; the library calls them in one
 * place only.
 */
class ExportedByCatia CATIPrdProperties : public CATBaseUnknown {
    CATDeclareInterface;

public:
    virtual HRESULT GetDescriptionInst(CATUnicodeString& oDescription) = 0;
    virtual HRESULT SetDescriptionInst(const CATUnicodeString& iDescription) = 0;
    virtual HRESULT GetDescriptionRef(CATUnicodeString& oDescription) = 0;
    virtual HRESULT SetDescriptionRef(const CATUnicodeString& iDescription) = 0;

protected:
    ~CATIPrdProperties() override = default;
};

CATDeclareHandler(CATIPrdProperties, CATBaseUnknown);

#endif
