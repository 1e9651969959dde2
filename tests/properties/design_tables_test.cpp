#include "tests/support/AllocationSweep.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Workbook.h"

#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"

#include "CATDocument.h"
#include "CATIDesignTable.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATISpecObject.h"
#include "CATListOfCATBaseUnknown.h"
#include "CATListOfInt.h"
#include "CATListPtrCATIProduct.h"
#include "UTILFile.h"
#include "embedded/DesignTables.h"
#include "embedded/Windows.h"
#include "embedded/WorkModes.h"
#include "foundation/DesignMode.h"

#include <algorithm>

struct VornToolsCommonTestAccess {
    static unsigned char find(CATDocument* document, const std::string& file, CATIDesignTable*& table) {
        return VornToolsCommon::getDesignTable(document, file.c_str(), nullptr, 0, table);
    }
    static std::string values(CATIDesignTable* table, int configuration) {
        return VornToolsCommon::getConfigurationValues(table, configuration).ConvertToChar();
    }
};

namespace {

using Access = VornToolsCommonTestAccess;
using embedded::FaultFlavour;
using embedded::WorkMode;
using vorntools::DesignMode;
using vorntools::SwitchWay;

constexpr const char* kChecksum12x = "4456d0bcde17f2280b93877cff7b3c36";
constexpr const char* kChecksumLN = "faccf5fbece5d95182fae0726ddadd4b";
constexpr const char* kNoChecksum = "d41d8cd98f00b204e9800998ecf8427e";

struct Sheets {
    CATListValCATUnicodeString paths, files, texts, associated, names;
    CATRawCollint sheets, configurations;

    HRESULT read(const embedded::Document& document, VornToolsSwitchMgt* switcher = nullptr, unsigned char flag = 0) {
        paths.Append("stale");
        sheets.Append(4711);
        return VornToolsCommon::getDesignTableSheet(document.get(), switcher, flag, paths, files, sheets,
                                                    configurations, texts, associated, names);
    }
    Texts rows() const {
        Texts result;
        for (int i = 1; i <= paths.Size(); ++i)
            result.push_back(std::string(files[i].ConvertToChar()) + " " + std::to_string(sheets[i]) + " " +
                             std::to_string(configurations[i]) + " " + texts[i].ConvertToChar() + " " +
                             associated[i].ConvertToChar() + " " + names[i].ConvertToChar());
        return result;
    }
};

Texts textsOf(const CATListValCATUnicodeString& list) {
    Texts result;
    for (int i = 1; i <= list.Size(); ++i) result.emplace_back(list[i].ConvertToChar());
    return result;
}

class DesignTablesTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        VornToolsWorkModeServices::setCatiaCacheActivated(1);
        bolt = session().part(path("Bolt.CATPart"));
        feature = embedded::parametersOf(bolt, "MechanicalPart", "Bolt");
        length = feature.add("Length", "L", 0.25);
        name = feature.add("N", "x");
        file = write("bolts.txt", "N\tL\nw\t11\nx\t12\n");
        touch("bolts.txt", 1000);
    }
    void TearDown() override {
        VornToolsWorkModeServices::setCatiaCacheActivated(0);
        PlatformTest::TearDown();
    }
    embedded::DesignTable addTable(const embedded::Publisher& publisher, const std::string& tableName = "DT.1") {
        return embedded::addDesignTable(publisher, tableName, file).associate("L", length).associate("N", name);
    }
    static int count(const embedded::Document& document, HRESULT expected = S_OK) {
        CATListValCATISpecObject_var tables;
        EXPECT_EQ(VornToolsCommon::getDesignTableList(document.get(), nullptr, 0, &tables), expected);
        return tables.Size();
    }
    bool hasMessage(const std::string& text) {
        const Texts lines = messages();
        return std::find(lines.begin(), lines.end(), text) != lines.end();
    }

    embedded::Document bolt;
    embedded::Publisher feature;
    embedded::Parameter length;
    embedded::Parameter name;
    std::string file;
};

TEST_F(DesignTablesTest, TheSuffixTellsAFileOfDesignTables) {
    for (const char* yes : {"a.txt", "a.xls", "C:\\t\\a.b.xlsx", "a.xlsm"})
        EXPECT_EQ(VornToolsCommon::isACatdesigntable(yes, ""), 1) << yes;
    for (const char* no : {"a.XLS", "a", "", "a.csv", "a.xls.bak", "txt"})
        EXPECT_EQ(VornToolsCommon::isACatdesigntable(no, ""), 0) << no;
    EXPECT_EQ(VornToolsCommon::isACatdesigntable("a.pdf", "xls"), 1);
    EXPECT_EQ(VornToolsCommon::isACatdesigntable("a.txt", "TXT"), 0);
}

TEST_F(DesignTablesTest, ThePlaceOfTheTablesDependsOnTheKindOfDocument) {
    const auto analysis = session().document(path("A.CATAnalysis"));
    const auto process = session().document(path("P.CATProcess"));
    const auto product = session().product(path("R.CATProduct"));
    const auto drawing = session().document(path("D.CATDrawing"));
    const auto manager = embedded::parametersOf(analysis, "AnalysisManager", "Analysis Manager");
    const auto root = embedded::parametersOf(process, "Process", "Process");
    for (const auto& direct : {manager, root}) {
        embedded::addDesignTable(direct.addSet("Relations"), "in set", file);
        embedded::addDesignTable(direct, "beside", file);
    }
    embedded::addDesignTable(embedded::parametersOf(product.root()), "top", file);
    embedded::addDesignTable(embedded::parametersOf(drawing, "Drawing", "D").addSet("S"), "of sheet", file);
    addTable(feature.addSet("Relations").addSet("Deep"));
    EXPECT_EQ(count(analysis), 1);
    EXPECT_EQ(count(process), 1);
    EXPECT_EQ(count(product), 1);
    EXPECT_EQ(count(drawing), 1);
    clearJournal();
    EXPECT_EQ(count(bolt), 1);
    EXPECT_TRUE(hasMessage(" Nb DesignTable in CATIA structure = 1"));
    const auto list = [&] {
        CATListValCATISpecObject_var tables;
        VornToolsCommon::getDesignTableList(bolt.get(), nullptr, 0, &tables);
    };
    EXPECT_TRUE(failAt("CATISpecObject::GetType", 1, list));
    EXPECT_TRUE(hasMessage(" Nb DesignTable in CATIA structure = 0")) << "a relation of no known kind";
    EXPECT_EQ(count(session().document(path("C.catalog"))), 0);
    EXPECT_EQ(count(session().document(path("Empty.CATProcess")), E_FAIL), 0);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getDesignTableInProcessDocument 9002 p_process_list"}));
    const auto withoutInit = [&](const embedded::Document& document) {
        const auto ask = [&] {
            CATListValCATISpecObject_var tables;
            VornToolsCommon::getDesignTableList(document.get(), nullptr, 0, &tables);
        };
        EXPECT_TRUE(failAt("QueryInterface(CATInit)", 1, ask));
        return reports();
    };
    EXPECT_EQ(withoutInit(process), Texts({"VornToolsCommon::getDesignTableInProcessDocument 9002 pi_init_on_doc"}));
    EXPECT_EQ(withoutInit(product), Texts({"VornToolsCommon::getDesignTableList 9002 p_init_on_doc"}));
}

TEST_F(DesignTablesTest, ATableIsReadWithItsCurrentConfiguration) {
    addTable(feature).configuration(2);
    Sheets read;
    clearJournal();
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(read.rows(), Texts({std::string("bolts 1 2 ") + kChecksum12x + "  DT.1"}));
    EXPECT_EQ(textsOf(read.paths), Texts({file}));
    EXPECT_TRUE(hasMessage(" Nb design table found : 1"));
    EXPECT_TRUE(hasMessage("Not a DLName, filepath = " + file));
    EXPECT_TRUE(hasMessage(" String used to find CkSum : 12x"));
    for (const char* const nuts : {"nuts.t", "nuts"}) {
        file = write(nuts, "N\tL\nw\t11\n");
        addTable(feature, nuts);
        EXPECT_EQ(read.read(bolt), S_OK);
        EXPECT_STREQ(read.files[read.files.Size()].ConvertToChar(), "nuts");
    }
}

TEST_F(DesignTablesTest, TheJournalTellsHowATableIsRead) {
    auto table = addTable(feature).configuration(2);
    CATUnicodeString tablePath, fileName, text, associated, tableName;
    int sheet = 0;
    int configuration = 0;
    clearJournal();
    EXPECT_EQ(VornToolsCommon::readDesignTableInformation(CATISpecObject_var(table.specObject()), "", nullptr,
                                                          tablePath, fileName, sheet, configuration, text, associated,
                                                          tableName),
              S_OK);
    const std::string class_ = "VornToolsCommon::";
    EXPECT_EQ(embedded::Journal::get().lines(),
              Texts({"> " + class_ + "readDesignTableInformation", "> " + class_ + "getDesignTableFullFilename",
                     "< " + class_ + "getDesignTableFullFilename", "Not a DLName, filepath = " + file,
                     "> " + class_ + "getConfigurationValues", "< " + class_ + "getConfigurationValues",
                     " String used to find CkSum : 12x", "> " + class_ + "getDesignTableName",
                     "< " + class_ + "getDesignTableName", "< " + class_ + "readDesignTableInformation"}));
}

TEST_F(DesignTablesTest, ATableWithoutCurrentConfigurationHasTheTitles) {
    addTable(feature).storedConfiguration(0);
    Sheets read;
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(read.rows(), Texts({std::string("bolts 1 0 ") + kChecksumLN + "  DT.1"}));
}

TEST_F(DesignTablesTest, ASpreadsheetIsNoTextFileBecauseAQueryFailed) {
    if (!embedded::readsSpreadsheets("xlsx")) GTEST_SKIP() << "this platform reads text files only";
    const WorkbookSheet other = {{"N", "L"}, {"a", "1"}};
    file = write("bolts.xlsx", workbook({other, other, {{"N", "L"}, {"x", "12"}}}));
    addTable(feature).sheet(3);
    Sheets read;
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(read.rows(), Texts({std::string("bolts 3 1 ") + kChecksum12x + "  DT.1"}));
    for (const FaultFlavour flavour : {FaultFlavour::code, FaultFlavour::codeWithOutput, FaultFlavour::nullOutput}) {
        EXPECT_TRUE(failAt(
            "QueryInterface(CATICkeOleSheet)", 1, [&] { read.read(bolt); }, flavour));
        EXPECT_EQ(read.rows(), Texts());
        EXPECT_EQ(reports(), Texts({"VornToolsCommon::readDesignTableInformation 9002 pi_ole_sheet"}));
    }
    EXPECT_TRUE(failAt(
        "CATICkeOleSheet::GetSheetIndex", 1, [&] { read.read(bolt); }, FaultFlavour::code));
    EXPECT_EQ(read.rows(), Texts());
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::readDesignTableInformation 9004 GetSheetIndex"}));
}

TEST_F(DesignTablesTest, WhatIsNoTableIsReportedAndTheOthersAreRead) {
    addTable(feature, "DT.1");
    addTable(feature, "DT.2");
    Sheets read;
    HRESULT code = E_FAIL;
    EXPECT_TRUE(failAt(
        "QueryInterface(CATIDesignTable)", 1, [&] { code = read.read(bolt); }, FaultFlavour::code));
    EXPECT_EQ(code, S_OK);
    EXPECT_EQ(textsOf(read.names), Texts({"DT.2"}));
    EXPECT_TRUE(hasMessage(" Nb design table found : 2"));
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getDesignTableSheet 9002 p_dt"}));

    const auto top = session().product(path("R.CATProduct"));
    addTable(embedded::parametersOf(top.root()), "DT.3");
    addTable(embedded::parametersOf(top.root()), "DT.4");
    CATListValCATISpecObject_var tables;
    const auto list = [&] {
        tables.RemoveAll();
        code = VornToolsCommon::getDesignTableList(top.get(), nullptr, 0, &tables);
    };
    EXPECT_TRUE(failAt("QueryInterface(CATISpecObject)", 1, list));
    EXPECT_EQ(code, S_OK);
    ASSERT_EQ(tables.Size(), 1);
    EXPECT_STREQ(tables[1]->GetDisplayName().ConvertToChar(), "DT.4");
    EXPECT_TRUE(hasMessage(" Nb DesignTable in CATIA structure = 1"));
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getDesignTableList 9002 sp_design_table"}));
}

TEST_F(DesignTablesTest, ValuesThatCannotBeReadAreNoEmptyValues) {
    addTable(feature);
    Sheets read;
    for (const char* const call : {"CATICkeRelation::OutParameters", "QueryInterface(CATICkeParm)"}) {
        EXPECT_TRUE(failAt(call, 1, [&] { read.read(bolt); }));
        EXPECT_EQ(read.paths.Size(), 0) << call;
    }
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getConfigurationValues 9002 pi_parameter"}));
}

TEST_F(DesignTablesTest, AChangedFileIsReadAgain) {
    auto table = addTable(feature);
    EXPECT_EQ(Access::values(table.get(), 1), "11w");
    write("bolts.txt", "N\tL\nx\t12\n");
    touch("bolts.txt", 2000);
    Sheets read;
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(table.updates(), 1);
    EXPECT_EQ(read.rows(), Texts({std::string("bolts 1 1 ") + kChecksum12x + "  DT.1"}));
    write("bolts.txt", "N\tL\nw\t11\n");
    touch("bolts.txt", 2000);
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(table.updates(), 2) << "rewritten within a second";
    write("bolts.txt", "");
    touch("bolts.txt", 3000);
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(read.rows().size(), 1U) << "the cells of before";
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::readDesignTableInformation 9003 updateDesignTableCurrentSheet"}));
}

TEST_F(DesignTablesTest, ValuesAreTheCellsOfTheRowBelowTheTitles) {
    auto table = addTable(feature);
    EXPECT_EQ(Access::values(table.get(), 1), "11w");
    EXPECT_EQ(Access::values(table.get(), 2), "12x");
    EXPECT_EQ(Access::values(table.get(), 0), "LN");
    EXPECT_EQ(Access::values(table.get(), 3), "");
    EXPECT_EQ(Access::values(table.get(), -5), "");
    EXPECT_EQ(Access::values(table.get(), 0x7FFFFFFF), "");
    table.storedConfiguration(9);
    Sheets read;
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(read.rows(), Texts({std::string("bolts 1 9 ") + kNoChecksum + "  DT.1"}));
}

TEST_F(DesignTablesTest, WhatCannotBeReadIsLeftOut) {
    addTable(feature);
    embedded::addDesignTable(feature, "gone", path("gone.txt"));
    addTable(feature, "no automation").withoutAutomation();
    addTable(feature, "no sheet").withoutSheet();
    addTable(feature, "");
    Sheets read;
    clearJournal();
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(read.names.Size(), 2);
    EXPECT_TRUE(hasMessage(" Nb design table found : 5"));
    EXPECT_TRUE(hasMessage("Cannot get design table name"));
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getDesignTableFullFilename 9002 pi_automation_design_table",
                                "VornToolsCommon::readDesignTableInformation 9002 sp_sheet",
                                "VornToolsCommon::getDesignTableName 9004 GetAlias"}));
}

TEST_F(DesignTablesTest, WhereNoTableIsOnlyTheDebugModeSaysSo) {
    const auto analysis = session().document(path("A.CATAnalysis"));
    const auto process = session().document(path("P.CATProcess"));
    embedded::parametersOf(analysis, "AnalysisManager", "Analysis Manager");
    embedded::parametersOf(process, "Process", "Process");
    const struct {
        embedded::Document document;
        const char* line;
        bool isAlwaysCounted;
    } cases[] = {{analysis, "There is no DesignTables in Analysis Document", false},
                 {process, "There is no DesignTables in Process Document", false},
                 {bolt, "There is no DesignTables in Part Document", false},
                 {session().product(path("R.CATProduct")), "", true}};
    for (const bool debugMode : {false, true})
        for (const auto& c : cases) {
            environment().debugMode = debugMode;
            clearJournal();
            Sheets read;
            EXPECT_EQ(read.read(c.document), S_OK);
            EXPECT_EQ(read.paths.Size(), 0);
            EXPECT_EQ(messages(), c.isAlwaysCounted ? Texts({" Nb design table found : 0"})
                                  : debugMode       ? Texts({c.line})
                                                    : Texts());
        }
    addTable(feature);
    clearJournal();
    Sheets read;
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_FALSE(hasMessage("There is no DesignTables in Part Document"));
    EXPECT_TRUE(hasMessage("Design table of " + path("Bolt.CATPart")));
}

TEST_F(DesignTablesTest, LogicalNamesAreReadByTheirPathOnDisk) {
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    const auto physical = file;
    for (const char* const directory : {"LIB", "UNKNOWN"}) {
        file = std::string("\x01\x02\\") + directory + UTILFile::getPathSeparator().ConvertToChar() + "bolts.txt";
        addTable(feature, directory);
    }
    Sheets read;
    clearJournal();
    EXPECT_EQ(read.read(bolt), S_OK);
    EXPECT_EQ(textsOf(read.names), Texts({"LIB"}));
    EXPECT_EQ(textsOf(read.paths), Texts({physical}));
    EXPECT_EQ(textsOf(read.files), Texts({"bolts"}));
    Texts told = messages();
    const auto is_of_something_else = [](const std::string& line) { return line.find("DLName") == std::string::npos; };
    told.erase(std::remove_if(told.begin(), told.end(), is_of_something_else), told.end());
    EXPECT_EQ(told, (Texts{"DLName, new filepath = " + physical, "ERROR : getPhysicalPathFromDLName is failed.",
                           "DLName, new filepath = " + file}));
    EXPECT_TRUE(failAt("CATIADesignTable::get_FilePath", 1, [&] { Sheets().read(bolt); }));
    EXPECT_EQ(reports(), Texts{"VornToolsCommon::getDesignTableFullFilename 9004 get_FilePath"});
    told = messages();
    EXPECT_EQ(std::count(told.begin(), told.end(), "DLName, new filepath = "), 0) << "of a table that tells none";
}

TEST_F(DesignTablesTest, WithoutMemoryNoTableIsListed) {
    for (const char* const end : {"a", "b"}) addTable(feature, std::string(kLargeAllocation, 'n') + end);
    sweepAllocations("getDesignTableSheet", [&] {
        Sheets read;
        const HRESULT code = read.read(bolt);
        SweepOutcome outcome = outcomeOf(code, read.paths, read.files, read.sheets, read.configurations, read.texts,
                                         read.associated, read.names);
        outcome.outputs.clear(); // a table that cannot be read is left out
        return outcome;
    });
}

TEST_F(DesignTablesTest, AnAssemblyTellsTheFilesOfThePartsThatATableSets) {
    const auto root = session().product(path("R.CATProduct")).root();
    root.add(bolt, "Bolt.1");
    root.add(bolt, "Bolt.2");
    const auto own = embedded::parametersOf(root);
    root.addUnresolved("Lost.1");
    root.add(session().part(path("Nameless.CATPart")), "Nameless.1").reference().partNumber("");
    auto table = embedded::addDesignTable(own, "Top", file);
    table.associate("L", length).associate("M", name).associate("N", own.add("Own", 1));
    Sheets read;
    clearJournal();
    EXPECT_EQ(read.read(session().find(path("R.CATProduct"))), S_OK);
    EXPECT_EQ(textsOf(read.associated), Texts({"!!!" + path("Bolt.CATPart")}));
    Texts inserted;
    for (const std::string& line : messages())
        if (line.rfind(" Insert", 0) == 0) inserted.push_back(line);
    EXPECT_EQ(inserted, Texts({" Insert (Bolt, " + path("Bolt.CATPart") + ") in the map"}));
    EXPECT_TRUE(hasMessage(" Associated item retrieved in DesignTable : Bolt\\L"));
    EXPECT_TRUE(hasMessage(" PN de Part associ\351 (Bolt) - FileName : " + path("Bolt.CATPart")));
    EXPECT_TRUE(hasMessage(" PN de Part associ\351 (R) NON trouv\351 dans notre map de fileName"));
    table.withoutSheet();
    clearJournal();
    EXPECT_EQ(read.read(session().find(path("R.CATProduct"))), S_OK);
    EXPECT_EQ(read.associated.Size(), 0);
    EXPECT_TRUE(hasMessage(" Associated item retrieved in DesignTable : Bolt\\L")) << "they come before the sheet";
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::readDesignTableInformation 9002 sp_sheet"}));
}

TEST_F(DesignTablesTest, TheTablesOfADocumentWithoutRootsAreReadWithoutTheFilesOfParts) {
    auto top = session().product(path("R.CATProduct"));
    embedded::addDesignTable(embedded::parametersOf(top.root()), "Top", file).associate("L", length);
    top.withoutRoots();
    Sheets read;
    clearJournal();
    EXPECT_EQ(read.read(top), S_OK);
    EXPECT_EQ(textsOf(read.names), Texts({"Top"}));
    EXPECT_FALSE(hasMessage(" Associated item retrieved in DesignTable : Bolt\\L"));
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getDesignTableSheet 9002 psp_doc_roots"}));
    CATListValCATUnicodeString names, files;
    CATListPtrCATIProduct products;
    EXPECT_EQ(VornToolsCommon::getAllProductsAndDesignTablesNames(top.get(), nullptr, 1, names, products, files),
              E_FAIL);
    EXPECT_EQ(reports().back(), "VornToolsCommon::getAllProductsAndDesignTablesNames 9003 getActiveCATIProduct");
}

TEST_F(DesignTablesTest, APartIsSwitchedOncePerAssemblyAndOnlyWhereThatIsAllowed) {
    const auto root = session().product(path("R.CATProduct")).root();
    const auto first = root.add(bolt, "Bolt.1");
    const auto second = root.add(bolt, "Bolt.2");
    for (const auto& place : {first, second}) embedded::setWorkMode(place, WorkMode::standard);
    const auto switchesOf = [&](const embedded::Document& document, VornToolsSwitchMgt* switcher, unsigned char flag) {
        const std::size_t before = embedded::workModeSwitches();
        Sheets read;
        EXPECT_EQ(read.read(document, switcher, flag), S_OK);
        return embedded::workModeSwitches() - before;
    };
    VornToolsSwitchMgt switcher{1};
    switcher.setSwitchEnabled(0);
    EXPECT_EQ(switchesOf(session().find(path("R.CATProduct")), nullptr, 0), 2U);
    EXPECT_EQ(embedded::workMode(first), WorkMode::standard);
    embedded::setWorkMode(bolt.root(), WorkMode::standard);
    EXPECT_EQ(switchesOf(bolt, &switcher, 0), 0U);
    EXPECT_EQ(switchesOf(bolt, &switcher, 1), 2U);
    embedded::setUnknownWorkMode(bolt.root(), 9);
    EXPECT_EQ(switchesOf(bolt, nullptr, 0), 0U) << "nobody could put it back";
    EXPECT_FALSE(reports().empty());
    embedded::setWorkMode(bolt.root(), WorkMode::visualisation);
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
    clearJournal();
    EXPECT_EQ(switchesOf(bolt, nullptr, 0), 0U);
    const Texts lines = embedded::Journal::get().lines();
    // Once for the reading and once within it for the list; a switch that had nothing to do is not undone.
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "> VornToolsWorkModeServices::setWorkMode"), 2);
}

TEST_F(DesignTablesTest, PartsAreReadInDesignModeAndPutBack) {
    addTable(feature);
    const auto modes = [&] { return embedded::workModeSwitches(); };
    embedded::setWorkMode(bolt.root(), WorkMode::visualisation);
    const std::size_t before = modes();
    EXPECT_EQ(count(bolt), 1);
    EXPECT_EQ(modes(), before + 2);
    EXPECT_EQ(embedded::workMode(bolt.root()), WorkMode::visualisation);
    VornToolsSwitchMgt switcher{1};
    Sheets read;
    clearJournal();
    EXPECT_EQ(read.read(bolt, &switcher), S_OK);
    EXPECT_EQ(read.paths.Size(), 1);
    Texts ends;
    for (const std::string& line : embedded::Journal::get().lines())
        if (line == "< VornToolsSwitchMgt::setWorkMode" || line.find("find CkSum") != std::string::npos)
            ends.push_back(line);
    EXPECT_EQ(ends, Texts({"< VornToolsSwitchMgt::setWorkMode", " String used to find CkSum : 11w",
                           "< VornToolsSwitchMgt::setWorkMode"}));
    EXPECT_EQ(embedded::workMode(bolt.root()), WorkMode::visualisation);
    embedded::setWorkMode(bolt.root(), WorkMode::design);
    const std::size_t after = modes();
    EXPECT_EQ(count(bolt), 1);
    EXPECT_EQ(modes(), after);
}

TEST_F(DesignTablesTest, NothingIsThrownAcrossTheBoundary) {
    addTable(feature);
    const auto top = session().product(path("R.CATProduct"));
    top.root().add(bolt, "Bolt.1");
    embedded::setWorkMode(bolt.root(), WorkMode::visualisation);
    embedded::setSwitchOutcome(embedded::SwitchOutcome::foreign);
    EXPECT_EQ(count(bolt, E_FAIL), 0);
    Sheets read;
    EXPECT_EQ(read.read(bolt), E_FAIL);
    EXPECT_EQ(read.paths.Size() + read.sheets.Size(), 0);
    CATListValCATUnicodeString names, files;
    CATListPtrCATIProduct products;
    embedded::setWorkMode(top.root(), WorkMode::visualisation);
    EXPECT_EQ(VornToolsCommon::getAllProductsAndDesignTablesNames(top.get(), nullptr, 1, names, products, files),
              E_FAIL);
    EXPECT_EQ(names.Size() + products.Size() + files.Size(), 0);
    embedded::setSwitchOutcome(embedded::SwitchOutcome::switched);
    EXPECT_EQ(count(bolt), 1);

    embedded::setWorkMode(bolt.root(), WorkMode::visualisation);
    {
        const DesignMode mode(bolt.root().get(), SwitchWay{nullptr, 0});
        embedded::setSwitchOutcome(embedded::SwitchOutcome::foreign);
    }
    EXPECT_EQ(embedded::workMode(bolt.root()), WorkMode::design) << "it stays where it is";
}

TEST_F(DesignTablesTest, ATableIsFoundByItsFile) {
    addTable(feature);
    CATIDesignTable* found = nullptr;
    EXPECT_EQ(Access::find(bolt.get(), file, found), 1);
    ASSERT_NE(found, nullptr);
    CATUnicodeString text;
    EXPECT_EQ(VornToolsCommon::getDesignTableName(found, text), S_OK);
    EXPECT_STREQ(text.ConvertToChar(), "DT.1");
    EXPECT_EQ(VornToolsCommon::getDesignTableNameProperty(found, text), S_OK);
    EXPECT_STREQ(text.ConvertToChar(), "DT.1");
    found->Release();
    EXPECT_EQ(Access::find(bolt.get(), path("other.txt"), found), 0);
    EXPECT_EQ(found, nullptr);
}

TEST_F(DesignTablesTest, AssembliesListTheirDocumentsAndTables) {
    const auto top = session().product(path("R.CATProduct"));
    const auto root = top.root();
    addTable(feature);
    root.add(bolt, "Bolt.1");
    root.add(bolt, "Bolt.2");
    root.addComponent("Group", "Group.1").add(session().part(path("Nut.CATPart")), "Nut.1");
    const std::string topFile = path("top.txt");
    embedded::addDesignTable(embedded::parametersOf(root), "Top", topFile);
    addTable(feature, "silent").withoutAutomation();
    const std::string silent = "VornToolsCommon::getDesignTableFullFilename 9002 pi_automation_design_table";
    CATListValCATUnicodeString names, files;
    CATListPtrCATIProduct products;
    const auto list = [&](const embedded::Document& document, unsigned char with) {
        const HRESULT code =
            VornToolsCommon::getAllProductsAndDesignTablesNames(document.get(), nullptr, with, names, products, files);
        for (int i = 1; i <= products.Size(); ++i) products[i]->Release();
        return code;
    };
    clearJournal();
    EXPECT_EQ(list(top, 1), S_OK);
    EXPECT_EQ(textsOf(names), Texts({path("R.CATProduct"), path("Bolt.CATPart"), "R\\Group.1", path("Nut.CATPart")}));
    EXPECT_EQ(products.Size(), 4);
    EXPECT_EQ(textsOf(files), Texts({topFile, file}));
    EXPECT_TRUE(hasMessage("DesignTables are managd."));
    EXPECT_TRUE(hasMessage("[4] children are found."));
    const Texts lines = embedded::Journal::get().lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "> VornToolsCommon::getDesignTableList"), 3) << "one a document";
    EXPECT_EQ(reports(), Texts({silent}));
    EXPECT_EQ(list(top, 0), S_OK);
    EXPECT_EQ(files.Size(), 0);
    EXPECT_EQ(list(bolt, 1), S_OK);
    EXPECT_EQ(names.Size(), 0);
    EXPECT_EQ(textsOf(files), Texts({file}));
    EXPECT_EQ(reports(), Texts({silent}));
    EXPECT_EQ(list(bolt, 0), S_OK);
    EXPECT_EQ(files.Size(), 0);
    // What a table tells, it tells before its part leaves memory again.
    embedded::setWorkMode(bolt.root(), WorkMode::visualisation);
    EXPECT_EQ(list(top, 1), S_OK);
    EXPECT_EQ(textsOf(files), Texts({topFile, file}));
    EXPECT_EQ(list(bolt, 1), S_OK);
    EXPECT_EQ(textsOf(files), Texts({file}));
    EXPECT_EQ(embedded::workMode(bolt.root()), WorkMode::visualisation);
    EXPECT_EQ(reports(), Texts({silent, silent}));
    EXPECT_EQ(list(embedded::Document(), 1), E_FAIL);
    EXPECT_EQ(files.Size(), 0);
    EXPECT_TRUE(hasMessage("ip_activ_document is NULL"));
    EXPECT_TRUE(failAt("QueryInterface(CATIProduct)", 4, [&] { list(top, 0); }));
    EXPECT_TRUE(hasMessage("p_product not SUCCEEDED"));
    EXPECT_EQ(textsOf(names), Texts({path("R.CATProduct"), path("Bolt.CATPart"), "R\\Group.1", path("Nut.CATPart")}))
        << "Bolt.2 shows what Bolt.1 did not";
}

TEST_F(DesignTablesTest, LargeAssembliesAreListed) {
    constexpr int kParts = 10000;
    const auto top = session().product(path("R.CATProduct"));
    for (int i = 1; i <= kParts; ++i) {
        const std::string number = std::to_string(i);
        const auto part = session().part("/w/P" + number + ".CATPart");
        top.root().add(part, "P." + number);
        embedded::addDesignTable(embedded::parametersOf(part, "MechanicalPart", "P"), "DT", "/w/" + number + ".txt");
    }
    CATListValCATUnicodeString names, files;
    CATListPtrCATIProduct products;
    EXPECT_EQ(VornToolsCommon::getAllProductsAndDesignTablesNames(top.get(), nullptr, 1, names, products, files), S_OK);
    for (int i = 1; i <= products.Size(); ++i) products[i]->Release();
    EXPECT_EQ(names.Size(), kParts + 1);
    EXPECT_EQ(files.Size(), kParts);
}

TEST_F(DesignTablesTest, SelectedTablesAndProductsAreListedOnce) {
    const auto top = session().product(path("R.CATProduct"));
    const auto instance = top.root().add(bolt, "Bolt.1");
    addTable(feature);
    CATListPtrCATBaseUnknown products;
    CATListValCATUnicodeString files;
    EXPECT_EQ(VornToolsCommon::getSelectedProductsAndDesignTables(products, files), E_FAIL);
    auto windows = embedded::Windows::current();
    windows.open(top);
    const auto table = embedded::SelectionPath(instance).designTable(bolt, "DT.1");
    for (int i = 0; i < 2; ++i) {
        windows.select(table);
        windows.select(instance);
    }
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(VornToolsCommon::getSelectedProductsAndDesignTables(products, files), S_OK);
        EXPECT_EQ(textsOf(files), Texts({file}));
        ASSERT_EQ(products.Size(), 1);
        static_cast<CATIProduct*>(products[1])->Release();
    }
}

TEST_F(DesignTablesTest, NullsAreReported) {
    CATListValCATISpecObject_var tables;
    CATUnicodeString text("stale");
    EXPECT_EQ(VornToolsCommon::getDesignTableList(nullptr, nullptr, 0, &tables), E_FAIL);
    EXPECT_EQ(VornToolsCommon::getDesignTableList(bolt.get(), nullptr, 0, nullptr), E_FAIL);
    EXPECT_EQ(VornToolsCommon::getDesignTableFullFilename(nullptr, text), E_FAIL);
    EXPECT_TRUE(text.IsNull());
    EXPECT_EQ(Sheets().read(embedded::Document()), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getDesignTableList 9001 ip_document",
                                "VornToolsCommon::getDesignTableList 9001 iop_design_tables",
                                "VornToolsCommon::getDesignTableFullFilename 9001 ipi_design_table",
                                "VornToolsCommon::getDesignTableSheet 9001 ip_document"}));
    EXPECT_EQ(VornToolsCommon::getDesignTableInAnalysisDocument(nullptr, &tables), E_FAIL);
    EXPECT_EQ(VornToolsCommon::getDesignTableInAnalysisDocument(bolt.get(), nullptr), E_FAIL);
    EXPECT_EQ(VornToolsCommon::getDesignTableInProcessDocument(nullptr, &tables), E_FAIL);
    EXPECT_EQ(VornToolsCommon::getDesignTableInProcessDocument(bolt.get(), nullptr), E_FAIL);
    EXPECT_EQ(VornToolsCommon::getDesignTableInPartDocument(nullptr, nullptr, 0, &tables), E_FAIL);
    EXPECT_EQ(VornToolsCommon::getDesignTableInPartDocument(bolt.get(), nullptr, 0, nullptr), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getDesignTableInAnalysisDocument 9001 ip_document",
                                "VornToolsCommon::getDesignTableInAnalysisDocument 9001 iop_design_tables",
                                "VornToolsCommon::getDesignTableInProcessDocument 9001 ip_document",
                                "VornToolsCommon::getDesignTableInProcessDocument 9001 iop_design_tables",
                                "VornToolsCommon::getDesignTableInPartDocument 9001 ip_document",
                                "VornToolsCommon::getDesignTableInPartDocument 9001 iop_design_tables"}));
    text = "stale";
    EXPECT_EQ(VornToolsCommon::getDesignTableNameProperty(nullptr, text), E_FAIL);
    EXPECT_TRUE(text.IsNull());
    text = "stale";
    EXPECT_EQ(VornToolsCommon::getDesignTableName(nullptr, text), E_FAIL);
    EXPECT_TRUE(text.IsNull());
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getDesignTableNameProperty 9001 ipi_design_table",
                                "VornToolsCommon::getDesignTableName 9001 ipi_design_table"}));
    EXPECT_EQ(Access::values(nullptr, 1), "");
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getConfigurationValues 9001 ipi_design_table"}));
    int sheet = 0;
    EXPECT_EQ(VornToolsCommon::readDesignTableInformation(CATISpecObject_var(), "", nullptr, text, text, sheet, sheet,
                                                          text, text, text),
              E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::readDesignTableInformation 9001 isp_design_table"}));
}

TEST_F(DesignTablesTest, Sweep) {
    const auto analysis = session().document(path("A.CATAnalysis"));
    const auto process = session().document(path("P.CATProcess"));
    const auto top = session().product(path("R.CATProduct"));
    addTable(embedded::parametersOf(analysis, "AnalysisManager", "Analysis Manager").addSet("Relations"));
    addTable(embedded::parametersOf(process, "Process", "Process").addSet("Relations"));
    const auto instance = top.root().add(bolt, "Bolt.1");
    auto table = addTable(feature);
    embedded::addDesignTable(embedded::parametersOf(top.root()), "Top", file).associate("L", length);
    auto windows = embedded::Windows::current();
    windows.open(top);
    windows.select(embedded::SelectionPath(instance).designTable(bolt, "DT.1"));
    windows.select(instance);

    using Call = HRESULT (*)(CATDocument*, CATListValCATISpecObject_var*);
    const auto appended = [](Call call, const embedded::Document& document) {
        return [call, document]() -> SweepOutcome {
            CATListValCATISpecObject_var tables;
            const HRESULT code = call(document.get(), &tables);
            return outcomeOf(code, tables);
        };
    };
    sweepFailures({"VornToolsCommon::getDesignTableInAnalysisDocument",
                   appended(&VornToolsCommon::getDesignTableInAnalysisDocument, analysis)});
    sweepFailures({"VornToolsCommon::getDesignTableInProcessDocument",
                   appended(&VornToolsCommon::getDesignTableInProcessDocument, process)});
    const Call part = [](CATDocument* document, CATListValCATISpecObject_var* tables) {
        return VornToolsCommon::getDesignTableInPartDocument(document, nullptr, 0, tables);
    };
    sweepFailures({"VornToolsCommon::getDesignTableInPartDocument", appended(part, bolt)});
    const Call any = [](CATDocument* document, CATListValCATISpecObject_var* tables) {
        return VornToolsCommon::getDesignTableList(document, nullptr, 0, tables);
    };
    sweepFailures({"VornToolsCommon::getDesignTableList", appended(any, top)});

    using Read = HRESULT (*)(CATIDesignTable*, CATUnicodeString&);
    const std::pair<const char*, Read> reads[] = {
        {"VornToolsCommon::getDesignTableFullFilename", &VornToolsCommon::getDesignTableFullFilename},
        {"VornToolsCommon::getDesignTableNameProperty", &VornToolsCommon::getDesignTableNameProperty},
        {"VornToolsCommon::getDesignTableName", &VornToolsCommon::getDesignTableName}};
    for (const auto& read : reads)
        sweepFailures({read.first, [&]() -> SweepOutcome {
                           CATUnicodeString text("stale");
                           const HRESULT code = read.second(table.get(), text);
                           return outcomeOf(code, text);
                       }});
    for (const auto& document : {bolt, top})
        sweepFailures({"VornToolsCommon::getDesignTableSheet", [&]() -> SweepOutcome {
                           Sheets read;
                           const HRESULT code = read.read(document);
                           return outcomeOf(code, read.paths, read.files, read.sheets, read.configurations, read.texts,
                                            read.associated, read.names);
                       }});
    sweepFailures({"VornToolsCommon::readDesignTableInformation", [&]() -> SweepOutcome {
                       CATUnicodeString path("stale"), fileName, text, associated, tableName;
                       int sheet = 1;
                       int configuration = 1;
                       const HRESULT code = VornToolsCommon::readDesignTableInformation(
                           CATISpecObject_var(table.specObject()), "", nullptr, path, fileName, sheet, configuration,
                           text, associated, tableName);
                       return outcomeOf(code, path, fileName, sheet, configuration, text, associated, tableName);
                   }});
    sweepFailures({"VornToolsCommon::getAllProductsAndDesignTablesNames", [&]() -> SweepOutcome {
                       CATListValCATUnicodeString names, files;
                       CATListPtrCATIProduct products;
                       const HRESULT code = VornToolsCommon::getAllProductsAndDesignTablesNames(top.get(), nullptr, 1,
                                                                                                names, products, files);
                       const SweepOutcome outcome = outcomeOf(code, names, products, files);
                       for (int i = 1; i <= products.Size(); ++i) products[i]->Release();
                       return outcome;
                   }});
    sweepFailures({"VornToolsCommon::getSelectedProductsAndDesignTables", [&]() -> SweepOutcome {
                       CATListPtrCATBaseUnknown products;
                       CATListValCATUnicodeString files;
                       const HRESULT code = VornToolsCommon::getSelectedProductsAndDesignTables(products, files);
                       const SweepOutcome outcome = outcomeOf(code, products, files);
                       for (int i = 1; i <= products.Size(); ++i) products[i]->Release();
                       return outcome;
                   }});
}

} // namespace
