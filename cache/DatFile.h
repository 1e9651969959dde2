#ifndef CACHE_DAT_FILE_H
#define CACHE_DAT_FILE_H

#include "foundation/JournalFrame.h"

#include "CATListOfCATUnicodeString.h"

class CATDocument;

namespace vorntools {

/** Lines of the DAT file of a document or, without one, of a name. The document's identifier only serves a check.
 * @param i_without_identifier journalled when the document does not tell it */
HRESULT readDatFile(const JournalFrame& i_frame, const CATUnicodeString& i_name, CATDocument* ip_document,
                    const char* i_without_identifier, CATListValCATUnicodeString& o_lines);

} // namespace vorntools

#endif
