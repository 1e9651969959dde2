#include "foundation/FileReader.h"

#include "tests/support/Fixture.h"

#include <string>
#include <vector>

using vorntools::FileRange;
using vorntools::FileReader;

namespace {

class FileReaderTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        for (int i = 0; i < 20000; ++i) bytes += static_cast<char>(i % 251);
        ASSERT_TRUE(reader.open(write("f", bytes).c_str()));
    }
    void TearDown() override {
        reader = FileReader(); // some systems keep the folder of an open file
        PlatformTest::TearDown();
    }
    std::string at(const FileRange& range) const { return bytes.substr(range.offset, range.length); }

    std::string bytes;
    FileReader reader;
};

TEST_F(FileReaderTest, WhatWasFetchedIsKnownAsAWhole) {
    EXPECT_EQ(reader.size(), 20000U);
    const FileRange wide = {100, 1000}, within = {150, 10}, across = {155, 500}, next = {1100, 1}, far = {15000, 5000};
    ASSERT_TRUE(reader.fetch({far, across, within, wide, within, far}));
    for (const FileRange& range : {wide, within, across, far}) EXPECT_EQ(reader.bytes(range), at(range));
    EXPECT_EQ(reader.bytes(next), "");
    EXPECT_EQ(reader.bytes({99, 2}), "");
    EXPECT_EQ(reader.bytes({1099, 2}), "");
    EXPECT_FALSE(reader.knows(next));
    EXPECT_TRUE(reader.knows({20000, 0}));
    EXPECT_EQ(reader.keep(next), nullptr);

    EXPECT_TRUE(reader.fetch(std::vector<FileRange>(1000, FileRange{10000, 1}))) << "beginning at one byte all";
    const auto kept = reader.keep(within);
    ASSERT_TRUE(reader.fetch({{0, 20000}}));
    EXPECT_EQ(reader.bytes({0, 20000}), bytes);
    EXPECT_EQ(std::string(kept.get(), 10), at(within)) << "also when the stretch lies within another by now";
}

TEST_F(FileReaderTest, NeighboursAreReadTogether) {
    constexpr std::uint64_t gap = 4096;
    ASSERT_TRUE(reader.fetch({{0, 10}, {10 + gap, 1}}));
    EXPECT_EQ(reader.bytes({5, gap}), at({5, gap}));
    ASSERT_TRUE(reader.open(path("f").c_str()));
    ASSERT_TRUE(reader.fetch({{0, 10}, {11 + gap, 1}}));
    EXPECT_EQ(reader.bytes({5, gap}), "");
    EXPECT_EQ(reader.bytes({11 + gap, 1}), at({11 + gap, 1}));
}

TEST_F(FileReaderTest, BeyondTheEndIsNothing) {
    for (const FileRange& range : {FileRange{19999, 2}, FileRange{20001, 0}, FileRange{1, ~std::uint64_t{0}}})
        EXPECT_FALSE(reader.fetch({{0, 1}, range})) << range.offset;
    EXPECT_TRUE(reader.fetch({{19999, 1}, {20000, 0}}));
    std::string read(4, ' ');
    EXPECT_TRUE(reader.readInto({19996, 4}, read.data()));
    EXPECT_EQ(read, at({19996, 4}));
    EXPECT_FALSE(reader.readInto({19998, 4}, read.data()));
    EXPECT_FALSE(reader.readInto({std::uint64_t{1} << 63, 4}, read.data())) << "no position of a file";
    EXPECT_TRUE(reader.readInto({7, 4}, read.data()));
    EXPECT_EQ(read, at({7, 4})) << "wherever the last reading ended";
    EXPECT_TRUE(reader.readInto({11, 4}, read.data()));
    EXPECT_EQ(read, at({11, 4}));

    EXPECT_FALSE(reader.open(path("none").c_str()));
    EXPECT_EQ(reader.size(), 0U);
    EXPECT_EQ(reader.bytes({19999, 1}), "") << "of the file before";
    EXPECT_FALSE(reader.readInto({0, 1}, read.data()));
    EXPECT_FALSE(reader.open(folder().u8string().c_str()));
}

} // namespace
