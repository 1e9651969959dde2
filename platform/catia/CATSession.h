#ifndef CATSession_H
#define CATSession_H

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"

/** The session: other interfaces are asked of it. */
class ExportedByCatia CATSession : public CATBaseUnknown {
public:
    /** The current session; no reference is added (Proposed: that), null while there is none. */
    static CATSession* GetPtrSession();

    /** Proposed: whole; written to the journal only. */
    virtual CATUnicodeString GetIdent() const = 0;

protected:
    ~CATSession() override = default;
};

#endif
