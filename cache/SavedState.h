#ifndef CACHE_SAVED_STATE_H
#define CACHE_SAVED_STATE_H

#include "foundation/InterfacePtr.h"

#include "CATIADocument.h"

namespace vorntools {

/** Whether a document has unsaved changes. One that does not tell has them: nobody loses work to a wrong "saved". */
inline bool holdsChanges(const InterfacePtr<CATIADocument>& i_document) {
    CAT_VARIANT_BOOL saved = 0;
    return !i_document || FAILED(i_document->get_Saved(saved)) || saved == 0;
}

} // namespace vorntools

#endif
