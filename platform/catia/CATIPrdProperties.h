#ifndef CATIPrdProperties_H
#define CATIPrdProperties_H

#include "CATBaseUnknown.h"
#include "CATBoolean.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

class CATIParmPublisher;

extern ExportedByCatia IID IID_CATIPrdProperties;

/** Properties of a product. */
class ExportedByCatia CATIPrdProperties : public CATBaseUnknown {
    CATDeclareInterface;

public:
    virtual HRESULT GetDescriptionInst(CATUnicodeString& oDescription) = 0;
    /** Proposed: the setters, which follow the getters; the library calls each in one place only. */
    virtual HRESULT SetDescriptionInst(const CATUnicodeString& iDescription) = 0;
    virtual HRESULT SetDescriptionRef(const CATUnicodeString& iDescription) = 0;
    virtual HRESULT SetDefinition(const CATUnicodeString& iDefinition) = 0;
    virtual HRESULT SetRevision(const CATUnicodeString& iRevision) = 0;
    virtual HRESULT SetNomenclature(const CATUnicodeString& iNomenclature) = 0;
    /** The publisher of the reference's user properties. @param oPublisher released by the caller; null on failure
     * @param iCreate makes one when there is none. @return E_FAIL when there is none. Proposed: whole, as users'
     * programs call it */
    virtual HRESULT GetUserProperties(CATIParmPublisher*& oPublisher, CATBoolean iCreate) = 0;

protected:
    ~CATIPrdProperties() override = default;
};

CATDeclareHandler(CATIPrdProperties, CATBaseUnknown);

#endif
