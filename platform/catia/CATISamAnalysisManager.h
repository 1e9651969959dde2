#ifndef CATISamAnalysisManager_H
#define CATISamAnalysisManager_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATISamAnalysisManager;

/** The root feature of an analysis. It is a specification object and a publisher, too. */
class ExportedByCatia CATISamAnalysisManager : public CATBaseUnknown {
    CATDeclareInterface;

protected:
    ~CATISamAnalysisManager() override = default;
};

CATDeclareHandler(CATISamAnalysisManager, CATBaseUnknown);

#endif
