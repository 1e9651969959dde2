#ifndef PROPERTIES_DESIGN_TABLE_SOURCES_H
#define PROPERTIES_DESIGN_TABLE_SOURCES_H

#include "foundation/JournalFrame.h"

#include "CATLISTV_CATISpecObject.h"

class CATDocument;

namespace vorntools {

/** Kinds of documents by the place where their design tables stand. */
enum class DocumentKind { Analysis, Process, Part, Product, Drawing, Other };

/** By the suffix of the document's name. */
DocumentKind kindOf(CATDocument* ip_document);

/** Appends the design tables that a document's root container has. One that is no specification object is reported and
 * left out. @return E_FAIL, reported, without a container */
HRESULT appendTablesOfRootContainer(const JournalFrame& i_frame, CATDocument* ip_document,
                                    CATListValCATISpecObject_var& io_design_tables);

} // namespace vorntools

#endif
