#ifndef CATISamAccess_H
#define CATISamAccess_H

#include "CATIContainerOfDocument.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATISamAccess;

/** What an analysis document answers. */
class ExportedByCatia CATISamAccess : public CATIContainerOfDocument {
    CATDeclareInterface;

protected:
    ~CATISamAccess() override = default;
};

CATDeclareHandler(CATISamAccess, CATIContainerOfDocument);

#endif
