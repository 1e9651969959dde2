#ifndef EMBEDDED_TABLES_LITTLE_ENDIAN_H
#define EMBEDDED_TABLES_LITTLE_ENDIAN_H

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace embedded {

// Numbers in a file, the lowest byte first. The caller has looked that they are there.

inline std::uint64_t readLittleEndian(std::string_view bytes, std::size_t offset, std::size_t size) {
    std::uint64_t value = 0;
    for (std::size_t i = size; i-- > 0;) value = value << 8U | static_cast<unsigned char>(bytes[offset + i]);
    return value;
}

inline unsigned read16(std::string_view bytes, std::size_t offset) {
    return static_cast<unsigned>(readLittleEndian(bytes, offset, 2));
}
inline std::uint32_t read32(std::string_view bytes, std::size_t offset) {
    return static_cast<std::uint32_t>(readLittleEndian(bytes, offset, 4));
}
inline std::uint64_t read64(std::string_view bytes, std::size_t offset) { return readLittleEndian(bytes, offset, 8); }

} // namespace embedded

#endif
