#ifndef VornToolsDummyPart_H
#define VornToolsDummyPart_H

#include "CATBaseUnknown.h"
#include "CATListOfCATBaseUnknown.h"
#include "CATListOfCATUnicodeString.h"
#include "CATMacForIUnknown.h"
#include "ExportedByVornTools.h"

class CATIProduct;

/**
 * Recognises dummy parts: empty files that the PDM hands out instead of real geometry. A file once recognised stays
 * recognised for the life of the one instance. No test fails: whatever goes wrong answers "no".
 *
 * @par Example
 * @snippet nodes.cpp VornToolsDummyPart
 */
class ExportedByVornTools VornToolsDummyPart : public CATBaseUnknown {
    CATDeclareClass;

public:
    /** "VornToolsDummyPart::", what the journal's names of the methods begin with. */
    static const CATUnicodeString _CteCLASS_NAME;

    VornToolsDummyPart(const VornToolsDummyPart&) = delete;
    VornToolsDummyPart& operator=(const VornToolsDummyPart&) = delete;

    /**
     * The one instance, made on first call. What it recognised is remembered until kill.
     * @return no reference is added; null when there is no memory
     */
    static VornToolsDummyPart* getInstance();
    /**
     * Ends the one instance; what it remembers is forgotten. A later getInstance makes a new one.
     * @return S_OK, also when there is none
     */
    static HRESULT kill();

    /**
     * Whether a file is a dummy part: remembered as one, or else as isAFileDummyPart finds it.
     * @param fullFileName compared with remembered names letter by letter; an empty one is no dummy part
     * @return 1 or 0
     */
    unsigned char isADummyPart(const CATUnicodeString& fullFileName);
    /**
     * Whether the document that a product shows is a dummy part; a product document never is.
     * @param product null is reported
     * @param useCache non-zero: a remembered name answers without looking at the file
     * @return 1 or 0
     */
    unsigned char isADummyPart(CATIProduct* product, unsigned char useCache);
    /**
     * Looks at the file: empty, and marked as a dummy part in its DAT file or, during an import or the creation of a
     * spreadsheet, of a part's kind. A dummy part is remembered.
     * @param fullFileName an empty one is reported
     * @return 1 or 0; a file that is not there is none
     */
    unsigned char isAFileDummyPart(const CATUnicodeString& fullFileName);
    /**
     * Whether one of some files is a dummy part; those behind the first one are not looked at.
     * @param files names; those without directory are completed with the environment's files directory
     * @param result 1 or 0
     * @return S_OK; E_FAIL for want of memory
     */
    HRESULT listOfFilesContainsADummyPart(const CATListValCATUnicodeString& files, unsigned char& result);
    /**
     * Whether one of some products shows a dummy part; those behind the first one are not looked at. Remembered names
     * count.
     * @param objects as selected; what is no product is reported and passed over
     * @param result 1 or 0
     * @return S_OK; E_FAIL for want of memory
     */
    HRESULT selectionContainsADummyPart(const CATListPtrCATBaseUnknown& objects, unsigned char& result);

protected:
    /** For getInstance; nothing is remembered. */
    VornToolsDummyPart();
    /** For kill. */
    ~VornToolsDummyPart() override;
    /**
     * Forgets what was remembered.
     * @return S_OK
     */
    HRESULT initClassVariables();
    /**
     * Forgets what was remembered.
     * @return S_OK
     */
    HRESULT releaseClassVariables();

private:
    static VornToolsDummyPart* _singleton;

    CATListValCATUnicodeString m_dummyParts; ///< files recognised so far
};

#endif
