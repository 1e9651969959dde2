#include "tests/support/DocumentContainer.h"
#include "tests/support/DocumentFolders.h"

#include <filesystem>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace std::string_literals;

/** Folders that a catalogue tells of. */
class CatalogueTest : public DocumentFoldersTest {
protected:
    /** Every kind of link, ghost, candidate, choice, state, name and preview. */
    void writeArchive() {
        document("w/Top.CATProduct", "D:\\o\\Top.CATProduct",
                 {product("D:\\o\\sub\\A.CATProduct"), part("D:\\o\\sub\\Bolt.CATPart", 3),
                  part("E:\\far\\Bolt.CATPart"), part("D:\\p\\q\\Gone.CATPart"),
                  ImageRecord::unloadable("D:\\t\\Sizes.xls", 2), part("D:\\o\\Old.CATPart", 0)});
        document("w/sub/A.CATProduct", "D:\\o\\sub\\A.CATProduct",
                 {product("D:\\o\\sub\\deep\\B.CATProduct"), part("Bolt.CATPart"), part("%41\xE9\n<b>.CATPart")});
        document("w/sub/deep/B.CATProduct", "D:\\o\\sub\\deep\\B.CATProduct",
                 {product("D:\\o\\Top.CATProduct"), part("D:\\o\\sub\\deep\\B.CATProduct")});
        document("w/sub/Bolt.CATPart", "", {});
        document("w/sub/%41\xE9\n<b>.CATPart", "", {});
        document("w/other/q/GONE.catpart", "", {});
        document("w/other/Bolt.CATPart", "D:\\o\\other\\Bolt.CATPart",
                 {product("..\\sub\\deep\\B.CATProduct"), ImageRecord::unloadable(path("outside/Pins.xls"))});
        write("outside/Pins.xls", "1");
        document("w/a.b/\xE9Lonely.CATPart", "", {});
        write("w/a.b/Cut.CATPart", "V5_CFV2");
        write("w/tables/Sizes.xls", "1");
        write("w/tables/Gone.catpart.txt", "1");
        write("w/sub/A.CATProduct.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nREV\n</ItemRevUID>\n"
                                        "<LinkedDocs>\nBolt.CATPart\nUNRESOLVED|Away\n</LinkedDocs>\n");
        write("w/sub/Deleted.CATPart.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n");
        DocumentContainer pictured;
        write("w/Pictured.CATPart", pictured
                                        .stream("\x05"
                                                "CATPreview",
                                                "\0\0\0\0\xFF\xD8\xFF<picture>"s)
                                        .bytes());
    }
    int catalogue(const std::string& arguments = "") {
        return run("catalogue --json " + arguments + " " + quoted("w") + " -o " + quoted("c.sqlite"));
    }
    /** What a run counts as read and removed. */
    std::string counts(const std::string& arguments = "") {
        EXPECT_EQ(catalogue(arguments), 0) << content("err");
        const auto row = rows().at(0);
        return row["documents"].dump() + " documents, " + row["read"].dump() + " read, " + row["removed"].dump() +
               " removed";
    }
    /** What a command says about the folders, and about the catalogues. */
    void expectSame(const std::string& command, const std::string& names, const std::string& catalogues) {
        const int code = run(command + " " + names);
        const std::string out = content("out"), err = content("err");
        EXPECT_FALSE(out.empty() && command.find("report") == std::string::npos) << command;
        EXPECT_EQ(run(command + " " + catalogues), code) << command;
        EXPECT_EQ(content("out"), out) << command;
        EXPECT_EQ(content("err"), err) << command;
    }
    void expectSameAnswers(const std::string& names, const std::string& catalogues) {
        for (const char* const form :
             {"", " --json", " --dot", " --flat", " --depth 1 --json", " --depth 2", " --flat --depth 2"})
            for (const char* const document : {"w/Top.CATProduct", "w/sub/A.CATProduct", "w/other/Bolt.CATPart"})
                for (const char* const question : {"uses", "used-by"})
                    expectSame(question + std::string(form) + " " + quoted(document), names, catalogues);
        for (const char* const question :
             {"links", "links --json --ghosts", "links --ghosts", "links --dot", "links --missing",
              "links --missing --json", "duplicates", "duplicates --json", "orphans", "orphans --json"})
            expectSame(question, names, catalogues);
    }
};

TEST_F(CatalogueTest, ItAnswersAsTheFoldersDo) {
    writeArchive();
    EXPECT_EQ(catalogue(), 0) << content("err");
    const std::string asked = "--catalogue " + quoted("c.sqlite");
    expectSameAnswers(quoted("w"), asked);
    const auto page = [&](const std::string& what) {
        EXPECT_EQ(run("report " + what + " -o " + quoted("p.html")), 1);
        const std::string text = content("p.html");
        const auto from = [&](const std::string& begin) {
            const std::size_t at = text.find(begin);
            return text.substr(at, text.find("</script>", at) - at);
        };
        return from("\"folders\":") + from(" id=\"pictures\"") + from(" id=\"pictures-0\"");
    };
    EXPECT_EQ(page(asked), page(quoted("w")));
}

TEST_F(CatalogueTest, ItKnowsWhereCopiesComeFrom) {
    for (const char* const folder : {"1", "2", "3"})
        write("w/"s + folder + "/Copy.CATPart",
              DocumentContainer("")
                  .stream("\x03"
                          "CATStorageProperty",
                          "\x3B\x10" + std::string(16, '\x05') + "\x9F\x36\x08\x46INJPL  ")
                  .stream("Geometry", folder)
                  .bytes());
    EXPECT_EQ(catalogue(), 0) << content("err");
    expectSame("duplicates --json", quoted("w"), "--catalogue " + quoted("c.sqlite"));
    EXPECT_EQ(rows().at(0)["relation"], "saved apart");
    EXPECT_EQ(rows().at(0)["documents"][1]["identity"], "5050505_5050505_5050505_5050505");
}

TEST_F(CatalogueTest, SeveralAreAskedAsOne) {
    writeArchive();
    for (const char* const folder : {"a.b", "other", "sub", "tables"})
        EXPECT_EQ(run("catalogue " + quoted("w/"s + folder) + " -o " + quoted(folder + ".sqlite"s)), 0);
    const std::string folders = quoted("w/other") + " " + quoted("w/sub") + " " + quoted("w/tables");
    const std::string asked = "--catalogue " + quoted("other.sqlite") + " --catalogue " + quoted("sub.sqlite") +
                              " --catalogue " + quoted("tables.sqlite");
    for (const char* const question : {"links --json", "orphans", "duplicates --json"})
        expectSame(question, folders, asked);
    expectSame("used-by " + quoted("w/sub/Bolt.CATPart"), folders, asked);
    expectSame("used-by --json " + quoted("w/sub/deep/B.CATProduct"), folders, asked);
    expectSame("uses --depth 1 --json " + quoted("w/other/Bolt.CATPart"), folders, asked);
    EXPECT_EQ(rows().at(1)["mark"], "more below") << "the other catalogue knows";
}

TEST_F(CatalogueTest, OnlyWhatHasChangedIsReadAgain) {
    writeArchive();
    EXPECT_EQ(counts(), "11 documents, 11 read, 0 removed");
    EXPECT_EQ(counts(), "11 documents, 0 read, 0 removed");
    const std::string asked = "--catalogue " + quoted("c.sqlite");
    const struct {
        const char* what;
        std::function<void()> change;
        const char* counts;
    } changes[] = {
        {"another size", [&] { document("w/sub/Bolt.CATPart", "", {part("New.CATPart")}); },
         "11 documents, 1 read, 0 removed"},
        {"a file that is missed", [&] { document("w/x/gone.CATPart", "", {}); }, "12 documents, 2 read, 0 removed"},
        {"a file that is used goes", [&] { std::filesystem::remove(path("w/tables/Sizes.xls")); },
         "12 documents, 1 read, 0 removed"},
        {"it comes back", [&] { write("w/tables/Sizes.xls", "1"); }, "12 documents, 1 read, 0 removed"},
        {"a DAT file goes", [&] { std::filesystem::remove(path("w/sub/A.CATProduct.dat")); },
         "12 documents, 1 read, 0 removed"},
        {"a DAT file without document goes", [&] { std::filesystem::remove(path("w/sub/Deleted.CATPart.dat")); },
         "11 documents, 0 read, 1 removed"},
        {"a file outside goes", [&] { std::filesystem::remove(path("outside/Pins.xls")); },
         "11 documents, 1 read, 0 removed"},
        {"a document goes", [&] { std::filesystem::remove(path("w/sub/Bolt.CATPart")); },
         "10 documents, 2 read, 1 removed"},
        {"a folder is renamed", [&] { std::filesystem::rename(path("w/sub/deep"), path("w/sub/flat")); },
         "10 documents, 3 read, 1 removed"},
        {"another file of the same size and time",
         [&] {
             const auto time = std::filesystem::last_write_time(path("w/a.b/Cut.CATPart"));
             write("w/new", "V5_CFV3");
             std::filesystem::last_write_time(path("w/new"), time);
             std::filesystem::rename(path("w/new"), path("w/a.b/Cut.CATPart"));
         },
         "10 documents, 1 read, 0 removed"}};
    for (const auto& example : changes) {
        example.change();
        EXPECT_EQ(counts(), example.counts) << example.what;
        for (const char* const question : {"links --json", "links --missing", "orphans", "duplicates --json"})
            expectSame(question, quoted("w"), asked);
    }
    EXPECT_EQ(counts(), "10 documents, 0 read, 0 removed");
}

TEST_F(CatalogueTest, CopiesAreKnownWithoutTheirFiles) {
    document("w/a/P.CATPart", "", {part("One.CATPart")});
    document("w/b/p.catpart", "", {part("One.CATPart")});
    document("w/c/P.CATPart", "", {part("Two.CATPart")});
    document("w/c/Alone.CATPart", "", {});
    const std::string asked = "duplicates --json --catalogue " + quoted("c.sqlite"),
                      together =
                          "duplicates --json --catalogue " + quoted("a.sqlite") + " --catalogue " + quoted("b.sqlite");
    const auto isOnlyKnown = [&](const std::string& command, const std::string& folders) {
        EXPECT_EQ(run("duplicates --json " + folders), 1);
        const std::string out = content("out");
        std::filesystem::rename(path("w"), path("unmounted"));
        const int code = run(command);
        std::filesystem::rename(path("unmounted"), path("w"));
        return code == 1 && content("out") == out;
    };
    EXPECT_EQ(catalogue("--jobs 3"), 0);
    EXPECT_TRUE(isOnlyKnown(asked, quoted("w")));
    document("w/b/p.catpart", "", {part("Six.CATPart")});
    EXPECT_EQ(catalogue(), 0);
    EXPECT_TRUE(isOnlyKnown(asked, quoted("w")));

    document("w/b/p.catpart", "", {part("One.CATPart")});
    for (const char* const folder : {"a", "b"})
        EXPECT_EQ(run("catalogue " + quoted("w/"s + folder) + " -o " + quoted(folder + ".sqlite"s)), 0);
    expectSame("duplicates --json", quoted("w/a") + " " + quoted("w/b"), together.substr(together.find("--cat")));
    std::filesystem::rename(path("w"), path("unmounted"));
    EXPECT_EQ(run(together), 2);
    EXPECT_NE(content("err").find("w/a/P.CATPart cannot be read"), std::string::npos) << content("err");
}

TEST_F(CatalogueTest, WhatCannotBeReadIsTriedAgain) {
    document("w/Fine.CATPart", "", {});
    std::filesystem::create_symlink("nothing", path("w/Later.CATPart"));
    for (const char* const read : {"2", "1", "1"}) {
        EXPECT_EQ(catalogue(), 0);
        EXPECT_EQ(rows().at(0)["read"].dump() + " " + rows().at(0)["unreadable"].dump(), read + " 1"s);
    }
    EXPECT_EQ(run("orphans --catalogue " + quoted("c.sqlite")), 2);
}

TEST_F(CatalogueTest, ManyProcessesWriteTheSame) {
    writeArchive();
    EXPECT_EQ(catalogue("--journal " + quoted("j1")), 0);
    const std::string asked = " --catalogue " + quoted("c.sqlite");
    EXPECT_EQ(run("links --json --ghosts" + asked), 1);
    const std::string one = content("out");
    std::filesystem::remove(path("c.sqlite"));
    EXPECT_EQ(catalogue("--jobs 3 --journal " + quoted("j3")), 0);
    EXPECT_EQ(run("links --json --ghosts" + asked), 1);
    EXPECT_EQ(content("out"), one);
    EXPECT_EQ(content("j3"), content("j1"));
    EXPECT_NE(content("j1"), "");
}

TEST_F(CatalogueTest, WhatIsNoCatalogueIsRefusedAndStays) {
    writeArchive();
    EXPECT_EQ(catalogue(), 0);
    const std::string good = content("c.sqlite");
    write("text",
          "mine, and longer than a hundred bytes, so that it might be taken for a database: " + std::string(100, '.'));
    write("empty", "");
    std::string other = good;
    other[60 + 3] = '\x63'; // the version
    write("version", other);
    other = good;
    other[68] = 'X'; // whose file it is
    write("foreign", other);
    other = good;
    other.replace(other.find("jpeg BLOB"), 9, "jpeg TEXT");
    write("tables", other);
    write("half", good.substr(0, good.size() / 2));
    const struct {
        const char *file, *message;
    } cases[] = {{"text", "text is no catalogue"},
                 {"empty", "empty is no catalogue"},
                 {"version", "version is a catalogue of version 99; this program reads version 1"},
                 {"foreign", "foreign is no catalogue"},
                 {"tables", "tables holds other tables than a catalogue"},
                 {"half", "half is damaged"},
                 {"absent/c", "absent/c"},
                 {"w", "w"}};
    for (const auto& example : cases) {
        const std::string before = content(example.file);
        for (const std::string& command : {"orphans --catalogue "s, "catalogue " + quoted("w") + " -o "}) {
            EXPECT_EQ(run(command + quoted(example.file)), 2) << example.file;
            EXPECT_NE(content("err").find(example.message), std::string::npos) << content("err");
            EXPECT_EQ(content("out"), "");
        }
        EXPECT_TRUE(content(example.file) == before) << example.file;
    }
    EXPECT_EQ(run("catalogue " + quoted("w/Top.CATProduct") + " -o " + quoted("new.sqlite")), 2);
    EXPECT_EQ(run("orphans " + quoted("w") + " --catalogue " + quoted("c.sqlite")), 2);
    EXPECT_EQ(run("uses " + quoted("w/absent.CATPart") + " --catalogue " + quoted("c.sqlite")), 2);
    EXPECT_EQ(content("err"), "vorntools: no catalogue has " + path("w/absent.CATPart") + "\n");
}

/** Locks of SQLite on a file, held by this process for as long as the object is there. */
class HeldLock {
public:
    enum Kind { Writing, Committing };
    HeldLock(const std::string& file, Kind kind) : m_file(::open(file.c_str(), O_RDWR)) {
        // The second of these bytes says that somebody writes; all 512 keep out readers as well.
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_whence = SEEK_SET;
        lock.l_start = kind == Writing ? 0x40000001 : 0x40000000;
        lock.l_len = kind == Writing ? 1 : 512;
        EXPECT_EQ(::fcntl(m_file, F_SETLK, &lock), 0);
    }
    ~HeldLock() { ::close(m_file); }
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;

private:
    const int m_file;
};

TEST_F(CatalogueTest, OneThatIsInUseOrReadOnlyStaysAsItIs) {
    writeArchive();
    EXPECT_EQ(catalogue(), 0);
    const std::string asked = "links --json --catalogue " + quoted("c.sqlite"),
                      written = "catalogue " + quoted("w") + " -o " + quoted("c.sqlite");
    EXPECT_EQ(run(asked), 1);
    const std::string out = content("out"), before = content("c.sqlite");
    const auto isRefused = [&](const std::string& commands, const std::string& command, const std::string& why) {
        EXPECT_EQ(runAfter(commands, command), 2);
        EXPECT_EQ(content("err"), "vorntools: " + path("c.sqlite") + " is " + why + "\n");
        EXPECT_TRUE(content("c.sqlite") == before);
    };
    {
        const HeldLock lock(path("c.sqlite"), HeldLock::Writing);
        isRefused("", written, "in use by another program");
        EXPECT_EQ(run(asked), 1) << "what was there before can be asked meanwhile";
        EXPECT_EQ(content("out"), out);
    }
    {
        const HeldLock lock(path("c.sqlite"), HeldLock::Committing);
        isRefused("", asked, "in use by another program");
    }
    std::filesystem::permissions(path("c.sqlite"), std::filesystem::perms(0444));
    const std::string withoutPrivileges = ::geteuid() == 0 ? "setpriv --bounding-set=-all --inh-caps=-all " : "";
    isRefused(withoutPrivileges, written, "read-only");
    EXPECT_EQ(runAfter(withoutPrivileges, asked), 1);
    EXPECT_EQ(content("out"), out);
}

TEST_F(CatalogueTest, AKilledRunLeavesWhatWasThere) {
    writeArchive();
    EXPECT_EQ(catalogue(), 0);
    const std::string asked = "links --json --catalogue " + quoted("c.sqlite");
    EXPECT_EQ(run(asked), 1);
    const std::string out = content("out"), before = content("c.sqlite");
    // Pictures fill SQLite's memory, so that it begins to write before the end, to which the system does not let the
    // file grow.
    for (int i = 0; i < 60; ++i) {
        DocumentContainer pictured;
        const std::string picture = "\xFF\xD8\xFF" + std::string(100'000, static_cast<char>('a' + i % 26));
        write("w/new/" + std::to_string(i) + ".CATPart", pictured
                                                             .stream("\x05"
                                                                     "CATPreview",
                                                                     std::string(4, '\0') + picture)
                                                             .bytes());
    }
    ASSERT_EQ(::mkfifo(path("w/new/zz.CATPart").c_str(), 0600), 0) << "nobody waits for what is no file";
    std::ofstream(path("kill.sh")) << "(ulimit -c 0; ulimit -f 4000; exec \"$@\"); echo $?\n";
    EXPECT_EQ(runAfter("cd " + quoted("") + "; sh kill.sh ", "catalogue w -o c.sqlite"), 0);
    EXPECT_EQ(content("out"), "153\n") << content("err");
    EXPECT_FALSE(content("c.sqlite") == before) << "killed too early: nothing was written";
    EXPECT_EQ(run(asked), 1) << content("err");
    EXPECT_EQ(content("out"), out);
    EXPECT_TRUE(content("c.sqlite") == before);
    std::filesystem::remove(path("w/new/zz.CATPart"));
    EXPECT_EQ(catalogue(), 0);
    EXPECT_EQ(rows().at(0)["read"].dump(), "60");
}

TEST_F(CatalogueTest, AFullDiskLeavesWhatWasThere) {
    writeArchive();
    const std::string limited = "ulimit -f 40; trap '' XFSZ; ";
    const std::string command = "catalogue " + quoted("w") + " -o " + quoted("c.sqlite");
    EXPECT_EQ(runAfter(limited, command), 2);
    EXPECT_NE(content("err").find("c.sqlite cannot be "), std::string::npos) << content("err");
    EXPECT_FALSE(std::filesystem::exists(path("c.sqlite")));
    EXPECT_FALSE(std::filesystem::exists(path("c.sqlite.part")));
    EXPECT_EQ(catalogue(), 0);
    EXPECT_EQ(run("links --json --catalogue " + quoted("c.sqlite")), 1);
    const std::string before = content("out");
    for (int i = 0; i < 400; ++i) document("w/many/" + std::to_string(i) + ".CATPart", "", {});
    EXPECT_EQ(runAfter(limited, command), 2);
    EXPECT_EQ(run("links --json --catalogue " + quoted("c.sqlite")), 1);
    EXPECT_EQ(content("out"), before);
    EXPECT_EQ(run(command), 0);
}

TEST_F(CatalogueTest, AFolderThatIsNotThereTakesNothingAway) {
    writeArchive();
    EXPECT_EQ(catalogue(), 0);
    std::filesystem::rename(path("w"), path("unmounted"));
    EXPECT_EQ(catalogue(), 2);
    std::filesystem::rename(path("unmounted"), path("w"));
    EXPECT_EQ(run("orphans --catalogue " + quoted("c.sqlite")), 2);
    EXPECT_NE(content("out"), "");
    EXPECT_NE(content("err").find("is not complete"), std::string::npos);
    EXPECT_EQ(counts(), "11 documents, 0 read, 0 removed");
}

} // namespace
