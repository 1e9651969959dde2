#ifndef LINKS_ANCESTORS_H
#define LINKS_ANCESTORS_H

#include "foundation/FileNames.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"
#include "foundation/Texts.h"

#include "CATIProduct.h"
#include "VornToolsCommon.h"

#include <utility>

namespace vorntools {

/** File name, without directory, of the document that a product shows. */
inline HRESULT readFileName(const JournalFrame& i_frame, CATIProduct* ipi_product, CATUnicodeString& o_file_name) {
    CATDocument* p_document = nullptr;
    CATUnicodeString full_name;
    if (FAILED(VornToolsCommon::getDocumentFileName(ipi_product, p_document, full_name)))
        return i_frame.callFailed("getDocumentFileName");
    CATUnicodeString directory;
    if (FAILED(splitFullName(full_name, directory, o_file_name))) return i_frame.callFailed("splitPathAndFileName");
    return S_OK;
}

/**
 * Asks `test(product, fileName, unsigned char& answer)` of each product above the given one, from its parent to the
 * root, up to the first that answers yes.
 * @return S_OK; the code of what failed, then nothing was found
 */
template <class Test>
HRESULT findAncestor(const JournalFrame& i_frame, CATIProduct* ipi_product, Test&& i_test, unsigned char& o_found) {
    auto sp_product = InterfacePtr<CATIProduct>::share(ipi_product);
    o_found = 0;
    while (true) {
        InterfacePtr<CATIProduct> sp_parent;
        const auto get_parent = [&](CATIProduct*& o_parent) {
            return VornToolsCommon::getParent(sp_product.get(), o_parent);
        };
        if (FAILED(sp_parent.receive(get_parent))) return i_frame.callFailed("getParent");
        if (!sp_parent) return S_OK;

        CATUnicodeString file_name;
        HRESULT code = readFileName(i_frame, sp_parent.get(), file_name);
        if (SUCCEEDED(code)) code = i_test(sp_parent.get(), file_name, o_found);
        if (FAILED(code)) o_found = 0;
        if (FAILED(code) || o_found) return code;
        sp_product = std::move(sp_parent);
    }
}

} // namespace vorntools

#endif
