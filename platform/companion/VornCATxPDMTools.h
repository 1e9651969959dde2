#ifndef VornCATxPDMTools_H
#define VornCATxPDMTools_H

#include "CATErrorDef.h"
#include "ExportedByCatia.h"

class CATIProduct;
class VornCATIxPDMItem;

/** Ways to the platform's own PDM connection. */
class ExportedByCatia VornCATxPDMTools {
public:
    /** The item of a product. @param oItem released by the caller; null on failure */
    static HRESULT getPDMItem(CATIProduct* iProduct, VornCATIxPDMItem*& oItem);
};

#endif
