#ifndef LINKS_IMPORT_CONTAINER_H
#define LINKS_IMPORT_CONTAINER_H

#include "links/ImportedElements.h"

#include <cstddef>
#include <string_view>

namespace vorntools {

/**
 * Reads the import container of a part: its object stream and its table of texts, laid out as docs/links.md says.
 * Damage ends the table early; without any input there is no container.
 * @param i_repository position of the repositories' name, which stands in the table
 */
ImportedElements readImportContainer(std::string_view i_image, std::size_t i_repository);

} // namespace vorntools

#endif
