#include "VornToolsCommon.h"

#include "CATDocument.h"
#include "UTILFile.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

namespace {

class DatFileTest : public PlatformTest {
protected:
    struct Read {
        HRESULT code;
        Texts lines;
        std::string first() const { return lines.empty() ? "none" : lines.front(); }
    };
    static Read read(const std::string& name, const std::string& uuid = "") {
        CATListValCATUnicodeString list;
        list.Append("stale");
        Read result{VornToolsCommon::readDatTools(name.c_str(), uuid.c_str(), list), {}};
        for (int i = 1; i <= list.Size(); ++i)
            result.lines.emplace_back(list[i].ConvertToChar(), static_cast<std::size_t>(list[i].GetLengthInByte()));
        return result;
    }
    std::string withSeparator(const std::string& name) { return path(name) + separator(); }
    static std::string separator() { return UTILFile::getPathSeparator().ConvertToChar(); }
};

TEST_F(DatFileTest, LinesOfEveryKindSurvive) {
    const std::string longLine(8 << 20, 'x');
    const Texts versionZero = {"<DatFileVersion>", "0", "</DatFileVersion>"};
    struct Case {
        std::string bytes;
        Texts lines;
    };
    const Case cases[] = {
        {"", {}},
        {"\n", {""}},
        {"a\nb", {"a", "b"}},
        {"a\r\n\r\nb\r\n", {"a", "", "b"}},
        {std::string("a\0b\n\0\n", 6), {std::string("a\0b", 3), std::string(1, '\0')}},
        {"\xff\xfe\x80\n", {"\xff\xfe\x80"}},
        {longLine + "\nend", {longLine, "end"}},
    };
    environment().debugMode = true;
    for (const Case& test : cases) {
        const std::string file = write("p.CATPart.dat", test.bytes);
        Texts expected = test.lines;
        expected.insert(expected.end(), versionZero.begin(), versionZero.end());
        const Read result = read(path("p.CATPart"));
        EXPECT_EQ(result.code, S_OK);
        EXPECT_TRUE(result.lines == expected) << test.bytes.substr(0, 20);
    }
    for (const Texts& lines : {Texts{"<DatFileVersion>", "1"}, Texts{"2", "<DatFileVersion>"}}) {
        write("p.CATPart.dat", lines[0] + "\n" + lines[1] + "\n");
        EXPECT_EQ(read(path("p.CATPart")).lines, lines) << "a version of its own, even one without a value";
    }
}

TEST_F(DatFileTest, MissingFileFolderAndEmptyNameFail) {
    const std::string missing = path("none.CATPart");
    EXPECT_EQ(read(missing).code, E_FAIL);
    EXPECT_EQ(messages(), Texts{" file : " + missing + ".dat does not exists  "});
    clearJournal();

    std::filesystem::create_directories(folder() / "d.CATPart.dat");
    const Read folderRead = read(path("d.CATPart"));
    EXPECT_EQ(folderRead.code, E_FAIL);
    EXPECT_EQ(folderRead.lines, Texts());
    EXPECT_EQ(messages(), Texts{" file : " + path("d.CATPart") + ".dat does not exists  "});

    EXPECT_EQ(read("").code, E_FAIL);
    EXPECT_EQ(reports(), Texts{"VornToolsCommon::readDatTools 9003 UTILFile::splitPathAndFileName"});
}

TEST_F(DatFileTest, FileThatCannotBeOpenedOrReadIsJournalled) {
    write("p.CATPart.dat", "item\nrev\n");
    const std::pair<std::string, std::string> cases[] = {{"UTILFile::open", "Failed to open "},
                                                         {"UTILFile::readLine", "Failed to read "}};
    for (const auto& [site, line] : cases) {
        embedded::Failures& failures = embedded::Failures::get();
        Read result{S_OK, {}};
        for (int nth = 1; nth < 20 && failures.firedAt() != site; ++nth) {
            clearJournal();
            failures.arm(nth, false, embedded::FaultFlavour::code);
            result = read(path("p.CATPart"));
            failures.disarm();
        }
        EXPECT_EQ(result.code, E_FAIL);
        EXPECT_EQ(result.lines, Texts());
        EXPECT_EQ(messages(), Texts{line + path("p.CATPart") + ".dat "});
    }
}

TEST_F(DatFileTest, StagingDirectoryHoldsDatFilesOfDocumentsWithoutDirectory) {
    environment().stagingDirectory = path("staging");
    write("staging/new.CATPart.dat", "staged\n");
    EXPECT_EQ(read("new.CATPart").first(), "staged");

    for (bool embedded::Environment::*const off :
         {&embedded::Environment::manualPartNumberInput, &embedded::Environment::commandCreateSpreadsheet,
          &embedded::Environment::commandImport}) {
        environment().*off = true;
        EXPECT_EQ(read("new.CATPart").code, E_FAIL);
        environment().*off = false;
    }
    environment().initialized = false;
    EXPECT_EQ(read("new.CATPart").code, E_FAIL);
    environment().initialized = true;

    clearJournal();
    const std::string document = write("staging/new.CATPart", "");
    EXPECT_EQ(read("new.CATPart").code, E_FAIL) << "the document itself is staged already";
    EXPECT_EQ(messages(), Texts{" file : " + document + ".dat does not exists  "});
}

TEST_F(DatFileTest, ForeignFilesHaveTheirDatFileInTheFilesDirectory) {
    environment().filesDirectory = withSeparator("files");
    write("files/notes.pdf.dat", "foreign\n");
    EXPECT_EQ(read(path("elsewhere/notes.pdf")).first(), "foreign");
    EXPECT_EQ(read("notes.pdf").first(), "foreign");
    EXPECT_EQ(read("notes.CATPart").code, E_FAIL);
}

TEST_F(DatFileTest, LogicalNamesBecomePhysical) {
    const std::string logical = std::string("\x01\x02\\Models") + separator() + "p.CATPart";
    write("models/p.CATPart.dat", "found\n");
    EXPECT_EQ(read(logical).code, E_FAIL) << "names are not translated unless the platform uses logical ones";
    environment().usesLogicalNames = true;
    environment().logicalNames["Models"] = path("models");
    EXPECT_EQ(read(logical).first(), "found");
    environment().stagingDirectory = environment().filesDirectory = "\x01\x02\\Models";
    environment().filesDirectory += separator();
    write("models/new.CATPart.dat", "staged\n");
    write("models/notes.pdf.dat", "foreign\n");
    EXPECT_EQ(read("new.CATPart").first(), "staged");
    EXPECT_EQ(read("notes.pdf").first(), "foreign");
    write("models/new.CATPart", "");
    EXPECT_EQ(read("new.CATPart").code, E_FAIL) << "the document itself is staged already";
    environment().usesLogicalNames = false;
    environment().initialized = false;
    EXPECT_EQ(read(logical).first(), "found");

    clearJournal();
    environment().logicalNames.clear();
    EXPECT_EQ(read(logical).code, E_FAIL);
    ASSERT_EQ(messages().size(), 2u);
    EXPECT_EQ(messages()[0], "ERROR : getPhysicalPathFromDLName is failed.");
}

TEST_F(DatFileTest, ConformityIsCheckedInDebugModeAndOnlyJournals) {
    const std::string part = path("p.CATPart");
    const std::string foreign = path("p.pdf");
    const Texts unknown = {"Impossible to verify the conformity of the .dat relative to the document " + part};
    const auto mismatch = [&](const std::string& document, const std::string& file) {
        return Texts{"The file " + part + ".dat does not match with the document " + part + " in session",
                     "CATIA UUID are different - from document : " + document + " / from .dat " + file};
    };
    Texts truncated = mismatch("1_2_3_4", "5_6_7_8");
    truncated.emplace_back("It seems to be a truncate issue");
    struct Case {
        bool debug;
        std::string version, fileUuid, documentUuid;
        Texts expected;
    };
    const Case cases[] = {
        {false, "2", "5_6_7_8", "1_2_3_4", {}},
        {true, "1", "5_6_7_8", "1_2_3_4", {}},
        {true, "2", "1_2_3_4", "1_2_3_4", {}},
        {true, "2", "", "1_2_3_4", unknown},
        {true, "2", "0_0_0_0", "1_2_3_4", unknown},
        {true, "2", "1_2_3_4", "", unknown},
        {true, "2", "1_2_3_4", "0_0_0_0", unknown},
        {true, "2", "5_6_7_8", "1_2_3_4", truncated},
        {true, "2", "1_2_3_45", "1_2_3_4", mismatch("1_2_3_4", "1_2_3_45")},
        {true, "2", "2_3", "1_2_3_4", mismatch("1_2_3_4", "2_3")},
        {true, "2", "1_2", "1_2_3_4", mismatch("1_2_3_4", "1_2")},
        {true, "2", "0_1_2_3_4", "1_2_3_4", mismatch("1_2_3_4", "0_1_2_3_4")},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.version + " " + test.fileUuid + " " + test.documentUuid);
        write("p.CATPart.dat", "<DatFileVersion>\n" + test.version + "\n</DatFileVersion>\n<CatiaUUID>\n" +
                                   test.fileUuid + "\n</CatiaUUID>\n");
        environment().debugMode = test.debug;
        clearJournal();
        EXPECT_EQ(read(part, test.documentUuid).code, S_OK);
        EXPECT_EQ(messages(), test.expected);
    }
    write("p.CATPart.dat", "<DatFileVersion>\n2\n<CatiaUUID>\n1_2_3_4\n");
    CATListValCATUnicodeString list;
    list.Append("1_2_3_4");
    clearJournal();
    EXPECT_EQ(VornToolsCommon::readDatTools(part.c_str(), list[1], list), S_OK);
    EXPECT_EQ(messages(), Texts()) << "the identifier may be an element of the list";
    write("p.pdf.dat", "<DatFileVersion>\n2\n<CatiaUUID>\n5_6_7_8\n");
    clearJournal();
    read(foreign, "1_2_3_4");
    EXPECT_EQ(messages(), Texts{"Impossible to verify the conformity of the .dat relative to the document " + foreign});
}

TEST_F(DatFileTest, QuestionsOnTheFile) {
    struct Case {
        std::string dat;
        int revision, designTable;
    };
    const Case cases[] = {
        {"", 0, 0},
        {"\nrev\n", 0, 0},
        {"item\n", 1, 0},
        {"<DatFileVersion>\n2\n", 0, 0},
        {"<DatFileVersion>\n2\n<ItemRevUID>", 1, 0},
        {"<DatFileVersion>\n2\n<DT_Sheets>\n<DT_Cfgs>\n", 0, 0},
        {"<DatFileVersion>\n2\n<DT_Sheets>\n<DT_CfgCksums>\n", 0, 0},
        {"<DatFileVersion>\n2\n<DT_Cfgs>\n<DT_CfgCksums>\n", 0, 0},
        {"<DatFileVersion>\n2\n<DT_Sheets>\n<DT_Cfgs>\n<DT_CfgCksums>\n", 0, 1},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.dat);
        write("p.CATPart.dat", test.dat);
        unsigned char revision = 7;
        unsigned char designTable = 7;
        EXPECT_EQ(VornToolsCommon::itemRevUIDExistsInDatFile(path("p.CATPart").c_str(), nullptr, revision), S_OK);
        EXPECT_EQ(VornToolsCommon::isDesignTableInfoInDatFile(path("p.CATPart").c_str(), nullptr, designTable), S_OK);
        EXPECT_EQ(revision, test.revision);
        EXPECT_EQ(designTable, test.designTable);
    }
    unsigned char answer = 7;
    auto document = session().part("q.CATPart").withoutDescriptor();
    clearJournal();
    EXPECT_EQ(VornToolsCommon::itemRevUIDExistsInDatFile("q.CATPart", document.get(), answer), E_FAIL);
    EXPECT_EQ(answer, 0);
    const Texts lines = messages();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[1], "catia_doc_uuid sets to empty.");
    EXPECT_EQ(lines[3], "readDatTools returns failed for :  q.CATPart ");
    EXPECT_EQ(reports(), Texts{"VornToolsCommon::getDocUUID 9003 GetDocumentDescriptor"});
}

TEST_F(DatFileTest, Sweep) {
    environment().debugMode = true;
    environment().stagingDirectory = path("staging");
    const std::string uuid = "a_b_c_d";
    write("p.CATPart.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n<CatiaUUID>\n" + uuid + "\n</CatiaUUID>\n");
    write("staging/new.CATPart.dat", "item\n");
    auto document = session().part(path("p.CATPart")).uuid(uuid);
    const auto reading = [&uuid](const std::string& name) {
        return SweepCase{"VornToolsCommon::readDatTools",
                         [=] {
                             CATListValCATUnicodeString lines;
                             lines.Append("stale");
                             const HRESULT code = VornToolsCommon::readDatTools(name.c_str(), uuid.c_str(), lines);
                             return outcomeOf(code, lines);
                         },
                         {},
                         {}};
    };
    EXPECT_GT(sweepFailures(reading(path("p.CATPart"))), 0);
    EXPECT_GT(sweepFailures(reading("new.CATPart")), 0);
    environment().usesLogicalNames = true;
    EXPECT_GT(sweepFailures(reading(path("p.CATPart"))), 0);

    using Question = HRESULT (*)(CATUnicodeString, CATDocument*, unsigned char&);
    const auto asking = [&](const char* name, Question question) {
        return SweepCase{name,
                         [=] {
                             unsigned char answer = 1;
                             const std::string file = embedded::Document(document).name();
                             const HRESULT code = question(file.c_str(), document.get(), answer);
                             return outcomeOf(code, answer);
                         },
                         {},
                         {}};
    };
    sweepFailures(asking("VornToolsCommon::itemRevUIDExistsInDatFile", VornToolsCommon::itemRevUIDExistsInDatFile));
    sweepFailures(asking("VornToolsCommon::isDesignTableInfoInDatFile", VornToolsCommon::isDesignTableInfoInDatFile));
}

} // namespace
