#ifndef CATMathTransformation_H
#define CATMathTransformation_H

#include "CATDataType.h"
#include "CATErrorDef.h"
#include "ExportedByCatia.h"

/** Rotation and translation in space; the identity at first. */
class ExportedByCatia CATMathTransformation {
public:
    CATMathTransformation();
    /** @param iCoefficients column by column: three of the rotation, then the translation. @return E_FAIL, and nothing
     * changes, for null or another number than 12 */
    HRESULT SetCoefficients(const double iCoefficients[], const CATLONG32 iSize = 12);
    HRESULT GetCoefficients(double oCoefficients[], const CATLONG32 iSize = 12) const;

private:
    double m_coefficients[12];
};

#endif
