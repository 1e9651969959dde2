#ifndef TOOLS_VORNTOOLS_DAT_LINES_H
#define TOOLS_VORNTOOLS_DAT_LINES_H

#include "CATListOfCATUnicodeString.h"

#include <string>
#include <vector>

/**
 * The lines of a DAT file as they stand there. The cache's own answers are made for other questions: of a date it tells
 * the first line, of a file its full name, and it joins the lines of a mapping.
 */
class DatLines {
public:
    /** @param document its full name */
    explicit DatLines(const std::string& document);

    bool read() const { return m_read; }
    /** The line behind the first one that is the tag. */
    std::string behind(const char* tag) const;
    bool has(const char* tag) const { return m_lines.Locate(tag) > 0; }
    /** The lines between a tag and the closing one behind it; none without either. */
    std::vector<std::string> block(const std::string& tag) const;

    static std::string closing(const std::string& tag) { return "</" + tag.substr(1); }

private:
    CATListValCATUnicodeString m_lines;
    bool m_read;
};

#endif
