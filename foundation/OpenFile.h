#ifndef FOUNDATION_OPEN_FILE_H
#define FOUNDATION_OPEN_FILE_H

#include "CATUnicodeString.h"

#include <cstdio>
#include <memory>

namespace vorntools {

struct CloseFile {
    void operator()(std::FILE* ip_file) const { std::fclose(ip_file); }
};
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

/**
 * As fopen, but by the characters of the name: the 8-bit form has none for those outside the code page, and on Windows
 * ends at 260. Null for a name that holds a NUL, which would be cut to that of another file.
 */
OpenFile openFile(const CATUnicodeString& i_name, const char* i_mode);

/** As remove, by the characters of the name. @return whether the file was there and is gone */
bool removeFile(const CATUnicodeString& i_name);

} // namespace vorntools

#endif
