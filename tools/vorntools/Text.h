#ifndef TOOLS_VORNTOOLS_TEXT_H
#define TOOLS_VORNTOOLS_TEXT_H

#include "CATUnicodeString.h"

#include <cstddef>
#include <string>
#include <string_view>

std::string bytesOf(const CATUnicodeString& text);
CATUnicodeString textOf(const std::string& bytes);
/** Behind the last slash or backslash. */
std::string fileNameOf(const std::string& name);

/**
 * Bytes as text that any terminal, page or JSON reader takes. Bytes that are no UTF-8 and control characters appear as
 * "%" and two hexadecimal digits, and so does a "%" that two such digits follow. Everything else stays, so that
 * decoding the escapes gives exactly the bytes again.
 */
std::string printable(const std::string& bytes);
/** Whether a byte is a character by itself that printable() leaves as it is, as most are: looking at it tells. */
constexpr bool isPlainLetter(char byte) { return byte >= ' ' && byte < '\x7F' && byte != '%'; }
/** Appends what printable() makes of the character at a place. @return its bytes, at least 1 */
std::size_t appendPrintable(std::string_view bytes, std::size_t at, std::string& text);
/** The bytes of a printable text. */
std::string bytesOfPrintable(const std::string& text);

/** Characters of a printable text, which is columns for all but a few scripts. */
std::size_t widthOf(const std::string& text);

#endif
