#ifndef EMBEDDED_FILES_LOGICAL_NAMES_H
#define EMBEDDED_FILES_LOGICAL_NAMES_H

#include "CATUnicodeString.h"

#include <optional>
#include <string>

namespace embedded {

/** The name on disk of a name by logical directory, none when that is unknown. Any other name is the name itself. */
std::optional<std::string> physicalName(const std::string& name);

/** What a companion service looks for on disk: it knows logical names or does not, as the session's switches say. */
std::string diskName(const CATUnicodeString& name);

} // namespace embedded

#endif
