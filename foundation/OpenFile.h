#ifndef FOUNDATION_OPEN_FILE_H
#define FOUNDATION_OPEN_FILE_H

#include "CATUnicodeString.h"

#include <cstdio>
#include <memory>

namespace vorntools {

struct CloseFile {
    void operator()(std::FILE* ip_file) const { std::fclose(ip_file); }
};

/** A file of the C runtime, closed by its end. */
using OpenFile = std::unique_ptr<std::FILE, CloseFile>;

/** Opens a file for reading its bytes; empty when that fails. Windows takes the name in 16-bit characters: one outside
 * the system's code page is found as well. */
OpenFile openForReading(const CATUnicodeString& i_name);

} // namespace vorntools

#endif
