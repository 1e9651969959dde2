#ifndef CATSessionServices_H
#define CATSessionServices_H

#include "CATDocumentsInSession.h"

/** The loaded documents; owned by the session, null is possible. No reference is added. */
ExportedByCatia const CATLISTP(CATDocument) * ListDocuments();

#endif
