#include "UTILFile.h"
#include "embedded/SessionFile.h"
#include "tests/support/Fixture.h"

#include <fstream>
#include <iterator>

using embedded::loadSession;
using embedded::loadSessionText;
using embedded::saveSession;
using embedded::SessionFileResult;

namespace {

class SessionFileTest : public PlatformTest {
protected:
    std::string read(const std::string& name) {
        std::ifstream file(folder() / std::filesystem::u8path(name), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    /** A session with everything that a file can tell. */
    void fill() {
        environment().initialized = false;
        environment().debugMode = true;
        environment().stagingDirectory = "/staging";
        environment().releaseCacheDirectories = {"/a/", "/b/"};
        environment().referencePrefix = "REF_";
        environment().logicalNames = {{"LIB", "/lib"}};
        environment().separator = "\\";
        environment().missingManagers = {"PROCManager"};
        auto bolt = session().part("/w/B\xC3\xB6lt.CATPart").saved(false).upToDate(false).uuid("1_2_3_4");
        bolt.root().partNumber("B-1").referenceDescription("two\nlines \"quoted\"").masterShape("/w/b.cgr");
        bolt.root().shape("Default", "/w/b.cgr").shape("Simple", "C:\\w\\c.cgr").withoutLinkableObject();
        auto drawing = session().document("/w/Sheet.CATDrawing").withoutDescriptor().withoutAutomation();
        drawing.withoutRoots().onDisk(false);
        session().document("Odd").type("CATProduct").root().withoutProperties();
        auto root = session().product("Root.CATProduct").onDisk(true).root();
        auto group = root.addComponent("Group", "Group.1");
        auto inner = group.addComponent("Inner", "Inner.1");
        inner.add(bolt, "Bolt.1").description(std::string("nul\0in it", 9));
        root.add(inner, "Inner.2").withoutProperties();
        root.addUnresolved("Lost.1").description("KETO_ID_7\nlost");
        root.at({"Inner.2", "Bolt.1"}).description("");
        group.reference().at({"Inner.1", "Bolt.1"}).withoutProperties();
        auto top = session().product("/w/Top.CATProduct").root();
        top.add(session().find("Root.CATProduct"), "Root.1");
        top.at({"Root.1", "Group.1", "Inner.1", "Bolt.1"}).description("far below");
    }
};

TEST_F(SessionFileTest, WhatIsSavedIsLoaded) {
    fill();
    const std::string digest = session().digest();
    ASSERT_EQ(saveSession(path("s.json")).error, "");
    session().document("more.CATPart");
    ASSERT_EQ(loadSession(path("s.json")).error, "");
    EXPECT_EQ(session().digest(), digest);
    EXPECT_FALSE(session().find("more.CATPart"));
    EXPECT_EQ(environment().logicalNames.at("LIB"), "/lib");
    EXPECT_TRUE(environment().debugMode && !environment().initialized);
    // A component with two instances stays one: a change shows below both.
    auto root = session().find("Root.CATProduct").root();
    EXPECT_TRUE(root.at({"Inner.2"}).reference() == root.at({"Group.1", "Inner.1"}).reference());
    const std::string first = read("s.json");
    ASSERT_EQ(saveSession(path("s.json")).error, "") << "over an old file";
    EXPECT_EQ(read("s.json"), first) << "what the digest does not tell";
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder()), {}), 1) << "nothing else is left";
}

TEST_F(SessionFileTest, RelativeNamesBeginInTheFilesFolder) {
    write("sub/s.json", R"({
        "environment": {"staging_directory": "stage\\in", "files_directory": "./", "logical_names": {"L": "bare"}},
        "documents": [
            {"name": "parts/Bolt.CATPart", "shapes": [{"name": "s", "path": "./b.cgr"}]},
            {"name": "Part1.CATPart"}, {"name": "\\\\srv\\x.CATPart"}, {"name": "D:/x.CATPart"}, {"name": "/x.CATPart"},
            {"name": "\u0001\u0002\\L\\x.CATPart"},
            {"name": "Top.CATProduct", "children": [{"instance": "B.1", "document": "PARTS\\bolt.catpart"}]}
        ]})");
    ASSERT_EQ(loadSession(path("sub/s.json")).error, "");
    const std::string separator = UTILFile::getPathSeparator().ConvertToChar();
    const std::string base = path("sub") + separator;
    const std::string names[] = {base + "parts" + separator + "Bolt.CATPart",
                                 "Part1.CATPart",
                                 "\\\\srv\\x.CATPart",
                                 "D:/x.CATPart",
                                 "/x.CATPart",
                                 "\x01\x02\\L\\x.CATPart",
                                 "Top.CATProduct"};
    for (std::size_t i = 0; i < std::size(names); ++i) {
        EXPECT_EQ(session().documentAt(i).name(), names[i]);
        EXPECT_EQ(session().documentAt(i).onDisk(), i != 1 && i != 6) << names[i];
    }
    EXPECT_EQ(environment().stagingDirectory, base + "stage" + separator + "in");
    EXPECT_EQ(environment().filesDirectory, base);
    EXPECT_EQ(environment().logicalNames.at("L"), "bare");
}

TEST_F(SessionFileTest, EveryFaultNamesItsLineAndField) {
    const struct {
        const char* text;
        const char* error;
    } cases[] = {
        {"", "1: syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal"},
        {"{\n\"documents\": [\n  12\n  13]}", "4: syntax error while parsing array - unexpected number literal; "
                                              "expected ']'"},
        {"[]", "1: an object is expected"},
        {"{\n\"document\": []}", "2: document: unknown key"},
        {"{\"documents\":\n{}}", "2: documents: a list is expected"},
        {"{\"documents\": [\n{\"name\": 7\n}]}", "2: documents[0].name: a text is expected"},
        {"{\"documents\": [{\"name\": \"a\"},\n{}]}", "2: documents[1]: \"name\" is missing"},
        {"{\"documents\": [{\"name\": \"a\",\n\"name\": \"b\"}]}", "2: documents[0].name: given twice"},
        {"{\"documents\": [{\"name\": \"a.CATPart\"},\n{\"name\": \"A.catpart\"}]}",
         "2: documents[1].name: a second document named 'A.catpart'"},
        {"{\"documents\": [{\"name\": \"a\", \"saved\":\n\"yes\"}]}",
         "2: documents[0].saved: true or false is expected"},
        {"{\"documents\": [{\"name\": \"a\", \"uuid\": \"1_2_3\"}]}",
         "1: documents[0].uuid: four hexadecimal numbers joined by '_' are expected"},
        {"{\"documents\": [{\"name\": \"a.CATDrawing\",\n\"children\": []}]}",
         "2: documents[0].children: a document of type 'CATDrawing' has no product"},
        {"{\"documents\": [{\"name\": \"a.CATPart\", \"without\": [\"roots\",\n\"root\"]}]}",
         "2: documents[0].without[1]: nothing named 'root' can be missing here"},
        {"{\"documents\": [{\"name\": \"a.CATPart\", \"children\": [\n{\"instance\": \"A.1\",\n\"document\": \"X\"}]}]}",
         "3: documents[0].children[0].document: no document named 'X'"},
        {"{\"documents\": [{\"name\": \"a.CATPart\", \"children\": [\n{\"instance\": \"A.1\"}]}]}",
         "2: documents[0].children[0]: one of \"document\", \"component\" and \"unresolved\" is expected"},
        {"{\"documents\": [{\"name\": \"a.CATPart\", \"children\": [{\"instance\": \"A.1\", \"unresolved\": true},\n"
         "{\"instance\": \"A.1\", \"unresolved\": true}]}]}",
         "2: documents[0].children[1].instance: a second instance named 'A.1'"},
        {"{\"documents\": [{\"name\": \"a.CATPart\", \"children\": [{\"instance\": \"B.1\", \"document\": \"b.cgr\"}]},"
         "\n{\"name\": \"b.cgr\", \"children\": [{\"instance\": \"A.1\", \"document\": \"a.CATPart\"}]}]}",
         "2: documents[1].children[0].document: 'a.CATPart' would contain itself"},
        {"{\"documents\": [{\"name\": \"a.CATPart\", \"children\": [{\"instance\": \"B.1\", \"component\": {\"id\": \"c\","
         "\n\"children\": [{\"instance\": \"B.2\", \"component\": \"c\"}]}}]}]}",
         "2: documents[0].children[0].component.children[0].component: component 'c' would contain itself"},
        {"{\"documents\": [{\"name\": \"a.CATPart\", \"children\": [{\"instance\": \"B.1\", \"component\": \"c\"}]}]}",
         "1: documents[0].children[0].component: no component 'c' before it in this document"},
        {"{\"documents\": [{\"name\": \"a.CATPart\", \"children\": [{\"instance\": \"B.1\", \"component\": {},\n"
         "\"occurrences\": [{\"path\": [\"C.1\"]}]}]}]}",
         "2: documents[0].children[0].occurrences[0].path: no such occurrence"},
        {"{\"environment\": {\n\"missing_managers\": [\"JournalManager\"]}}",
         "2: environment.missing_managers[0]: no manager is named 'JournalManager'"},
        {"{\"environment\": {\"separator\": \":\"}}", "1: environment.separator: a slash or a backslash is expected"},
        {"{\"environment\": {\"logical_names\": {\"a\": \"b\",\n\"a\": \"c\"}}}",
         "2: environment.logical_names.a: given twice"},
    };
    for (const auto& test : cases) {
        session().document("before");
        const SessionFileResult result = loadSession(write("s.json", test.text));
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.error, path("s.json") + ":" + test.error);
        EXPECT_EQ(session().documentCount(), 0U);
        EXPECT_TRUE(environment().initialized);
    }
}

TEST_F(SessionFileTest, HostileFilesEndInAnError) {
    const std::string deep(100000, '[');
    EXPECT_EQ(loadSessionText("s", "{\"documents\":" + deep).error, "s:1: nested too deeply");
    EXPECT_EQ(loadSessionText("s", "{\"documents\": [{\"name\": \"\xFF\"}]}").ok, false);
    const auto nested = [](int depth) {
        std::string text = "{\"documents\": [{\"name\": \"a.CATPart\", \"children\": [";
        for (int i = 0; i < depth; ++i) text += "{\"instance\": \"\", \"component\": {\"children\": [";
        for (int i = 0; i < depth; ++i) text += "]}}";
        return text + "]}]}";
    };
    EXPECT_EQ(loadSessionText("s", nested(320)).error, "");
    std::string text;
    EXPECT_EQ(embedded::sessionText(text).error, "");
    EXPECT_EQ(loadSessionText("s", text).error, "");
    EXPECT_NE(loadSessionText("s", nested(321)).error.find("components nested too deeply"), std::string::npos);
    EXPECT_EQ(loadSession(path("absent.json")).error, path("absent.json") + ": cannot be opened");
    EXPECT_FALSE(loadSession(folder().u8string()).ok) << "a folder";
}

TEST_F(SessionFileTest, AFailedSaveLeavesTheOldFile) {
    write("s.json", "old");
    session().part("\xFF.CATPart");
    const SessionFileResult result = saveSession(path("s.json"));
    EXPECT_EQ(result.error, path("s.json") + ": documents[0]: a text is not UTF-8");
    EXPECT_EQ(read("s.json"), "old");
    session().reset();
    auto component = session().product("a.CATProduct").root();
    for (int i = 0; i < 330; ++i) component = component.addComponent("c", "C").reference();
    EXPECT_EQ(saveSession(path("s.json")).error, path("s.json") + ": documents[0]: components nested too deeply");
    session().reset();
    EXPECT_EQ(saveSession(path("no/such/folder/s.json")).error, path("no/such/folder/s.json") + ": cannot be written");
    std::filesystem::create_directories(folder() / "taken.json" / "inside");
    EXPECT_FALSE(saveSession(path("taken.json")).ok) << "a folder has the name";
    EXPECT_FALSE(std::filesystem::exists(folder() / "taken.json.new"));
    EXPECT_EQ(read("s.json"), "old");
}

} // namespace
