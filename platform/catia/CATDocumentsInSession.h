#ifndef CATDocumentsInSession_H
#define CATDocumentsInSession_H

#include "CATCollec.h"
#include "CATDocument.h"

/** List of documents, positions from 1; adds no reference. */
CATLISTP_DECLARE(CATDocument);

#endif
