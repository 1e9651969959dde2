#ifndef IDispatch_H
#define IDispatch_H

#include "IUnknown.h"

/** Root of the automation interfaces. The integration never calls by name, so nothing is added here. */
class IDispatch : public IUnknown {
protected:
    ~IDispatch() = default;
};

#endif
