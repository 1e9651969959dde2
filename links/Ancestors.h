#ifndef LINKS_ANCESTORS_H
#define LINKS_ANCESTORS_H

#include "foundation/FileNames.h"
#include "foundation/Guarded.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATIProduct.h"
#include "VornToolsCommon.h"

#include <utility>

namespace vorntools {

/**
 * Calls `visit(CATIProduct* ancestor, bool& stop)` for each product above the given one, from its parent to the root.
 * @return the code of the last getParent, or the negative one of a visit, which ends the walk; E_FAIL for a visit that
 * throws
 */
template <class Visit>
HRESULT forEachAncestor(CATIProduct* ipi_product, Visit&& i_visit) {
    auto sp_product = InterfacePtr<CATIProduct>::share(ipi_product);
    while (true) {
        InterfacePtr<CATIProduct> sp_parent;
        HRESULT code = sp_parent.receive(
            [&](CATIProduct*& o_parent) { return VornToolsCommon::getParent(sp_product.get(), o_parent); });
        if (FAILED(code) || !sp_parent) return code;
        bool stop = false;
        code = guarded([&] { return i_visit(sp_parent.get(), stop); }, E_FAIL);
        if (FAILED(code) || stop) return code;
        sp_product = std::move(sp_parent);
    }
}

/** File name, without directory, of the document that a product shows. */
inline HRESULT readFileName(const JournalFrame& i_frame, CATIProduct* ipi_product, CATUnicodeString& o_file_name) {
    CATDocument* p_document = nullptr;
    CATUnicodeString full_name;
    if (FAILED(VornToolsCommon::getDocumentFileName(ipi_product, p_document, full_name)))
        return i_frame.platformFailed("getDocumentFileName");
    CATUnicodeString directory;
    if (FAILED(splitFullName(full_name, directory, o_file_name))) return i_frame.platformFailed("splitPathAndFileName");
    return S_OK;
}

/**
 * Asks `test(ancestor, fileName, unsigned char& answer)` of each product above the given one, up to the first that
 * answers yes.
 * @return S_OK; the code of what failed, then nothing was found
 */
template <class Test>
HRESULT findAncestor(const JournalFrame& i_frame, CATIProduct* ipi_product, Test&& i_test, unsigned char& o_found) {
    o_found = 0;
    return forEachAncestor(ipi_product, [&](CATIProduct* ipi_ancestor, bool& o_stop) {
        CATUnicodeString file_name;
        HRESULT code = readFileName(i_frame, ipi_ancestor, file_name);
        if (SUCCEEDED(code)) code = i_test(ipi_ancestor, file_name, o_found);
        if (FAILED(code)) o_found = 0;
        o_stop = o_found != 0;
        return code;
    });
}

} // namespace vorntools

#endif
