#include "tests/support/Program.h"

namespace {

class StatusCommandTest : public ProgramTest {
protected:
    void writePart(const std::string& name, const std::string& dat) {
        write(name, "part");
        touch(name, 1700000000);
        if (!dat.empty()) write(name + ".dat", dat);
    }
};

const char kTagged[] = "<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nREV\n</ItemRevUID>\n<LocalLastModDate>\n"
                       "1700000000\n</LocalLastModDate>\n<LinkedDocs>\na.CATPart\nUNRESOLVED|b\n</LinkedDocs>\n";

TEST_F(StatusCommandTest, StatusGivesOneObjectADocument) {
    writePart("w/a.CATPart", kTagged);
    writePart("w/b.CATPart", "item\nB\n\n\n\n\n\n1699999999\n");
    writePart("w/c.catpart", "");
    write("w/notes.txt", "no document");
    EXPECT_EQ(run("status --json " + quoted("w")), 1);

    const auto rows = this->rows();
    ASSERT_EQ(rows.size(), 3u);
    Texts keys;
    for (const auto& field : rows[0].items()) keys.push_back(field.key());
    EXPECT_EQ(keys, (Texts{"document", "dat", "layout", "item_revision", "dataset", "named_reference", "load_type",
                           "status", "reason", "linked", "unresolved", "design_table"}));
    EXPECT_EQ(rows[0]["status"], "not modified");
    EXPECT_EQ(rows[0]["dat"], path("w/a.CATPart.dat"));
    EXPECT_EQ(rows[0]["linked"], 2);
    EXPECT_EQ(rows[0]["unresolved"], 1);
    EXPECT_EQ(rows[1]["layout"], "positional");
    EXPECT_EQ(rows[1]["item_revision"], "B");
    EXPECT_EQ(rows[1]["reason"], "file changed since it was loaded");
    EXPECT_EQ(rows[2]["status"], "new");
    EXPECT_TRUE(rows[2]["dat"].is_null());
}

TEST_F(StatusCommandTest, ExitStatusTellsFindingsFromErrors) {
    writePart("w/a.CATPart", "i\nA\n\n\n\n\n\n1700000000\n");
    EXPECT_EQ(run("status " + quoted("w") + " --journal " + quoted("journal")), 0);
    EXPECT_NE(content("journal").find("Modified Status to Not Modified for"), std::string::npos);
    EXPECT_EQ(run("status " + quoted("absent")), 2);
    EXPECT_EQ(run("status"), 2);
    EXPECT_EQ(run("dat " + quoted("absent")), 2);
    EXPECT_EQ(run("status --session " + quoted("absent.json") + " " + quoted("w")), 2);
    EXPECT_EQ(run("--version"), 0);
}

TEST_F(StatusCommandTest, ASessionTellsOfUnsavedChanges) {
    writePart("w/a.CATPart", kTagged);
    write("s.json", R"({"documents": [{"name": "w/a.CATPart", "saved": false}]})");
    EXPECT_EQ(run("status --json --session " + quoted("s.json") + " " + quoted("w")), 1);
    EXPECT_EQ(nlohmann::json::parse(content("out"))["reason"], "unsaved changes in the session");
}

TEST_F(StatusCommandTest, DatGivesEveryField) {
    writePart("w/a.CATPart", std::string(kTagged) + "<DT_Maps>\n<DT_Map>\nx\ny\n</DT_Map>\n</DT_Maps>\n");
    EXPECT_EQ(run("dat --json " + quoted("w/a.CATPart.dat")), 0);
    auto fields = nlohmann::json::parse(content("out"));
    EXPECT_EQ(fields["<ItemRevUID>"], "REV");
    EXPECT_EQ(fields["<LinkedDocs>"], nlohmann::json({"a.CATPart", "UNRESOLVED|b"}));
    EXPECT_EQ(fields["<DT_Maps>"], nlohmann::json::parse(R"([["x", "y"]])"));

    write("w/a.CATPart.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n<LinkedDocs>\nsub/a.CATPart\nMML|D:\\b.CATPart\n"
                             "</LinkedDocs>\n<DT_Files>\nt/1.xls\n</DT_Files>\n<StructLastModDate>\n5\n6\n"
                             "</StructLastModDate>\n<DT_Maps>\n<DT_Map>\na!!!b\n!!!\n</DT_Map>\n<DT_Map>\n</DT_Map>\n"
                             "<DT_Map>\nopen\n</DT_Maps>\n<CatiaUUID>\n1_2_3_4\n</CatiaUUID>\n");
    EXPECT_EQ(run("dat --json " + quoted("w/a.CATPart")), 0);
    fields = nlohmann::json::parse(content("out"));
    EXPECT_EQ(fields["<LinkedDocs>"], nlohmann::json({"sub/a.CATPart", "MML|D:\\b.CATPart"}));
    EXPECT_EQ(fields["<DT_Files>"], nlohmann::json({"t/1.xls"}));
    EXPECT_EQ(fields["<StructLastModDate>"], nlohmann::json({"5", "6"}));
    EXPECT_EQ(fields["<DT_Maps>"], nlohmann::json::parse(R"([["a!!!b", "!!!"], []])"));
    EXPECT_EQ(fields["<CatiaUUID>"], "1_2_3_4");
    EXPECT_EQ(run("dat " + quoted("w/a.CATPart")), 0);
    EXPECT_NE(content("out").find("  a!!!b | !!!\n"), std::string::npos);
}

TEST_F(StatusCommandTest, ADatFileThatSaysLittleIsNoMissingOne) {
    const struct {
        const char *dat, *version, *layout, *status, *reason;
    } cases[] = {
        {"<DatFileVersion>\n\n</DatFileVersion>\n<LocalLastModDate>\n1700000000\n</LocalLastModDate>\n", "", "tagged",
         "not modified", "file and DAT file agree"},
        {"<DatFileVersion>\n", "", "tagged", "modified", "no date in the DAT file"},
        {"<DatFileVersion>\n2\n</DatFileVersion>\n", "2", "tagged", "modified", "no date in the DAT file"},
        {"", "0", "positional", "modified", "no date in the DAT file"},
    };
    for (const auto& example : cases) {
        writePart("w/a.CATPart", "x");
        write("w/a.CATPart.dat", example.dat);
        run("status --json " + quoted("w"));
        const auto row = rows().at(0);
        EXPECT_EQ(row["dat"], path("w/a.CATPart.dat")) << example.dat;
        EXPECT_EQ(row["layout"], example.layout) << example.dat;
        EXPECT_EQ(row["status"], example.status) << example.dat;
        EXPECT_EQ(row["reason"], example.reason) << example.dat;
        EXPECT_EQ(run("dat --json " + quoted("w/a.CATPart")), 0) << example.dat;
        EXPECT_EQ(rows().at(0)["<DatFileVersion>"], example.version) << example.dat;
    }
}

TEST_F(StatusCommandTest, EveryDatFileIsAccountedFor) {
    write("w/gone.CATPart.dat", kTagged);
    write("w/drawing.pdf", "foreign");
    write("w/drawing.pdf.dat", kTagged);
    write("w/other.pdf", "foreign, unknown to the PDM");
    EXPECT_EQ(run("status --json " + quoted("w") + " " + quoted("absent")), 2);
    EXPECT_NE(content("err").find("no such file or folder"), std::string::npos);
    Texts reasons;
    for (const auto& row : rows())
        reasons.push_back(row["document"].get<std::string>() + ": " + row["reason"].get<std::string>());
    EXPECT_EQ(reasons, (Texts{path("w/drawing.pdf") + ": file changed since it was loaded",
                              path("w/gone.CATPart") + ": a DAT file without its document"}));
}

TEST_F(StatusCommandTest, ColumnsAreAsWideAsTheirTextsInCharacters) {
    writePart("\xC3\x96l.CATPart", "item\nR\xC3\xA9v\n\n\n\n\n\n1700000000\n");
    EXPECT_EQ(run("status " + quoted("\xC3\x96l.CATPart")), 0);
    // Columns without any text are left out: no load type is recorded, no design table is there.
    const std::string name = path("\xC3\x96l.CATPart"), blanks(name.size() - 1 - 8, ' ');
    EXPECT_EQ(content("out"), "STATUS        DOCUMENT" + blanks + "  REASON                   DAT         " +
                                  "ITEM REVISION  LINKS  UNRESOLVED\nnot modified  " + name +
                                  "  file and DAT file agree  positional  R\xC3\xA9v                0           0\n");
    EXPECT_EQ(content("err"), "1 document: 0 new, 0 modified, 1 not modified\n");
}

TEST_F(StatusCommandTest, RowsAreKeptLeftOutAndSorted) {
    writePart("w/a.CATPart", kTagged); // one link is unresolved
    writePart("w/b.CATPart", "item\nB\n\n\n\n\n\n1699999999\n");
    writePart("w/c.CATPart", "");
    writePart("w/old/d.CATPart", "item\nA\n\n\n\n\n\n1700000000\n");
    write("names", std::string("w/old/d.CATPart\0w/a.CATPart\0", 29));
    const struct {
        const char *arguments, *documents;
        int code;
    } cases[] = {
        {"--new w", "w/c.CATPart ", 1},
        {"--modified --new w", "w/b.CATPart w/c.CATPart ", 1},
        {"--unresolved w", "w/a.CATPart ", 1},
        {"--damaged --links w/old", "w/old/d.CATPart ", 1}, // "part" is no document of CATIA
        {"--sort status w", "w/b.CATPart w/c.CATPart w/a.CATPart w/old/d.CATPart ", 1},
        {"--sort unresolved w", "w/a.CATPart w/b.CATPart w/c.CATPart w/old/d.CATPart ", 1},
        {"--sort item-revision w", "w/c.CATPart w/old/d.CATPart w/b.CATPart w/a.CATPart ", 1},
        {"--exclude old --exclude '[!a-b].CATPart' w", "w/a.CATPart w/b.CATPart ", 1},
        {"--exclude 'w/*/*' w", "w/a.CATPart w/b.CATPart w/c.CATPart ", 1},
        {"--exclude '?.CATPar' w/old/d.CATPart", "w/old/d.CATPart ", 0},
        {"--exclude '*' w/old/d.CATPart", "w/old/d.CATPart ", 0},
        {"-0 < names", "w/old/d.CATPart w/a.CATPart ", 1},
    };
    for (const auto& example : cases) {
        EXPECT_EQ(runIn(".", std::string("status --json ") + example.arguments), example.code) << example.arguments;
        std::string documents;
        for (const auto& row : rows()) documents += row["document"].get<std::string>() + " ";
        EXPECT_EQ(documents, example.documents) << example.arguments;
        EXPECT_EQ(content("err"), "") << example.arguments;
    }
    // The summary counts what was looked at, not what is shown.
    EXPECT_EQ(runIn(".", "status --new w"), 1);
    EXPECT_EQ(content("err"), "4 documents: 1 new, 1 modified, 2 not modified, 1 with unresolved links\n");
}

} // namespace
