#ifndef TOOLS_VORNTOOLS_CATALOGUE_SCHEMA_H
#define TOOLS_VORNTOOLS_CATALOGUE_SCHEMA_H

#include <cstdint>

namespace catalogue {

/** PRAGMA application_id: "VTct". */
constexpr std::int64_t kApplication = 0x56546374;
/** PRAGMA user_version: another one whenever a program of before would read nonsense. */
constexpr std::int64_t kVersion = 1;

/** Everything that docs/catalogue.md describes. */
extern const char* const kSchema;

} // namespace catalogue

#endif
