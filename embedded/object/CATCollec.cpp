#include "CATCollec.h"

#include "embedded/Accounting.h"

#include <string>

using embedded::Accounting;

CATCollecRoot::CATCollecRoot() { ++Accounting::get().live().lists; }

CATCollecRoot::CATCollecRoot(const CATCollecRoot&) : CATCollecRoot() {}

CATCollecRoot::~CATCollecRoot() { --Accounting::get().live().lists; }

void CATCollecRoot::BadPosition(int iPosition, int iSize) {
    Accounting::get().breach("position " + std::to_string(iPosition) + " in a list of " + std::to_string(iSize));
}
