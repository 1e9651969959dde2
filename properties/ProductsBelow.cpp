#include "properties/ProductsBelow.h"

#include "foundation/InterfaceIds.h"

#include "CATLISTV_CATBaseUnknown.h"
#include "CATListOfCATBaseUnknown.h"

#include <memory>
#include <utility>

namespace vorntools {

namespace {

using Products = std::vector<InterfacePtr<CATIProduct>>;

/** Adds the children of a product to a stack, the first one on top. */
void pushChildren(CATIProduct* ipi_product, Products& io_stack) {
    const std::unique_ptr<CATListValCATBaseUnknown_var> children(ipi_product->GetChildren("CATIProduct"));
    for (int i = children ? children->Size() : 0; i >= 1; --i)
        io_stack.push_back(queryInterface<CATIProduct>(static_cast<CATBaseUnknown*>((*children)[i])));
}

} // namespace

std::vector<InterfacePtr<CATIProduct>> productsBelow(CATIProduct* ipi_root) {
    Products found;
    Products waiting;
    pushChildren(ipi_root, waiting);
    while (!waiting.empty()) {
        found.push_back(std::move(waiting.back()));
        waiting.pop_back();
        if (CATIProduct* const pi_product = found.back().get()) pushChildren(pi_product, waiting);
    }
    return found;
}

} // namespace vorntools
