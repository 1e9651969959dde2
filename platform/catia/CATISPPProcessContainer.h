#ifndef CATISPPProcessContainer_H
#define CATISPPProcessContainer_H

#include "CATISPPContainer.h"
#include "CATLISTV_CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATISPPProcessContainer;

/** The root container of a process document. */
class ExportedByCatia CATISPPProcessContainer : public CATISPPContainer {
    CATDeclareInterface;

public:
    /** The processes, the root process first; the caller deletes the list. Null is possible. */
    virtual CATListValCATBaseUnknown_var* GetAllProcess() const = 0;

protected:
    ~CATISPPProcessContainer() override = default;
};

CATDeclareHandler(CATISPPProcessContainer, CATISPPContainer);

#endif
