#ifndef LINKS_LOGICAL_NAMES_H
#define LINKS_LOGICAL_NAMES_H

#include "CATUnicodeString.h"

namespace vorntools {

/**
 * Puts a full name into the form that the platform gives to documents in logical directories: three characters (0x01,
 * 0x02, backslash), the logical name, separator, rest of the name.
 *
 * The logical name is the first part of the directory when the session knows it under that name; else the one whose
 * directory is the name's own or lies above it. The longest of those counts; directories are compared exactly but for a
 * separator at the end. A drive path ("C:\..."), a network path, a name already in logical form, a name without a
 * directory and one that no logical name covers stay as they are.
 */
void makeLogical(CATUnicodeString& io_name);

} // namespace vorntools

#endif
