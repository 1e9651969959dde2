// The section of parameters, their sets and what products have of properties.
#ifndef EMBEDDED_SESSION_FILE_PARAMETER_SECTION_H
#define EMBEDDED_SESSION_FILE_PARAMETER_SECTION_H

#include "CATICkeParm.h"
#include "embedded/session_file/SessionSections.h"

namespace embedded {

constexpr const char* kAccess[] = {"not_seen", "read_only", "write_only", "read_write", "user"};
constexpr int kUsualAccess = CATICkeParm::ReadWrite;

// Numbers stand as texts with a decimal point, so that not one digit is lost.

void readParameters(const JsonField& field, const SectionReader& reader);
Json writeParameters(Session& session);

} // namespace embedded

#endif
