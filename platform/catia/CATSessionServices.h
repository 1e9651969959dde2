#ifndef CATSessionServices_H
#define CATSessionServices_H

#include "CATDocumentsInSession.h"
#include "CATSession.h"

/** Makes a session. @param oSession no reference is added. @return S_OK, S_FALSE when one of that name exists, E_FAIL
 */
ExportedByCatia HRESULT Create_Session(char* iSessionName, CATSession*& oSession);

/** The loaded documents; owned by the session, null is possible. No reference is added. */
ExportedByCatia const CATLISTP(CATDocument) * ListDocuments();

/** Takes back one of the locks that keep a document open. What nobody holds any more, not even a window, closes. */
ExportedByCatia HRESULT CATUnLockDocument(CATDocument& iDocument);

#endif
