#ifndef CATIContainerOfDocument_H
#define CATIContainerOfDocument_H

#include "CATBaseUnknown.h"
#include "CATIContainer.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIContainerOfDocument;

/** The containers of a document. */
class ExportedByCatia CATIContainerOfDocument : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** The container of the specifications, released by the caller. */
    virtual HRESULT GetSpecContainer(CATIContainer*& oContainer) = 0;

protected:
    ~CATIContainerOfDocument() override = default;
};

CATDeclareHandler(CATIContainerOfDocument, CATBaseUnknown);

#endif
