#include "foundation/Md5.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string md5(const std::string& message) {
    return vorntools::md5Text(vorntools::md5Digest(message.data(), message.size())).data();
}

TEST(Md5Test, KnowsThePublishedMessages) {
    const struct {
        const char* message;
        const char* digest;
    } cases[] = {
        {"", "d41d8cd98f00b204e9800998ecf8427e"},
        {"a", "0cc175b9c0f1b6a831c399e269772661"},
        {"abc", "900150983cd24fb0d6963f7d28e17f72"},
        {"message digest", "f96b697d7cb7938d525a2f31aaf161d0"},
        {"abcdefghijklmnopqrstuvwxyz", "c3fcd3d76192e4007dfb496cca67e13b"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789", "d174ab98d277d9f5a5611c2c9f419d9f"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57edf4a22be3c955ac49da2e2107b67a"},
    };
    for (const auto& [message, digest] : cases) EXPECT_EQ(md5(message), digest) << message;
    EXPECT_STREQ(vorntools::md5Text(vorntools::md5Digest(nullptr, 0)).data(), "d41d8cd98f00b204e9800998ecf8427e");
}

TEST(Md5Test, PadsMessagesThatEndAroundABlock) {
    const struct {
        std::size_t length;
        const char* digest;
    } cases[] = {
        {55, "b8f486d6805a37c97c6b929c2e880937"},  {56, "6c830a5d23df58dbe0171eb5639bf3e4"},
        {57, "cfaf0d7657242c9447ce025ecb070008"},  {63, "4dae22d918aca268e678c74bd5c6f6cd"},
        {64, "b0c4864f4e28d2d76929c38d87db7ed5"},  {65, "38161025084d46d907d3b9a61a1286c9"},
        {119, "b2ea3db8221fa9ae01ee0adf42970ba0"}, {120, "723628a6315542e744e4bc6e2f9c84d2"},
        {128, "d5d675535f98fb8ce337c8fd049cbf69"}, {1000000, "4c4ece6a40af230a4b507ceec577ba44"},
    };
    for (const auto& [length, digest] : cases) EXPECT_EQ(md5(std::string(length, 'y')), digest) << length;
}

TEST(Md5Test, TakesEveryByteForWhatItIs) {
    EXPECT_EQ(md5(std::string("a\0b\xff", 4)), "0dd4df5b5be53b9566c53387ec9a7bac");
    EXPECT_STREQ(vorntools::md5Text({0x00, 0x0f, 0xf0, 0xff, 0x9a, 0xa9}).data(), "000ff0ff9aa900000000000000000000");
}

} // namespace
