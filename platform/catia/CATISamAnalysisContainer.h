#ifndef CATISamAnalysisContainer_H
#define CATISamAnalysisContainer_H

#include "CATBaseUnknown.h"
#include "CATISamAnalysisManager.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATISamAnalysisContainer;

/** The container of an analysis document's specifications. */
class ExportedByCatia CATISamAnalysisContainer : public CATBaseUnknown {
    CATDeclareInterface;

public:
    virtual HRESULT GetAnalysisManager(CATISamAnalysisManager_var& oManager) = 0;

protected:
    ~CATISamAnalysisContainer() override = default;
};

CATDeclareHandler(CATISamAnalysisContainer, CATBaseUnknown);

#endif
