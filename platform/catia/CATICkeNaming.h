#ifndef CATICkeNaming_H
#define CATICkeNaming_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia const IID IID_CATICkeNaming;

/** A knowledgeware object that users see in the tree. */
class ExportedByCatia CATICkeNaming : public CATBaseUnknown {
    CATDeclareInterface;

public:
    /** Access of users. Other numbers than those of a parameter: see CATICkeParm. */
    enum UserAccessMode { NotSeen, ReadOnly, ReadWrite, User };

    virtual UserAccessMode UserAccess() const = 0;
    virtual void SetUserAccess(const UserAccessMode iMode) = 0;

protected:
    ~CATICkeNaming() override = default;
};

CATDeclareHandler(CATICkeNaming, CATBaseUnknown);

#endif
