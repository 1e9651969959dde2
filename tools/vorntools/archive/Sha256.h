#ifndef TOOLS_VORNTOOLS_ARCHIVE_SHA256_H
#define TOOLS_VORNTOOLS_ARCHIVE_SHA256_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/** The checksum SHA-256 of FIPS 180-4. */
class Sha256 {
public:
    void add(std::string_view bytes);
    /** 64 hexadecimal digits in lower case. Nothing can be added any more. */
    std::string text();

private:
    static constexpr std::size_t kBlockBytes = 64;
    void addBlock(const char* block);

    std::array<std::uint32_t, 8> m_state = {0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A,
                                            0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
    std::string m_rest; ///< less than a block
    std::uint64_t m_size = 0;
};

#endif
