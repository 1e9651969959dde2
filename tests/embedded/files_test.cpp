#include "CATDLName.h"
#include "UTILDLName.h"
#include "UTILFile.h"
#include "UTILTime.h"
#include "tests/support/Fixture.h"
#include "tests/support/Utf8.h"

#include <fstream>
#include <iterator>
#include <memory>

namespace {

std::string bytes(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}

class FilesTest : public PlatformTest {
protected:
    std::string read(const std::string& name) {
        std::ifstream file(std::filesystem::u8path(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }
    Texts linesOf(const std::string& name) { return linesOf(CATUnicodeString(name.c_str())); }
    Texts linesOf(const CATUnicodeString& name) {
        UTILFile file;
        if (file.open(name, "r") != S_OK) return {"(not opened)"};
        Texts lines;
        CATUnicodeString line("old");
        while (file.readLine(line) == S_OK) lines.push_back(bytes(line));
        EXPECT_TRUE(line.IsNull());
        EXPECT_EQ(file.readLine(line), S_FALSE);
        return lines;
    }
};

TEST_F(FilesTest, LinesEndWithLineFeedOrCarriageReturnLineFeed) {
    const std::string nul("a\0b", 3);
    const std::string longLine(300000, 'x');
    const std::string atTheEdge(65535, 'y');
    const struct {
        std::string content;
        Texts lines;
    } cases[] = {
        {"", {}},
        {"a\nb\r\n\r\n\n", {"a", "b", "", ""}},
        {"no end", {"no end"}},
        {"kept\r", {"kept\r"}},
        {"\r\r\nx", {"\r", "x"}},
        {nul + "\n" + nul, {nul, nul}},
        {longLine + "\r\n" + longLine + "\nshort\n", {longLine, longLine, "short"}},
        {atTheEdge + "\r\n" + atTheEdge + "\n", {atTheEdge, atTheEdge}},
        {"\xFF\xFE\x1A\x04\n", {"\xFF\xFE\x1A\x04"}},
    };
    for (const auto& c : cases) EXPECT_TRUE(linesOf(write("lines.txt", c.content)) == c.lines) << c.content.size();
}

TEST_F(FilesTest, WhatIsNoReadableFileIsNotOpened) {
    std::filesystem::create_directory(folder() / "place");
    const std::string good = write("good.txt", "x\n");
    const std::string cases[] = {path("missing"), path("place"), std::string()};
    for (const std::string& name : cases) {
        long long size = 5;
        EXPECT_EQ(linesOf(name), Texts({"(not opened)"})) << name;
        EXPECT_EQ(UTILFile::existingFile(name.c_str()), 0) << name;
        EXPECT_EQ(UTILFile::getFileSize(name.c_str(), size), E_FAIL) << name;
        EXPECT_EQ(size, 0) << name;
    }
    EXPECT_EQ(UTILFile::existingFile(CATUnicodeString((good + '\0').c_str(), good.size() + 1)), 0);
    UTILFile file;
    CATUnicodeString line("old");
    EXPECT_EQ(file.readLine(line), E_FAIL);
    EXPECT_TRUE(line.IsNull());
    EXPECT_EQ(file.open(good.c_str(), "w"), E_FAIL);
    EXPECT_EQ(file.open(good.c_str(), "r"), S_OK);
    EXPECT_EQ(embedded::Accounting::get().live().files, 1);
    EXPECT_EQ(file.open(good.c_str(), "r"), S_OK);
    file.close();
    EXPECT_EQ(embedded::Accounting::get().live().files, 0);
}

TEST_F(FilesTest, NamesHaveAllTheirCharactersAndFactsAreExact) {
    const CATUnicodeString name = utf8(write("Zahnr\xC3\xA4"
                                             "der \xE2\x82\xAC\xC5\x81.CATPart",
                                             "12345"));
    EXPECT_EQ(linesOf(name), Texts({"12345"}));
    EXPECT_EQ(UTILFile::existingFile(name), 1);
    long long size = 0;
    EXPECT_EQ(UTILFile::getFileSize(name, size), S_OK);
    EXPECT_EQ(size, 5);
    touch("Zahnr\xC3\xA4"
          "der \xE2\x82\xAC\xC5\x81.CATPart",
          1500000000);
    EXPECT_EQ(UTILFile::getLastModificationDateOnFile(name), 1500000000);
    EXPECT_EQ(UTILFile::getLastModificationDateOnFile(path("missing").c_str()), -1);
    const struct {
        const char* date;
        int expected;
    } dates[] = {{"1500000000", 0}, {"1500000001", -1}, {"1499999999", 1}, {"", -1}, {"1500000000x", -1}, {" 1", -1}};
    for (const auto& c : dates) EXPECT_EQ(UTILTime::compareFileTime(name, c.date), c.expected) << c.date;
    EXPECT_EQ(UTILTime::compareFileTime(path("missing").c_str(), "1"), -1);
}

TEST_F(FilesTest, NamesSplitAtEitherSeparator) {
    const struct {
        const char* full;
        const char* directory;
        const char* file;
        const char* extension;
    } cases[] = {
        {"C:\\w\\Part1.CATPart", "C:\\w", "Part1.CATPart", "CATPart"},
        {"/w/x.y/Part1", "/w/x.y", "Part1", ""},
        {"a\\b/c.1.dat", "a\\b", "c.1.dat", "dat"},
        {"Part1.", "", "Part1.", ""},
        {"/x", "/", "x", ""},
        {"a/", "a", "", ""},
    };
    for (const auto& c : cases) {
        CATUnicodeString directory("old");
        CATUnicodeString file(c.full);
        EXPECT_EQ(UTILFile::splitPathAndFileName(file, directory, file), S_OK);
        EXPECT_EQ(bytes(directory), c.directory) << c.full;
        EXPECT_EQ(bytes(file), c.file) << c.full;
        EXPECT_EQ(bytes(UTILFile::getExtension(c.full)), c.extension) << c.full;
    }
    CATUnicodeString directory("old");
    CATUnicodeString file("old");
    EXPECT_EQ(UTILFile::splitPathAndFileName("", directory, file), E_FAIL);
    EXPECT_TRUE(directory.IsNull() && file.IsNull());
    EXPECT_EQ(UTILFile::isACATProduct("catproduct"), 1);
    EXPECT_EQ(UTILFile::isACATProduct("CATPart"), 0);
}

TEST_F(FilesTest, LogicalNamesResolveBothWays) {
    environment().logicalNames = {{"LIB", "/lib"}, {"ROOT", "C:\\"}};
    environment().separator = "/";
    const std::string marker("\x01\x02\\");
    const struct {
        std::string name;
        HRESULT result;
        const char* physical;
    } cases[] = {
        {marker + "LIB/Bolt.CATPart", S_OK, "/lib/Bolt.CATPart"},
        {marker + "LIB\\sub\\Bolt.CATPart", S_OK, "/lib/sub\\Bolt.CATPart"},
        {marker + "ROOT/Bolt.CATPart", S_OK, "C:\\Bolt.CATPart"},
        {marker + "LIB", S_OK, "/lib"},
        {marker + "OTHER/Bolt.CATPart", E_FAIL, ""},
        {marker, E_FAIL, ""},
        {"/w/Bolt.CATPart", S_OK, "/w/Bolt.CATPart"},
        {"", S_OK, ""},
    };
    for (const auto& c : cases) {
        CATUnicodeString physical("old");
        EXPECT_EQ(UTILDLName::getPhysicalPathFromDLName(c.name.c_str(), physical), c.result) << c.name;
        EXPECT_EQ(bytes(physical), c.physical) << c.name;
    }
    const CATUnicodeString name("LIB");
    const CATUnicodeString unknown("OTHER");
    const CATUnicodeString file("Bolt.CATPart");
    CATUnicodeString* text = nullptr;
    ASSERT_EQ(CATMakeLogicalPath(&name, &file, &text), S_OK);
    EXPECT_EQ(bytes(*text), marker + "LIB/Bolt.CATPart");
    delete text;
    ASSERT_EQ(CATGetDLName(&name, &text), S_OK);
    EXPECT_EQ(bytes(*text), "/lib");
    delete text;
    EXPECT_EQ(CATGetDLName(&unknown, &text), E_FAIL);
    EXPECT_EQ(text, nullptr);
    unsigned int count = 0;
    CATUnicodeString** names = nullptr;
    CATUnicodeString wanted("ROOT");
    const auto same = [](CATUnicodeString* a, CATUnicodeString* b) { return *a == *b; };
    ASSERT_EQ(CATGetDLNameList(same, &wanted, &count, &names), S_OK);
    ASSERT_EQ(count, 1U);
    EXPECT_EQ(bytes(*names[0]), "ROOT");
    delete names[0];
    delete[] names;
}

TEST_F(FilesTest, FaultsFollowTheirFlavour) {
    using embedded::FaultFlavour;
    const std::string name = write("data.txt", "123456\nnext\n");
    const struct {
        FaultFlavour flavour;
        HRESULT result;
        const char* line;
        HRESULT next;
    } cases[] = {{FaultFlavour::code, E_FAIL, "", S_OK},
                 {FaultFlavour::codeWithOutput, E_FAIL, "stale", S_OK},
                 {FaultFlavour::nullOutput, S_OK, "", S_OK},
                 {FaultFlavour::shortRead, S_OK, "123", S_FALSE}};
    for (const auto& c : cases) {
        UTILFile file;
        CATUnicodeString line;
        embedded::Failures::get().arm(2, false, c.flavour);
        ASSERT_EQ(file.open(name.c_str(), "r"), S_OK);
        EXPECT_EQ(file.readLine(line), c.result);
        EXPECT_EQ(bytes(line), c.line);
        EXPECT_EQ(file.readLine(line), c.next);
        EXPECT_EQ(embedded::Failures::get().firedAt(), "UTILFile::readLine");
        embedded::Failures::get().disarm();
    }
}

TEST_F(FilesTest, FilesAreCopiedRenamedAndDeletedWhole) {
    const std::string name = write("data.bin", std::string("1\r\n\0\x1A", 5));
    const std::string target = write("copy.bin", "something longer");
    const std::string nowhere = path("missing") + "/x";
    touch("data.bin", 1500000000);
    EXPECT_EQ(UTILFile::copyFile(name.c_str(), target.c_str()), S_OK);
    EXPECT_EQ(read(target), read(name));
    EXPECT_EQ(UTILFile::getLastModificationDateOnFile(target.c_str()), 1500000000);
    EXPECT_EQ(UTILFile::copyFile(name.c_str(), nowhere.c_str()), E_FAIL);
    EXPECT_EQ(UTILFile::copyFile(nowhere.c_str(), target.c_str()), E_FAIL);
    EXPECT_EQ(UTILFile::renameFile(nowhere.c_str(), target.c_str()), E_FAIL);
    EXPECT_EQ(read(target), read(name));

    write("new.bin", "new");
    EXPECT_EQ(UTILFile::renameFile(path("new.bin").c_str(), target.c_str()), S_OK);
    EXPECT_EQ(read(target), "new");
    EXPECT_EQ(UTILFile::existingFile(path("new.bin").c_str()), 0);

    std::filesystem::permissions(target, std::filesystem::perms::owner_read);
    EXPECT_EQ(UTILFile::deleteFile(target.c_str()), S_OK);
    EXPECT_EQ(UTILFile::deleteFile(target.c_str()), E_FAIL);
    std::filesystem::create_directory(folder() / "place");
    EXPECT_EQ(UTILFile::deleteFile(path("place").c_str()), E_FAIL);
    EXPECT_TRUE(std::filesystem::is_directory(folder() / "place"));
}

TEST_F(FilesTest, ACopyThatFailsMayLeaveAPart) {
    using embedded::FaultFlavour;
    const std::string name = write("data.txt", "123456");
    const struct {
        FaultFlavour flavour;
        HRESULT result;
        const char* content;
    } cases[] = {{FaultFlavour::code, E_FAIL, "old"},
                 {FaultFlavour::codeWithOutput, E_FAIL, "123"},
                 {FaultFlavour::shortRead, S_OK, "123"},
                 {FaultFlavour::nullOutput, S_OK, "123"}};
    for (const auto& c : cases) {
        const std::string target = write("copy.txt", "old");
        embedded::Failures::get().arm(1, false, c.flavour);
        EXPECT_EQ(UTILFile::copyFile(name.c_str(), target.c_str()), c.result);
        embedded::Failures::get().disarm();
        EXPECT_EQ(read(target), c.content);
    }
}

} // namespace
