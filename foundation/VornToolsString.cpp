#include "VornToolsString.h"

#include "CATUnicodeString.h"
#include "foundation/Guarded.h"
#include "foundation/SearchKernel.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

const CATUnicodeString VornToolsString::_CteCLASS_NAME("VornToolsString::");

namespace {

using vorntools::notFound;

constexpr unsigned int noPosition = 0xFFFFFFFFU;

std::string_view viewOf(const VornToolsString& i_text) { return {i_text.bytes(), i_text.size()}; }

/** A buffer for so many bytes, the NUL behind them set; null when no string can hold them. */
char* allocate(std::uint64_t i_length) {
    if (i_length >= noPosition) return nullptr;
    char* const p_buffer = static_cast<char*>(std::malloc(static_cast<std::size_t>(i_length) + 1));
    if (p_buffer) p_buffer[i_length] = '\0';
    return p_buffer;
}

/** The same with the bytes copied. */
char* duplicate(std::string_view i_bytes) {
    char* const p_buffer = allocate(i_bytes.size());
    if (p_buffer && !i_bytes.empty()) std::memcpy(p_buffer, i_bytes.data(), i_bytes.size());
    return p_buffer;
}

int asResult(std::size_t i_position) { return static_cast<int>(static_cast<unsigned int>(i_position)); }

/** Shift that a Boyer-Moore table holds: the low half of the entry, signed. */
std::int64_t shiftAt(const long long* i_table, std::int64_t i_index) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(i_table[i_index]));
}
std::int64_t shiftFor(const long long* i_table, char i_byte) {
    return shiftAt(i_table, static_cast<unsigned char>(i_byte));
}

/** The step of i_shift strides; 0 when it does not lead on or leads beyond the room left. */
std::int64_t stepWithin(std::int64_t i_room, std::int64_t i_shift, std::int64_t i_stride) {
    return i_shift <= 0 || i_shift > i_room / i_stride ? 0 : i_shift * i_stride;
}

/** Bytes of the text after the replacement; 0 occurrences leave it as long as it is. */
std::uint64_t replacedLength(std::string_view i_text, std::string_view i_pattern, std::size_t i_replacement) {
    std::uint64_t length = i_text.size();
    for (std::size_t at = 0; (at = vorntools::search(i_text, i_pattern, at, notFound, 1)) != notFound;) {
        length = length - i_pattern.size() + i_replacement;
        at += i_pattern.size();
    }
    return length;
}

char* put(char* o_place, std::string_view i_bytes) { return std::copy(i_bytes.begin(), i_bytes.end(), o_place); }

} // namespace

VornToolsString::VornToolsString() : m_length(0), m_buffer(duplicate({})) {}

VornToolsString::VornToolsString(char* text, int len) : VornToolsString(static_cast<const char*>(text), len) {}

VornToolsString::VornToolsString(const char* text, int len)
    : m_length(text && len > 0 ? static_cast<unsigned int>(len) : 0), m_buffer(duplicate({text, m_length})) {
    if (!m_buffer) m_length = 0;
}

VornToolsString::VornToolsString(int len, char* buffer)
    : m_length(buffer && len > 0 ? static_cast<unsigned int>(len) : 0), m_buffer(buffer ? buffer : duplicate({})) {}

VornToolsString::VornToolsString(const VornToolsString& other)
    : CATBaseUnknown(other), m_length(other.m_length), m_buffer(duplicate(viewOf(other))) {
    if (!m_buffer) m_length = 0;
    char* const p_end = m_buffer + m_length;
    std::fill(std::find(m_buffer, p_end, '\0'), p_end, '\0');
}

VornToolsString::~VornToolsString() { std::free(m_buffer); }

VornToolsString& VornToolsString::operator=(const VornToolsString& other) {
    if (this == &other) return *this;
    std::free(m_buffer);
    m_buffer = duplicate(viewOf(other));
    m_length = m_buffer ? other.m_length : 0;
    return *this;
}

int VornToolsString::operator==(const VornToolsString& other) const { return viewOf(*this) == viewOf(other); }

int VornToolsString::compare(const VornToolsString& other) const { return *this == other; }

char VornToolsString::operator[](unsigned int i) const { return i < m_length ? m_buffer[i] : '\0'; }

unsigned int VornToolsString::size() const { return m_length; }

char* VornToolsString::get_string() const { return duplicate(viewOf(*this)); }

VornToolsString* VornToolsString::subString(unsigned int start, unsigned int end, unsigned int gap) const {
    if (start >= m_length || start > end) return new (std::nothrow) VornToolsString;
    const std::size_t stride = std::size_t{gap} + 1;
    const std::size_t stop = std::min<std::size_t>(std::size_t{end} + 1, m_length);
    const std::size_t count = (stop - start) / stride;
    char* const p_bytes = allocate(count);
    if (!p_bytes) return new (std::nothrow) VornToolsString;
    for (std::size_t i = 0; i < count; ++i) p_bytes[i] = m_buffer[start + i * stride];
    auto* const p_result = new (std::nothrow) VornToolsString(static_cast<int>(count), p_bytes);
    if (!p_result) std::free(p_bytes);
    return p_result;
}

int VornToolsString::indexOf(const VornToolsString& pattern, unsigned int from, unsigned int to,
                             unsigned int gap) const {
    if (from == noPosition) return asResult(notFound);
    return asResult(vorntools::search(viewOf(*this), viewOf(pattern), from, to, std::size_t{gap} + 1));
}

int VornToolsString::indexOf(const VornToolsString& pattern, const long long* suffixTable, const long long* charTable,
                             unsigned int from, unsigned int to, unsigned int gap) const {
    const std::int64_t count = pattern.m_length;
    const std::int64_t stride = std::int64_t{gap} + 1;
    if (from == noPosition || count == 0 || count > m_length / stride) return asResult(notFound);
    const std::int64_t bound = (to < m_length ? std::int64_t{to} + 1 : m_length) - stride * count;
    std::int64_t pos = from;
    while (pos <= bound) {
        std::int64_t j = count - 1;
        while (j >= 0 && m_buffer[pos + j * stride] == pattern.m_buffer[j]) --j;
        if (j < 0) return static_cast<int>(pos);
        const std::int64_t by_byte = j + 1 + shiftFor(charTable, m_buffer[pos + j * stride]) - count;
        const std::int64_t step = stepWithin(bound - pos, (std::max)(shiftAt(suffixTable, j), by_byte), stride);
        if (step == 0) break;
        pos += step;
    }
    return asResult(notFound);
}

int VornToolsString::lastIndexOf(const VornToolsString& pattern, unsigned int from) const {
    const std::size_t end = from != noPosition ? std::size_t{from} + 1 : m_length;
    if (end > m_length) return asResult(notFound);
    return asResult(vorntools::searchLast(viewOf(*this).substr(0, end), viewOf(pattern)));
}

int VornToolsString::lastIndexOf(const VornToolsString& pattern, const long long* suffixTable,
                                 const long long* charTable, unsigned int upper, unsigned int lower,
                                 unsigned int gap) const {
    const std::int64_t count = pattern.m_length;
    const std::int64_t stride = std::int64_t{gap} + 1;
    if (count == 0 || m_length == 0 || count - 1 > (m_length - 1) / stride) return asResult(notFound);
    const std::int64_t last_offset = (count - 1) * stride;
    std::int64_t end = (std::min)(upper, m_length - 1);
    while (lower + last_offset <= end) {
        const std::int64_t start = end - last_offset;
        std::int64_t i = 0;
        while (i < count && m_buffer[start + i * stride] == pattern.m_buffer[i]) ++i;
        if (i == count) return static_cast<int>(start);
        const std::int64_t by_byte = shiftFor(charTable, m_buffer[start + i * stride]) - i;
        const std::int64_t step = stepWithin(start - lower, (std::max)(shiftAt(suffixTable, i), by_byte), stride);
        if (step == 0) break;
        end -= step;
    }
    return asResult(notFound);
}

unsigned int VornToolsString::indexOfFirstDifferentChar(const VornToolsString& other) const {
    const std::string_view own = viewOf(*this);
    const std::string_view others = viewOf(other);
    const auto position = std::mismatch(own.begin(), own.end(), others.begin(), others.end()).first - own.begin();
    return static_cast<unsigned int>(position);
}

void VornToolsString::replaceAll(const VornToolsString& pattern, const VornToolsString& replacement) {
    const std::string_view text = viewOf(*this);
    const std::string_view sought = viewOf(pattern);
    std::size_t match = vorntools::search(text, sought, 0, notFound, 1);
    if (match == notFound) return;
    const std::uint64_t length = replacedLength(text, sought, replacement.m_length);
    char* const p_result = allocate(length);
    if (!p_result) return;
    char* p_place = p_result;
    std::size_t kept = 0;
    for (; match != notFound; match = vorntools::search(text, sought, kept, notFound, 1)) {
        p_place = put(put(p_place, text.substr(kept, match - kept)), viewOf(replacement));
        kept = match + sought.size();
    }
    put(p_place, text.substr(kept));
    std::free(m_buffer);
    m_buffer = p_result;
    m_length = static_cast<unsigned int>(length);
}

void VornToolsString::concat(VornToolsString* a, const VornToolsString&) { delete a; }

VornToolsString* VornToolsString::fromUTF8toUCS2() const {
    VornToolsString* p_decoded = nullptr;
    vorntools::guarded([&] {
        CATUnicodeString text;
        text.BuildFromUTF8(m_buffer, m_length);
        p_decoded = new VornToolsString(text.ConvertToChar(), text.GetLengthInByte());
    });
    return p_decoded ? p_decoded : new (std::nothrow) VornToolsString;
}
