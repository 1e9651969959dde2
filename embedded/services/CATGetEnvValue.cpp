#include "CATGetEnvValue.h"

#include "embedded/Failures.h"
#include "embedded/services/EnvironmentAnswers.h"
#include "embedded/text/TextBytes.h"

#include <cstdlib>
#include <cstring>

using namespace embedded;

CATLibStatus CATGetEnvValue(const char* iVarName, char** oVarValue) {
    if (oVarValue) *oVarValue = nullptr;
    if (fails("CATGetEnvValue") || !iVarName) return CATLibError;
    const auto& variables = environment().variables;
    const auto found = variables.find(fromEightBit(iVarName));
    const std::string given = found == variables.end() ? std::string() : toEightBit(found->second);
    const char* const value = found == variables.end() ? std::getenv(iVarName) : given.c_str();
    if (!value || !*value) return CATLibError;
    if (!oVarValue) return CATLibSuccess;
    const std::size_t size = std::strlen(value) + 1;
    *oVarValue = static_cast<char*>(std::malloc(size));
    if (!*oVarValue) return CATLibError;
    std::memcpy(*oVarValue, value, size);
    return CATLibSuccess;
}
