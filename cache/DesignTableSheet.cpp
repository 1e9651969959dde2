#include "cache/DesignTableSheet.h"

#include "foundation/InterfaceIds.h"

#include "CATUnicodeString.h"

namespace vorntools {

HRESULT findOleSheet(const CATICkeSheet_var& isp_sheet, InterfacePtr<CATICkeOleSheet>& o_ole_sheet) {
    o_ole_sheet.reset();
    void* p_found = nullptr;
    const HRESULT code = isp_sheet->QueryInterface(IID_CATICkeOleSheet, &p_found);
    if (code == E_NOINTERFACE) return S_OK;
    if (FAILED(code) || !p_found) return E_FAIL;
    o_ole_sheet = InterfacePtr<CATICkeOleSheet>::adopt(static_cast<CATICkeOleSheet*>(p_found));
    return S_OK;
}

bool isFileModified(const CATICkeSheet_var& isp_sheet) {
    CATUnicodeString old_date;
    CATUnicodeString new_date;
    return isp_sheet->IsFileModified(old_date, new_date) == 1;
}

} // namespace vorntools
