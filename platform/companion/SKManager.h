#ifndef SKManager_H
#define SKManager_H

#include "CATErrorDef.h"
#include "ExportedByCatia.h"

/** The hosted workspace client. */
class ExportedByCatia SKManager {
public:
    /** Null where the client is not installed. Owned by the library. */
    static SKManager* getInstance();

    virtual unsigned char isOpen() = 0;
    virtual HRESULT openWindow() = 0;
    virtual HRESULT toFront() = 0;

protected:
    ~SKManager() = default;
};

#endif
