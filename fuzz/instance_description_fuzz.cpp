// Instance descriptions. The input is the value up to its first NUL and then the description; without a NUL it is all
// description.

#include "VornToolsCommon.h"

#include "embedded/Accounting.h"
#include "embedded/Records.h"
#include "embedded/Session.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

struct VornToolsCommonTestAccess {
    static std::string processed(const std::string& value, const std::string& description, unsigned char mode) {
        CATUnicodeString text(description.data(), description.size());
        VornToolsCommon::processInstanceDescription(CATUnicodeString(value.data(), value.size()), text, mode);
        return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
    }
};

namespace {

constexpr unsigned char kSet = 0;
constexpr unsigned char kReplace = 1;

void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

using Access = VornToolsCommonTestAccess;

bool begins(const std::string& text, const std::string& beginning) {
    return text.compare(0, beginning.size(), beginning) == 0;
}
bool ends(const std::string& text, const std::string& end) {
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

void checkIdentity(const std::string& value, const std::string& description) {
    if (value.empty() || value == "BrokenIcon") return;
    const std::string line = "KETO_ID_" + value;
    const std::string set = Access::processed(value, description, kSet);
    const bool same = CATUnicodeString(set.data(), set.size()).Compare(CATUnicodeString(line.data(), line.size())) != 0;
    require(same || begins(set, line + "\n"), "a description without the identity that was set");
    if (value.find('\n') == std::string::npos)
        require(Access::processed(value, set, kSet) == set, "an identity that is set twice");

    const std::string replaced = Access::processed(value, description, kReplace);
    const bool has_keyword = value.find("KETO_ID_") != std::string::npos;
    require(begins(replaced, has_keyword ? value : line), "a description without the identity that replaces");
}

void checkMarker(const std::string& description) {
    const std::string broken = Access::processed("BrokenIcon", description, kSet);
    require(begins(broken, "BrokenIcon") || begins(broken, "SecondaryPart"), "a description without the marker");
    require(Access::processed("BrokenIcon", description, kReplace) == broken, "a marker that depends on the mode");

    const std::string removed = Access::processed("", description, kSet);
    require(removed.size() <= description.size(), "a removal that adds text");
    require(Access::processed("", description, kReplace) == removed, "a removal that depends on the mode");
}

/** The description without the carriage return at the end of each line. */
std::string withoutCarriageReturns(const std::string& description) {
    std::string result;
    for (std::size_t i = 0; i < description.size(); ++i) {
        const bool ends_line = i + 1 == description.size() || description[i + 1] == '\n';
        if (description[i] != '\r' || !ends_line) result += description[i];
    }
    return result;
}

void checkCleaning(const std::string& description) {
    CATUnicodeString text(description.data(), description.size());
    require(VornToolsCommon::cleanInstanceDescription(text) == S_OK, "a cleaning that fails");
    const std::string cleaned(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
    const std::string lines = withoutCarriageReturns(description);
    require(ends(lines, cleaned), "a cleaning that changes the user's lines");
    const auto dropped = lines.begin() + static_cast<std::ptrdiff_t>(lines.size() - cleaned.size());
    const auto dropped_ends = std::count(lines.begin(), dropped, '\n');
    require(dropped == lines.begin() || cleaned.empty() || *(dropped - 1) == '\n', "a line that is cut");
    require(dropped_ends <= 2, "more than two lines dropped");
    const bool own = begins(lines, "KETO_ID_") || begins(lines, "Context KETO_ID_") || begins(lines, "BBPC_ID_") ||
                     begins(lines, "BrokenIcon") || begins(lines, "IgnoreNode") || begins(lines, "SecondaryPart");
    require(own || cleaned == lines, "a line of the user's that was dropped");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    const std::size_t nul = bytes.find('\0');
    const std::string value = nul == std::string::npos ? std::string() : bytes.substr(0, nul);
    const std::string description = nul == std::string::npos ? bytes : bytes.substr(nul + 1);

    checkIdentity(value, description);
    checkMarker(description);
    checkCleaning(description);
    std::string name = bytes;
    const int type = VornToolsCommon::returnDocumentType(CATUnicodeString(name.data(), name.size()));
    require(type == -1 || (type >= 1 && type <= 12 && type != 6), "a type of document that does not exist");
    require(embedded::Accounting::get().takeBreaches().empty(), "a rule of the platform");
    require(embedded::Journal::get().open() == 0, "journal frames left open");
    embedded::Journal::get().clear();
    return 0;
}
