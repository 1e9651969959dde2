#ifndef CATUuid_H
#define CATUuid_H

#include "ExportedByCatia.h"

/** Universal identifier of 16 bytes: four 32-bit fields (network address, process, seconds, microseconds). */
class ExportedByCatia CATUuid {
public:
    /** Makes a new identifier. */
    CATUuid();
    /** From its text; a text of another form gives the null identifier. */
    explicit CATUuid(char* iText);
    /** The text: the four fields in lower-case hexadecimal without leading zeros, joined by "_"; the null identifier
     * is "0_0_0_0". @param oText the caller's buffer, at least 256 bytes. Proposed: the form and the size. */
    void UUID_to_chaine(char* oText);

private:
    unsigned char m_bytes[16];
};
static_assert(sizeof(CATUuid) == 16 && alignof(CATUuid) == 1, "the identifier crosses the boundary by layout");

#endif
