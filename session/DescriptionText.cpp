#include "session/DescriptionText.h"

#include "foundation/Texts.h"

#include "CATListOfCATUnicodeString.h"
#include "UTILString.h"

#include <initializer_list>

namespace vorntools {

namespace {

constexpr const char* kContextIdentity = "Context KETO_ID_";

/** Removes a marker from a description that begins with it. Kept because descriptions rely on it: in a text of several
 * lines that is the first place where the word ends a line, which need not be the first line. */
void removeMarker(CATUnicodeString& io_description, const CATUnicodeString& i_marker) {
    if (!beginsWith(io_description, i_marker)) return;
    const bool has_lines = contains(io_description, kLineEnd);
    io_description.ReplaceSubString(has_lines ? i_marker + kLineEnd : i_marker, "");
}

void removeCarriageReturn(CATUnicodeString& io_line) {
    if (endsWith(io_line, "\r")) io_line = io_line.SubString(0, io_line.GetLengthInChar() - 1);
}

bool isMarker(const CATUnicodeString& i_line) {
    return i_line == kBrokenIcon || i_line == kIgnoreNode || i_line == kSecondaryPart;
}

bool isIdentity(const CATUnicodeString& i_line) {
    return beginsWith(i_line, kIdentity) || beginsWith(i_line, kContextIdentity);
}

/** How many characters at the front an ignore marker takes the place of. */
int countReplacedByIgnoreMarker(const CATUnicodeString& i_description) {
    for (const CATUnicodeString marker : {kBrokenIcon, kSecondaryPart})
        if (beginsWith(i_description, marker)) return marker.GetLengthInChar();
    if (!beginsWith(i_description, kIdentity)) return 0;
    const int line_end = i_description.SearchSubString(kLineEnd);
    return line_end < 0 ? i_description.GetLengthInChar() : line_end;
}

/** How many lines at the front are the integration's own. Kept because users see the rest: an identity behind a marker
 * is not among them. */
int countOwnLines(const CATListValCATUnicodeString& i_lines) {
    if (i_lines.Size() == 0) return 0;
    if (isIdentity(i_lines[1])) return i_lines.Size() > 1 && beginsWith(i_lines[2], kSecondIdentity) ? 2 : 1;
    return beginsWith(i_lines[1], kSecondIdentity) || isMarker(i_lines[1]) ? 1 : 0;
}

CATUnicodeString joinLines(const CATListValCATUnicodeString& i_lines, int i_first) {
    CATUnicodeString text;
    for (int i = i_first; i <= i_lines.Size(); ++i) {
        if (i > i_first) text.Append(kLineEnd);
        text.Append(i_lines[i]);
    }
    return text;
}

} // namespace

CATUnicodeString withFirstLine(const CATUnicodeString& i_line, const CATUnicodeString& i_description) {
    CATUnicodeString text = i_line + kLineEnd;
    text.Append(i_description);
    return text;
}

void markAsBroken(CATUnicodeString& io_description) {
    if (beginsWith(io_description, kBrokenIcon) || beginsWith(io_description, kSecondaryPart)) return;
    if (!contains(io_description, kIdentity)) {
        io_description = io_description.IsNull() ? kBrokenIcon : withFirstLine(kBrokenIcon, io_description);
        return;
    }
    const int line_end = io_description.SearchSubString(kLineEnd);
    if (line_end < 0) {
        io_description = kBrokenIcon;
        return;
    }
    io_description.ReplaceAll(io_description.SubString(0, line_end + 1), "");
    io_description = withFirstLine(kBrokenIcon, io_description);
}

void markAsIgnored(CATUnicodeString& io_description) {
    if (beginsWith(io_description, kIgnoreNode)) return;
    const int replaced = countReplacedByIgnoreMarker(io_description);
    const CATUnicodeString rest = behind(io_description, replaced);
    io_description = replaced == 0 && !rest.IsNull() ? withFirstLine(kIgnoreNode, rest) : kIgnoreNode + rest;
}

void removeIdentity(CATUnicodeString& io_description) {
    int found = io_description.SearchSubString(kBrokenIcon);
    if (found < 0) found = io_description.SearchSubString(kIdentity);
    if (found < 0) return;
    const int line_end = io_description.SearchSubString(kLineEnd, found);
    if (line_end < 0) return;
    io_description.ReplaceAll(io_description.SubString(found, line_end - found + 1), "");
}

bool setIdentityLine(CATUnicodeString& io_description, const CATUnicodeString& i_line) {
    const int line_end = io_description.SearchSubString(kLineEnd);
    if (line_end < 0 && io_description.Compare(i_line) != 0) return false;
    const bool has_identity = beginsWith(io_description, kIdentity);
    if (io_description.IsNull() || (has_identity && line_end < 0))
        io_description = i_line;
    else
        io_description = withFirstLine(i_line, has_identity ? behind(io_description, line_end + 1) : io_description);
    return true;
}

void replaceIdentity(CATUnicodeString& io_description, const CATUnicodeString& i_identity) {
    removeMarker(io_description, kBrokenIcon);
    removeMarker(io_description, kIgnoreNode);
    const CATUnicodeString line = contains(i_identity, kIdentity) ? i_identity : kIdentity + i_identity;
    const int line_end = io_description.SearchSubString(kLineEnd);
    const bool has_identity = beginsWith(io_description, kIdentity);
    if (io_description.IsNull() || (has_identity && line_end < 0))
        io_description = line;
    else if (has_identity)
        io_description.ReplaceAll(io_description.SubString(0, line_end), line);
    else
        io_description = withFirstLine(line, io_description);
}

void cleanDescription(CATUnicodeString& io_description) {
    CATListValCATUnicodeString lines;
    UTILString::split(io_description, kLineEnd, lines);
    for (int i = 1; i <= lines.Size(); ++i) removeCarriageReturn(lines[i]);
    io_description = joinLines(lines, countOwnLines(lines) + 1);
}

} // namespace vorntools
