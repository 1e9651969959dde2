#include "tests/support/DocumentImage.h"
#include "tests/support/Program.h"

namespace {

class ReportCommandTest : public ProgramTest {
protected:
    bool says(const std::string& part) { return content("report.html").find(part) != std::string::npos; }
};

TEST_F(ReportCommandTest, StatesMissingDocumentsAndLinksOfTheExample) {
    const std::string workspace = std::string(VORNTOOLS_SOURCE_DIR) + "/examples/workspace";
    EXPECT_EQ(run("report \"" + workspace + "\" -o " + quoted("report.html")), 1);
    EXPECT_EQ(content("out"), "");
    EXPECT_TRUE(says("<p>8 documents: 1 new, ")); // times of files decide about the others
    EXPECT_TRUE(says("Missing documents that others point to: 1. Damaged documents: 0.</p>"));
    EXPECT_TRUE(says("<tr><td>D:\\projects\\gear pump\\Relief_Valve.CATPart</td><td>GearPump.CATProduct</td></tr>"));
    EXPECT_TRUE(says("<tr class=\"new\"><td>new</td><td>no DAT file</td>"));
    // The product and the shaft point to each other; the drawing points to both and so stands in front.
    const std::string page = content("report.html");
    const auto left = [&](const std::string& name) {
        const std::size_t title = page.find("/" + name + "</title><rect x=\"");
        return title == std::string::npos ? -1 : std::atoi(page.c_str() + page.find("x=\"", title) + 3);
    };
    EXPECT_EQ(left("GearPump.CATDrawing"), 10);
    EXPECT_LT(left("GearPump.CATDrawing"), left("GearPump.CATProduct"));
    EXPECT_LT(left("GearPump.CATProduct"), left("Shaft.CATPart"));
    EXPECT_LT(left("Shaft.CATPart"), left("DriveGear.CATPart"));
    EXPECT_EQ(left("Key.CATPart"), -1) << "without links";
}

TEST_F(ReportCommandTest, SaysTheSameFromTheFolderItself) {
    const std::string workspace = std::string(VORNTOOLS_SOURCE_DIR) + "/examples/workspace";
    EXPECT_EQ(run("report \"" + workspace + "\" -o " + quoted("report.html")), 1);
    std::string page = content("report.html");
    for (std::size_t at = page.find(workspace); at != std::string::npos; at = page.find(workspace))
        page.replace(at, workspace.size(), ".");
    std::filesystem::copy(workspace, path("workspace"), std::filesystem::copy_options::recursive);
    EXPECT_EQ(runIn("workspace", "report . -o " + quoted("report.html")), 1);
    for (const char* const part : {"<h2>What is missing</h2>", "<h2>Links</h2>"}) {
        const auto cut = [&](const std::string& text) {
            const std::size_t begin = text.find(part);
            return text.substr(begin, text.find("<h2>", begin + 1) - begin);
        };
        EXPECT_EQ(cut(content("report.html")), cut(page));
    }
}

TEST_F(ReportCommandTest, AnOddNameStaysAmongOthers) {
    DocumentImage image;
    const std::string product =
        image
            .properties("D:\\old\\A.CATProduct",
                        {ImageRecord::object("CATPart", "D:\\old\\Gone.CATPart", std::string(16, '\x07'))})
            .bytes();
    write("d/A.CATProduct", product);
    std::filesystem::copy(path("d/A.CATProduct"), std::filesystem::path(path("d") + "/B\xFF.CATProduct"));
    EXPECT_EQ(run("report " + quoted("d") + " -o " + quoted("report.html")), 1);
    EXPECT_TRUE(says("<td>D:\\old\\Gone.CATPart</td><td>A.CATProduct, B%FF.CATProduct</td>"));
}

TEST_F(ReportCommandTest, NamesAreTextAndBadInputIsTold) {
    write("d/<a> & \"b\".CATPart.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n");
    EXPECT_EQ(run("report " + quoted("d") + " -o " + quoted("report.html")), 1);
    EXPECT_TRUE(says("&lt;a&gt; &amp; &quot;b&quot;.CATPart</td></tr>"));
    EXPECT_FALSE(says("<a>"));
    EXPECT_EQ(run("report " + quoted("absent") + " -o " + quoted("report.html")), 2);
    EXPECT_EQ(run("report " + quoted("d") + " -o " + quoted("absent/report.html")), 2);
    EXPECT_NE(content("err").find("cannot be written"), std::string::npos);
    EXPECT_EQ(run("report " + quoted("d")), 2) << "without a file to write";
    std::filesystem::create_directory(path("e"));
    std::filesystem::create_symlink("nothing", path("e/Gone.CATPart"));
    EXPECT_EQ(run("report " + quoted("e") + " -o " + quoted("report.html")), 2);
    EXPECT_TRUE(says("Gone.CATPart</td><td>cannot be read</td>"));
}

} // namespace
