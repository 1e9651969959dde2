#ifndef FOUNDATION_WORK_MODES_H
#define FOUNDATION_WORK_MODES_H

#include "CATUnicodeString.h"

class CATIProduct;

namespace vorntools {

/** Whether only the picture of a product is loaded at its place: what VornToolsWorkModeServices::getWorkMode tells, for
 * walks that ask at many places. Nothing is journalled or reported; false when nobody can tell. */
bool isOnlySeen(CATIProduct& i_product);
/** Name, without directory, of the file whose picture a product shows; empty when it shows none or does not tell.
 * Nothing is loaded, journalled or reported. */
CATUnicodeString fileNameOfPicture(CATIProduct& i_product);

} // namespace vorntools

#endif
