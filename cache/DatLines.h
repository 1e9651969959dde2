#ifndef CACHE_DAT_LINES_H
#define CACHE_DAT_LINES_H

#include "cache/DatTags.h"

#include "CATListOfCATUnicodeString.h"
#include "CATUnicodeString.h"

#include <array>
#include <cstddef>

namespace vorntools {

/** Lines first .. last, counted from 1. */
struct DatRange {
    int first = 1;
    int last = 0;

    int size() const { return last - first + 1; }
};

/**
 * The lines of a DAT file, read as fields; docs/dat-file.md describes them. The list stays the caller's and must
 * outlive this view. Of a tag that stands on several lines the first counts.
 */
class DatLines {
public:
    explicit DatLines(const CATListValCATUnicodeString& i_lines);

    bool has(DatTag i_tag) const { return mark(i_tag).opening != 0; }
    /** The line behind the opening tag; empty without one. */
    const CATUnicodeString& valueOf(DatTag i_tag) const { return lineOrEmpty(behind(i_tag), m_lines.Size()); }
    /** The same for a tag by its text; empty for a text that is no known tag. */
    const CATUnicodeString& valueOf(const CATUnicodeString& i_tag) const;
    /** The lines between opening and closing tag; none while one of the two is missing. */
    DatRange block(DatTag i_tag) const;

    /** Whether the file has no tags for its single values, only an order. */
    bool isPositional() const { return m_positional; }
    /** Line i of the file itself, from 1; empty beyond its end. The three lines that name the version of a positional
     * file at its end belong to the reader, not to the file. */
    const CATUnicodeString& fileLine(int i_number) const { return lineOrEmpty(i_number, m_file_line_count); }
    /** The document file's date when the DAT file was written, in either layout. */
    const CATUnicodeString& localLastModDate() const;

    /** Design-table mappings, each of its lines preceded by "!!!". @return false when the file has no block of them */
    bool designTableMaps(CATListValCATUnicodeString& o_maps) const;

private:
    struct Mark {
        int opening = 0; ///< line of the opening tag, 0 for none
        int closing = 0; ///< first line of the closing tag behind it, 0 for none
    };

    const Mark& mark(DatTag i_tag) const { return m_marks[static_cast<std::size_t>(i_tag)]; }
    int behind(DatTag i_tag) const { return has(i_tag) ? mark(i_tag).opening + 1 : 0; }
    const CATUnicodeString& lineOrEmpty(int i_number, int i_count) const;
    void note(int i_number);
    int countFileLines() const;

    const CATListValCATUnicodeString& m_lines;
    std::array<Mark, kDatTagsInFiles> m_marks;
    bool m_positional;
    int m_file_line_count;
};

} // namespace vorntools

#endif
