#ifndef SESSION_DESCRIPTION_TEXT_H
#define SESSION_DESCRIPTION_TEXT_H

#include "CATUnicodeString.h"

namespace vorntools {

// Rules of the text of an instance description: the integration's own lines stand in front, the user's text follows.
// They expect the identity in its plain form, without the context keyword; only cleaning takes both.

constexpr const char* kBrokenIcon = "BrokenIcon";
constexpr const char* kSecondaryPart = "SecondaryPart";
constexpr const char* kIgnoreNode = "IgnoreNode";
constexpr const char* kIdentity = "KETO_ID_";
constexpr const char* kSecondIdentity = "BBPC_ID_";
constexpr const char* kLineEnd = "\n";

inline bool contains(const CATUnicodeString& i_text, const CATUnicodeString& i_part) {
    return i_text.SearchSubString(i_part) >= 0;
}

/** A description with a line put in front. */
CATUnicodeString withFirstLine(const CATUnicodeString& i_line, const CATUnicodeString& i_description);
/** Marks a description as that of a broken link. The marker takes the place of the first line when the description
 * holds an identity; a broken or secondary part stays as it is. */
void markAsBroken(CATUnicodeString& io_description);
/** Removes the line of the broken marker, or failing that of the identity, from the keyword on and wherever the same
 * text stands again. Kept because descriptions rely on it: a line without a line feed behind it stays. */
void removeIdentity(CATUnicodeString& io_description);
/** Makes a line the identity line and leaves markers alone. @return false when it is the whole description already,
 * letter case ignored; nothing changes then */
bool setIdentityLine(CATUnicodeString& io_description, const CATUnicodeString& i_line);
/** Removes a broken and an ignore marker and sets the identity, which may bring its keyword along. */
void replaceIdentity(CATUnicodeString& io_description, const CATUnicodeString& i_identity);
/** Drops the integration's lines among the first two, and the carriage return at the end of each line. */
void cleanDescription(CATUnicodeString& io_description);

} // namespace vorntools

#endif
