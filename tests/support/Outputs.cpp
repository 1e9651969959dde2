#include "tests/support/Outputs.h"

#include "embedded/Accounting.h"
#include "tests/support/Utf8.h"

std::string textOfOutput(const std::string& output) { return "'" + output + "'"; }

std::string textOfOutput(const CATUnicodeString& output) { return textOfOutput(toUtf8(output)); }

std::string textOfOutput(const VornToolsString& output) {
    return textOfOutput(std::string(output.bytes(), output.size()));
}

std::string textOfOutput(const CATBaseUnknown* output) {
    return output ? embedded::Accounting::nameOf(*output) : "null";
}

std::string textOfOutput(const CATBaseUnknown_var& output) {
    return textOfOutput(static_cast<const CATBaseUnknown*>(static_cast<CATBaseUnknown*>(output)));
}
