#ifndef CATError_H
#define CATError_H

#include "CATBaseUnknown.h"

/** An error that the platform throws, as a pointer with a reference for the one who catches it. */
class ExportedByCatia CATError : public CATBaseUnknown {
protected:
    CATError(const char*, const char*) {}
    ~CATError() override = default;
};

/** A fault within the platform. */
class ExportedByCatia CATInternalError : public CATError {
public:
    CATInternalError(const char* iMsgId, const char* iMsgCatalog) : CATError(iMsgId, iMsgCatalog) {}
};

#endif
