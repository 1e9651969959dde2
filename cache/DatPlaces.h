#ifndef CACHE_STAGING_DIRECTORY_H
#define CACHE_STAGING_DIRECTORY_H

#include "foundation/Environment.h"

namespace vorntools {

/** Whether documents without a directory have their DAT file in the staging directory just now: users do not type part
 * numbers, and no command is running that makes the documents itself. */
inline bool stagingDirectoryCounts() {
    return !environmentSays(&ENVManager::get_catia_pn_manual_input) &&
           !processSays(&PROCManager::isCommandCreateSpreadsheet) && !processSays(&PROCManager::isCommandImport);
}

} // namespace vorntools

#endif
