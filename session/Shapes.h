// What a product tells of the files that show it. Nothing is loaded and nothing is reported; a success without a text,
// or with an empty one, counts as failure.
#ifndef SESSION_SHAPES_H
#define SESSION_SHAPES_H

#include "CATIAProduct.h"
#include "CATUnicodeString.h"

namespace vorntools {

/** Name of the representation that a product shows by default. */
HRESULT readDefaultShapeName(CATIAProduct& i_product, CATUnicodeString& o_name);
/** Path of the file behind a named representation. */
HRESULT readShapePath(CATIAProduct& i_product, const CATUnicodeString& i_shape_name, CATUnicodeString& o_path);
/** Path of the file behind the master representation. */
HRESULT readMasterShapePath(CATIAProduct& i_product, CATUnicodeString& o_path);

} // namespace vorntools

#endif
