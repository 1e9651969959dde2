#include "tools/vorntools/DatLines.h"

#include "tools/vorntools/Text.h"

#include "VornToolsCommon.h"

DatLines::DatLines(const std::string& document)
    : m_read(SUCCEEDED(VornToolsCommon::readDatTools(textOf(document), CATUnicodeString(), m_lines))) {}

std::string DatLines::behind(const char* tag) const {
    const int at = m_lines.Locate(tag);
    return at > 0 && at < m_lines.Size() ? bytesOf(m_lines[at + 1]) : std::string();
}

std::vector<std::string> DatLines::block(const std::string& tag) const {
    const int begin = m_lines.Locate(tag.c_str());
    const int end = begin > 0 ? m_lines.Locate(closing(tag).c_str(), begin) : 0;
    std::vector<std::string> lines;
    for (int i = begin + 1; i < end; ++i) lines.push_back(bytesOf(m_lines[i]));
    return lines;
}
