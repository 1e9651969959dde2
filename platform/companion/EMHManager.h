#ifndef EMHManager_H
#define EMHManager_H

#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

class TYPMapIntPVoid;

/** The integration's error list: numbered reports. */
class ExportedByCatia EMHManager {
public:
    /** The one list of the process, owned by the companion library; null is possible. */
    static EMHManager* getInstance();

    void writeMsg(const CATUnicodeString& iFunctionName, int iNumber, const CATUnicodeString& iArgument);
    TYPMapIntPVoid* get_error_list() const { return _error_list; }

    EMHManager(const EMHManager&) = delete;
    EMHManager& operator=(const EMHManager&) = delete;

private:
    EMHManager();
    ~EMHManager();

    TYPMapIntPVoid* _error_list;
};
static_assert(sizeof(EMHManager) == sizeof(void*), "the error list is the manager's first field");

#endif
