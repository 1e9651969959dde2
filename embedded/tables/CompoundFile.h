#ifndef EMBEDDED_TABLES_COMPOUND_FILE_H
#define EMBEDDED_TABLES_COMPOUND_FILE_H

#include <optional>
#include <string>
#include <string_view>

namespace embedded {

/** The content of a stream in a compound file: a file that is divided into sectors, chained by tables, and lists its
 * streams in a directory. None when there is no such stream or when the file does not hold together. */
std::optional<std::string> streamOf(std::string_view file, std::string_view name);

} // namespace embedded

#endif
