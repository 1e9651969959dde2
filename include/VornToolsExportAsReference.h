#ifndef VornToolsExportAsReference_H
#define VornToolsExportAsReference_H

#include "CATErrorDef.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

class CATIProduct;

/**
 * Recognises export-as-reference components: those whose files come from the reference library.
 *
 * @par Example
 * @snippet nodes.cpp VornToolsExportAsReference
 */
class ExportedByVornTools VornToolsExportAsReference {
public:
    /** "VornToolsExportAsReference::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** Takes prefix and path of the reference library from the environment. */
    VornToolsExportAsReference();

    /**
     * Takes prefix and path of the reference library from the environment anew.
     * @return S_OK; E_FAIL for want of memory: no file comes from it then
     */
    HRESULT initClassVariables();

    /**
     * Whether a file comes from the reference library, by its name.
     * @param fullFileName with or without directory
     * @param result 1 when the file's name begins with the reference prefix, letter case included; an empty prefix
     * begins none
     * @return S_OK; E_FAIL for want of memory
     */
    HRESULT isAnExportAsReference(CATUnicodeString fullFileName, unsigned char& result);
    /**
     * Whether an ancestor of a product comes from the reference library; the product itself does not count.
     * @param product null is reported
     * @param result 1 or 0; 0 on failure
     * @return S_OK; E_FAIL, reported, for a null product; else the code of what failed on the way to the root
     */
    HRESULT hasAnEAR(CATIProduct* product, unsigned char& result);

private:
    CATUnicodeString m_referencePrefix;
    CATUnicodeString m_referencePath;
};

#endif
