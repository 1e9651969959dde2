#ifndef FOUNDATION_FILE_NAMES_H
#define FOUNDATION_FILE_NAMES_H

#include "UTILDLName.h"
#include "UTILFile.h"

namespace vorntools {

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
