#include "VornToolsCommon.h"

#include "CATListOfCATUnicodeString.h"
#include "TYPVectorCATUnicodeString.h"
#include "UTILFile.h"
#include "VornToolsString.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <iterator>
#include <limits>
#include <memory>
#include <thread>

namespace {

namespace fs = std::filesystem;

constexpr unsigned int kFar = std::numeric_limits<unsigned int>::max();

std::string bytes(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}

Texts texts(const CATListValCATUnicodeString& list) {
    Texts result;
    for (int i = 1; i <= list.Size(); ++i) result.push_back(bytes(list[i]));
    return result;
}

Texts texts(const TYPVectorCATUnicodeString& vector) {
    Texts result;
    for (int i = 0; i < vector.size(); ++i) result.push_back(bytes(vector.at(i)));
    return result;
}

TYPVectorCATUnicodeString vectorOf(const Texts& lines) {
    TYPVectorCATUnicodeString vector;
    for (const std::string& line : lines) vector.push_back(CATUnicodeString(line.data(), line.size()));
    return vector;
}

/** What the result file tells, from outputs that held something before. */
struct ResultInfo {
    VornToolsCommon::EnumResultStatus status = VornToolsCommon::ResultStatusOk;
    TYPVectorCATUnicodeString lines = vectorOf({"stale"});
    HRESULT code = VornToolsCommon::getResultInfo(status, lines);
};

struct Client {
    unsigned char ok = 7;
    unsigned char hosted = 7;
    HRESULT code = VornToolsCommon::readResultFileAndGetClient(ok, hosted);
    std::string text() const { return std::to_string(ok) + "," + std::to_string(hosted); }
};

struct Highlight {
    explicit Highlight(bool anyCommand) {
        contexts.Append("stale");
        parts.Append("stale");
        files.Append("stale");
        code = VornToolsCommon::readHighlightFile(anyCommand ? 1 : 0, contexts, parts, files);
    }
    CATListValCATUnicodeString contexts, parts, files;
    HRESULT code = S_OK;
};

const std::string kBoth = "<selection>\n<partnumber>\nP1\n</partnumber>\n<filename>\nF1\n</filename>\n</selection>\n";
const std::string kFileOnly = "<selection>\r\n<filename>\r\nF2\r\n</FILENAME>\r\n</selection>\r\n";
const std::string kThree = "<selection>\n<partnumber>\nA\n</partnumber>\nnoise\n<partnumber>\nB\n</partnumber>\n"
                           "<filename>\nX\n</filename>\n<partnumber>\nC\n</partnumber>\n<partnumber>\nD\n"
                           "</partnumber>\n</selection>";

class ExchangeTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        environment().tempDirectory = path("") + UTILFile::getPathSeparator().ConvertToChar();
    }

    /** The bytes of a file in the folder, LF for any line end; "none" when there is no such file. */
    std::string content(const std::string& name) {
        std::ifstream file(folder() / name, std::ios::binary);
        if (!file) return "none";
        std::string all((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        all.erase(std::remove(all.begin(), all.end(), '\r'), all.end());
        return all;
    }
    bool journalled(const std::string& message) { return embedded::Journal::get().contains(message); }
};

TEST_F(ExchangeTest, TheResultFileTellsHowARequestEnded) {
    const struct {
        std::string file;
        HRESULT clientCode;
        const char* client; // ok, hosted
        int status;
        Texts lines;
    } cases[] = {
        {":ok\nSK\n", S_OK, "1,1", 0, {"SK", ""}},
        {":ok\r\nsk\r\nfree text\r\nlast", S_OK, "1,1", 0, {"sk", "free text", "last"}},
        {":OK\nother\n", S_OK, "1,0", -1, {"other", ""}},
        {":ok", S_OK, "1,0", 0, {}},
        {":ok\n\n\n", S_OK, "1,0", 0, {"", "", ""}},
        {":cancel", S_OK, "0,0", 1, {}},
        {":user_cancel\nSK\n", S_OK, "0,0", 1, {"SK", ""}},
        {":Cancel\n", S_OK, "0,0", -1, {""}},
        {":ok \nSK\n", S_OK, "0,0", -1, {"SK", ""}},
        {std::string(":ok\0\nSK\n", 8), S_OK, "0,0", -1, {"SK", ""}},
        {"\n:ok\n", E_FAIL, "0,0", -1, {":ok", ""}},
        {"", E_FAIL, "0,0", -1, {}},
        {":ok\n" + std::string(200000, 'x'), S_OK, "1,0", 0, {std::string(200000, 'x')}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file.substr(0, 40));
        write("results", c.file);
        clearJournal();
        const Client client;
        EXPECT_EQ(client.code, c.clientCode);
        EXPECT_EQ(client.text(), c.client);
        EXPECT_EQ(journalled("Current client is hosted skylane"), client.hosted == 1);
        EXPECT_EQ(journalled("ERROR while reading result file " + environment().tempDirectory + "results"),
                  FAILED(client.code));
        const ResultInfo info;
        EXPECT_EQ(info.code, S_OK);
        EXPECT_EQ(info.status, c.status);
        EXPECT_EQ(texts(info.lines), c.lines);
        clearJournal();
        EXPECT_EQ(VornToolsCommon::getResultStatus(), c.status);
        EXPECT_EQ(messages(), Texts({" " + std::to_string(c.status)}));
    }
}

TEST_F(ExchangeTest, AResultFileThatCannotBeReadIsAFailure) {
    const auto failsWith = [&](const Texts& infoReports, const char* message) {
        clearJournal();
        const Client client;
        EXPECT_EQ(client.code, E_FAIL);
        EXPECT_EQ(client.text(), "0,0");
        reports();
        const ResultInfo info;
        EXPECT_EQ(info.code, E_FAIL);
        EXPECT_EQ(info.status, VornToolsCommon::ResultStatusFailed);
        EXPECT_EQ(info.lines.size(), 0);
        EXPECT_EQ(reports(), infoReports);
        EXPECT_TRUE(!message || journalled(message));
        EXPECT_EQ(VornToolsCommon::getResultStatus(), VornToolsCommon::ResultStatusFailed);
        EXPECT_EQ(reports().size(), infoReports.size());
    };
    const std::string missing = "Unable to open result file " + environment().tempDirectory + "results";
    failsWith({}, missing.c_str());
    fs::create_directory(folder() / "results");
    failsWith({}, missing.c_str());
    environment().tempDirectory = "";
    failsWith({"VornToolsCommon::getResultInfo 9002 result_file"}, "Unable to open result file ");
    environment().missingManagers = {"ENVManager"};
    failsWith({"VornToolsCommon::getResultInfo 9002 p_env"}, nullptr);
}

TEST_F(ExchangeTest, ALineThatCannotBeReadIsNoLine) {
    write("results", ":ok\nSK\n");
    const std::string message = "ERROR while reading result file " + environment().tempDirectory + "results";
    for (const int line : {1, 2}) {
        for (const auto flavour : {embedded::FaultFlavour::code, embedded::FaultFlavour::codeWithOutput}) {
            HRESULT code = S_OK;
            std::string text;
            const auto read = [&] {
                const Client client;
                code = client.code;
                text = client.text();
            };
            EXPECT_TRUE(failAt("UTILFile::readLine", line, read, flavour));
            EXPECT_EQ(code, E_FAIL);
            EXPECT_EQ(text, "0,0");
            EXPECT_EQ(messages(), Texts{message});
        }
    }
}

TEST_F(ExchangeTest, AResultFileIsWrittenWholeOrNotAtAll) {
    write("results", "something longer than what comes\nsecond line\n");
    EXPECT_EQ(VornToolsCommon::createResultFile(":ok"), S_OK);
    EXPECT_EQ(content("results"), ":ok\n");
    EXPECT_EQ(VornToolsCommon::createResultFile(CATUnicodeString("a\0b\nc", 5)), S_OK);
    EXPECT_EQ(content("results"), std::string("a\0b\nc\n", 6));

    fs::remove(folder() / "results");
    fs::create_directory(folder() / "results");
    EXPECT_EQ(VornToolsCommon::createResultFile(":ok"), S_OK) << "a file that cannot be created is no failure";
    EXPECT_TRUE(fs::is_directory(folder() / "results"));
    const std::string directory = environment().tempDirectory;
    environment().tempDirectory = directory + std::string("\0more", 5);
    EXPECT_EQ(VornToolsCommon::createResultFile(":ok"), S_OK);
    environment().tempDirectory = "";
    EXPECT_EQ(VornToolsCommon::createResultFile(":ok"), S_OK);
    environment().missingManagers = {"ENVManager"};
    EXPECT_EQ(VornToolsCommon::createResultFile(":ok"), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::createResultFile 9002 p_env"}));
}

TEST_F(ExchangeTest, AFullDiskLeavesNoFileBehind) {
    if (!fs::exists("/dev/full")) GTEST_SKIP() << "this system has no disk that is always full";
    fs::create_symlink("/dev/full", folder() / "results");
    EXPECT_EQ(VornToolsCommon::createResultFile(":ok"), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::createResultFile 9003 fwrite"}));
    EXPECT_FALSE(fs::is_symlink(folder() / "results"));
}

TEST_F(ExchangeTest, TheSessionFileNamesTheManagedDocumentsInOrder) {
    write("CADFilesInSession.txt", "old\nlines\n");
    std::error_code unable;
    fs::create_hard_link(folder() / "CADFilesInSession.txt", folder() / "kept.txt", unable);
    EXPECT_EQ(VornToolsCommon::writeCADFilesInSessionFile(), S_OK);
    EXPECT_EQ(content("CADFilesInSession.txt"), "");
    EXPECT_TRUE(unable || content("kept.txt") == "old\nlines\n") << "a new file, not the old one written over";
    session().product("/w/Root.CATProduct");
    session().document("C:\\w\\Zahnr\xC3\xA4"
                       "der.CATPart");
    session().document("/w/notes.txt");
    session().document("New.CATDrawing");
    EXPECT_EQ(VornToolsCommon::writeCADFilesInSessionFile(), S_OK);
    const Texts names = {"Root.CATProduct\n",
                         eightBit("Zahnr\xC3\xA4"
                                  "der.CATPart\n"),
                         "New.CATDrawing\n"};
    EXPECT_EQ(content("CADFilesInSession.txt"), names[0] + names[1] + names[2]);

    HRESULT code = S_OK;
    const auto writeFile = [&] { code = VornToolsCommon::writeCADFilesInSessionFile(); };
    for (int split = 1; failAt("UTILFile::splitPathAndFileName", split, writeFile); ++split) {
        EXPECT_EQ(code, split == 3 ? E_FAIL : S_OK) << "the last name's code";
        EXPECT_EQ(reports(),
                  Texts({"VornToolsCommon::writeCADFilesInSessionFile 9003 UTILFile::splitPathAndFileName"}));
        const std::string others[] = {names[1] + names[2], names[0] + names[2], names[0] + names[1]};
        EXPECT_EQ(content("CADFilesInSession.txt"), others[split - 1]);
    }

    fs::remove(folder() / "CADFilesInSession.txt");
    fs::create_directory(folder() / "CADFilesInSession.txt");
    EXPECT_EQ(VornToolsCommon::writeCADFilesInSessionFile(), E_FAIL);
    EXPECT_TRUE(fs::exists(folder() / "CADFilesInSession.txt")) << "an empty folder is not deleted";
    environment().tempDirectory = "";
    EXPECT_EQ(VornToolsCommon::writeCADFilesInSessionFile(), E_FAIL);
    environment().missingManagers = {"ENVManager"};
    EXPECT_EQ(VornToolsCommon::writeCADFilesInSessionFile(), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::writeCADFilesInSessionFile 9003 fopen",
                                "VornToolsCommon::writeCADFilesInSessionFile 9003 fopen",
                                "VornToolsCommon::writeCADFilesInSessionFile 9002 p_env"}));
}

TEST_F(ExchangeTest, TheHighlightFileNamesWhatIsSelected) {
    const std::string context = "<Context>\nC1\n</Context>\n";
    const char* const noSelection = "ERROR : The selection balise is wrong.";
    const char* const wrongForm = "ERROR : File format is wrong (no balise selection).";
    const char* const ended = "End of file reached.";
    const struct {
        std::string file;
        bool threeValues;
        HRESULT code;
        Texts contexts, parts, files;
        const char* message; // the last one; null for none
    } cases[] = {
        {"\n" + kBoth, false, S_OK, {}, {"P1"}, {"F1"}, ended},
        {"\r\n" + kBoth, true, S_OK, {}, {"P1"}, {"F1"}, ended},
        {context + kBoth + "\n\n" + kFileOnly, false, S_OK, {"C1"}, {"P1", ""}, {"F1", "F2"}, ended},
        {kThree, false, S_OK, {}, {"A"}, {"X"}, nullptr},
        {kThree, true, S_OK, {}, {"A", "B", "C"}, {"X", "", ""}, nullptr},
        {"", false, S_OK, {}, {}, {}, ended},
        {"\n\n", false, S_OK, {}, {}, {}, ended},
        {context, false, S_OK, {"C1"}, {}, {}, ended},
        {"<Context>\nC1\n</Context>", false, S_OK, {"C1"}, {}, {}, nullptr},
        {"<Context>\nC1\n</context>\n", false, E_FAIL, {}, {}, {}, "ERROR : There is no close balise context."},
        {"<Context>", false, E_FAIL, {}, {}, {}, "ERROR : There is no close balise context."},
        {"<context>\nC1\n</context>\n", false, E_FAIL, {}, {}, {}, wrongForm},
        {kBoth + context, false, E_FAIL, {}, {"P1"}, {"F1"}, wrongForm},
        {kBoth + std::string("\0\n", 2), false, E_FAIL, {}, {"P1"}, {"F1"}, wrongForm},
        {"<Selection>\n", false, E_FAIL, {}, {}, {}, wrongForm},
        {"<selection>\n</selection>\n", false, E_FAIL, {}, {}, {}, noSelection},
        {kBoth + "<selection>\n<filename>\nF\n</filename>\n", false, E_FAIL, {}, {"P1"}, {"F1"}, noSelection},
        {kBoth + "<selection>", false, E_FAIL, {}, {"P1"}, {"F1"}, noSelection},
        {kBoth + "<selection>\n<partnumber>\nP\n</selection>\n",
         false,
         E_FAIL,
         {},
         {"P1"},
         {"F1"},
         "ERROR : readSelectionBalise is failed."},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        write("highlight_v01.txt", c.file);
        environment().commandHighlightHosted = c.threeValues;
        clearJournal();
        const Highlight highlight(true);
        EXPECT_EQ(highlight.code, c.code);
        EXPECT_EQ(texts(highlight.contexts), c.contexts);
        EXPECT_EQ(texts(highlight.parts), c.parts);
        EXPECT_EQ(texts(highlight.files), c.files);
        EXPECT_EQ(messages().empty() ? std::string() : messages().back(), c.message ? c.message : "");
    }
}

TEST_F(ExchangeTest, OnlyAHighlightFileThatWasReadIsDeleted) {
    const struct {
        const char* why;
        std::string file;
        bool deletes, stateDetails, keeps, itemRevision, anyCommand;
        HRESULT code;
        bool deleted;
    } cases[] = {
        {"the process asks for it", kBoth, true, false, false, true, false, S_OK, true},
        {"the process does not ask", kBoth, false, false, false, false, true, S_OK, false},
        {"the status window reads it again", kBoth, true, true, false, false, true, S_OK, false},
        {"files are kept for fault finding", kBoth, true, false, true, false, true, S_OK, false},
        {"a failed read", "<selection>", true, false, false, false, true, E_FAIL, false},
        {"a command that highlights nothing", kBoth, true, false, false, false, false, E_FAIL, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        write("highlight_v01.txt", c.file);
        environment().deletesStatusWindowFiles = c.deletes;
        environment().commandStateDetailsUpdate = c.stateDetails;
        environment().keepsIntermediateFiles = c.keeps;
        environment().commandHighlightItemRevision = c.itemRevision;
        EXPECT_EQ(Highlight(c.anyCommand).code, c.code);
        EXPECT_EQ(content("highlight_v01.txt"), c.deleted ? "none" : c.file);
    }
    EXPECT_TRUE(journalled("wrong command for highlight."));

    fs::remove(folder() / "highlight_v01.txt");
    fs::create_directory(folder() / "highlight_v01.txt");
    for (const bool unset : {false, true}) {
        if (unset) environment().tempDirectory = "";
        clearJournal();
        EXPECT_EQ(Highlight(true).code, E_FAIL);
        EXPECT_EQ(messages(), Texts({"There is no file."}));
    }
    environment().missingManagers = {"ENVManager"};
    EXPECT_EQ(Highlight(true).code, E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::readHighlightFile 9002 p_env"}));
}

/** However far the file was read, a read that fails is told as one, not as a wrong format. */
TEST_F(ExchangeTest, AReadThatFailsIsNoWrongFormat) {
    write("highlight_v01.txt", kBoth + kBoth);
    int nth = 1;
    for (; failAt("UTILFile::readLine", nth, [] { Highlight(true); }); ++nth) {
        const Texts told = embedded::Journal::get().messages();
        EXPECT_TRUE(told.size() == 1 && told[0].find("Failed to read ") == 0) << nth << testing::PrintToString(told);
    }
    EXPECT_GT(nth, 14);
}

TEST_F(ExchangeTest, ASelectionIsReadFromItsLines) {
    const std::string noEnd = "ERROR : There is no end balise.";
    const std::string empty = "ERROR : filename and partnumber are empty.";
    const struct {
        Texts block;
        Texts parts, files;
        std::string message; // empty on success
    } cases[] = {
        {{"<partnumber>", "P", "</PartNumber>", "x", "<filename>", "F", "</filename>"}, {"P"}, {"F"}, ""},
        {{"<partnumber>", "", "</partnumber>", "<filename>", "F", "</filename>"}, {""}, {"F"}, ""},
        {{"<partnumber>", "<filename>", "</partnumber>"}, {"<filename>"}, {}, ""},
        {{"<PARTNUMBER>", "P", "</PARTNUMBER>", "<filename>", "F", "</filename>"}, {}, {"F"}, ""},
        {{"<partnumber>", "", "</partnumber>", "<partnumber>", "P", "</partnumber>"}, {}, {}, empty},
        {{}, {}, {}, empty},
        {{"<partnumber>", "P", "x", "</partnumber>"}, {}, {}, noEnd},
        {{"<partnumber>", "P", "</partnumber>", "<filename>"}, {}, {}, noEnd},
        {{"<filename>", "F"}, {}, {}, noEnd},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.block.empty() ? "no line" : c.block.back());
        TYPVectorCATUnicodeString block = vectorOf(c.block), parts = vectorOf({"stale"}), files = vectorOf({"stale"});
        clearJournal();
        EXPECT_EQ(VornToolsCommon::readSelectionBalise(&block, &parts, &files), c.message.empty() ? S_OK : E_FAIL);
        EXPECT_EQ(texts(parts), c.parts);
        EXPECT_EQ(texts(files), c.files);
        EXPECT_EQ(messages(), c.message.empty() ? Texts() : Texts({c.message}));
    }
    TYPVectorCATUnicodeString block = vectorOf(cases[0].block), values = vectorOf({"stale"});
    EXPECT_EQ(VornToolsCommon::readSelectionBalise(nullptr, &values, &values), E_FAIL);
    EXPECT_EQ(VornToolsCommon::readSelectionBalise(&block, nullptr, &values), E_FAIL);
    EXPECT_EQ(VornToolsCommon::readSelectionBalise(&block, &values, nullptr), E_FAIL);
    EXPECT_EQ(VornToolsCommon::readSelectionBalise(&block, &values, &block), S_OK) << "the block is an output, too";
    EXPECT_EQ(texts(values), Texts({"P"}));
    EXPECT_EQ(texts(block), Texts({"F"}));
}

TEST_F(ExchangeTest, IntegersAreReadFromBytes) {
    const char raw[] = "\x01\x00\x02\x00\xFF\x80\x05\x00\x00\x00\x05";
    VornToolsString data(raw, 11);
    const struct {
        unsigned int offset, count, little, gap;
        int expected;
    } cases[] = {
        {0, 2, 1, 1, 513},      {0, 2, 0, 1, 258},         {4, 1, 7, 0, 255},      {4, 1, 0, 0, 255},
        {2, 3, 1, 0, 0xFF0002}, {2, 4, 1, 0, -2130771966}, {4, 4, 0, 0, -8387328}, {10, 4, 1, 0, 5},
        {10, 4, 0, 0, 5 << 24}, {11, 4, 1, 0, 0},          {kFar, 4, 1, kFar, 0},  {0, 4, 1, kFar, 1},
        {0, 0, 1, 0, 0},        {0, 5, 1, 0, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(VornToolsCommon::getInt(&data, c.offset, c.count, c.little, c.gap), c.expected)
            << c.offset << " " << c.count << " " << c.little << " " << c.gap;
    }
    EXPECT_EQ(VornToolsCommon::getInt(nullptr, 0, 4, 1, 0), 0);
    EXPECT_EQ(VornToolsCommon::isLittleEndian(&data, 6), 1u) << "05 00 00 00";
    EXPECT_EQ(VornToolsCommon::isLittleEndian(&data, 7), 0u) << "00 00 00 05";
    EXPECT_EQ(VornToolsCommon::isLittleEndian(&data, 4), 1u) << "negative when big-endian";
    EXPECT_EQ(VornToolsCommon::isLittleEndian(&data, 2), 0u) << "negative when little-endian";
    EXPECT_EQ(VornToolsCommon::isLittleEndian(&data, 11), 0u);
    EXPECT_EQ(VornToolsCommon::isLittleEndian(&data, -1), 0u);
    EXPECT_EQ(VornToolsCommon::isLittleEndian(nullptr, 0), 0u);
    VornToolsString alike("\1\0\0\1", 4);
    EXPECT_EQ(VornToolsCommon::isLittleEndian(&alike, 0), 0u) << "the same in either way";
}

TEST_F(ExchangeTest, DecimalTextsAreReadLikeTheLanguageDoes) {
    const struct {
        std::string text;
        int expected;
    } cases[] = {
        {"42", 42},
        {" \t\r\n\v\f-17x9", -17},
        {"+8 9", 8},
        {"", 0},
        {"x1", 0},
        {"- 1", 0},
        {"+-1", 0},
        {std::string("1\0002", 3), 1},
        {"0x1F", 0},
        {"2147483647", 2147483647},
        {"2147483648", 2147483647},
        {"-2147483648", std::numeric_limits<int>::min()},
        {"-99999999999999999999999", std::numeric_limits<int>::min()},
    };
    for (const auto& c : cases) {
        VornToolsString text(c.text.data(), static_cast<int>(c.text.size()));
        int value = 4711;
        EXPECT_EQ(VornToolsCommon::stringToInt(&text, &value), 0);
        EXPECT_EQ(value, c.expected) << c.text;
    }
    int value = 4711;
    EXPECT_EQ(VornToolsCommon::stringToInt(nullptr, &value), -1);
    EXPECT_EQ(value, 0);
    VornToolsString text("1", 1);
    EXPECT_EQ(VornToolsCommon::stringToInt(&text, nullptr), -1);
}

TEST_F(ExchangeTest, WholeFilesAreReadAsTheyAre) {
    const auto read = [](const std::string& name) {
        const CATUnicodeString text(name.data(), name.size());
        return std::unique_ptr<VornToolsString>(VornToolsCommon::readBinaryFile(text));
    };
    std::string all;
    for (int i = 0; i < 100000; ++i) all += static_cast<char>(i * 7 >> (i % 3));
    all += "\r\n\x1A\r\n";
    all += '\0';
    const std::string name = write("all.bin", all);
    const auto sp_read = read(name);
    ASSERT_TRUE(sp_read);
    EXPECT_TRUE(std::string(sp_read->bytes(), sp_read->size()) == all);
    EXPECT_EQ(sp_read->bytes()[sp_read->size()], '\0');
    clearJournal();
    EXPECT_FALSE(read(write("empty.bin", "")));
    EXPECT_FALSE(read(path("missing.bin")));
    EXPECT_FALSE(read(environment().tempDirectory));
    EXPECT_FALSE(read(""));
    EXPECT_FALSE(read(name + std::string("\0x", 2)));
    EXPECT_EQ(messages(), Texts());
    const std::string huge = write("huge.bin", "");
    fs::resize_file(folder() / "huge.bin", std::uintmax_t{1} << 31U);
    EXPECT_FALSE(read(huge)) << "longer than a string can be";
    EXPECT_EQ(messages(), Texts({"Error while reading (ftell is failed) [" + huge + "]. readBinaryFile return NULL."}));
}

/** Memory that one large file leaves is taken for the next: nothing of the first shows in it. */
TEST_F(ExchangeTest, LargeFilesAreReadOneAfterAnother) {
    constexpr std::size_t kMega = std::size_t{1} << 20;
    const auto read = [&](char letter, std::size_t size) {
        const std::string name = write(std::string(1, letter), std::string(size, letter));
        return std::unique_ptr<VornToolsString>(VornToolsCommon::readBinaryFile(name.c_str()));
    };
    const auto holds = [](const std::unique_ptr<VornToolsString>& text, char letter, std::size_t size) {
        return text && text->size() == size && text->bytes()[size] == '\0' &&
               std::string_view(text->bytes(), size).find_first_not_of(letter) == std::string_view::npos;
    };
    auto first = read('a', 40 * kMega);
    const auto second = read('b', 36 * kMega + 1);
    EXPECT_TRUE(holds(first, 'a', 40 * kMega));
    EXPECT_TRUE(holds(second, 'b', 36 * kMega + 1));
    first.reset();
    first = read('c', 33 * kMega);
    EXPECT_TRUE(holds(first, 'c', 33 * kMega));
    first.reset();
    EXPECT_TRUE(holds(read('d', 48 * kMega), 'd', 48 * kMega));
    EXPECT_TRUE(holds(second, 'b', 36 * kMega + 1));
}

/** Names of any characters, also those that the system's 8-bit encodings lack. */
TEST_F(ExchangeTest, FilesHaveNamesInEveryScript) {
    const std::string name = "\xD0\x94\xE6\xBC\xA2\xC3\x96 \xF0\x9F\x94\xA9/";
    const std::string file = write(name + "part.bin", "bytes");
    const std::unique_ptr<VornToolsString> sp_read(VornToolsCommon::readBinaryFile(utf8(file)));
    ASSERT_TRUE(sp_read);
    EXPECT_EQ(std::string(sp_read->bytes(), sp_read->size()), "bytes");
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = path(name);
    EXPECT_TRUE(std::unique_ptr<VornToolsString>(VornToolsCommon::readBinaryFile("\x01\x02\\LIB\\part.bin")));
    environment().tempDirectory = path(name);
    EXPECT_EQ(VornToolsCommon::createResultFile(":ok"), S_OK);
    EXPECT_EQ(VornToolsCommon::getResultStatus(), VornToolsCommon::ResultStatusOk);
    EXPECT_TRUE(fs::exists(folder() / fs::u8path(name) / "results"));
    const fs::path old = folder() / fs::u8path(name) / "CADFilesInSession.txt";
    EXPECT_EQ(VornToolsCommon::writeCADFilesInSessionFile(), S_OK);
    std::error_code unable;
    fs::create_hard_link(old, folder() / "kept.txt", unable);
    session().product("/w/Root.CATProduct");
    EXPECT_EQ(VornToolsCommon::writeCADFilesInSessionFile(), S_OK);
    EXPECT_TRUE(unable || content("kept.txt").empty()) << "the old file is gone, not written over";
}

/** A file that another program writes, shortens and deletes in the meantime is read whole, as it was at some time, or
 * not at all. */
TEST_F(ExchangeTest, FilesMayChangeWhileTheyAreRead) {
    constexpr std::size_t kLengths[] = {10, 300000, 70000};
    const std::string name = write("busy.bin", "x");
    const fs::path file = folder() / "busy.bin";
    std::atomic<bool> done{false};
    std::thread writer([&] {
        for (int i = 0; !done; ++i) {
            std::ofstream(file, std::ios::binary) << std::string(kLengths[i % 3], 'x');
            std::error_code inUse;
            if (i % 4 == 0) fs::remove(file, inUse);
        }
    });
    for (int i = 0; i < 300; ++i) {
        const std::unique_ptr<VornToolsString> sp_read(
            VornToolsCommon::readBinaryFile(CATUnicodeString(name.data(), name.size())));
        const std::string read = sp_read ? std::string(sp_read->bytes(), sp_read->size()) : std::string();
        EXPECT_EQ(read, std::string(read.size(), 'x'));
    }
    done = true;
    writer.join();
}

TEST_F(ExchangeTest, TheWorkIsDoneWithoutJournalAndErrorList) {
    environment().missingManagers = {"JNLManager", "EMHManager"};
    environment().debugMode = true;
    session().product("/w/Root.CATProduct");
    EXPECT_EQ(VornToolsCommon::writeCADFilesInSessionFile(), S_OK);
    EXPECT_EQ(content("CADFilesInSession.txt"), "Root.CATProduct\n");
    EXPECT_EQ(VornToolsCommon::createResultFile(":ok"), S_OK);
    EXPECT_EQ(VornToolsCommon::getResultStatus(), VornToolsCommon::ResultStatusOk);
    EXPECT_FALSE(VornToolsCommon::readBinaryFile("none"));
    CATDocument* document = nullptr;
    EXPECT_EQ(VornToolsCommon::openDocument("none", document), E_FAIL);
    EXPECT_EQ(embedded::Journal::get().lines(), Texts());
    EXPECT_EQ(reports(), Texts());

    environment().missingManagers = {"JNLManager"};
    EXPECT_EQ(VornToolsCommon::openDocument("none", document), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::openDocument 9010 none"})) << "under its name all the same";
}

TEST_F(ExchangeTest, FailuresOfThePlatformAreMet) {
    const std::string file = write("data.bin", "bytes");
    session().product("/w/Root.CATProduct");
    session().part("/w/Bolt.CATPart");
    environment().deletesStatusWindowFiles = true;
    const auto restore = [&] {
        write("results", ":ok\nSK\nlast");
        write("highlight_v01.txt", "<Context>\nC1\n</Context>\n" + kBoth + kFileOnly);
    };
    sweepFailures({"VornToolsCommon::createResultFile",
                   [&] {
                       return SweepOutcome{VornToolsCommon::createResultFile(":ok"), true};
                   },
                   restore, [&] { return content("results"); }});
    sweepFailures({"VornToolsCommon::readResultFileAndGetClient",
                   [&] {
                       const Client client;
                       return outcomeOf(client.code, client.ok, client.hosted);
                   },
                   restore});
    sweepFailures({"VornToolsCommon::getResultInfo",
                   [&] {
                       const ResultInfo info;
                       return SweepOutcome{info.code, info.status == -1 && info.lines.size() == 0, info.status,
                                           textOfOutputs(texts(info.lines))};
                   },
                   restore});
    sweepFailures({"VornToolsCommon::getResultStatus",
                   [&] {
                       const int status = VornToolsCommon::getResultStatus();
                       return SweepOutcome{status < 0 ? E_FAIL : S_OK, true, status};
                   },
                   restore});
    sweepFailures({"VornToolsCommon::writeCADFilesInSessionFile",
                   [&] {
                       return SweepOutcome{VornToolsCommon::writeCADFilesInSessionFile(), true};
                   },
                   restore});
    // A failing call keeps the selections in front of the wrong place; what counts is that the lists stay parallel.
    sweepFailures({"VornToolsCommon::readHighlightFile",
                   [&] {
                       const Highlight highlight(true);
                       return SweepOutcome{highlight.code, highlight.parts.Size() == highlight.files.Size(), 0,
                                           textOfOutputs(highlight.contexts, highlight.parts, highlight.files)};
                   },
                   restore, [&] { return content("highlight_v01.txt"); }});
    sweepFailures({"VornToolsCommon::readBinaryFile",
                   [&] {
                       const std::unique_ptr<VornToolsString> sp_read(
                           VornToolsCommon::readBinaryFile(CATUnicodeString(file.data(), file.size())));
                       return outcomeOf(sp_read ? S_OK : E_FAIL, sp_read.get());
                   },
                   restore});
}

} // namespace
