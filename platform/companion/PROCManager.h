#ifndef PROCManager_H
#define PROCManager_H

#include "ExportedByCatia.h"

/** What the integration is doing just now. */
class ExportedByCatia PROCManager {
public:
    /** The one manager of the process, owned by the companion library; null is possible. */
    static PROCManager* getInstance();

    virtual unsigned char isCommandCreateSpreadsheet() = 0;
    virtual unsigned char isCommandImport() = 0;
    virtual unsigned char isCommandBRR() = 0;
    virtual unsigned char isProcessLifeCycleFactory() = 0;
    virtual unsigned char isCommandHighlightItemRevision() = 0;
    /** The highlight command of the hosted workspace client. */
    virtual unsigned char isCommandHighlightInCATIASK() = 0;
    virtual unsigned char isCommandStateDetailsUpdate() = 0;
    /** 1 when the files of the status window are deleted once they are read. */
    virtual unsigned char manageDocumentsOfStatusWindowFileDeletion() = 0;
    /** 1 when properties whose name begins with "OEM" are not created. */
    virtual unsigned char ignoreOEMProperties() = 0;

protected:
    ~PROCManager() = default;
};

#endif
