#ifndef VornEnvConfig_H
#define VornEnvConfig_H

#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** Places of the integration's configuration files. */
class ExportedByCatia VornEnvConfig {
public:
    /** The one configuration of the process, owned by the companion library; null is possible. */
    static VornEnvConfig* getInstance();

    /** Full name of a configuration file; empty when it cannot be placed. The file need not exist. */
    virtual CATUnicodeString getEnvFullFilename(const CATUnicodeString& iFileName) = 0;

protected:
    ~VornEnvConfig() = default;
};

#endif
