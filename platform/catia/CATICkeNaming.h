#ifndef CATICkeNaming_H
#define CATICkeNaming_H

#include "CATBaseUnknown.h"
#include "CATMacForIUnknown.h"
#include "CATUnicodeString.h"

extern ExportedByCatia IID IID_CATICkeNaming;

/** A knowledgeware object that users see in the tree. */
class ExportedByCatia CATICkeNaming : public CATBaseUnknown {
    CATDeclareInterface;

protected:
    ~CATICkeNaming() override = default;
};

CATDeclareHandler(CATICkeNaming, CATBaseUnknown);

#endif
