#include "tests/support/LinksTest.h"

#include "UTILFile.h"
#include "VornToolsDocumentLinks.h"
#include "VornToolsFolderMemory.h"
#include "embedded/Failures.h"
#include "embedded/Profile.h"

#include <functional>

namespace {

TEST_F(LinksTest, NamesWithoutDirectoryAreLookedForInTheGivenOne) {
    write("in/a.CATPart", "x");
    write("in/deep/b.CATPart", "x");
    const std::string in = path("in"), separator = UTILFile::getPathSeparator().ConvertToChar();
    EXPECT_EQ(located("", in + separator + "own", "a.CATPart", in), path("in/a.CATPart"));
    EXPECT_EQ(located("", "own", "a.CATPart", in + separator), path("in/a.CATPart"));
    EXPECT_EQ(located("", in + separator + "own", "b.CATPart", in), "b.CATPart") << "not below it";
    EXPECT_EQ(located("", in + separator + "own", "a.CATPart", ""), "a.CATPart");
    EXPECT_EQ(located("", in + separator + "own", "", in), "");
}

TEST_F(LinksTest, PathsMoveWithTheDocument) {
    for (const char* name :
         {"copy/asm/own.CATProduct", "copy/asm/sub/a.CATPart", "copy/parts/b.CATPart", "copy/asm/x/y/c.CATPart",
          "copy/asm/g.CATPart", "copy/asm/deep/g.CATPart", "copy/asm/.hidden/d.CATPart", "stored.CATPart"})
        write(name, "x");
    const std::string in_long = write("copy/asm/" + std::string(100, 'x') + "/e.CATPart", "x");
    const std::string file = path("copy/asm/own.CATProduct"), stored = path("stored.CATPart");
    const struct {
        std::string own, linked, found;
    } cases[] = {
        {"C:\\proj\\asm\\own.CATProduct", stored, stored},
        {"C:\\proj\\asm\\own.CATProduct", "C:\\proj\\asm\\sub\\a.CATPart", path("copy/asm/sub/a.CATPart")},
        {"C:\\proj\\asm\\own.CATProduct", "C:\\proj\\parts\\b.CATPart", path("copy/parts/b.CATPart")},
        {"C:\\other\\own.CATProduct", "C:\\elsewhere\\c.CATPart", path("copy/asm/x/y/c.CATPart")},
        {"", "\\\\srv\\share\\c.CATPart", path("copy/asm/x/y/c.CATPart")},
        {"C:\\proj\\asm\\own.CATProduct", ".\\sub\\a.CATPart", path("copy/asm/sub/a.CATPart")},
        {"C:\\proj\\asm\\own.CATProduct", "C:\\proj\\asm\\d.CATPart", "C:\\proj\\asm\\d.CATPart"},
        {"C:\\proj\\asm\\own.CATProduct", "C:\\proj\\asm\\sub\\", "C:\\proj\\asm\\sub\\"},
        {"", "\\\\srv\\share\\e.CATPart", in_long},
        {"C:\\pro\\asm\\own.CATProduct", "C:\\proj\\e\\f.CATPart", "C:\\proj\\e\\f.CATPart"},
        {path("copy/own.CATProduct"), path("copy/sub/a.CATPart"), path("copy/asm/sub/a.CATPart")},
        {path("copy/asm2/own.CATProduct"), path("copy/asm2/sub/a.CATPart"), path("copy/asm/sub/a.CATPart")},
        {"a\\own.CATProduct", "C:\\q\\a\\deep\\g.CATPart", path("copy/asm/deep/g.CATPart")},
        {path("copy/app/own.CATProduct"), "C:\\apps\\app\\.hidden\\d.CATPart", path("copy/asm/.hidden/d.CATPart")},
    };
    for (const auto& c : cases) EXPECT_EQ(located(c.own, file, c.linked), c.found) << c.own << " " << c.linked;
    EXPECT_EQ(located("", file, "deep\\g.CATPart"), path("copy/asm/deep/g.CATPart")) << "not the nearer one";
    const std::string given = write("given/sub/h.CATPart", "x");
    EXPECT_EQ(located("", file, "sub\\h.CATPart", path("given")), given);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder() / "copy");
    write("copy/w/a.CATPart", "x");
    const std::string separator = UTILFile::getPathSeparator().ConvertToChar();
    EXPECT_EQ(located("C:\\q\\own", "own", "C:\\q\\a.CATPart", "w" + separator), "w" + separator + "a.CATPart");
    std::filesystem::current_path(before);
    VornToolsString own = stringOf("own"), name = stringOf("\\x\\c.CATPart");
    std::unique_ptr<VornToolsString> result(
        VornToolsLinks::realLinkedDocPath(nullptr, nullptr, &name, path("copy").c_str()));
    EXPECT_EQ(bytesOf(*result), path("copy/asm/x/y/c.CATPart"));
    result.reset(VornToolsLinks::realLinkedDocPath_2(&own, &own, nullptr, ""));
    EXPECT_EQ(bytesOf(*result), "");
    EXPECT_EQ(reports(), Texts({"VornToolsLinks::realLinkedDocPath_2 9001 ip_linked_name"}));
}

TEST_F(LinksTest, SearchesReadAtMost260Entries) {
    write("wide/z/target.CATPart", "x");
    const std::string wide = path("wide");
    const auto found = [&] {
        located("", path("none/own"), "\\none\\none"); // starts the count anew
        return VornToolsLinks::findFileInPath("target.CATPart", wide.c_str()) != nullptr;
    };
    EXPECT_TRUE(found());
    for (int i = 0; i < 300; ++i) write("wide/" + std::to_string(i), "x");
    std::filesystem::create_directories(folder() / "wide" / "zz");
    int entries = 0;
    for (int i = 0; i < 400; ++i) // files are opened like folders, and are none
        entries += VornToolsLinks::findFileInPath("absent", (wide + "/" + std::to_string(i % 300)).c_str()) != nullptr;
    EXPECT_EQ(entries, 0);
    located("", path("none/own"), "\\none\\none");
    EXPECT_EQ(VornToolsLinks::findFileInPath("absent", wide.c_str()), nullptr);
    EXPECT_EQ(VornToolsLinks::findFileInPath("target.CATPart", wide.c_str()), nullptr) << "the entries are used up";
    EXPECT_NE(VornToolsLinks::findFileInPath("target.CATPart", (wide + "/z").c_str()), nullptr) << "looked at first";
    EXPECT_EQ(VornToolsLinks::findFileInPath("x", nullptr), nullptr);
    EXPECT_EQ(VornToolsLinks::findFileInPath(nullptr, "x"), nullptr);
    EXPECT_EQ(reports(), Texts({"VornToolsLinks::findFileInPath 9001 ip_directory",
                                "VornToolsLinks::findFileInPath 9001 ip_file_name"}));

    embedded::Switches by_name;
    by_name.folderOrder = embedded::FolderOrder::names; // "." and ".." among them
    embedded::setSwitches(by_name);
    const std::string last = write("edge/z/last.CATPart", "x");
    for (int i = 0; i < 257; ++i) write("edge/" + std::to_string(i), "x");
    EXPECT_EQ(located("", path("edge/own"), "\\gone\\last.CATPart"), last) << "in the 260th";
    write("edge/more", "x");
    EXPECT_EQ(located("", path("edge/own"), "\\gone\\last.CATPart"), "\\gone\\last.CATPart") << "in the 261st";
}

TEST_F(LinksTest, TheCountStandsAtWhatTheLastResolutionRead) {
    embedded::setSwitches({}); // "." and ".." in front
    const auto fill = [&](const std::string& name, int files) {
        for (int i = 0; i < files; ++i) write(name + "/" + std::to_string(i), "x");
    };
    const auto readMore = [&](int entries) {
        for (; entries % 2 != 0; entries -= 9) VornToolsLinks::findFileInPath("absent", path("flat").c_str());
        for (; entries > 0; entries -= 2) VornToolsLinks::findFileInPath("absent", path("empty").c_str());
    };
    std::filesystem::create_directories(folder() / "empty");
    write("chain/c/c/end.CATPart", "x");
    write("below/c/c/near.CATPart", "x");
    write("below/c/c/c/c/c/c", "x");
    write("far/c/c/c/far.CATPart", "x");
    fill("flat", 7);
    fill("wide", 300);
    const std::string stored = path("flat/0");
    const auto resolveAll = [&](const std::vector<ImageRecord>& records) {
        return [this, records] {
            DocumentImage image;
            VornToolsString bytes = stringOf(image.properties("", records).bytes()), file = stringOf(path("flat/own"));
            Strings found[4];
            VornToolsLinks::getLinkedDocName(&bytes, image.propertyPosition(), &file, "", found[0], found[1], found[2],
                                             found[3]);
        };
    };
    const auto there = ImageRecord::whole("CATPart", stored), gone = ImageRecord::whole("CATPart", "\\gone");
    const struct {
        const char* what;
        std::function<void()> resolve;
        int read;
    } cases[] = {
        {"nowhere in seven", [&] { located("", path("flat/own"), "\\gone"); }, 9},
        {"as stored", [&] { located("", path("flat/own"), stored); }, 0},
        {"beside", [&] { located("", path("flat/own"), "\\gone\\1"); }, 0},
        {"without directory", [&] { located("", path("flat/own"), "absent"); }, 0},
        {"in the second folder", [&] { located("", path("below/own"), "\\gone\\near.CATPart"); }, 6},
        {"in the third folder", [&] { located("", path("far/own"), "\\gone\\far.CATPart"); }, 9},
        {"the last is there", resolveAll({gone, there}), 0},
        {"the last is gone", resolveAll({there, gone}), 9},
        {"the last is gone again", resolveAll({gone, there, gone}), 9},
        {"links behind documents",
         [&] {
             DocumentImage image;
             image.application().properties("", {ImageRecord::object("CATProduct", "\\gone", kFirst), there});
             VornToolsDocumentLinks document;
             VornToolsFolderMemory folders;
             document.read(write("flat/0", image.bytes()).c_str(), "MMLASSY", "", folders);
         },
         9},
    };
    for (const auto& c : cases) {
        for (const int more : {0, 1}) { // as many entries as are left, and one more
            c.resolve();
            readMore(260 - c.read - 6 + more);
            const bool found = VornToolsLinks::findFileInPath("end.CATPart", path("chain").c_str()) != nullptr;
            EXPECT_EQ(found, more == 0) << c.what;
        }
    }
    located("", path("wide/own"), "\\gone");
    EXPECT_EQ(VornToolsLinks::findFileInPath("end.CATPart", path("chain").c_str()), nullptr) << "none is left";
}

TEST_F(LinksTest, AFolderIsNoListOfFolders) {
#if defined(_WIN32)
    const std::string odd = "a;b";
#else
    const std::string odd = "a:b";
#endif
    for (const char* const name : {"near", "below/far"}) {
        const std::string file = write(odd + "/" + name + ".CATPart", "x");
        EXPECT_EQ(located("", path(odd + "/own"), "\\gone\\" + std::filesystem::path(file).filename().u8string()),
                  file);
    }
    EXPECT_EQ(located("", path(odd + "/own"), "\\gone\\other.CATPart"), "\\gone\\other.CATPart");
}

/** Where a document finds a part that it stores, with what a memory knows already. */
Texts foundWith(VornToolsFolderMemory& folders, const std::string& own, const std::string& stored) {
    DocumentImage image;
    image.properties("", {ImageRecord::whole("CATPart", stored)});
    VornToolsString bytes = stringOf(image.bytes()), file = stringOf(own);
    Strings found, other;
    VornToolsLinks::getLinkedDocName(&bytes, image.propertyPosition(), &file, "", found, other, other, other, folders);
    return textsOf(found);
}

TEST_F(LinksTest, AMemoryLooksForEachFileOnce) {
    const std::string stored = path("elsewhere/late.CATPart"), own = path("w/own.CATProduct");
    write("w/late.CATPart", "x");
    const auto find = [&](VornToolsFolderMemory& folders) { return foundWith(folders, own, stored); };
    VornToolsFolderMemory before, after;
    EXPECT_EQ(find(before), Texts({path("w/late.CATPart")}));
    foundWith(before, own, path("elsewhere/other.CATPart"));
    write("elsewhere/late.CATPart", "x");
    EXPECT_EQ(find(before), Texts({path("w/late.CATPart")})) << "as it was looked for";
    EXPECT_EQ(find(after), Texts({stored}));
    std::filesystem::remove(stored);
    EXPECT_EQ(find(after), Texts({stored})) << "as it was looked for";
}

TEST_F(LinksTest, AMemoryForFoldersReadsThemOnce) {
    write("w/old/a.CATPart", "x");
    const std::string own = path("w/own.CATProduct");
    const auto find = [&](const std::string& name, VornToolsFolderMemory& folders) {
        return foundWith(folders, own, "\\gone\\" + name);
    };
    VornToolsFolderMemory folders, others;
    EXPECT_EQ(find("b.CATPart", folders), Texts({"\\gone\\b.CATPart"}));
    write("w/old/b.CATPart", "x");
    write("w/new/c.CATPart", "x");
    embedded::Failures& platform = embedded::Failures::get();
    platform.arm(0, false, embedded::FaultFlavour::none);
    EXPECT_EQ(find("a.CATPart", folders), Texts({path("w/old/a.CATPart")}));
    platform.disarm();
    for (const char* const call : platform.sites()) EXPECT_STRNE(call, "CATReadDirectory");
    EXPECT_EQ(find("b.CATPart", folders), Texts({path("w/old/b.CATPart")})) << "in a known folder files are noticed";
    EXPECT_EQ(find("c.CATPart", folders), Texts({"\\gone\\c.CATPart"})) << "folders are not";
    EXPECT_EQ(find("c.CATPart", others), Texts({path("w/new/c.CATPart")})) << "each remembers for itself";
    EXPECT_EQ(located("", own, "\\gone\\c.CATPart"), path("w/new/c.CATPart"));
}

/** Every operation that takes a memory looks into it. */
TEST_F(LinksTest, AMemoryForFoldersServesEveryOperation) {
    write("w/deep/other.CATPart", "x");
    DocumentImage image;
    image.application().properties("", {ImageRecord::whole("CATPart", "\\gone\\late.CATPart"),
                                        ImageRecord::object("CATProduct", "\\gone\\late.CATPart", kFirst)});
    const std::string own = write("w/own.CATPart", image.bytes());
    VornToolsString bytes = stringOf(image.bytes()), file = stringOf(own);
    VornToolsFolderMemory folders;
    unsigned char missing = 0;
    const std::function<Texts()> operations[] = {
        [&] { return textsOf(VornToolsLinks::getLinks(&bytes, "MML", &file, "", missing, folders)); },
        [&] { return textsOf(VornToolsLinks::getMMLDrawingLinks(&bytes, &file, "", folders)); },
        [&] {
            Strings found, other;
            const int property = image.propertyPosition();
            VornToolsLinks::getLinkedDocName(&bytes, property, &file, "", found, other, other, other, folders);
            return textsOf(found);
        },
        [&] {
            Strings found;
            VornToolsLinks::getMmlDocuments(&bytes, 21, image.applicationPosition(), image.propertyPosition(), &file,
                                            "", found, folders);
            return textsOf(found);
        },
        [&] {
            double count = 0;
            CATListValCATUnicodeString lists[5];
            VornToolsVector<unsigned char> flags;
            VornToolsLinks::searchLinks(own.c_str(), "MML", "", count, lists[0], lists[1], lists[2], lists[3], lists[4],
                                        flags, missing, folders);
            return textsOf(lists[0]);
        },
    };
    for (const auto& operation : operations) {
        SCOPED_TRACE(&operation - operations);
        const Texts stored = operation();
        ASSERT_EQ(stored.size(), 1U);
        write("w/late/late.CATPart", "x");
        EXPECT_EQ(operation(), stored) << "the folder is new";
        std::filesystem::remove_all(folder() / "w" / "late");
    }
}

TEST_F(LinksTest, SearchesFollowLinksButNotForever) {
    write("elsewhere/far.CATPart", "x");
    write("w/deep/Near.CATPart", "x");
    std::filesystem::create_directories(folder() / "w" / "folder.CATPart");
    std::error_code noLinksHere;
    std::filesystem::create_directory_symlink(folder() / "elsewhere", folder() / "w" / "aside", noLinksHere);
    const std::string own = path("w/own.CATProduct");
    EXPECT_EQ(located("", own, "\\gone\\far.CATPart"),
              noLinksHere ? "\\gone\\far.CATPart" : path("w/aside/far.CATPart"));
    std::filesystem::create_directory_symlink(folder() / "w", folder() / "w" / "deep" / "loop", noLinksHere);
    EXPECT_EQ(located("", own, "\\gone\\absent.CATPart"), "\\gone\\absent.CATPart");
    EXPECT_EQ(located("", own, "\\gone\\folder.CATPart"), "\\gone\\folder.CATPart");
    // Whether letter case tells names apart is the system's business.
    const bool same = std::filesystem::exists(folder() / "w" / "deep" / "NEAR.CATPart");
    EXPECT_EQ(located("", own, "\\gone\\NEAR.CATPart"), same ? path("w/deep/NEAR.CATPart") : "\\gone\\NEAR.CATPart");
}

TEST_F(LinksTest, NamesAndSeparators) {
    const std::pair<const char*, int> names[] = {{"a.CATPart", 1}, {"", 1}, {"d\\a", 0}, {"d/a", 0}, {"\\", 0}};
    for (const auto& name : names) EXPECT_EQ(VornToolsLinks::isAFilename(stringOf(name.first)), name.second);
    VornToolsString path = stringOf("/a//b\\c\0/d"s);
    EXPECT_EQ(VornToolsLinks::replaceSeparatorInString(path), 0);
    EXPECT_EQ(bytesOf(path), "\\a\\\\b\\c\0\\d"s);
}

} // namespace
