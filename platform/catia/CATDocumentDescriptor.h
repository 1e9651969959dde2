#ifndef CATDocumentDescriptor_H
#define CATDocumentDescriptor_H

#include "CATBaseUnknown.h"
#include "CATUuid.h"

/** What the session knows of a document. Proposed: whole; the library asks for it in one place only. */
class ExportedByCatia CATDocumentDescriptor : public CATBaseUnknown {
public:
    virtual CATUuid GetUuid() const = 0;

protected:
    ~CATDocumentDescriptor() override = default;
};

#endif
