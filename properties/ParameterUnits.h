#ifndef PROPERTIES_PARAMETER_UNITS_H
#define PROPERTIES_PARAMETER_UNITS_H

#include "CATICkeUnit.h"
#include "CATUnicodeString.h"

#include <algorithm>
#include <cmath>

namespace vorntools {

/** Numbers that differ by what converting them between units adds count as equal. */
inline bool areEqual(double i_a, double i_b) {
    constexpr double kNoise = 1e-9;
    return std::fabs(i_a - i_b) <= kNoise * (std::max)(std::fabs(i_a), std::fabs(i_b));
}

/** A number of the MKS unit as text in a unit: as the platform shows it or, since it shows no more than the session's
 * decimals, with all its digits. */
CATUnicodeString exactText(const CATICkeUnit_var& i_unit, double i_mks);

} // namespace vorntools

#endif
