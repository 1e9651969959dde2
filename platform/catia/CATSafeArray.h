#ifndef CATSafeArray_H
#define CATSafeArray_H

#include "CATErrorDef.h"
#include "ExportedByCatia.h"

/** Array of automation values. Nobody looks into it: it is built and read with the calls of CATAutoConversions.h. */
struct CATSafeArray;
typedef CATSafeArray CATSafeArrayVariant;

/** Frees an array that the caller built; null is allowed. */
ExportedByCatia HRESULT FreeVariantSafeArray(CATSafeArrayVariant* iArray);

#endif
