#ifndef VornToolsMask_H
#define VornToolsMask_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;

/**
 * The mask that a product shows in the tree: a number from 0 (none) to 10, whose bits the integration assigns. All
 * static. E_FAIL, reported, for null arguments and when the session, the product's specification object or the mask
 * manager is missing; what the mask manager refuses has its code. docs/masks.md tells what the bits mean.
 */
class ExportedByVornTools VornToolsMask {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** @param op_mask the mask of exactly this product; 0 on failure */
    static HRESULT getMask(CATIProduct* ipi_product, int* op_mask);

    /**
     * Gives a product a mask, or takes every mask off it for 0. A root product is left alone, with S_OK, unless the
     * environment wants it marked.
     * @param i_mark_dummy_parts non-zero: a dummy part is marked as one, whatever the mask says
     * @return also E_INVALIDARG, journalled, for a mask outside 0 to 10
     */
    static HRESULT setMask(CATIProduct* ipi_product, int i_mask_value, unsigned char i_mark_dummy_parts);

    /** Takes every mask off the reference that the product shows; masks of instances stay. */
    static HRESULT removeAllMasks(CATIProduct* ipi_product);
};

#endif
