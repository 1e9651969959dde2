#ifndef APIDraftingInterfaces_H
#define APIDraftingInterfaces_H

#include "CATErrorDef.h"
#include "ExportedByCatia.h"

class CATDocument;

/** Services on drawings. */
class ExportedByCatia APIDraftingInterfaces {
public:
    /** Brings every sheet of a drawing up to date. @param iSaveDetailSheet 1 keeps the detail sheets. */
    static HRESULT updateDrawing(CATDocument* iDocument, unsigned char iSaveDetailSheet);
};

#endif
