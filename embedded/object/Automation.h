// Values and arrays of the automation interfaces.
#ifndef EMBEDDED_OBJECT_AUTOMATION_H
#define EMBEDDED_OBJECT_AUTOMATION_H

#include "CATBaseDispatch.h"
#include "CATSafeArray.h"
#include "CATVariant.h"

#include <vector>

/** Numbers; the one kind of array that is needed here. */
struct CATSafeArray {
    explicit CATSafeArray(std::vector<double> numbers);
    CATSafeArray(const CATSafeArray&) = delete;
    CATSafeArray& operator=(const CATSafeArray&) = delete;
    ~CATSafeArray();

    std::vector<double> values;
};

namespace embedded {

CATVariant emptyVariant();
/** Holds the object without a reference. */
CATVariant variantOf(CATBaseDispatch* object);

} // namespace embedded

#endif
