#ifndef FOUNDATION_MD5_H
#define FOUNDATION_MD5_H

#include <array>
#include <cstddef>

namespace vorntools {

/** The MD5 digest of a message (RFC 1321), its sixteen bytes in order. */
using Md5Digest = std::array<unsigned char, 16>;

/** Digest of a whole message. @param ip_bytes may be null for a message of no bytes */
Md5Digest md5Digest(const char* ip_bytes, std::size_t i_count);

/** A digest as 32 lower-case hexadecimal digits and a NUL. */
using Md5Text = std::array<char, 33>;

Md5Text md5Text(const Md5Digest& i_digest);

} // namespace vorntools

#endif
