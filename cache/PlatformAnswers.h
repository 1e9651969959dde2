#ifndef CACHE_PLATFORM_ANSWERS_H
#define CACHE_PLATFORM_ANSWERS_H

#include "ENVManager.h"
#include "PROCManager.h"
#include "UTILDLName.h"
#include "UTILFile.h"

namespace vorntools {

/** A switch of the environment; off without a manager. */
inline bool environmentSays(unsigned char (ENVManager::*i_question)()) {
    ENVManager* const p_environment = ENVManager::getInstance();
    return p_environment && (p_environment->*i_question)() != 0;
}

/** A text of the environment; empty without a manager. */
inline CATUnicodeString environmentText(CATUnicodeString (ENVManager::*i_question)()) {
    ENVManager* const p_environment = ENVManager::getInstance();
    return p_environment ? (p_environment->*i_question)() : CATUnicodeString();
}

/** What the integration is doing; nothing without a manager. */
inline bool processSays(unsigned char (PROCManager::*i_question)()) {
    PROCManager* const p_process = PROCManager::getInstance();
    return p_process && (p_process->*i_question)() != 0;
}

/** Whether documents without a directory have their DAT file in the staging directory just now: users do not type part
 * numbers, and no command is running that makes the documents itself. */
inline bool stagingDirectoryCounts() {
    return !environmentSays(&ENVManager::get_catia_pn_manual_input) &&
           !processSays(&PROCManager::isCommandCreateSpreadsheet) && !processSays(&PROCManager::isCommandImport);
}

/** Splits a full name; a success that gives neither part counts as failure. */
inline HRESULT splitFullName(const CATUnicodeString& i_full_name, CATUnicodeString& o_directory,
                             CATUnicodeString& o_file_name) {
    const HRESULT code = UTILFile::splitPathAndFileName(i_full_name, o_directory, o_file_name);
    return SUCCEEDED(code) && o_directory.IsNull() && o_file_name.IsNull() ? E_FAIL : code;
}

/** Replaces a logical name by its path on disk. A success without a path counts as failure; the name then stays. */
inline HRESULT makePhysical(CATUnicodeString& io_name) {
    CATUnicodeString physical;
    const HRESULT code = UTILDLName::getPhysicalPathFromDLName(io_name, physical);
    if (FAILED(code)) return code;
    if (physical.IsNull()) return E_FAIL;
    io_name = physical;
    return code;
}

} // namespace vorntools

#endif
