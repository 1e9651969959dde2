#ifndef EMBEDDED_FILES_FILE_NAMES_H
#define EMBEDDED_FILES_FILE_NAMES_H

#include <string>
#include <string_view>

namespace embedded {

// Names of files. A path splits at its last slash or backslash, whatever the system.

/** A storage name for looking it up: names that differ in letter case only give the same text. */
std::string foldedName(const std::string& name);

/** The file name of a path, behind its last separator. */
std::string_view fileNameOf(std::string_view path);
/** Text behind the last dot of the file name; empty when there is none. */
std::string suffixOf(std::string_view path);
bool hasDirectory(std::string_view path);

constexpr const char* kSeparators = "/\\";
bool isSeparator(char character);
/** Directory and name with one of the session's separators between them; an empty directory adds nothing. */
std::string joinedName(const std::string& directory, std::string_view name);

} // namespace embedded

#endif
