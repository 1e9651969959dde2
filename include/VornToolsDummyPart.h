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
 */
class ExportedByVornTools VornToolsDummyPart : public CATBaseUnknown {
    CATDeclareClass;

public:
    static const CATUnicodeString _CteCLASS_NAME;

    VornToolsDummyPart(const VornToolsDummyPart&) = delete;
    VornToolsDummyPart& operator=(const VornToolsDummyPart&) = delete;

    /** The one instance, made on first call; no reference is added. */
    static VornToolsDummyPart* getInstance();
    /** Ends the one instance; what it remembers is forgotten. S_OK also when there is none. */
    static HRESULT kill();

    unsigned char isADummyPart(const CATUnicodeString& fullFileName);
    /** @param useCache non-zero: a remembered name answers without looking at the file */
    unsigned char isADummyPart(CATIProduct* product, unsigned char useCache);
    /** Looks at the file: empty, and marked as a dummy part in its DAT file or, during an import or the creation of a
     * spreadsheet, of a part's kind. A dummy part is remembered. */
    unsigned char isAFileDummyPart(const CATUnicodeString& fullFileName);
    /** Names without directory are completed with the files directory. */
    HRESULT listOfFilesContainsADummyPart(const CATListValCATUnicodeString& files, unsigned char& result);
    HRESULT selectionContainsADummyPart(const CATListPtrCATBaseUnknown& objects, unsigned char& result);

protected:
    VornToolsDummyPart();
    ~VornToolsDummyPart() override;
    HRESULT initClassVariables();
    HRESULT releaseClassVariables();

private:
    static VornToolsDummyPart* _singleton;

    CATListValCATUnicodeString m_dummyParts; ///< files recognised so far
};

#endif
