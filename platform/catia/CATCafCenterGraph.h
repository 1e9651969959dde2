#ifndef CATCafCenterGraph_H
#define CATCafCenterGraph_H

#include "CATBaseUnknown.h"
#include "CATString.h"

class CATNavigBox;

/** Moves the tree of a window so that an object stands in its middle. Made by whoever needs it, with one reference. */
class ExportedByCatia CATCafCenterGraph : public CATBaseUnknown {
public:
    CATCafCenterGraph();

    /** @param iType "OnCSO" for what is selected, "OnHSO" for what is highlighted. @return always S_OK */
    HRESULT CenterGraph(const CATString& iType, CATNavigBox* iNavigBox);
};

#endif
