#include "VornToolsCommon.h"

#include "VornToolsString.h"
#include "foundation/ByteNumbers.h"
#include "foundation/JournalFrame.h"

using namespace vorntools;

namespace {

constexpr unsigned int kWordSize = 4;

std::string_view viewOf(const VornToolsString& i_text) { return {i_text.bytes(), i_text.size()}; }

} // namespace

int VornToolsCommon::getInt(VornToolsString* ip_data, unsigned int i_offset, unsigned int i_byte_count,
                            unsigned int i_little_endian, unsigned int i_gap) {
    const JournalFrame frame(_CteCLASS_NAME, "getInt");
    if (!ip_data || i_byte_count < 1 || i_byte_count > kWordSize) return 0;
    return numberAt(viewOf(*ip_data), i_offset, i_byte_count, i_little_endian != 0, std::size_t{i_gap} + 1);
}

unsigned int VornToolsCommon::isLittleEndian(VornToolsString* ip_data, int i_offset) {
    const JournalFrame frame(_CteCLASS_NAME, "isLittleEndian");
    if (!ip_data) return 0;
    return isLittleEndianAt(viewOf(*ip_data), static_cast<unsigned int>(i_offset)) ? 1 : 0;
}

int VornToolsCommon::stringToInt(VornToolsString* ip_text, int* op_value) {
    const JournalFrame frame(_CteCLASS_NAME, "stringToInt");
    if (op_value) *op_value = 0;
    if (!ip_text || !op_value) return -1;
    *op_value = leadingNumber(viewOf(*ip_text));
    return 0;
}
