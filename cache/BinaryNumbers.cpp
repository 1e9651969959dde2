#include "VornToolsCommon.h"

#include "VornToolsString.h"
#include "foundation/JournalFrame.h"

#include <cstdint>
#include <limits>

using namespace vorntools;

namespace {

constexpr unsigned int kWordSize = 4;

/** The byte at a position, 0 outside. Positions are too wide to wrap. */
std::uint32_t byteAt(const VornToolsString& i_data, std::uint64_t i_position) {
    if (i_position >= i_data.size()) return 0;
    return static_cast<unsigned char>(i_data[static_cast<unsigned int>(i_position)]);
}

std::int32_t readNumber(const VornToolsString& i_data, std::uint64_t i_offset, unsigned int i_byte_count,
                        bool i_little_endian, std::uint64_t i_step) {
    std::uint32_t value = 0;
    for (unsigned int i = 0; i < i_byte_count; ++i) {
        const unsigned int significance = i_little_endian ? i : i_byte_count - 1 - i;
        value |= byteAt(i_data, i_offset + i * i_step) << (8 * significance);
    }
    return static_cast<std::int32_t>(value);
}

bool isBlank(char i_byte) { return i_byte == ' ' || (i_byte >= '\t' && i_byte <= '\r'); }

bool isDigit(char i_byte) { return i_byte >= '0' && i_byte <= '9'; }

/** Reads digits until another byte stands there or the number is beyond every int. */
int readDigits(const VornToolsString& i_text, unsigned int i_begin, bool i_negative) {
    constexpr std::int64_t largest = std::numeric_limits<int>::max();
    const std::int64_t limit = i_negative ? largest + 1 : largest;
    std::int64_t value = 0;
    for (unsigned int i = i_begin; isDigit(i_text[i]) && value <= limit; ++i) value = 10 * value + (i_text[i] - '0');
    if (value > limit) value = limit;
    return static_cast<int>(i_negative ? -value : value);
}

} // namespace

int VornToolsCommon::getInt(VornToolsString* ip_data, unsigned int i_offset, unsigned int i_byte_count,
                            unsigned int i_little_endian, unsigned int i_gap) {
    const JournalFrame frame(_CteCLASS_NAME, "getInt");
    if (!ip_data || i_byte_count < 1 || i_byte_count > kWordSize) return 0;
    return readNumber(*ip_data, i_offset, i_byte_count, i_little_endian != 0, std::uint64_t{i_gap} + 1);
}

unsigned int VornToolsCommon::isLittleEndian(VornToolsString* ip_data, int i_offset) {
    const JournalFrame frame(_CteCLASS_NAME, "isLittleEndian");
    if (!ip_data) return 0;
    const auto offset = static_cast<unsigned int>(i_offset);
    const std::int32_t little = readNumber(*ip_data, offset, kWordSize, true, 1);
    const std::int32_t big = readNumber(*ip_data, offset, kWordSize, false, 1);
    return big < 0 || (little >= 1 && little < big) ? 1 : 0;
}

int VornToolsCommon::stringToInt(VornToolsString* ip_text, int* op_value) {
    const JournalFrame frame(_CteCLASS_NAME, "stringToInt");
    if (op_value) *op_value = 0;
    if (!ip_text || !op_value) return -1;
    unsigned int i = 0;
    while (isBlank((*ip_text)[i])) ++i;
    const char sign = (*ip_text)[i];
    if (sign == '-' || sign == '+') ++i;
    *op_value = readDigits(*ip_text, i, sign == '-');
    return 0;
}
