#ifndef VornToolsString_H
#define VornToolsString_H

#include "CATBaseUnknown.h"
#include "CATUnicodeString.h"
#include "ExportedByVornTools.h"

/**
 * A string of bytes: any values, NUL included, never read as characters of an encoding (fromUTF8toUCS2 apart). Whole
 * document files are held in one and searched.
 *
 * Indices and counts are unsigned and start at 0. A search that finds nothing answers 0xFFFFFFFF, which reads as -1
 * through the int results. No operation fails and none writes to the journal: indices outside give 0 bytes, empty
 * results or "not found". Buffers come from the runtime allocator (malloc) and are followed by a NUL. Where memory for
 * a copy is refused the copy is the empty string.
 *
 * Searches step by `gap + 1` bytes: gap 0 reads plain text, gap 1 the low bytes of 16-bit little-endian text.
 */
class ExportedByVornTools VornToolsString : public CATBaseUnknown {
public:
    static const CATUnicodeString _CteCLASS_NAME;

    /** The empty string. */
    VornToolsString();
    /** Copies len bytes; a negative len and a null text give the empty string. */
    VornToolsString(char* text, int len);
    VornToolsString(const char* text, int len);
    /** Adopts a buffer of len + 1 bytes, NUL terminated, that came from malloc; the string frees it. */
    VornToolsString(int len, char* buffer);
    /** Copies the length, but the bytes only up to the first NUL: all behind it become NUL. Kept because callers hold
     * texts whose tail behind a NUL is noise; assignment copies every byte. */
    VornToolsString(const VornToolsString& other);
    ~VornToolsString() override;

    /** Copies every byte. */
    VornToolsString& operator=(const VornToolsString& other);

    /** 1 when length and every byte agree, else 0. */
    int operator==(const VornToolsString& other) const;
    /** The same as operator==; it is no ordering. */
    int compare(const VornToolsString& other) const;
    /** The byte at i; 0 at the length and beyond. */
    char operator[](unsigned int i) const;
    unsigned int size() const;
    /** A NUL-terminated copy that the caller frees with free; null when there is no memory for it. */
    char* get_string() const;
    /** The bytes at start, start + gap + 1, ... through end, as a new string that the caller deletes: as many as whole
     * steps fit between start and min(end + 1, size()). Empty when start is outside or beyond end. */
    VornToolsString* subString(unsigned int start, unsigned int end, unsigned int gap) const;

    /** First position from + n * (gap + 1) at which the pattern stands, its whole span (length * (gap + 1)) within
     * from..to. An empty pattern is never found. */
    int indexOf(const VornToolsString& pattern, unsigned int from, unsigned int to, unsigned int gap) const;
    /**
     * Boyer-Moore search with the caller's tables.
     * @param suffixTable good-suffix shift for a mismatch at each pattern position
     * @param charTable 256 entries: distance from the pattern's end to the last occurrence of a byte, the pattern's
     * length for bytes that do not occur
     * The low 32 bits of each entry count, signed. A range too short for the pattern's span (length * (gap + 1)), an
     * empty pattern, and a shift that does not lead on end the search without a result.
     */
    int indexOf(const VornToolsString& pattern, const long long* suffixTable, const long long* charTable,
                unsigned int from, unsigned int to, unsigned int gap) const;
    /** Last position at which the pattern stands and ends at or before `from`; 0xFFFFFFFF means the end. A `from` at or
     * beyond the length finds nothing. */
    int lastIndexOf(const VornToolsString& pattern, unsigned int from) const;
    /** Mirror of the Boyer-Moore search: start of the last window within lower..upper. The window ends at the pattern's
     * last byte, no gap behind it; a mismatch moves it down, so the tables are those of the mirrored pattern:
     * suffixTable the shift for a mismatch at each position, charTable the distance from the pattern's beginning to the
     * first occurrence of a byte. */
    int lastIndexOf(const VornToolsString& pattern, const long long* suffixTable, const long long* charTable,
                    unsigned int upper, unsigned int lower, unsigned int gap) const;
    /** First index at which the two differ, or the shorter length when one begins the other; 0 for an empty string. */
    unsigned int indexOfFirstDifferentChar(const VornToolsString& other) const;

    /** Replaces every occurrence, left to right, none overlapping. An empty pattern replaces nothing; a result that is
     * too long for the memory or for a string leaves the text as it is. Both arguments may be this string. */
    void replaceAll(const VornToolsString& pattern, const VornToolsString& replacement);
    /** Deletes a. Kept because callers hand their string over here: the joined text is not given back, and a must not
     * be used afterwards. */
    void concat(VornToolsString* a, const VornToolsString& b);
    /** The text, read as UTF-8, in the platform's 8-bit encoding, as a new string that the caller deletes. */
    VornToolsString* fromUTF8toUCS2() const;

    /** The bytes, for reading in place; valid until the string changes. */
    const char* bytes() const { return m_buffer; }

private:
    unsigned int m_length;
    char* m_buffer;
};

#endif
