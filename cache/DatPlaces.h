#ifndef CACHE_DAT_PLACES_H
#define CACHE_DAT_PLACES_H

// Where the DAT file of a document may stand.

#include "foundation/Environment.h"
#include "foundation/FileNames.h"

#include "UTILFile.h"

namespace vorntools {

constexpr const char* kDatSuffix = ".dat";

/** Whether a DAT file stands beside a document, which need not be there itself. */
inline bool hasDatFile(const CATUnicodeString& i_document) { return fileExists(i_document + kDatSuffix); }

/** Whether documents without a directory have their DAT file in the staging directory just now: users do not type part
 * numbers, and no command is running that makes the documents itself. */
inline bool stagingDirectoryCounts() {
    return !environmentSays(&ENVManager::get_catia_pn_manual_input) &&
           !processSays(&PROCManager::isCommandCreateSpreadsheet) && !processSays(&PROCManager::isCommandImport);
}

inline CATUnicodeString inStagingDirectory(const CATUnicodeString& i_rest) {
    return environmentText(&ENVManager::getStagingDirectory) + UTILFile::getPathSeparator() + i_rest;
}

/** Whether a DAT file waits in the staging directory for a document that has no file yet. */
inline bool isOnlyStaged(const CATUnicodeString& i_staged_document) {
    return hasDatFile(i_staged_document) && !fileExists(i_staged_document);
}

} // namespace vorntools

#endif
