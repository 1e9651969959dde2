#ifndef CATIContainer_H
#define CATIContainer_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "sequence_CATBaseUnknown_ptr.h"

extern ExportedByCatia IID IID_CATIContainer;

/** What a document keeps its objects in. */
class ExportedByCatia CATIContainer : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Appends the objects of this container that answer an interface to a sequence, each with a reference for the
     * caller.
     * @return their number */
    virtual CATLONG32 ListMembersHere(const CATIdent iInterfaceID, SEQUENCE(CATBaseUnknown_ptr) & ioMembers) = 0;

protected:
    ~CATIContainer() override = default;
};

CATDeclareHandler(CATIContainer, CATBaseUnknown);

#endif
