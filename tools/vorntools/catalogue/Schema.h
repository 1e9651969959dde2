#ifndef TOOLS_VORNTOOLS_CATALOGUE_SCHEMA_H
#define TOOLS_VORNTOOLS_CATALOGUE_SCHEMA_H

#include "tools/vorntools/catalogue/Database.h"

#include <cstdint>

namespace catalogue {

/** PRAGMA application_id: "VTct". */
constexpr std::int64_t kApplication = 0x56546374;
/** PRAGMA user_version: another one whenever a program of before would read nonsense. */
constexpr std::int64_t kVersion = 1;

/** Everything that docs/catalogue.md describes. Each statement ends with ";" and a line end. */
extern const char* const kSchema;

/** @throws DatabaseError for a file that is no catalogue, one of another version, or one that holds tables, views or
 * triggers of somebody else: asking it would run what they say */
void checkIsCatalogue(Database& database);

} // namespace catalogue

#endif
