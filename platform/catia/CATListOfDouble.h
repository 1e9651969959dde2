#ifndef CATListOfDouble_H
#define CATListOfDouble_H

#include "CATCollec.h"

/** List of real numbers, positions from 1. */
class CATRawColldouble : public CATListOf<double> {
public:
    /** Keeps the first of equal elements; NaN equals nothing. @return the number removed */
    int RemoveDuplicates() { return RemoveRepeated(); }
};
typedef CATRawColldouble CATListOfDouble;

#endif
