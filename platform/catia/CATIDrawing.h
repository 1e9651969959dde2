#ifndef CATIDrawing_H
#define CATIDrawing_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"

extern ExportedByCatia IID IID_CATIDrawing;

/** The root feature of a drawing. It is a specification object and a publisher, too. */
class ExportedByCatia CATIDrawing : public CATBaseUnknown {
    CATDeclareInterface;

protected:
    ~CATIDrawing() override = default;
};

CATDeclareHandler(CATIDrawing, CATBaseUnknown);

#endif
