#ifndef PROPERTIES_DESIGN_TABLE_HELPERS_H
#define PROPERTIES_DESIGN_TABLE_HELPERS_H

#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"

#include "CATIProduct.h"
#include "CATLISTV_CATISpecObject.h"

#include <memory>
#include <utility>
#include <vector>

class CATDocument;

namespace vorntools {

/** Kinds of documents by the place where their design tables stand. */
enum class DocumentKind { Analysis, Process, Part, Product, Drawing, Other };

/** By the suffix of the document's name. */
DocumentKind kindOf(CATDocument* ip_document);

/** Appends the design tables that a document's root container has. @return E_FAIL, reported, without a container */
HRESULT appendTablesOfRootContainer(const JournalFrame& i_frame, CATDocument* ip_document,
                                    CATListValCATISpecObject_var& io_design_tables);

/** All products below one, in the order of the tree; what is no product is empty. */
inline std::vector<InterfacePtr<CATIProduct>> productsBelow(CATIProduct* ipi_root) {
    std::vector<InterfacePtr<CATIProduct>> found;
    std::vector<InterfacePtr<CATIProduct>> waiting = {InterfacePtr<CATIProduct>::share(ipi_root)};
    while (!waiting.empty()) {
        const auto sp_product = std::move(waiting.back());
        waiting.pop_back();
        if (sp_product.get() != ipi_root) found.push_back(sp_product);
        if (!sp_product) continue;
        const std::unique_ptr<CATListValCATBaseUnknown_var> children(sp_product->GetChildren("CATIProduct"));
        for (int i = children ? children->Size() : 0; i >= 1; --i)
            waiting.push_back(queryInterface<CATIProduct>(static_cast<CATBaseUnknown*>((*children)[i])));
    }
    return found;
}

} // namespace vorntools

#endif
