#ifndef EMBEDDED_DOCUMENTS_PROFILES_H
#define EMBEDDED_DOCUMENTS_PROFILES_H

#include "embedded/Profile.h"

#include <optional>
#include <string>

namespace embedded {

/** The switches of a profile; none for a name of none. */
std::optional<Switches> switchesOf(const std::string& profile);

} // namespace embedded

#endif
