#ifndef CATIDftDocumentServices_H
#define CATIDftDocumentServices_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIDftDocumentServices;

/** Services of a drawing document. */
class ExportedByCatia CATIDftDocumentServices : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The drawing as an interface of the caller's choice, released by the caller. */
    virtual HRESULT GetDrawing(const IID iIID, void** oDrawing) = 0;

protected:
    ~CATIDftDocumentServices() override = default;
};

CATDeclareHandler(CATIDftDocumentServices, CATBaseUnknown);

#endif
