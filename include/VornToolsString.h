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
 *
 * @par Example
 * @snippet bytes.cpp VornToolsString
 */
class ExportedByVornTools VornToolsString : public CATBaseUnknown {
public:
    /** "VornToolsString::"; no method writes to the journal. */
    static const CATUnicodeString _CteCLASS_NAME;

    /** The empty string. */
    VornToolsString();
    /**
     * Copies bytes.
     * @param text need not end with a NUL; null gives the empty string
     * @param len bytes; a negative one gives the empty string
     */
    VornToolsString(char* text, int len);
    /**
     * Copies bytes, as the form for writable ones does.
     * @param text need not end with a NUL; null gives the empty string
     * @param len bytes; a negative one gives the empty string
     */
    VornToolsString(const char* text, int len);
    /**
     * Adopts a buffer: nothing is copied, and the string frees it.
     * @param len bytes of the text, without the NUL behind it
     * @param buffer len + 1 bytes from malloc, the last one NUL; null gives the empty string
     */
    VornToolsString(int len, char* buffer);
    /**
     * Copies the length, but the bytes only up to the first NUL: all behind it become NUL. Kept because callers hold
     * texts whose tail behind a NUL is noise; assignment copies every byte.
     * @param other it stays as it is
     */
    VornToolsString(const VornToolsString& other);
    /** Frees the buffer. */
    ~VornToolsString() override;

    /**
     * Copies every byte.
     * @param other may be this string
     * @return this string
     */
    VornToolsString& operator=(const VornToolsString& other);

    /**
     * Compares length and every byte.
     * @param other may hold any bytes
     * @return 1 when all agree, else 0
     */
    int operator==(const VornToolsString& other) const;
    /**
     * The same as operator==; it is no ordering.
     * @param other may hold any bytes
     * @return 1 when all bytes agree, else 0
     */
    int compare(const VornToolsString& other) const;
    /**
     * One byte.
     * @param i from 0
     * @return 0 at the length and beyond
     */
    char operator[](unsigned int i) const;
    /**
     * The length.
     * @return bytes, the NUL behind them left out
     */
    unsigned int size() const;
    /**
     * A copy of the bytes and the NUL behind them.
     * @return freed by the caller with free; null when there is no memory for it
     */
    char* get_string() const;
    /**
     * The bytes at start, start + gap + 1, ... through end: as many as whole steps fit between start and min(end + 1,
     * size()).
     * @param start first byte, from 0
     * @param end last byte that may be taken; 0xFFFFFFFF reaches to the end
     * @param gap bytes to leave out behind each one
     * @return a new string that the caller deletes; empty when start is outside or beyond end; null when
     * there is no memory for it
     */
    VornToolsString* subString(unsigned int start, unsigned int end, unsigned int gap) const;

    /**
     * Searches forwards.
     * @param pattern an empty one is never found
     * @param from first position, from 0; only positions from + n * (gap + 1) are tried. 0xFFFFFFFF finds nothing
     * @param to last byte that the pattern's whole span (length * (gap + 1)) may reach; 0xFFFFFFFF searches to the end
     * @param gap bytes of the text between two of the pattern
     * @return the first position; -1 when there is none
     */
    int indexOf(const VornToolsString& pattern, unsigned int from, unsigned int to, unsigned int gap) const;
    /**
     * Boyer-Moore search forwards with the caller's tables. The low 32 bits of each entry count, signed. A range too
     * short for the pattern's span (length * (gap + 1)), an empty pattern, and a shift that does not lead on end the
     * search without a result.
     * @param pattern what the tables were made of
     * @param suffixTable good-suffix shift for a mismatch at each pattern position
     * @param charTable 256 entries: distance from the pattern's end to the last occurrence of a byte, the pattern's
     * length for bytes that do not occur
     * @param from first position, from 0
     * @param to last byte that the pattern's span may reach
     * @param gap bytes of the text between two of the pattern
     * @return the first position; -1 when there is none
     */
    int indexOf(const VornToolsString& pattern, const long long* suffixTable, const long long* charTable,
                unsigned int from, unsigned int to, unsigned int gap) const;
    /**
     * Searches backwards, every position.
     * @param pattern an empty one is never found
     * @param from last byte of the last place that counts; 0xFFFFFFFF means the end. One at or beyond the length finds
     * nothing
     * @return the last position; -1 when there is none
     */
    int lastIndexOf(const VornToolsString& pattern, unsigned int from) const;
    /**
     * Mirror of the Boyer-Moore search. The window ends at the pattern's last byte, no gap behind it; a mismatch moves
     * it down, so the tables are those of the mirrored pattern.
     * @param pattern what the tables were made of
     * @param suffixTable shift for a mismatch at each position
     * @param charTable 256 entries: distance from the pattern's beginning to the first occurrence of a byte
     * @param upper last byte that a window may reach
     * @param lower first byte that a window may begin with
     * @param gap bytes of the text between two of the pattern
     * @return start of the last window within lower..upper; -1 when there is none
     */
    int lastIndexOf(const VornToolsString& pattern, const long long* suffixTable, const long long* charTable,
                    unsigned int upper, unsigned int lower, unsigned int gap) const;
    /**
     * Where two strings part.
     * @param other may hold any bytes
     * @return first index at which the two differ, or the shorter length when one begins the other; 0 for an empty
     * string
     */
    unsigned int indexOfFirstDifferentChar(const VornToolsString& other) const;

    /**
     * Replaces every occurrence, left to right, none overlapping. A result that is too long for the memory or for a
     * string leaves the text as it is.
     * @param pattern an empty one replaces nothing; may be this string
     * @param replacement any bytes; may be this string
     */
    void replaceAll(const VornToolsString& pattern, const VornToolsString& replacement);
    /**
     * Deletes a. Kept because callers hand their string over here: the joined text is not given back.
     * @param a deleted; must not be used afterwards
     * @param b not looked at
     */
    void concat(VornToolsString* a, const VornToolsString& b);
    /**
     * Decodes the bytes as UTF-8. The result is not UCS-2, whatever the name says: it is in the platform's 8-bit
     * encoding.
     * @return a new string that the caller deletes; what malformed bytes give is the platform's choice
     */
    VornToolsString* fromUTF8toUCS2() const;

    /**
     * The bytes, for reading in place.
     * @return valid until the string changes; null only where there was no memory for a buffer
     */
    const char* bytes() const { return m_buffer; }

private:
    unsigned int m_length;
    char* m_buffer;
};

#endif
