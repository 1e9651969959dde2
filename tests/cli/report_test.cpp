#include "tests/support/DocumentContainer.h"
#include "tests/support/DocumentImage.h"
#include "tests/support/Program.h"

namespace {

using namespace std::string_literals;

const std::string kPreviewStream = "\x05"
                                   "CATPreview";
const std::string kJpeg = "\xFF\xD8\xFF<picture>";

/** What stands in an element of the page. */
class ReportCommandTest : public ProgramTest {
protected:
    std::string element(const std::string& id) {
        const std::string page = content("report.html");
        std::size_t begin = page.find(" id=\"" + id + "\">");
        if (begin == std::string::npos) return {};
        begin = page.find('>', begin) + 1;
        return page.substr(begin, page.find("</script>", begin) - begin);
    }
    nlohmann::ordered_json data(const std::string& id = "data") { return nlohmann::ordered_json::parse(element(id)); }
    int report(const std::string& arguments) { return run("report " + arguments + " -o " + quoted("report.html")); }
    static std::string part(const std::string& picture) {
        DocumentContainer file;
        return file.stream(kPreviewStream, "\0\0\0\0"s + picture).bytes();
    }
    std::size_t filesIn(const std::string& name) {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(path(name)), {}));
    }
};

/** Times of files decide whether documents are modified; everything else of the example is the same everywhere. */
TEST_F(ReportCommandTest, TheDataOfTheExample) {
    std::filesystem::copy(std::string(VORNTOOLS_SOURCE_DIR) + "/examples/workspace", path("workspace"),
                          std::filesystem::copy_options::recursive);
    EXPECT_EQ(runIn(".", "report workspace -o report.html"), 1);
    EXPECT_EQ(content("out"), "");
    const auto data = this->data();
    EXPECT_EQ(data["looked_at"].dump(), "[\"" + path("workspace") + "\"]");
    EXPECT_EQ(data["folders"].dump(), R"(["workspace/","workspace/housing/"])");
    EXPECT_EQ(data["in_folder"].dump(), "[5,3]");
    EXPECT_EQ(data["name"].dump(), R"(["DriveGear.CATPart","GearPump.CATDrawing","GearPump.CATProduct","Key.CATPart",)"
                                   "\"Shaft.CATPart\",\"Cover.CATPart\",\"Dichtung_\xC3\x96l.CATPart\","
                                   "\"Housing.CATPart\"]");
    EXPECT_EQ(data["states"][data["state"][3].get<std::size_t>()].dump(), R"(["new","no DAT file"])");
    EXPECT_EQ(data["item_revision"].dump(), R"(["REV-1002","REV-1003","REV-1000","","REV-1001","A","REV-1004","B"])");
    EXPECT_EQ(data["size"][2], std::filesystem::file_size(path("workspace/GearPump.CATProduct")));
    EXPECT_EQ(data["versions"].dump(), R"(["V5 R27 SP2"])");
    // The product points to Shaft, DriveGear, Housing and one behind the eight that is missing.
    EXPECT_EQ(data["links"]["count"].dump(), "[0,2,4,0,2,0,0,0]");
    EXPECT_EQ(data["links"]["to"].dump(), "[2,4,4,0,7,8,0,2]");
    EXPECT_EQ(data["hows"][data["links"]["how"][0].get<std::size_t>()].dump(),
              R"(["context product, MMLDrawing","moved along with the document",3,0])");
    EXPECT_EQ(data["others"].dump(), R"({"name":["D:\\projects\\gear pump\\Relief_Valve.CATPart"],"there":[],)"
                                     R"("count":[0],"total":[0],"to":[],"agree":[]})");
    EXPECT_EQ(data["ghosts"].dump(), R"({"of":[2],"name":["D:\\projects\\gear pump\\Old_Shaft.CATPart"],"live":[0]})");
    EXPECT_EQ(this->data("pictures")["kind"], "embed");
    EXPECT_NE(content("report.html").find("class Archive"), std::string::npos) << "the page's own script";
}

TEST_F(ReportCommandTest, MissingDocumentsHaveCandidatesAndEqualNamesAreDuplicates) {
    DocumentImage image;
    write("d/A.CATProduct",
          image
              .properties("D:\\old\\A.CATProduct",
                          {ImageRecord::object("CATPart", "D:\\old\\x\\Gone.CATPart", std::string(16, '\x07')),
                           ImageRecord::unloadable("sizes.xls", 2)})
              .bytes());
    write("d/sizes.xls", "sheet");
    write("e/y/GONE.catpart", "one");
    write("e/x/gone.CATPart", "two");
    write("e/x/cut.CATPart", part(kJpeg).substr(0, 100));
    EXPECT_EQ(report(quoted("d") + " " + quoted("e")), 1);
    const auto data = this->data();
    EXPECT_EQ(data["name"].dump(), R"(["A.CATProduct","cut.CATPart","gone.CATPart","GONE.catpart"])");
    EXPECT_EQ(data["links"]["to"].dump(), "[5,4]");
    EXPECT_EQ(data["others"]["name"].dump(), "[\"" + path("d/sizes.xls") + "\",\"D:\\\\old\\\\x\\\\Gone.CATPart\"]");
    EXPECT_EQ(data["others"]["there"].dump(), "[0]");
    EXPECT_EQ(data["others"]["count"].dump(), "[0,2]");
    EXPECT_EQ(data["others"]["to"].dump(), "[2,3]");
    EXPECT_EQ(data["others"]["agree"].dump(), "[1,0]");
    EXPECT_EQ(data["duplicates"].dump(), R"([["strangers",[2,3]]])");
    EXPECT_EQ(data["orphans"].dump(), "[1,2,3]");
    EXPECT_EQ(data["condition"].dump(), R"({"of":[1,2,3],"text":["cut off","not a CATIA document",)"
                                        R"("not a CATIA document"]})");
}

/** The bytes of copies are not read: those of one save differ only where a disk or somebody has changed them. */
TEST_F(ReportCommandTest, CopiesAreToldByTheirSave) {
    const auto saved = [](const std::string& geometry) {
        return DocumentContainer("").stream("Geometry", geometry).bytes();
    };
    write("d/1/Copy.CATPart", saved("a"));
    write("d/2/COPY.CATPart", saved("b"));
    write("d/1/Longer.CATPart", saved("a"));
    write("d/2/Longer.CATPart", saved("longer"));
    write("d/1/Plain.CATPart", "no document");
    write("d/2/Plain.CATPart", "no document");
    write("d/1/Unlike.CATPart", "no document");
    write("d/2/Unlike.CATPart", "No document");
    EXPECT_EQ(report(quoted("d")), 1);
    EXPECT_EQ(data()["duplicates"].dump(),
              R"([["same save",[0,4]],["strangers",[1,5]],["same bytes",[2,6]],["strangers",[3,7]]])");
}

TEST_F(ReportCommandTest, NamesAreText) {
    const std::string names[] = {"</script><b>.CATPart", "<!--.CATPart", "\"q\"\n.CATPart", "\xFF.CATPart",
                                 "\\.CATPart"};
    for (const std::string& name : names) write("d/" + name + ".dat", "<DatFileVersion>\n2\n</DatFileVersion>\n");
    EXPECT_EQ(report(quoted("d")), 1);
    EXPECT_EQ(element("data").find('<'), std::string::npos);
    const auto data = this->data();
    std::vector<std::string> shown = data["name"];
    std::sort(shown.begin(), shown.end());
    // On this system a backslash is a letter of a name; the page takes it for the end of a folder.
    EXPECT_EQ(shown, (std::vector<std::string>{"\"q\"%0A.CATPart", "%FF.CATPart", ".CATPart", "<!--.CATPart",
                                               "script><b>.CATPart"}));
    EXPECT_EQ(data["gone"].dump(), "[0,1,2,3,4]");
}

TEST_F(ReportCommandTest, PicturesGoIntoThePageOrBesideIt) {
    write("d/a.CATPart", part(kJpeg));
    write("d/b.CATPart", part("no picture"));
    write("d/c.CATPart", part(kJpeg + "2"));
    write("d/d.CATPart", part(kJpeg + "2\xFF"));
    EXPECT_EQ(report(quoted("d")), 1);
    EXPECT_EQ(data("pictures").dump(), R"({"kind":"embed","block":2000})");
    EXPECT_EQ(element("pictures-0"), "\n/9j/PHBpY3R1cmU+\n\n/9j/PHBpY3R1cmU+Mg==\n/9j/PHBpY3R1cmU+Mv8=\n");
    EXPECT_EQ(report("--previews none " + quoted("d")), 1);
    EXPECT_EQ(data("pictures").dump(), R"({"kind":"none"})");

    write("report_files/0123456789abcdef.jpg", "of an older page");
    write("report_files/mine.jpg", "of somebody");
    EXPECT_EQ(report("--previews folder " + quoted("d")), 1);
    const auto pictures = data("pictures");
    EXPECT_EQ(pictures["folder"], "report_files");
    EXPECT_EQ(pictures["name"][1], "");
    EXPECT_EQ(content("report_files/" + pictures["name"][0].get<std::string>() + ".jpg"), kJpeg);
    EXPECT_EQ(content("report_files/" + pictures["name"][2].get<std::string>() + ".jpg"), kJpeg + "2");
    EXPECT_EQ(content("report_files/mine.jpg"), "of somebody");
    EXPECT_EQ(filesIn("report_files"), 4u);

    EXPECT_EQ(run("report --previews folder " + quoted("d") + " -o " + quoted("a%b \xC3\xB6\xFF.html")), 1);
    EXPECT_NE(content("a%b \xC3\xB6\xFF.html").find("\"folder\":\"a%25b%20%C3%B6%FF_files\""), std::string::npos);
}

/** 38 pictures of nearly 1 MB are more than a page takes; a page that has to take them is large. */
TEST_F(ReportCommandTest, ManyPicturesGoIntoAFolder) {
    for (char name = 'A'; name < 'A' + 38; ++name)
        write("d/"s + std::to_string(name) + ".CATPart", part(kJpeg + std::string(1000000, name)));
    EXPECT_EQ(report(quoted("d")), 1);
    EXPECT_EQ(data("pictures")["kind"], "folder");
    EXPECT_EQ(filesIn("report_files"), 38u);
    EXPECT_EQ(content("err"), "");
    EXPECT_EQ(report("--previews embed " + quoted("d")), 1);
    EXPECT_EQ(data("pictures")["kind"], "embed");
    EXPECT_EQ(element("pictures-0").size(), 1u + 38 * (1 + (kJpeg.size() + 1000000 + 2) / 3 * 4));
    EXPECT_EQ(content("err"),
              "vorntools: " + path("report.html") + " has 50 MB; --previews folder or none makes it smaller\n");
}

TEST_F(ReportCommandTest, WhatCannotBeWrittenStaysAsItWas) {
    write("d/a.CATPart", part(kJpeg + std::string(100000, 'p')));
    write("there/report.html", "mine");
    const std::string limited = "ulimit -f 16; trap '' XFSZ; ";
    const auto to = [this](const std::string& name) { return "report " + quoted("d") + " -o " + quoted(name); };
    EXPECT_EQ(runAfter(limited, to("there/report.html")), 2);
    EXPECT_NE(content("err").find("cannot be written"), std::string::npos);
    EXPECT_EQ(runAfter("ulimit -f 150; trap '' XFSZ; ", to("there/report.html") + " --previews folder"), 2);
    EXPECT_EQ(content("there/report.html"), "mine");
    EXPECT_EQ(filesIn("there"), 1u) << "neither parts nor pictures";
    EXPECT_EQ(run(to("absent/report.html")), 2);
    EXPECT_EQ(run(to("d/a.CATPart")), 2);
    EXPECT_NE(content("err").find("is a CATIA document"), std::string::npos);
    EXPECT_EQ(run("report " + quoted("d") + " -o /dev/null"), 2);
    EXPECT_EQ(run("report " + quoted("d")), 2) << "without a file to write";
}

TEST_F(ReportCommandTest, WhatCannotBeReadIsTold) {
    EXPECT_EQ(report(quoted("absent")), 2);
    EXPECT_EQ(data()["complaints"].size(), 1u);
    std::filesystem::create_directory(path("e"));
    std::filesystem::create_symlink("nothing", path("e/Gone.CATPart"));
    std::filesystem::create_symlink("nothing", path("e/notes.txt"));
    write("e/notes.txt.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n");
    EXPECT_EQ(report(quoted("e")), 2);
    EXPECT_EQ(data()["name"].dump(), R"(["Gone.CATPart","notes.txt"])");
    EXPECT_EQ(data()["unread"].dump(), "[0]") << "only CATIA documents are read";
    EXPECT_EQ(data()["complaints"].dump(), "[]");
}

} // namespace
