#include "CATMathTransformation.h"

#include <algorithm>

namespace {

constexpr CATLONG32 kCoefficients = 12;

} // namespace

CATMathTransformation::CATMathTransformation() : m_coefficients{1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0} {}

HRESULT CATMathTransformation::SetCoefficients(const double iCoefficients[], const CATLONG32 iSize) {
    if (!iCoefficients || iSize != kCoefficients) return E_FAIL;
    std::copy_n(iCoefficients, kCoefficients, m_coefficients);
    return S_OK;
}

HRESULT CATMathTransformation::GetCoefficients(double oCoefficients[], const CATLONG32 iSize) const {
    if (!oCoefficients || iSize != kCoefficients) return E_FAIL;
    std::copy_n(m_coefficients, kCoefficients, oCoefficients);
    return S_OK;
}
