#ifndef FOUNDATION_MD5_H
#define FOUNDATION_MD5_H

#include <array>
#include <cstddef>
#include <string_view>

namespace vorntools {

/** The MD5 digest of a message (RFC 1321), its sixteen bytes in order. */
using Md5Digest = std::array<unsigned char, 16>;

/** Digest of a whole message. @param ip_bytes may be null for a message of no bytes */
Md5Digest md5Digest(const char* ip_bytes, std::size_t i_count);

/** Digests of two messages. Each step of a digest waits for the one before it: two at a time take little longer than
 * one, as far as both messages reach. */
std::array<Md5Digest, 2> md5Digests(std::string_view i_first, std::string_view i_second);

/** A digest as 32 lower-case hexadecimal digits and a NUL. */
using Md5Text = std::array<char, 33>;

Md5Text md5Text(const Md5Digest& i_digest);

} // namespace vorntools

#endif
