#include "VornToolsString.h"

#include "tests/support/Fixture.h"
#include "tests/support/Utf8.h"

#include <cstdlib>
#include <cstring>
#include <memory>

using namespace std::string_view_literals;

namespace {

constexpr unsigned int kEnd = 0xFFFFFFFFU;

class VornToolsStringTest : public PlatformTest {
protected:
    static VornToolsString make(std::string_view bytes) {
        char* const buffer = static_cast<char*>(std::malloc(bytes.size() + 1));
        std::memcpy(buffer, bytes.data(), bytes.size());
        buffer[bytes.size()] = '\0';
        return VornToolsString(static_cast<int>(bytes.size()), buffer);
    }
    static std::string text(const VornToolsString& string) { return {string.bytes(), string.size()}; }
    static std::string text(VornToolsString* string) { return text(*std::unique_ptr<VornToolsString>(string)); }
    static std::string replaced(std::string_view in, std::string_view pattern, std::string_view replacement) {
        VornToolsString string = make(in);
        string.replaceAll(make(pattern), make(replacement));
        EXPECT_EQ(string.bytes()[string.size()], '\0');
        return text(string);
    }
};

TEST_F(VornToolsStringTest, TheClassHasItsName) {
    EXPECT_STREQ(VornToolsString::_CteCLASS_NAME.ConvertToChar(), "VornToolsString::");
}

TEST_F(VornToolsStringTest, IsMadeFromBytes) {
    char bytes[] = "a\0b";
    EXPECT_EQ(text(VornToolsString()), "");
    EXPECT_EQ(VornToolsString().bytes()[0], '\0');
    EXPECT_EQ(text(VornToolsString(bytes, 3)), "a\0b"sv);
    EXPECT_EQ(text(VornToolsString(static_cast<const char*>(bytes), 2)), "a\0"sv);
    EXPECT_EQ(VornToolsString(bytes, 2).bytes()[2], '\0');
    EXPECT_EQ(text(VornToolsString(bytes, 0)), "");
    EXPECT_EQ(text(VornToolsString(bytes, -1)), "");
    EXPECT_EQ(text(VornToolsString(static_cast<char*>(nullptr), 5)), "");
    char* const adopted = static_cast<char*>(std::calloc(3, 1));
    const VornToolsString string(2, adopted);
    EXPECT_EQ(string.bytes(), adopted);
    EXPECT_EQ(string.size(), 2U);
}

TEST_F(VornToolsStringTest, CopyStopsAtANulAndAssignmentDoesNot) {
    const VornToolsString source = make("a\0b"sv);
    const VornToolsString copy(source);
    EXPECT_EQ(text(copy), "a\0\0"sv);
    VornToolsString assigned("before", 6);
    assigned = source;
    EXPECT_EQ(text(assigned), "a\0b"sv);
    EXPECT_EQ(assigned.bytes()[3], '\0');
    const VornToolsString& same = assigned;
    assigned = same;
    EXPECT_EQ(text(assigned), "a\0b"sv);
}

TEST_F(VornToolsStringTest, ComparesLengthAndEveryByte) {
    EXPECT_EQ(VornToolsString().compare(VornToolsString()), 1);
    EXPECT_EQ(make("ab").compare(make("abc")), 0);
    EXPECT_EQ(make("a\0b"sv).compare(make("a\0c"sv)), 0);
    EXPECT_EQ(make("a\0b"sv) == make("a\0b"sv), 1);
    EXPECT_EQ(make("ab") == make("ac"), 0);
    EXPECT_EQ(make("abc").indexOfFirstDifferentChar(make("abd")), 2U);
    EXPECT_EQ(make("abc").indexOfFirstDifferentChar(make("ab")), 2U);
    EXPECT_EQ(make("ab").indexOfFirstDifferentChar(make("abc")), 2U);
    EXPECT_EQ(make("").indexOfFirstDifferentChar(make("abc")), 0U);
    EXPECT_EQ(make("a\0b"sv).indexOfFirstDifferentChar(make("a\0c"sv)), 2U);
}

TEST_F(VornToolsStringTest, AnswersBytesOutsideWithNul) {
    const VornToolsString string = make("a\xFF");
    EXPECT_EQ(string[1], '\xFF');
    for (const unsigned int i : {2U, 7U, kEnd}) EXPECT_EQ(string[i], '\0') << i;
    char* const copy = make("a\0b"sv).get_string();
    EXPECT_EQ(std::string_view(copy, 4), "a\0b\0"sv);
    std::free(copy);
}

TEST_F(VornToolsStringTest, TakesEveryStepThatFits) {
    const VornToolsString wide = make("A\0B\0"sv);
    EXPECT_EQ(text(wide.subString(2, 1, 0)), "");
    EXPECT_EQ(text(wide.subString(4, kEnd, 0)), "");
    EXPECT_EQ(text(wide.subString(0, kEnd, 1)), "AB");
    EXPECT_EQ(text(wide.subString(0, 2, 1)), "A") << "the gap behind the last byte counts";
    EXPECT_EQ(text(wide.subString(0, 0, kEnd)), "");
    EXPECT_EQ(text(wide.subString(1, 2, 0)), "\0B"sv);
    EXPECT_EQ(text(make("abcdefg").subString(1, 6, 2)), "be");
}

TEST_F(VornToolsStringTest, FindsForwardsAndBackwards) {
    const VornToolsString hay = make("xabcabc");
    EXPECT_EQ(hay.indexOf(make("abc"), 0, kEnd, 0), 1);
    EXPECT_EQ(hay.indexOf(make("abc"), 2, kEnd, 0), 4);
    EXPECT_EQ(hay.indexOf(make("abc"), 2, 5, 0), -1);
    EXPECT_EQ(hay.indexOf(make("abc"), kEnd, kEnd, 0), -1);
    EXPECT_EQ(hay.indexOf(make(""), 0, kEnd, 0), -1);
    EXPECT_EQ(hay.indexOf(make("x"), 0, kEnd, kEnd), -1);
    EXPECT_EQ(make("A\0B\0"sv).indexOf(make("AB"), 0, kEnd, 1), 0);
    EXPECT_EQ(make("A\0B"sv).indexOf(make("AB"), 0, kEnd, 1), -1) << "the gap behind the last byte counts";
    EXPECT_EQ(hay.lastIndexOf(make("abc"), kEnd), 4);
    EXPECT_EQ(hay.lastIndexOf(make("abc"), 6), 4);
    EXPECT_EQ(hay.lastIndexOf(make("abc"), 5), 1);
    EXPECT_EQ(hay.lastIndexOf(make("abc"), 1), -1);
    EXPECT_EQ(hay.lastIndexOf(make("abc"), 7), -1) << "beyond the end is not the end";
    EXPECT_EQ(hay.lastIndexOf(make(""), kEnd), -1);
    EXPECT_EQ(make("").lastIndexOf(make("a"), kEnd), -1);
}

/** Boyer-Moore tables of the pattern "abcab"; the upper half of an entry means nothing. */
struct Tables {
    Tables() {
        for (long long& shift : byte) shift = 0x700000005;
        byte[static_cast<unsigned char>('a')] = 1;
        byte[static_cast<unsigned char>('b')] = 0;
        byte[static_cast<unsigned char>('c')] = 2;
    }
    long long suffix[5] = {3, 3, 3, 5, 0x100000001};
    long long byte[256];
};

TEST_F(VornToolsStringTest, FindsWithTheCallersTables) {
    const VornToolsString pattern = make("abcab");
    const VornToolsString hay = make("abcaabcabcabx");
    const Tables t;
    EXPECT_EQ(hay.indexOf(pattern, t.suffix, t.byte, 0, kEnd, 0), 4);
    EXPECT_EQ(hay.indexOf(pattern, t.suffix, t.byte, 5, kEnd, 0), 7);
    EXPECT_EQ(hay.indexOf(pattern, t.suffix, t.byte, 5, 11, 0), 7);
    EXPECT_EQ(hay.indexOf(pattern, t.suffix, t.byte, 5, 10, 0), -1);
    EXPECT_EQ(hay.indexOf(pattern, t.suffix, t.byte, kEnd, kEnd, 0), -1);
    EXPECT_EQ(hay.indexOf(pattern, t.suffix, t.byte, 0, 2, 0), -1) << "a range shorter than the pattern";
    EXPECT_EQ(hay.indexOf(make(""), t.suffix, t.byte, 0, kEnd, 0), -1);
    EXPECT_EQ(hay.indexOf(pattern, t.suffix, t.byte, 0, kEnd, kEnd), -1);
    EXPECT_EQ(make("").indexOf(pattern, t.suffix, t.byte, 0, 100, 0), -1);
    const VornToolsString wide = make("x.a.b.c.a.b."sv);
    EXPECT_EQ(wide.indexOf(pattern, t.suffix, t.byte, 0, kEnd, 1), 2);
    EXPECT_EQ(wide.indexOf(pattern, t.suffix, t.byte, 0, 10, 1), -1) << "the gap behind the last byte counts";
}

TEST_F(VornToolsStringTest, FindsBackwardsWithTheCallersTables) {
    const VornToolsString pattern = make("abcab");
    const VornToolsString hay = make("abcabcabxabca");
    Tables t;
    const long long suffix[5] = {1, 5, 3, 3, 3};
    t.byte[static_cast<unsigned char>('a')] = 0;
    t.byte[static_cast<unsigned char>('b')] = 1;
    EXPECT_EQ(hay.lastIndexOf(pattern, suffix, t.byte, kEnd, 0, 0), 3);
    EXPECT_EQ(hay.lastIndexOf(pattern, suffix, t.byte, 6, 0, 0), 0);
    EXPECT_EQ(hay.lastIndexOf(pattern, suffix, t.byte, 6, 1, 0), -1);
    EXPECT_EQ(hay.lastIndexOf(pattern, suffix, t.byte, kEnd, 4, 0), -1);
    EXPECT_EQ(hay.lastIndexOf(pattern, suffix, t.byte, kEnd, kEnd, 0), -1);
    EXPECT_EQ(hay.lastIndexOf(make(""), suffix, t.byte, kEnd, 0, 0), -1);
    EXPECT_EQ(hay.lastIndexOf(pattern, suffix, t.byte, kEnd, 0, kEnd), -1);
    EXPECT_EQ(make("").lastIndexOf(pattern, suffix, t.byte, kEnd, 0, 0), -1);
    EXPECT_EQ(make("a.b.c.a.b").lastIndexOf(pattern, suffix, t.byte, kEnd, 0, 1), 0)
        << "no gap is asked for behind the last byte";
}

TEST_F(VornToolsStringTest, TablesThatDoNotLeadOnEndTheSearch) {
    const VornToolsString pattern = make("abcab");
    const VornToolsString hay = make("xxxxxxxxabcab");
    for (const long long shift : {0LL, -1LL, -0x80000000LL, 0xFFFFFFFFLL, 0x7FFFFFFFLL}) {
        Tables t;
        for (long long& entry : t.suffix) entry = shift;
        for (long long& entry : t.byte) entry = shift;
        EXPECT_EQ(hay.indexOf(pattern, t.suffix, t.byte, 0, kEnd, 0), -1) << shift;
        EXPECT_EQ(make("abcabxxxxxx").lastIndexOf(pattern, t.suffix, t.byte, kEnd, 0, 0), -1) << shift;
    }
}

TEST_F(VornToolsStringTest, TheGreaterOfBothShiftsLeadsToTheNextWindow) {
    const VornToolsString pattern = make("ab");
    const long long suffix[2] = {1, 1};
    long long byte[256];
    for (long long& shift : byte) shift = 100;
    byte[static_cast<unsigned char>('x')] = 5;
    EXPECT_EQ(make("xbabab").indexOf(pattern, suffix, byte, 0, kEnd, 0), 4) << "0 + 1 + 5 - 2 from position 0";
    EXPECT_EQ(make("abxyax").lastIndexOf(pattern, suffix, byte, kEnd, 0, 0), 0) << "5 - 1 down from position 4";
    const long long longer[2] = {4, 4};
    byte[static_cast<unsigned char>('x')] = 1;
    EXPECT_EQ(make("xbabab").indexOf(pattern, longer, byte, 0, kEnd, 0), 4);
    EXPECT_EQ(make("abxxax").lastIndexOf(pattern, longer, byte, kEnd, 0, 0), 0);
}

TEST_F(VornToolsStringTest, ReplacesFromLeftToRight) {
    EXPECT_EQ(replaced("aaa", "aa", "b"), "ba");
    EXPECT_EQ(replaced("abc", "", "x"), "abc");
    EXPECT_EQ(replaced("abc", "x", "y"), "abc");
    EXPECT_EQ(replaced("", "x", "y"), "");
    EXPECT_EQ(replaced("xaxbx", "x", ""), "ab");
    EXPECT_EQ(replaced("xx", "x", "xx"), "xxxx");
    EXPECT_EQ(replaced("a\0b\0"sv, "\0"sv, "--"), "a--b--");
    VornToolsString own = make("a\0b"sv);
    own.replaceAll(own, own);
    EXPECT_EQ(text(own), "a\0b"sv);
    EXPECT_EQ(replaced(std::string(300000, 'x'), "x", "yz").size(), 600000U) << "and takes linear time";
}

TEST_F(VornToolsStringTest, ConcatDeletesItsFirstArgument) {
    const long before = embedded::Accounting::get().live().objects;
    VornToolsString* const joined = new VornToolsString("a", 1);
    VornToolsString string("s", 1);
    EXPECT_EQ(embedded::Accounting::get().live().objects, before + 2);
    string.concat(joined, string);
    EXPECT_EQ(embedded::Accounting::get().live().objects, before + 1);
    EXPECT_EQ(text(string), "s");
}

TEST_F(VornToolsStringTest, DecodesUtf8IntoThePlatformsText) {
    EXPECT_EQ(text(make("r\xC3\xA9seau").fromUTF8toUCS2()), eightBit("r\xC3\xA9seau"));
    EXPECT_EQ(text(make("").fromUTF8toUCS2()), "");
    EXPECT_EQ(text(make("r\xE9seau").fromUTF8toUCS2()), "") << "the platform reads no malformed text";
}

} // namespace
