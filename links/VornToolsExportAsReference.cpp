#include "VornToolsExportAsReference.h"

#include "foundation/Environment.h"
#include "foundation/Guarded.h"
#include "foundation/Texts.h"
#include "links/Ancestors.h"

using namespace vorntools;

const CATUnicodeString VornToolsExportAsReference::_CteCLASS_NAME("VornToolsExportAsReference::");

VornToolsExportAsReference::VornToolsExportAsReference() { initClassVariables(); }

HRESULT VornToolsExportAsReference::initClassVariables() {
    const JournalFrame frame(_CteCLASS_NAME, "initClassVariables");
    const auto take = [&] {
        m_referencePrefix = environmentText(&ENVManager::getReferencePrefix);
        m_referencePath = environmentText(&ENVManager::getReferencePath);
    };
    if (guarded(take)) return S_OK;
    m_referencePrefix = m_referencePath = "";
    return E_FAIL;
}

HRESULT VornToolsExportAsReference::isAnExportAsReference(CATUnicodeString fullFileName, unsigned char& result) {
    // The blank is kept because the journals are searched for this very name.
    const JournalFrame frame(_CteCLASS_NAME, " isAnExportAsReference");
    result = 0;
    const auto test = [&] {
        frame.write("test for component : %s", fullFileName);
        CATUnicodeString directory;
        CATUnicodeString file_name;
        if (m_referencePrefix.IsNull() || FAILED(splitFullName(fullFileName, directory, file_name))) return;
        if (!beginsWith(file_name, m_referencePrefix)) return;
        frame.write(" the Component is a REFERENCE by file_name");
        result = 1;
    };
    return guarded(test) ? S_OK : E_FAIL;
}

HRESULT VornToolsExportAsReference::hasAnEAR(CATIProduct* product, unsigned char& result) {
    const JournalFrame frame(_CteCLASS_NAME, "hasAnEAR");
    result = 0;
    if (!product) return frame.badInput("ip_product");
    const auto work = [&]() -> HRESULT {
        const auto is_reference = [&](CATIProduct*, const CATUnicodeString& i_file_name, unsigned char& o_answer) {
            return isAnExportAsReference(i_file_name, o_answer);
        };
        const HRESULT code = findAncestor(frame, product, is_reference, result);
        if (SUCCEEDED(code) && !result) frame.write("the element is NOT a child of an EAR");
        return code;
    };
    return guarded(work, E_FAIL);
}
