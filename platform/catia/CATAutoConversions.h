#ifndef CATAutoConversions_H
#define CATAutoConversions_H

#include "CATSafeArray.h"
#include "CATVariant.h"

class CATBaseDispatch;

/** The object that a value holds. No reference is added. @param oObject null on failure. @return E_FAIL when the value
 * holds no object */
ExportedByCatia HRESULT ConvertVariant(const CATVariant& iVariant, CATBaseDispatch*& oObject);

/** A new array of numbers, freed by the caller with FreeVariantSafeArray; null on failure. */
ExportedByCatia CATSafeArrayVariant* BuildSafeArrayVariant(const double* iValues, long iSize);
/** Copies the first numbers of an array. @return how many were copied */
ExportedByCatia long ConvertSafeArrayVariant(const CATSafeArrayVariant* iArray, double* oValues, long iSize = 0);

#endif
