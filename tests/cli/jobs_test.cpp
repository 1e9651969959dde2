#include "tests/support/DocumentContainer.h"
#include "tests/support/DocumentFolders.h"

#include <filesystem>
#include <regex>

namespace {

using namespace std::string_literals;

/** Folders that several processes read. */
class JobsTest : public DocumentFoldersTest {
protected:
    /** More documents than a process has in one turn, with everything that is told of any. */
    void SetUp() override {
        DocumentFoldersTest::SetUp();
        for (int i = 0; i < 150; ++i) {
            const std::string number = std::to_string(i), folder = "w/" + std::to_string(i % 7) + "/";
            document(folder + "Part" + number + ".CATPart", "",
                     {part("D:\\o\\Gone" + std::to_string(i % 5) + ".CATPart")});
            document(folder + "Top" + number + ".CATProduct", "",
                     {part("Part" + number + ".CATPart"), product("Top" + std::to_string(i - 7) + ".CATProduct"),
                      part("D:\\o\\Old.CATPart", 0)});
            write(folder + "Part" + number + ".CATPart.dat",
                  "<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nR" + number + "\n</ItemRevUID>\n");
        }
        for (const char* const folder : {"w/1", "w/2", "w/3"}) {
            document(folder + "/Same.CATPart"s, "", {});
            document(folder + "/Similar.CATPart"s, "",
                     std::vector<ImageRecord>(folder[2] == '2' ? 1 : 0, part("x.CATPart")));
            DocumentContainer pictured;
            write(folder + "/Pictured.CATPart"s, pictured
                                                     .stream("\x05"
                                                             "CATPreview",
                                                             "\0\0\0\0\xFF\xD8\xFF<"s + folder + ">")
                                                     .bytes());
        }
        document("w/other/q/GONE1.CATPart", "", {});
        write("w/4/Cut.CATPart", "V5_CFV2");
        std::filesystem::create_symlink("nothing", path("w/5/Unreadable.CATPart"));
    }
    /** Exit code and all that one command says, the journal included. */
    std::string said(const std::string& command, const std::string& jobs) {
        const int code = run(command + " --journal " + quoted("journal") + " --jobs " + jobs);
        return std::to_string(code) + "\n" + content("out") + "\n" + content("err") + "\n" + content("journal");
    }
    /** The page but for when it was made and how long that took. */
    std::string page() {
        return std::regex_replace(content("p.html"), std::regex("\"date\":\"[^\"]*\",\"seconds\":[0-9.]*"), "");
    }
};

TEST_F(JobsTest, AnyNumberOfProcessesSaysTheSame) {
    const std::string folders = " " + quoted("w");
    for (const std::string& command :
         {"links --json --ghosts" + folders, "links" + folders, "links --dot" + folders, "links --missing" + folders,
          "links --type MML --missing --json" + folders, "status --json --links" + folders, "status --links" + folders,
          "status --json --sort status" + folders, "status --new --json" + folders,
          "used-by --json " + quoted("w/0/Part0.CATPart") + folders, "orphans --json" + folders,
          "duplicates --json" + folders, "duplicates" + folders}) {
        const std::string one = said(command, "1");
        EXPECT_GT(content("journal").size(), 1000u) << command;
        for (const char* const jobs : {"2", "3", "64"}) EXPECT_EQ(said(command, jobs), one) << command << " " << jobs;
        EXPECT_EQ(run(command + " --journal " + quoted("journal")), one.front() - '0') << command;
        EXPECT_EQ(content("out"), one.substr(2, content("out").size())) << command << ", as many as are useful";
    }
    const std::string report = "report -o " + quoted("p.html") + folders;
    const std::string one = said(report, "1"), onePage = page();
    EXPECT_NE(onePage.find("/9j/PHcvMT4="), std::string::npos) << "a picture";
    for (const char* const jobs : {"2", "64"}) {
        EXPECT_EQ(said(report, jobs), one) << jobs;
        EXPECT_EQ(page(), onePage) << jobs;
    }
}

#if !defined(_WIN32)

TEST_F(JobsTest, WhereNoMoreProcessesCanBeginOneDoesTheWork) {
    EXPECT_EQ(run("links --json --jobs 1 " + quoted("w")), 2);
    const std::string one = content("out");
    // Eight pipes take more open files than are left.
    EXPECT_EQ(runAfter("ulimit -n 8;", "links --json --jobs 8 " + quoted("w")), 2);
    EXPECT_EQ(content("out"), one);
    EXPECT_EQ(content("err"), "");
}

TEST_F(JobsTest, AProcessThatEndsTooEarlyIsSaid) {
    if (!std::filesystem::exists("/proc/thread-self/children")) GTEST_SKIP() << "this system tells no children";
    std::filesystem::remove(path("w/5/Unreadable.CATPart")); // which may be told before, or not
    // Whoever opens it waits for ever, and what the program starts is killed; a sanitizer would start something at the
    // end as well.
    const std::string killAll =
        "mkfifo " + quoted("Waits.CATPart") +
        "; (while [ -e /proc/$$ ]; do read -r ours < /proc/$$/task/$$/children; "
        "for process in $ours; do below=; read -r below < /proc/$process/task/$process/children; "
        "[ -z \"$below\" ] || kill -9 $below; done; done) 2> /dev/null & ASAN_OPTIONS=detect_leaks=0 ";
    EXPECT_EQ(runAfter(killAll, "links --jobs 3 " + quoted("w") + " " + quoted("Waits.CATPart")), 2);
    EXPECT_EQ(content("err"), "vorntools: a process that reads documents has ended too early\n");
}

#endif

} // namespace
