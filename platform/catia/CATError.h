#ifndef CATError_H
#define CATError_H

#include "CATBaseUnknown.h"

/** An error that the platform throws, as a pointer with a reference for the one who catches it. */
class ExportedByCatia CATError : public CATBaseUnknown {
protected:
    CATError() = default;
    ~CATError() override = default;
};

/** A fault within the platform. */
class ExportedByCatia CATInternalError : public CATError {
public:
    CATInternalError() = default;
};

#endif
