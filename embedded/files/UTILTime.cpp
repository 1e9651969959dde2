#include "UTILTime.h"
#include "embedded/files/LogicalNames.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/object/Answers.h"

#include <charconv>
#include <cstdint>

int UTILTime::compareFileTime(const CATUnicodeString& iFileName, const CATUnicodeString& iDate) {
    if (embedded::fails("UTILTime::compareFileTime")) return -1;
    const std::string written = embedded::toBytes(iDate);
    const char* const end = written.data() + written.size();
    long long date = 0;
    const std::from_chars_result read = std::from_chars(written.data(), end, date);
    if (read.ec != std::errc() || read.ptr != end) return -1;
    embedded::FileFacts facts;
    if (!embedded::examineFile(embedded::diskName(iFileName), facts)) return -1;
    // Dates are written down with 32 bits.
    if (facts.changed == date || static_cast<std::int32_t>(static_cast<std::uint32_t>(facts.changed)) == date) return 0;
    return facts.changed > date ? 1 : -1;
}
