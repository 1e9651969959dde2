#include "cache/DatLines.h"

#include <string_view>

namespace vorntools {
namespace {

constexpr int kPositionOfLocalLastModDate = 8;

const CATUnicodeString kEmpty;
const CATUnicodeString kMapOpening("<DT_Map>");
const CATUnicodeString kMapClosing("</DT_Map>");

std::string_view bytesOf(const CATUnicodeString& i_text) {
    return {i_text.ConvertToChar(), static_cast<std::size_t>(i_text.GetLengthInByte())};
}

/** Index of the tag whose name stands in front of the closing bracket; kDatTagsInFiles when there is none. */
std::size_t indexOfTag(std::string_view i_name_and_bracket) {
    const auto is_tag = [&](std::size_t i_index) {
        return bytesOf(tagText(static_cast<DatTag>(i_index))).substr(1) == i_name_and_bracket;
    };
    std::size_t index = 0;
    while (index < kDatTagsInFiles && !is_tag(index)) ++index;
    return index;
}

} // namespace

DatLines::DatLines(const CATListValCATUnicodeString& i_lines) : m_lines(i_lines), m_marks() {
    for (int number = 1; number <= m_lines.Size(); ++number) note(number);
    m_positional = valueOf(DatTag::DatFileVersion) == CATUnicodeString("0");
    m_file_line_count = countFileLines();
}

void DatLines::note(int i_number) {
    std::string_view line = bytesOf(m_lines[i_number]);
    if (line.empty() || line.front() != '<' || line.back() != '>') return;
    const bool closing = line[1] == '/';
    line.remove_prefix(closing ? 2 : 1);
    const std::size_t index = indexOfTag(line);
    if (index == kDatTagsInFiles) return;
    Mark& mark = m_marks[index];
    if (!closing && !mark.opening) mark.opening = i_number;
    if (closing && mark.opening && !mark.closing) mark.closing = i_number;
}

int DatLines::countFileLines() const {
    const int count = m_lines.Size();
    const Mark& version = mark(DatTag::DatFileVersion);
    const bool appended = m_positional && version.opening == count - 2 && version.closing == count;
    return appended ? count - 3 : count;
}

const CATUnicodeString& DatLines::lineOrEmpty(int i_number, int i_count) const {
    return i_number >= 1 && i_number <= i_count ? m_lines[i_number] : kEmpty;
}

const CATUnicodeString& DatLines::valueOf(const CATUnicodeString& i_tag) const {
    const std::string_view tag = bytesOf(i_tag);
    const std::size_t index = tag.empty() || tag.front() != '<' ? kDatTagsInFiles : indexOfTag(tag.substr(1));
    return index == kDatTagsInFiles ? kEmpty : valueOf(static_cast<DatTag>(index));
}

const CATUnicodeString& DatLines::localLastModDate() const {
    return m_positional ? fileLine(kPositionOfLocalLastModDate) : valueOf(DatTag::LocalLastModDate);
}

DatRange DatLines::block(DatTag i_tag) const {
    const Mark& found = mark(i_tag);
    return found.closing ? DatRange{found.opening + 1, found.closing - 1} : DatRange();
}

bool DatLines::designTableMaps(CATListValCATUnicodeString& o_maps) const {
    o_maps.RemoveAll();
    const DatRange range = block(DatTag::DesignTableMaps);
    if (range.size() < 1) return false;
    bool inside = false;
    CATUnicodeString map;
    for (int number = range.first; number <= range.last; ++number) {
        const CATUnicodeString& line = m_lines[number];
        if (!inside) {
            inside = line == kMapOpening;
        } else if (line == kMapClosing) {
            o_maps.Append(map);
            map = "";
            inside = false;
        } else {
            map.Append("!!!").Append(line);
        }
    }
    return true;
}

} // namespace vorntools
