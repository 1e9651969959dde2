#include "foundation/SearchKernel.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace std::string_view_literals;
using vorntools::notFound;

namespace {

TEST(SearchKernelTest, FindsWhatStandsOnAStepWithinTheRange) {
    struct Case {
        std::string_view text, pattern;
        std::size_t from, last, stride, found;
    };
    const std::string_view wide = "A\0B\0"sv;
    const Case cases[] = {
        {"abcabc", "abc", 0, notFound, 1, 0},
        {"abcabc", "abc", 1, notFound, 1, 3},
        {"abcabc", "abc", 1, 4, 1, notFound},
        {"abcabc", "abc", 1, 5, 1, 3},
        {"abcabc", "", 0, notFound, 1, notFound},
        {"", "a", 0, 5, 1, notFound},
        {"", "\0"sv, 0, 0, 1, notFound},
        {"abc", "c", 3, 9, 1, notFound},
        {"abc", "c", 2, 2, 1, 2},
        {"abc", "b", 2, 1, 1, notFound},
        {"abc", "abcd", 0, notFound, 1, notFound},
        {wide, "AB", 0, notFound, 2, 0},
        {wide, "AB", 0, 2, 2, notFound},
        {wide, "B", 0, notFound, 2, 2},
        {wide, "B", 1, notFound, 2, notFound},
        {"xA-B-A-B-", "AB", 0, notFound, 2, notFound},
        {"xA-B-A-B-", "AB", 1, notFound, 2, 1},
        {"a", "a", 0, notFound, 0x100000000U, notFound},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(vorntools::searchPlain(c.text, c.pattern, c.from, c.last, c.stride), c.found)
            << c.text << " " << c.pattern;
        EXPECT_EQ(vorntools::search(c.text, c.pattern, c.from, c.last, c.stride), c.found)
            << c.text << " " << c.pattern;
    }
}

TEST(SearchKernelTest, FindsTheLastOccurrence) {
    EXPECT_EQ(vorntools::searchLast("abcabc", "abc"), 3U);
    EXPECT_EQ(vorntools::searchLast("abcab", "abc"), 0U);
    EXPECT_EQ(vorntools::searchLast("aaaa", "aa"), 2U);
    EXPECT_EQ(vorntools::searchLast("abc", ""), notFound);
    EXPECT_EQ(vorntools::searchLast("", "a"), notFound);
    EXPECT_EQ(vorntools::searchLast(std::string(100, 'x') + "ab" + std::string(100, 'x'), "ab"), 100U);
}

TEST(SearchKernelTest, LooksFirstForTheRarestByteAndARareOneFarFromIt) {
    const struct {
        std::string_view pattern;
        std::size_t rarest, second;
    } cases[] = {
        {"", 0, 0},
        {"aaa", 0, 2},
        {"ab", 1, 0},
        {"bab", 0, 1},
        {"ZZ\0\0"sv, 0, 2},
        {"\x7FZ", 0, 1},
        // Of Q, rarer, in the same half and another byte in the other half.
        {"Z\0Qa\0\0\0"sv, 0, 3},
        {"Z\0Qt\0\0\0"sv, 0, 2},
        {"\0\0\0aQ\0Z"sv, 6, 3},
    };
    for (const auto& c : cases) {
        const vorntools::SearchPattern pattern(c.pattern);
        EXPECT_EQ(pattern.rarest(), c.rarest) << c.pattern;
        EXPECT_EQ(pattern.second(), c.second) << c.pattern;
    }
}

/** Where the pattern is put, every second and third byte of the text being left alone at strides 2 and 3. */
void put(std::string& text, std::string_view pattern, std::size_t at, std::size_t stride) {
    for (std::size_t k = 0; k < pattern.size(); ++k) text[at + k * stride] = pattern[k];
}

TEST(SearchKernelTest, FindsAPatternAtEveryOffsetOfEverySize) {
    for (const std::string_view pattern : {"q"sv, "qz"sv, "q\0z\0"sv, "qqqqq"sv, "LNK_PATH_BLOCK_0001"sv}) {
        for (std::size_t stride = 1; stride <= 4; ++stride) {
            const std::size_t span = pattern.size() * stride;
            for (std::size_t size = span; size <= 150; size += 7) {
                for (std::size_t at = 0; at + span <= size; ++at) {
                    std::string text(size, '.');
                    put(text, pattern, at, stride);
                    const std::size_t last = at + span - 1;
                    const std::string_view shorter(text.data(), last);
                    ASSERT_EQ(vorntools::search(text, pattern, at % stride, last, stride), at) << size << " " << stride;
                    ASSERT_EQ(vorntools::search(text, pattern, at, last, stride), at) << size << " " << stride;
                    ASSERT_EQ(vorntools::search(shorter, pattern, at % stride, notFound, stride), notFound)
                        << size << " " << stride;
                    ASSERT_EQ(vorntools::search(text, pattern, at + 1, notFound, stride), notFound)
                        << size << " " << stride;
                    if (stride != 1) continue;
                    ASSERT_EQ(vorntools::searchLast(text, pattern), at) << size;
                }
            }
        }
    }
}

TEST(SearchKernelTest, AgreesWithThePlainLoop) {
    std::mt19937 random(20261121);
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    const std::string_view alphabet = "ab\0"sv;
    std::size_t hits = 0;
    for (int round = 0; round < 100000; ++round) {
        std::string text(below(201), 'a');
        std::string pattern(below(7), 'a');
        const std::size_t letters = 1 + below(3);
        for (char& c : text) c = alphabet[below(letters)];
        for (char& c : pattern) c = alphabet[below(letters)];
        const std::size_t stride = below(20) == 0 ? 30 + below(6) : 1 + below(4);
        const std::size_t from = below(text.size() + 2);
        const std::size_t last = below(2) == 0 ? notFound : below(text.size() + 2);
        const std::size_t found = vorntools::searchPlain(text, pattern, from, last, stride);
        if (found != notFound) ++hits;
        ASSERT_EQ(vorntools::search(text, std::string_view(pattern), from, last, stride), found) << "round " << round;
        ASSERT_EQ(vorntools::searchLast(text, pattern), vorntools::searchLastPlain(text, pattern)) << "round " << round;
    }
    EXPECT_GT(hits, 10000U) << "the texts hold too few of the patterns to compare anything";
}

} // namespace
