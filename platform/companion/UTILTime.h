#ifndef UTILTime_H
#define UTILTime_H

#include "CATUnicodeString.h"
#include "ExportedByCatia.h"

/** Times of files. It has no field: assignment has nothing to do. */
class ExportedByCatia UTILTime {
public:
    UTILTime() = default;
    UTILTime(const UTILTime&) = default;
    UTILTime& operator=(const UTILTime&) { return *this; }
    UTILTime& operator=(UTILTime&&) noexcept { return *this; }

    /** Compares the time of a file's last change with a date written as decimal seconds since 1970.
     * @return 0 when equal; -1 when the file is older, is missing or the date is no number; 1 when it is newer. */
    static int compareFileTime(const CATUnicodeString& iFileName, const CATUnicodeString& iDate);
};

#endif
