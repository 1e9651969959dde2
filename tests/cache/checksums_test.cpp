#include "VornToolsCommon.h"

#include "VornToolsWorkModeServices.h"
#include "cache/FileBackup.h"
#include "embedded/DesignTables.h"
#include "embedded/Profile.h"
#include "embedded/WorkModes.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"
#include "tests/support/Workbook.h"

#include "CATDocument.h"
#include "UTILFile.h"

#include <fstream>
#include <functional>
#include <iterator>

using embedded::Failures;
using embedded::FaultFlavour;
using vorntools::FileBackup;
using vorntools::JournalFrame;

namespace {

namespace fs = std::filesystem;

constexpr const char* kName = "VornToolsCommon::CalculateCheckSums";
// Checksums of "M8x20", "M10x30" and of no text.
constexpr const char* kM8 = "35b97ff6849735f881650d2bbf7fee55";
constexpr const char* kM10 = "84fa91927a0905fab9ba4d2f7bbd467a";
constexpr const char* kTitles = "f8298d1d35dbe324d24132615f3a88db"; // of "SizeLength"
constexpr const char* kNoText = "d41d8cd98f00b204e9800998ecf8427e";

std::string bytesOf(const std::string& name) {
    std::ifstream file(fs::u8path(name), std::ios::binary);
    return file ? std::string(std::istreambuf_iterator<char>(file), {}) : std::string("(none)");
}

CATListValCATUnicodeString listOf(const Texts& texts) {
    CATListValCATUnicodeString list;
    for (const std::string& text : texts) list.Append(text.c_str());
    return list;
}

Texts textsOf(const CATListValCATUnicodeString& list) {
    Texts texts;
    for (int i = 1; i <= list.Size(); ++i) texts.emplace_back(list[i].ConvertToChar());
    return texts;
}

/** The three lists of a call, and its answer. */
struct Lists {
    CATListValCATUnicodeString sheets, configurations, checksums;
    unsigned char found = 7;

    Lists(const Texts& theSheets, const Texts& theConfigurations, const Texts& theChecksums = {})
        : sheets(listOf(theSheets)), configurations(listOf(theConfigurations)), checksums(listOf(theChecksums)) {}
    HRESULT calculate(CATDocument* document, const std::string& file) {
        CATListValCATUnicodeString* lists[] = {&sheets, &configurations, &checksums};
        return VornToolsCommon::calculateCheckSums(document, file.c_str(), nullptr, 0, lists[0], lists[1], lists[2],
                                                   found);
    }
};

class CheckSumsTest : public PlatformTest {
protected:
    /** A product document with a table of two columns. */
    embedded::DesignTable table(const std::string& file) {
        m_document = session().product("/w/Bolts.CATProduct");
        const auto publisher = embedded::parametersOf(m_document, "Relations", "Relations");
        auto made = embedded::addDesignTable(publisher, "DesignTable.1", file);
        return made.associate("Size", publisher.add("Size", "x")).associate("Length", publisher.add("Length", "y"));
    }
    embedded::DesignTable textTable() {
        m_file = write("bolts.txt", "Length\tSize\nx20\tM8\nx30\tM10\n");
        return table(m_file);
    }
    /** Three sheets; the second has the columns in another order. */
    embedded::DesignTable spreadsheetTable() {
        m_file = write("bolts.xlsx", workbook({{{"Size", "Length"}, {"M8", "x20"}},
                                               {{"Length", "Size"}, {"x20", "M8"}, {"x30", "M10"}},
                                               {{"Size"}, {"M8x20"}}}));
        return table(m_file);
    }
    CATDocument* document() { return m_document.get(); }
    const std::string& file() { return m_file; }
    std::string backup() { return m_file.substr(0, m_file.size() - 4) + "_tmp" + m_file.substr(m_file.size() - 4); }
    /** The lines of the operation itself, without its name. */
    Texts lines() {
        Texts found;
        for (const std::string& line : messages())
            if (line.rfind(kName, 0) == 0) found.push_back(line.substr(std::string(kName).size()));
        return found;
    }
    int filesInFolder() {
        return static_cast<int>(std::distance(fs::directory_iterator(folder()), fs::directory_iterator()));
    }

private:
    embedded::Document m_document;
    std::string m_file;
};

TEST_F(CheckSumsTest, CreatesTheChecksumsOfATextFile) {
    auto made = textTable();
    made.configuration(2);
    Lists lists({"1", "2", "1", "1", "x"}, {"2", "1", "1", "9", "1"});
    EXPECT_EQ(lists.calculate(document(), file()), S_OK);
    EXPECT_EQ(lists.found, 1);
    EXPECT_EQ(textsOf(lists.checksums), Texts({kM10, kM8, kNoText}));
    EXPECT_EQ(lists.sheets.Size(), 5) << "entries without a sheet stay";
    EXPECT_EQ(lines(), Texts({" Sheet n\260"
                              "1 existe",
                              " String used to find CkSum : M10x30", std::string(" checkSum calcul\351 : ") + kM10,
                              " Sheet n\260"
                              "2 n'existe pas",
                              " Sheet n\260"
                              "1 existe",
                              " String used to find CkSum : M8x20", std::string(" checkSum calcul\351 : ") + kM8,
                              " Sheet n\260"
                              "1 existe",
                              " String used to find CkSum : ", std::string(" checkSum calcul\351 : ") + kNoText,
                              " Sheet n\260"
                              "0 n'existe pas"}));
    EXPECT_EQ(made.configuration(), 2);
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(CheckSumsTest, UpdatesWhatIsMarked) {
    textTable();
    Lists lists({"1", "1", "7"}, {"1", "2", "1"}, {"0cc1", "ERROR", "error"});
    EXPECT_EQ(lists.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(lists.checksums), Texts({"0cc1", kM10, "error"}));
    EXPECT_EQ(lines(), Texts({" Update...", " CkSum of config 1 : No need to update",
                              " Sheet n\260"
                              "1 existe",
                              " String used to find CkSum : M10x30", std::string(" checkSum calcul\351 : ") + kM10,
                              " CkSum of config 1 : No need to update"}));
}

TEST_F(CheckSumsTest, ReadsTheFileAgainWhenItChanged) {
    auto made = textTable();
    write("bolts.txt", "Size\tLength\nM8\tx20\n");
    touch("bolts.txt", 1500000000);
    Lists lists({"1"}, {"1"});
    EXPECT_EQ(lists.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(lists.checksums), Texts({kM8}));
    EXPECT_EQ(made.updates(), 1);
}

TEST_F(CheckSumsTest, SelectsTheSheetsOfASpreadsheetAndTheFirstOneAgain) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    auto made = spreadsheetTable();
    made.sheet(3);
    const std::string content = bytesOf(file());
    Lists lists({"2", "9", "9", "2", "1", "3"}, {"2", "1", "1", "1", "1", "1"});
    EXPECT_EQ(lists.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(lists.checksums), Texts({kM10, "", "", kM8, kM8, kM8}));
    EXPECT_EQ(lines()[3], " sheet n\260"
                          "9 n'existe pas");
    EXPECT_EQ(made.sheet(), 3);
    EXPECT_EQ(made.cell(2, 1), "M8x20");
    EXPECT_EQ(made.updates(), 6) << "selected 2, 9 twice, 2, 1, 3";
    EXPECT_EQ(bytesOf(file()), content);
    EXPECT_EQ(filesInFolder(), 1);

    Lists updated({"9", "9", "2", "1"}, {"1", "2", "2", "1"}, {"ERROR", "ERROR", "ERROR", "kept"});
    EXPECT_EQ(updated.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(updated.sheets), Texts({"2", "1"}));
    EXPECT_EQ(textsOf(updated.configurations), Texts({"2", "1"}));
    EXPECT_EQ(textsOf(updated.checksums), Texts({kM10, "kept"}));
}

TEST_F(CheckSumsTest, AFileThatCannotBeReadAgainLeavesTheCellsOfBefore) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    auto made = spreadsheetTable();
    const std::string content = bytesOf(file());
    const struct {
        const char* name;
        std::string bytes;
    } cases[] = {{"empty", ""},
                 {"no spreadsheet", "Size\tLength\nM8\tx20\n"},
                 {"truncated", content.substr(0, content.size() / 2)},
                 {"without its directory", content.substr(0, content.size() - 22)}};
    long long date = 1500000000;
    for (const auto& c : cases) {
        write("bolts.xlsx", c.bytes);
        touch("bolts.xlsx", ++date);
        Lists lists({"1", "2", "1"}, {"1", "1", "1"});
        EXPECT_EQ(lists.calculate(document(), file()), S_OK);
        EXPECT_EQ(textsOf(lists.checksums), Texts({kM8, "", ""})) << c.name << ": sheet 1 is tried again, in vain";
        EXPECT_EQ(reports(), Texts({std::string(kName) + " 9003 updateDesignTableCurrentSheet"})) << c.name;
        EXPECT_EQ(bytesOf(file()), c.bytes) << c.name;
        EXPECT_EQ(made.cell(2, 1), "M8") << c.name;
    }
    fs::remove(fs::u8path(file()));
    Lists lists({"1", "2"}, {"1", "1"}, {"ERROR", "ERROR"});
    EXPECT_EQ(lists.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(lists.checksums), Texts({kM8}));
    EXPECT_EQ(filesInFolder(), 0);
}

TEST_F(CheckSumsTest, OneSheetOfTenThousandIsFound) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    std::vector<WorkbookSheet> sheets(10000, WorkbookSheet{{"Size"}});
    sheets.front() = sheets.back() = {{"Size", "Length"}, {"M8", "x20"}};
    table(write("many.xlsx", workbook(sheets)));
    Lists lists({"10000", "10001", "1"}, {"1", "1", "1"});
    EXPECT_EQ(lists.calculate(document(), path("many.xlsx")), S_OK);
    EXPECT_EQ(textsOf(lists.checksums), Texts({kM8, "", kM8}));
}

TEST_F(CheckSumsTest, WithoutItsParametersAConfigurationHasNoChecksum) {
    textTable();
    for (const char* const call : {"CATICkeRelation::OutParameters", "QueryInterface(CATICkeParm)"}) {
        Texts created, updated;
        EXPECT_TRUE(failAt(call, 1, [&] {
            Lists lists({"1"}, {"1"});
            lists.calculate(document(), file());
            created = textsOf(lists.checksums);
        }));
        EXPECT_EQ(created, Texts({""})) << call;
        EXPECT_TRUE(failAt(call, 1, [&] {
            Lists lists({"1", "1"}, {"1", "2"}, {"ERROR", "kept"});
            lists.calculate(document(), file());
            updated = textsOf(lists.checksums);
        }));
        EXPECT_EQ(updated, Texts({"kept"})) << call;
    }
    EXPECT_EQ(reports(), Texts({std::string(kName) + " 9002 pi_parameter"}));
}

TEST_F(CheckSumsTest, AFileOfALogicalNameIsProtectedByItsPathOnDisk) {
    const std::string physical = write("bolts.txt", "Size\tLength\nM8\tx20\n");
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    const auto logicalIn = [](const std::string& directory) {
        return "\x01\x02\\" + directory + UTILFile::getPathSeparator().ConvertToChar() + "bolts.txt";
    };
    write("bolts_tmp.txt", "another file");
    table(logicalIn("LIB"));
    Lists lists({"1"}, {"9"});
    EXPECT_EQ(lists.calculate(document(), logicalIn("LIB")), S_OK);
    EXPECT_EQ(lines()[0], " : " + path("bolts_tmp.txt") + " is not replaced, it may be the only copy of " + physical);
    table(logicalIn("UNKNOWN"));
    EXPECT_EQ(lists.calculate(document(), logicalIn("UNKNOWN")), S_OK);
    EXPECT_EQ(reports(), Texts({std::string(kName) + " 9003 UTILDLName::getPhysicalPathFromDLName"}));
}

TEST_F(CheckSumsTest, APartStaysInDesignModeUntilAllIsRead) {
    const std::string name = write("part.txt", "Size\nM8x20\n");
    const auto part = session().part(path("Bolt.CATPart"));
    const auto publisher = embedded::parametersOf(part, "MechanicalPart", "Bolt");
    embedded::addDesignTable(publisher, "DT", name).associate("Size", publisher.add("Size", "x"));
    VornToolsWorkModeServices::setCatiaCacheActivated(1);
    embedded::setWorkMode(part.root(), embedded::WorkMode::visualisation);
    clearJournal();
    Lists lists({"1"}, {"1"});
    EXPECT_EQ(lists.calculate(part.get(), name), S_OK);
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
    EXPECT_EQ(textsOf(lists.checksums), Texts({kM8}));
    EXPECT_EQ(embedded::workMode(part.root()), embedded::WorkMode::visualisation);
    Texts ends;
    for (const std::string& line : embedded::Journal::get().lines())
        if (line == "< VornToolsWorkModeServices::setWorkMode" || line.find("checkSum calcul") != std::string::npos)
            ends.push_back(line);
    const std::string end = "< VornToolsWorkModeServices::setWorkMode";
    EXPECT_EQ(ends, Texts({end, std::string(kName) + " checkSum calcul\351 : " + kM8, end}));
}

TEST_F(CheckSumsTest, SaysWhatItDidNotFind) {
    textTable().withoutSheet();
    Lists other({"1"}, {"1"});
    EXPECT_EQ(other.calculate(document(), "/w/other.txt"), S_OK);
    EXPECT_EQ(other.found, 0);
    EXPECT_EQ(textsOf(other.checksums), Texts());
    EXPECT_EQ(lines(), Texts());

    Lists noSheet({"1"}, {"1"}, {"ERROR"});
    EXPECT_EQ(noSheet.calculate(document(), file()), S_OK);
    EXPECT_EQ(noSheet.found, 1);
    EXPECT_EQ(textsOf(noSheet.checksums), Texts({"ERROR"}));
    EXPECT_EQ(lines(), Texts({" Update...", "ERROR piSheet"}));
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(CheckSumsTest, BadListsAndDocumentsAreNoHarm) {
    textTable();
    Lists uneven({"1", "1", "1"}, {"1", "99999999999999999999"}, {"ERROR"});
    EXPECT_EQ(uneven.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(uneven.checksums), Texts({kM8}));
    const Texts numbers = {"99999999999999999999", "-1", "-99999999999999999999", "7"};
    Lists outside({"1", "1", "1", "1", "-1", "", "99999999999999999999"}, numbers);
    outside.configurations.Append(listOf({"1", "1", "1"}));
    EXPECT_EQ(outside.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(outside.checksums), Texts(4, kNoText));
    Lists notNumbers({" 1 ", "1.9", "1"}, {"1 and more", " 1", "x"});
    EXPECT_EQ(notNumbers.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(notNumbers.checksums), Texts({kM8, kM8, kTitles})) << "numbers end where they end; none is 0";

    CATListValCATUnicodeString* none = nullptr;
    unsigned char found = 7;
    EXPECT_EQ(VornToolsCommon::calculateCheckSums(document(), file().c_str(), nullptr, 0, none, none, none, found),
              S_OK);
    EXPECT_EQ(found, 0);
    EXPECT_EQ(reports(),
              Texts({std::string(kName) + " 9001 iop_sheets", std::string(kName) + " 9001 iop_configurations",
                     std::string(kName) + " 9001 iop_checksums"}));
    CATListValCATUnicodeString held[3];
    for (const int missing : {0, 1, 2}) {
        CATListValCATUnicodeString* lists[] = {&held[0], &held[1], &held[2]};
        lists[missing] = nullptr;
        EXPECT_EQ(VornToolsCommon::calculateCheckSums(document(), file().c_str(), nullptr, 0, lists[0], lists[1],
                                                      lists[2], found),
                  S_OK);
        EXPECT_EQ(found, 0);
        EXPECT_EQ(reports().size(), 1U);
    }
    Lists lists({"1"}, {"1"});
    EXPECT_EQ(lists.calculate(nullptr, file()), S_OK);
    EXPECT_EQ(lists.found, 0);
    EXPECT_FALSE(reports().empty());
}

TEST_F(CheckSumsTest, AnEntryWithoutASheetNumberIsNoSheet) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    auto made = spreadsheetTable();
    const Texts sheets = {"0", "9", "0", "", "x", "-1", "2", "0", "1"};
    Lists lists(sheets, Texts(sheets.size(), "1"));
    EXPECT_EQ(lists.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(lists.checksums), Texts({"", "", "", "", "", "", kM8, "", kM8}));
    EXPECT_EQ(made.updates(), 3) << "selected 9, 2 and 1";
    Lists updated(sheets, Texts(sheets.size(), "1"), Texts(sheets.size(), "ERROR"));
    EXPECT_EQ(updated.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(updated.sheets), Texts({"2", "1"}));
    EXPECT_EQ(textsOf(updated.checksums), Texts({kM8, kM8}));
}

TEST_F(CheckSumsTest, WhatSelectingTouchesIsPutBack) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    auto made = spreadsheetTable();
    const std::string content = bytesOf(file());
    embedded::Switches switches = embedded::switches();
    switches.selectingWritesTables = switches.sheetSelectsFirstConfiguration = true;
    const struct {
        int configuration;
        bool rowZeroIsTaken;
        int after;
        Texts lines;
    } cases[] = {{2, false, 2, {}},
                 {0, true, 0, {}},
                 {0, false, 1, {" : configuration 0 cannot be set again"}},
                 {7, false, 1, {" : configuration 7 cannot be set again"}}};
    made.sheet(2);
    for (const auto& c : cases) {
        switches.rowZeroIsTaken = c.rowZeroIsTaken;
        embedded::setSwitches(switches);
        made.storedConfiguration(c.configuration);
        clearJournal();
        Lists lists({"1", "2"}, {"1", "2"});
        EXPECT_EQ(lists.calculate(document(), file()), S_OK);
        EXPECT_EQ(textsOf(lists.checksums), Texts({kM8, kM10}));
        EXPECT_EQ(made.sheet(), 2);
        EXPECT_EQ(made.configuration(), c.after);
        EXPECT_EQ(bytesOf(file()), content);
        EXPECT_EQ(filesInFolder(), 1);
        const Texts all = lines();
        EXPECT_EQ(Texts(all.begin() + 6, all.end()), c.lines);
    }
}

TEST_F(CheckSumsTest, WithoutACopyTheChecksumsAreComputedAllTheSame) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    spreadsheetTable();
    const std::string content = bytesOf(file());
    const std::string other = "all that an earlier call could save";
    write(fs::u8path(backup()).filename().u8string(), other);
    const std::string longFile = write(std::string(247, 'b') + ".xlsx", content);
    table(longFile);
    const std::string longCopy = longFile.substr(0, longFile.size() - 4) + "_tmpxlsx";
    const struct {
        std::string file;
        std::string line;
    } cases[] = {{file(), " : " + backup() + " is not replaced, it may be the only copy of " + file()},
                 {longFile, " : " + longFile + " cannot be copied to " + longCopy}};
    for (const auto& c : cases)
        for (const bool isWritten : {false, true}) {
            embedded::Switches switches = embedded::switches();
            switches.selectingWritesTables = isWritten;
            embedded::setSwitches(switches);
            clearJournal();
            Lists lists({"2"}, {"2"}, {"ERROR"});
            EXPECT_EQ(lists.calculate(document(), c.file), S_OK);
            EXPECT_EQ(lists.found, 1);
            EXPECT_EQ(textsOf(lists.checksums), Texts({kM10}));
            EXPECT_EQ(lines()[1], c.line);
            EXPECT_EQ(bytesOf(c.file) == content, !isWritten);
            EXPECT_EQ(lines().back() == " : " + c.file + " was changed and cannot be restored", isWritten);
            EXPECT_EQ(reports(), isWritten ? Texts({std::string(kName) + " 9003 UTILFile::copyFile"}) : Texts());
        }
    EXPECT_EQ(bytesOf(backup()), other);
}

TEST_F(CheckSumsTest, ACopyThatACrashLeftBehindServes) {
    textTable();
    fs::copy_file(fs::u8path(file()), fs::u8path(backup()));
    Lists lists({"1"}, {"1"}, {"ERROR"});
    EXPECT_EQ(lists.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(lists.checksums), Texts({kM8}));
    EXPECT_EQ(lines().size(), 4U) << "and not a word about copies";
    EXPECT_EQ(filesInFolder(), 1);
}

TEST_F(CheckSumsTest, AFileThatAnotherProgramHasOpenKeepsItsCells) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    auto made = spreadsheetTable();
    touch("bolts.xlsx", 1500000000);
    made.openElsewhere(true);
    Lists lists({"1", "2", "1"}, {"1", "1", "1"});
    EXPECT_EQ(lists.calculate(document(), file()), S_OK);
    EXPECT_EQ(textsOf(lists.checksums), Texts({kM8, "", ""}));
    EXPECT_EQ(reports(), Texts({std::string(kName) + " 9003 updateDesignTableCurrentSheet"}));
    EXPECT_EQ(made.sheet(), 1);
    EXPECT_EQ(made.cell(2, 1), "M8");
}

TEST_F(CheckSumsTest, EveryPlatformCallMayFail) {
    textTable();
    const std::string content = bytesOf(file());
    sweepFailures({"VornToolsCommon::calculateCheckSums",
                   [&] {
                       Lists lists({"1", "2", "1"}, {"1", "2", "1"}, {"ERROR", "ERROR", "kept"});
                       const HRESULT code = lists.calculate(document(), file());
                       EXPECT_EQ(textsOf(lists.checksums).back(), "kept");
                       EXPECT_EQ(lists.sheets.Size(), lists.checksums.Size());
                       return SweepOutcome{code, true, lists.found, textOfOutputs(lists.checksums)};
                   },
                   [&] { fs::remove(fs::u8path(backup())); },
                   [&] { return bytesOf(file()); },
                   {},
                   {},
                   "VornToolsCommon::CalculateCheckSums"});
}

TEST_F(CheckSumsTest, AFailingCallNeverLeavesAnotherSheetSelected) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    auto made = spreadsheetTable();
    const std::string content = bytesOf(file());
    const std::string kLost = std::string(kName) + " 9003 UTILFile::copyFile";
    for (const FaultFlavour flavour : {FaultFlavour::code, FaultFlavour::codeWithOutput, FaultFlavour::nullOutput}) {
        bool fired = true;
        for (int nth = 1; fired; ++nth) {
            Lists lists({"1", "2", "3"}, {"1", "2", "1"}, {"ERROR", "ERROR", "kept"});
            Failures::get().arm(nth, false, flavour);
            EXPECT_EQ(lists.calculate(document(), file()), S_OK);
            fired = Failures::get().fired();
            Failures::get().disarm();
            SCOPED_TRACE(std::to_string(nth) + " " + Failures::get().firedAt());
            EXPECT_EQ(made.sheet(), 1);
            EXPECT_EQ(made.cell(1, 1), "Size") << "the cells are the first sheet's";
            const Texts told = reports();
            const bool isLost = std::find(told.begin(), told.end(), kLost) != told.end();
            EXPECT_EQ(bytesOf(file()) == content, !isLost) << "what cannot be undone is told";
            if (isLost) write("bolts.xlsx", content);
            EXPECT_EQ(lists.sheets.Size(), lists.checksums.Size());
            EXPECT_EQ(lists.configurations.Size(), lists.checksums.Size());
            EXPECT_EQ(textsOf(lists.checksums).back(), "kept");
            fs::remove(fs::u8path(backup()));
            clearJournal();
        }
    }
    const std::string kLeft = std::string(kName) + " : sheet 1 cannot be selected again";
    bool was_left = false, fired = true;
    for (int nth = 1; fired; ++nth) {
        Lists lists({"1", "2", "3"}, {"1", "2", "1"}, {"ERROR", "ERROR", "kept"});
        Failures::get().arm(nth, true, FaultFlavour::code);
        lists.calculate(document(), file());
        fired = Failures::get().fired();
        Failures::get().disarm();
        const Texts told = messages();
        const bool is_told = std::find(told.begin(), told.end(), kLeft) != told.end();
        EXPECT_TRUE(is_told || made.sheet() == 1) << nth;
        was_left = was_left || is_told;
        made.sheet(1);
        write("bolts.xlsx", content);
        fs::remove(fs::u8path(backup()));
        reports();
        clearJournal();
    }
    EXPECT_TRUE(was_left);
}

class FileBackupTest : public PlatformTest {
protected:
    const std::string content = "old\r\n\x1A content";
    const JournalFrame frame{VornToolsCommon::_CteCLASS_NAME, "test"};
};

TEST_F(FileBackupTest, TheCopyIsNamedAfterTheFile) {
    const struct {
        const char* file;
        const char* copy;
    } cases[] = {{"C:\\t\\cfg.xls", "C:\\t\\cfg_tmp.xls"},
                 {"/t/cfg.xlsx", "/t/cfg._tmpxlsx"},
                 {".xls", "_tmp.xls"},
                 {"abc", "_tmpabc"},
                 {"", "_tmp"},
                 {"a\xC3\xA4.xls", "a\xC3\xA4_tmp.xls"}};
    for (const auto& [file, copy] : cases) EXPECT_STREQ(FileBackup(frame, file).name().ConvertToChar(), copy);
}

TEST_F(FileBackupTest, PutsBackWhatOthersChanged) {
    const struct {
        const char* name;
        std::function<void(const std::string&)> change;
    } cases[] = {{"rewritten", [&](const std::string&) { write("cfg.xls", "new and longer than before"); }},
                 {"same length", [&](const std::string&) { write("cfg.xls", std::string(content.size(), 'x')); }},
                 {"emptied", [&](const std::string&) { write("cfg.xls", ""); }},
                 {"deleted", [&](const std::string& file) { fs::remove(fs::u8path(file)); }},
                 {"left alone", [](const std::string&) {}}};
    for (const auto& c : cases) {
        const std::string file = write("cfg.xls", content);
        touch("cfg.xls", 1500000000);
        FileBackup backup(frame, file.c_str());
        backup.make();
        EXPECT_EQ(bytesOf(backup.name().ConvertToChar()), content) << c.name;
        c.change(file);
        EXPECT_TRUE(backup.restore());
        EXPECT_EQ(bytesOf(file), content) << c.name;
        EXPECT_EQ(bytesOf(backup.name().ConvertToChar()), "(none)") << c.name;
        EXPECT_EQ(UTILFile::getLastModificationDateOnFile(file.c_str()), 1500000000) << c.name;
    }
    EXPECT_EQ(messages(), Texts());
}

TEST_F(FileBackupTest, ALargeFileIsComparedToItsEnd) {
    const std::string large = std::string(200000, 'x') + "end";
    for (const std::size_t place : {std::size_t(0), std::size_t(65536), large.size() - 1}) {
        const std::string file = write("cfg.xls", large);
        FileBackup backup(frame, file.c_str());
        backup.make();
        std::string changed = large;
        changed[place] = '!';
        write("cfg.xls", changed);
        EXPECT_TRUE(backup.restore());
        EXPECT_EQ(bytesOf(file), large) << place;
    }
}

TEST_F(FileBackupTest, WithoutACopyAChangeIsNoticed) {
    const std::string large(200000, 'x');
    const struct {
        const char* name;
        std::string bytes;
        bool isChanged;
    } cases[] = {{"the same", large, false},
                 {"another beginning", "y" + large.substr(1), true},
                 {"another end", large.substr(1) + "y", true},
                 {"longer", large + "x", true},
                 {"empty", "", true}};
    for (const auto& c : cases) {
        const std::string file = write("cfg.xls", large);
        write("cfg_tmp.xls", "another file");
        FileBackup backup(frame, file.c_str());
        backup.make();
        write("cfg.xls", c.bytes);
        EXPECT_EQ(backup.restore(), !c.isChanged) << c.name;
        EXPECT_EQ(bytesOf(file), c.bytes) << c.name;
        EXPECT_EQ(bytesOf(path("cfg_tmp.xls")), "another file");
        EXPECT_EQ(reports(), c.isChanged ? Texts({"VornToolsCommon::test 9003 UTILFile::copyFile"}) : Texts())
            << c.name;
    }
}

TEST_F(FileBackupTest, NamesOfAnyLanguageAreFound) {
    const std::string file = write("\xCE\xB1\xE6\x97\xA5\xC3\xA9.xls", content);
    FileBackup backup(frame, utf8(file));
    backup.make();
    fs::remove(fs::u8path(file));
    EXPECT_TRUE(backup.restore());
    EXPECT_EQ(bytesOf(file), content);
    EXPECT_EQ(messages(), Texts());
}

TEST_F(FileBackupTest, AFileThatIsNotThereNeedsNone) {
    FileBackup backup(frame, path("missing.xls").c_str());
    backup.make();
    write("missing.xls", "made by others");
    EXPECT_TRUE(backup.restore());
    EXPECT_EQ(bytesOf(path("missing.xls")), "made by others");
    EXPECT_EQ(messages(), Texts());
}

TEST_F(FileBackupTest, WhicheverStepFailsOneCompleteFileIsLeftAndTold) {
    int runs = 0;
    for (const FaultFlavour flavour :
         {FaultFlavour::code, FaultFlavour::codeWithOutput, FaultFlavour::nullOutput, FaultFlavour::shortRead})
        for (const bool persistent : {false, true})
            for (int nth = 1;; ++nth) {
                const std::string file = write("cfg.xls", content);
                FileBackup backup(frame, file.c_str());
                const std::string copy = backup.name().ConvertToChar();
                clearJournal();
                Failures::get().arm(nth, persistent, flavour);
                backup.make();
                const bool isMade = bytesOf(copy) == content;
                write("cfg.xls", "new");
                const bool isRestored = backup.restore();
                const bool fired = Failures::get().fired();
                Failures::get().disarm();
                SCOPED_TRACE(std::to_string(nth) + (persistent ? " and on, " : ", ") + Failures::get().firedAt());
                const std::string test = "VornToolsCommon::test : ";
                EXPECT_TRUE(persistent || !isMade || isRestored) << "there is more than one way back";
                if (isRestored) {
                    EXPECT_TRUE(isMade);
                    EXPECT_EQ(bytesOf(file), content);
                    EXPECT_EQ(messages(),
                              bytesOf(copy) == "(none)" ? Texts() : Texts({test + copy + " cannot be deleted"}));
                } else if (isMade) {
                    EXPECT_EQ(bytesOf(copy), content);
                    EXPECT_EQ(messages(), Texts({test + file + " cannot be restored, its content is in " + copy}));
                } else {
                    EXPECT_TRUE(persistent || bytesOf(copy) == "(none)") << "a half copy";
                    EXPECT_EQ(messages(), Texts({test + file + " cannot be copied to " + copy,
                                                 test + file + " was changed and cannot be restored"}));
                }
                EXPECT_EQ(reports(), isRestored ? Texts() : Texts({"VornToolsCommon::test 9003 UTILFile::copyFile"}));
                fs::remove(fs::u8path(copy));
                ++runs;
                if (!fired) break;
            }
    EXPECT_GT(runs, 40);
}

} // namespace
