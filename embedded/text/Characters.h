#ifndef EMBEDDED_TEXT_CHARACTERS_H
#define EMBEDDED_TEXT_CHARACTERS_H

#include <cstddef>
#include <string>
#include <string_view>

namespace embedded {

// A character is a well-formed UTF-8 sequence or else one single byte. Because no well-formed sequence overlaps
// another, where a character begins can be told from its neighbourhood alone.

/** A byte that is part of no well-formed sequence is given this code plus the byte: no character has such a code. */
constexpr unsigned kUndecodable = 0xDC00;

/** One decoded character. */
struct Character {
    unsigned code = 0;
    std::size_t length = 0; ///< in bytes
};

/** The character at an offset below the text's size. */
Character characterAt(std::string_view text, std::size_t offset);

bool beginsCharacter(std::string_view text, std::size_t offset);
std::size_t countCharacters(std::string_view text);
bool isAscii(std::string_view text);
bool isWellFormed(std::string_view text);

/** Byte offset of the character at a position, or the text's size when the text is shorter. */
std::size_t offsetOf(std::string_view text, std::size_t position);
/** Byte offset of the character with `count` characters from it to the end, or 0 when the text is shorter. */
std::size_t offsetFromEnd(std::string_view text, std::size_t count);

/** Adds a character: its UTF-8 form, or the byte that it stands for. A code that is no character becomes U+FFFD. */
void appendCharacter(std::string& text, unsigned code);

/** UTF-8 from UTF-16. */
std::string fromUtf16(const unsigned short* units, std::size_t count);

// Letter case follows fixed tables (Latin, Greek, Cyrillic) and never the locale. A letter keeps its length in bytes.
unsigned toLower(unsigned code);
unsigned toUpper(unsigned code);

} // namespace embedded

#endif
