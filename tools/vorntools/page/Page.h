#ifndef TOOLS_VORNTOOLS_PAGE_PAGE_H
#define TOOLS_VORNTOOLS_PAGE_PAGE_H

#include <string_view>

/** The page's own text, before and behind what it tells: markup and style, then the script. Made from the files of this
 * folder when the program is built. */
std::string_view pageHead();
std::string_view pageTail();

#endif
