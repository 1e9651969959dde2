#ifndef FOUNDATION_WORK_MODES_H
#define FOUNDATION_WORK_MODES_H

class CATIProduct;

namespace vorntools {

/** Whether only the picture of a product is loaded at its place: what VornToolsWorkModeServices::getWorkMode tells, for
 * walks that ask at many places. Nothing is journalled or reported; false when nobody can tell. */
bool isOnlySeen(CATIProduct& i_product);

} // namespace vorntools

#endif
