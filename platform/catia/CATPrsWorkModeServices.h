#ifndef CATPrsWorkModeServices_H
#define CATPrsWorkModeServices_H

#include "CATErrorDef.h"
#include "CATIProduct.h"

/** How far a product is loaded. */
class ExportedByCatia CATPrsWorkModeServices {
public:
    enum WorkMode : int { WM_VISUALIZATION, WM_PRODUCT, WM_BREP, WM_DESIGN };

    /** @return E_FAIL when the product has no work mode */
    static HRESULT GetWorkMode(const CATIProduct_var& iProduct, WorkMode& oCurrentMode);
    /** May throw a CATError. */
    static HRESULT SetWorkMode(const CATIProduct_var& iProduct, WorkMode iNewMode);
};

#endif
