#ifndef PROPERTIES_DRAWING_PARAMETERS_H
#define PROPERTIES_DRAWING_PARAMETERS_H

#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

class CATDocument;
class CATIDrawing;

namespace vorntools {

/** The drawing of a document; empty when a step failed, which is reported. */
InterfacePtr<CATIDrawing> drawingOf(const JournalFrame& i_frame, CATDocument* ip_document);

} // namespace vorntools

#endif
