#ifndef CACHE_DESIGN_TABLE_SHEET_H
#define CACHE_DESIGN_TABLE_SHEET_H

#include "foundation/InterfacePtr.h"

#include "CATICkeOleSheet.h"

namespace vorntools {

/** What chooses among the sheets of a spreadsheet.
 * @param o_ole_sheet empty for a text file, which has sheet 1 only. @return E_FAIL when that cannot be told */
HRESULT findOleSheet(const CATICkeSheet_var& isp_sheet, InterfacePtr<CATICkeOleSheet>& o_ole_sheet);

/** Whether the file changed since the sheet's cells were read. */
bool isFileModified(const CATICkeSheet_var& isp_sheet);

} // namespace vorntools

#endif
