#ifndef LINKS_IMPORT_CONTAINER_H
#define LINKS_IMPORT_CONTAINER_H

#include "links/ImportedElements.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vorntools {

/**
 * Reads the import container of a part: its object stream and its table of texts, laid out as docs/links.md says.
 * Damage ends the table early; without any input there is no container.
 * @param i_repository position of the repositories' name, which stands in the table
 */
ImportedElements readImportContainer(std::string_view i_image, std::size_t i_repository);

/** The symbol numbers that the import repositories of an image point to, in its order. Bytes that only look like a
 * repository count as one. */
std::vector<std::int32_t> repositorySymbols(std::string_view i_image);

} // namespace vorntools

#endif
