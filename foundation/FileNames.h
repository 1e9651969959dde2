#ifndef FOUNDATION_FILE_NAMES_H
#define FOUNDATION_FILE_NAMES_H

#include "foundation/Environment.h"

#include "CATUnicodeString.h"
#include "UTILDLName.h"
#include "UTILFile.h"

namespace vorntools {

/** Splits a full name. A success that gives neither part counts as failure, and a failure gives neither. */
inline HRESULT splitFullName(const CATUnicodeString& i_full_name, CATUnicodeString& o_directory,
                             CATUnicodeString& o_file_name) {
    HRESULT code = UTILFile::splitPathAndFileName(i_full_name, o_directory, o_file_name);
    if (SUCCEEDED(code) && o_directory.IsNull() && o_file_name.IsNull()) code = E_FAIL;
    if (FAILED(code)) o_directory = o_file_name = "";
    return code;
}

/** The file name of a full name, split in the same way. */
inline HRESULT fileNameOf(const CATUnicodeString& i_full_name, CATUnicodeString& o_file_name) {
    CATUnicodeString directory;
    return splitFullName(i_full_name, directory, o_file_name);
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

/** The same where the platform uses logical names; elsewhere a name is physical. */
inline HRESULT makePhysicalIfLogical(CATUnicodeString& io_name) {
    return environmentSays(&ENVManager::getCATIAIsUsingDLName) ? makePhysical(io_name) : S_OK;
}

/** The name under which the file services find a document: not all of them know logical names. A name that cannot be
 * made physical stays what it is. */
inline CATUnicodeString nameOnDisk(const CATUnicodeString& i_name) {
    CATUnicodeString name(i_name);
    makePhysicalIfLogical(name);
    return name;
}

/** Whether there is a file of a name, logical or not. */
inline bool fileExists(const CATUnicodeString& i_name) { return UTILFile::existingFile(nameOnDisk(i_name)) != 0; }

} // namespace vorntools

#endif
