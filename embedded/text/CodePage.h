#ifndef EMBEDDED_TEXT_CODE_PAGE_H
#define EMBEDDED_TEXT_CODE_PAGE_H

#include <string>
#include <string_view>

namespace embedded {

/** UTF-8 of a text in the code page 1252. The five bytes that it leaves free are the control characters of that code.
 */
std::string fromCodePage(std::string_view bytes);
/** The opposite: '?' stands for a character that the code page lacks, and for a byte that is part of none. */
std::string toCodePage(std::string_view text);

} // namespace embedded

#endif
