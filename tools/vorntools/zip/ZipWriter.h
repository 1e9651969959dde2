#ifndef TOOLS_VORNTOOLS_ZIP_ZIP_WRITER_H
#define TOOLS_VORNTOOLS_ZIP_ZIP_WRITER_H

// What the program and the library that writes ZIP files for it agree on.

#include <cstddef>

/** One file to put in. */
struct ZipItem {
    const char* file; ///< on disk
    const char* name; ///< in the ZIP file
};

/**
 * Writes a ZIP file, whole or not at all; a file that is there is not touched.
 * @param message receives why it failed @param size of that, its closing NUL counted
 * @return whether it was written
 */
using WriteZip = bool(const char* zipFile, const ZipItem* items, std::size_t count, char* message, std::size_t size);

#endif
