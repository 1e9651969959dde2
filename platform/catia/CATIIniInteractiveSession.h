#ifndef CATIIniInteractiveSession_H
#define CATIIniInteractiveSession_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATIIniInteractiveSession;

class CATIEditor;

/** What a user does with files, asked of the session. */
class ExportedByCatia CATIIniInteractiveSession : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Opens a file in a window. @param iFlagRead TRUE for reading only. @param oEditor its editor, released by the
     * caller. @return S_OK, or E_FAIL when it cannot be opened */
    virtual HRESULT Open(const CATUnicodeString& iCompleteName, const CATBoolean iFlagRead, CATIEditor** oEditor) = 0;

protected:
    ~CATIIniInteractiveSession() override = default;
};

CATDeclareHandler(CATIIniInteractiveSession, CATBaseUnknown);

#endif
