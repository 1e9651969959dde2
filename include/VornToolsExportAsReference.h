#ifndef VornToolsExportAsReference_H
#define VornToolsExportAsReference_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;

/** Recognises export-as-reference components: those whose files come from the reference library. */
class ExportedByVornTools VornToolsExportAsReference {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    VornToolsExportAsReference();

    /** Reads prefix and path of the reference library anew. */
    HRESULT initClassVariables();

    /** Whether the file's name begins with the reference prefix (an empty prefix begins none). S_OK, but E_FAIL for
     * want of memory. */
    HRESULT isAnExportAsReference(CATUnicodeString fullFileName, unsigned char& result);
    /** Whether an ancestor of the product is one; the product itself does not count. */
    HRESULT hasAnEAR(CATIProduct* product, unsigned char& result);

private:
    CATUnicodeString m_referencePrefix;
    CATUnicodeString m_referencePath;
};

#endif
