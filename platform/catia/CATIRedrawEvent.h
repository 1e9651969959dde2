#ifndef CATIRedrawEvent_H
#define CATIRedrawEvent_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIRedrawEvent;

/** Tells the specification tree that a node has changed. */
class ExportedByCatia CATIRedrawEvent : public CATBaseUnknown {
    CATDeclareInterface;

public:
    virtual void Redraw() = 0;

protected:
    ~CATIRedrawEvent() override = default;
};

CATDeclareHandler(CATIRedrawEvent, CATBaseUnknown);

#endif
