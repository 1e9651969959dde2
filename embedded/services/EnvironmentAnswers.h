// What the managers of the companion libraries are made of: their answers are those of the session's environment.
#ifndef EMBEDDED_SERVICES_ENVIRONMENT_ANSWERS_H
#define EMBEDDED_SERVICES_ENVIRONMENT_ANSWERS_H

#include "CATUnicodeString.h"
#include "embedded/Environment.h"

#include <string>

namespace embedded {

const Environment& environment();

/** Answers of a manager's method; `site` is its failure point. */
unsigned char flag(const char* site, bool Environment::*field);
CATUnicodeString text(const char* site, std::string Environment::*field);

/** Whether the session lacks a manager. Those of the journal and of the error list are asked for everywhere: they have
 * no failure point. */
bool isMissing(const char* manager);
/** Whether getInstance() finds a manager; `site` is the failure point of asking for it. */
bool finds(const char* site, const char* manager);

} // namespace embedded

#endif
