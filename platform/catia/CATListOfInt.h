#ifndef CATListOfInt_H
#define CATListOfInt_H

#include "CATCollec.h"

/** List of integers, positions from 1. */
class CATRawCollint : public CATListOf<int> {
public:
    /** Keeps the first of equal elements. @return the number removed */
    int RemoveDuplicates() { return RemoveRepeated(); }
};
typedef CATRawCollint CATListOfInt;

#endif
