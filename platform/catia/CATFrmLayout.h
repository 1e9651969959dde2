#ifndef CATFrmLayout_H
#define CATFrmLayout_H

#include "CATBaseUnknown.h"
#include "CATListOfCATFrmWindow.h"

/** The windows of the application and which of them is the current one. No call adds references. */
class ExportedByCatia CATFrmLayout : public CATBaseUnknown {
public:
    /** Null while the application shows no windows. */
    static CATFrmLayout* GetCurrentLayout();

    /** @param iWinType 0 all, 1 restored, 2 minimised windows. @param iSort 0 as they come, 1 newest last, 2 newest
     * first. @return the layout's own list, good until it is asked again (Proposed: that) */
    virtual CATLISTP(CATFrmWindow) & GetWindowList(int iWinType = 0, int iSort = 0) = 0;
    /** Null is possible. */
    virtual CATFrmWindow* GetCurrentWindow() = 0;
    virtual void SetCurrentWindow(CATFrmWindow* iWindow) = 0;

protected:
    ~CATFrmLayout() override = default;
};

#endif
