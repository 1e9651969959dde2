#include "embedded/services/EnvironmentAnswers.h"

#include "embedded/Session.h"
#include "embedded/object/Answers.h"

#include <algorithm>

namespace embedded {

const Environment& environment() { return Session::current().environment(); }

unsigned char flag(const char* site, bool Environment::*field) { return !fails(site) && environment().*field ? 1 : 0; }

CATUnicodeString text(const char* site, std::string Environment::*field) {
    return fails(site) ? CATUnicodeString() : toText(environment().*field);
}

bool isMissing(const char* manager) {
    const auto& missing = environment().missingManagers;
    return std::find(missing.begin(), missing.end(), manager) != missing.end();
}

bool finds(const char* site, const char* manager) { return !fails(site) && !isMissing(manager); }

} // namespace embedded
