#ifndef TOOLS_VORNTOOLS_ARCHIVE_PATHS_H
#define TOOLS_VORNTOOLS_ARCHIVE_PATHS_H

// Paths as texts, of this system or stored on another one: both separators count everywhere.

#include <string>
#include <string_view>
#include <vector>

/** Names between separators; that in front of the first one, a root's, is empty. */
using PathParts = std::vector<std::string_view>;

constexpr bool isSeparator(char letter) { return letter == '/' || letter == '\\'; }
/** Neither a drive nor a separator in front. */
bool isRelativePath(std::string_view path);
PathParts partsOf(std::string_view path);
/** Of the folder that holds a file. */
PathParts partsOfFolder(std::string_view path);
std::string_view lastName(std::string_view path);
/** Without its last separator. */
std::string_view folderOfPath(std::string_view path);
/** Upper case made lower case, of ASCII and Latin-1 letters: names of files are compared so by those who look for one
 * that went astray. */
std::string folded(std::string_view text);
/** A full name in the form in which two names of one file are the same on this system. */
std::string fileKey(std::string_view fullName);

#endif
