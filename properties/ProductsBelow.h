#ifndef PROPERTIES_PRODUCTS_BELOW_H
#define PROPERTIES_PRODUCTS_BELOW_H

#include "foundation/InterfacePtr.h"

#include "CATIProduct.h"

#include <vector>

namespace vorntools {

/** All products below one, in the order of the tree; what is no product is empty. */
std::vector<InterfacePtr<CATIProduct>> productsBelow(CATIProduct* ipi_root);

} // namespace vorntools

#endif
