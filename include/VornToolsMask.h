#ifndef VornToolsMask_H
#define VornToolsMask_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;

/**
 * The mask that a product shows in the tree: a number from 0 (none) to 10, whose bits the integration assigns. All
 * static. docs/masks.md tells what the bits mean.
 *
 * @par Example
 * @snippet nodes.cpp VornToolsMask
 */
class ExportedByVornTools VornToolsMask {
public:
    /** "VornToolsMask::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /**
     * Reads the mask of exactly this product, be it an instance or a reference.
     * @param ipi_product an instance or a reference
     * @param op_mask 0 on failure
     * @return S_OK; E_FAIL, reported, for null arguments and when the session, the product's specification object or
     * the mask manager is missing; what the mask manager refuses, reported, has its code
     */
    static HRESULT getMask(CATIProduct* ipi_product, int* op_mask);

    /**
     * Gives a product a mask, or takes every mask off it for 0. A root product is left alone, with S_OK, unless the
     * environment wants it marked.
     * @param ipi_product an instance or a reference
     * @param i_mask_value from 0 to 10
     * @param i_mark_dummy_parts non-zero: a dummy part is marked as one, whatever the mask says
     * @return as getMask; E_INVALIDARG, journalled, for a mask outside 0 to 10
     */
    static HRESULT setMask(CATIProduct* ipi_product, int i_mask_value, unsigned char i_mark_dummy_parts);

    /**
     * Takes every mask off the reference that the product shows; masks of instances stay.
     * @param ipi_product its reference has to be loaded
     * @return as getMask; E_FAIL, reported, without a reference
     */
    static HRESULT removeAllMasks(CATIProduct* ipi_product);
};

#endif
