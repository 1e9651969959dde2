#include "CATUuid.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>

namespace {

constexpr int kFields = 4;
constexpr int kDigits = 8;
constexpr std::uint64_t kMicrosecondsPerSecond = 1000000;

void store(unsigned char* bytes, std::uint32_t field) {
    for (int i = 0; i < 4; ++i) bytes[i] = static_cast<unsigned char>(field >> (24 - 8 * i));
}

std::uint32_t load(const unsigned char* bytes) {
    std::uint32_t field = 0;
    for (int i = 0; i < 4; ++i) field = (field << 8U) | bytes[i];
    return field;
}

/** Now in microseconds since 1970, but later than every moment given before. */
std::uint64_t uniqueMoment() {
    static std::atomic<std::uint64_t> last{0};
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto clock = static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(now).count());
    std::uint64_t before = last.load();
    std::uint64_t moment = 0;
    do moment = clock > before ? clock : before + 1;
    while (!last.compare_exchange_weak(before, moment));
    return moment;
}

int digitValue(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
    return -1;
}

/** Reads 1 to 8 digits and moves behind them. */
bool readField(const char*& text, std::uint32_t& field) {
    field = 0;
    int digits = 0;
    for (; digitValue(*text) >= 0; ++text, ++digits) {
        if (digits == kDigits) return false;
        field = (field << 4U) | static_cast<std::uint32_t>(digitValue(*text));
    }
    return digits > 0;
}

} // namespace

CATUuid::CATUuid() {
    // The two random fields stand for machine and process, which the standard library does not tell.
    static const std::uint32_t machine = std::random_device()();
    static const std::uint32_t process = std::random_device()();
    const std::uint64_t moment = uniqueMoment();
    store(m_bytes, machine);
    store(m_bytes + 4, process);
    store(m_bytes + 8, static_cast<std::uint32_t>(moment / kMicrosecondsPerSecond));
    store(m_bytes + 12, static_cast<std::uint32_t>(moment % kMicrosecondsPerSecond));
}

CATUuid::CATUuid(char* iText) : m_bytes{} {
    unsigned char bytes[sizeof m_bytes];
    const char* text = iText ? iText : "";
    for (int i = 0; i < kFields; ++i) {
        std::uint32_t field = 0;
        if (!readField(text, field) || *text != (i + 1 < kFields ? '_' : '\0')) return;
        if (*text) ++text;
        store(bytes + 4 * i, field);
    }
    std::memcpy(m_bytes, bytes, sizeof m_bytes);
}

void CATUuid::UUID_to_chaine(char* oText) {
    if (!oText) return;
    std::snprintf(oText, kFields * (kDigits + 1), "%x_%x_%x_%x", static_cast<unsigned>(load(m_bytes)),
                  static_cast<unsigned>(load(m_bytes + 4)), static_cast<unsigned>(load(m_bytes + 8)),
                  static_cast<unsigned>(load(m_bytes + 12)));
}
