#ifndef CATFrmWindow_H
#define CATFrmWindow_H

#include "CATBaseUnknown.h"

class CATFrmEditor;

/** A window of the layout, owned by it. Which kind it is, its class name tells. */
class ExportedByCatia CATFrmWindow : public CATBaseUnknown {
public:
    /** The editor that the window shows; no reference is added (Proposed: that), null is possible. */
    virtual CATFrmEditor* GetEditor() = 0;

protected:
    ~CATFrmWindow() override = default;
};

#endif
