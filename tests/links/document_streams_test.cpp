#include "tests/support/LinksTest.h"
#include "tests/support/Utf8.h"

namespace {

TEST_F(LinksTest, RecordsNameDocumentsByKind) {
    const std::vector<ImageRecord> records = {
        ImageRecord::whole("feat", "Literals.feat", 4),
        {"", 1, 0},
        ImageRecord::whole("CATPart", "C:\\w\\file.CATPart"),
        ImageRecord::object("feat", "ProductModel.feat", kFirst),
        ImageRecord::object("CATProduct", "C:\\w\\ctx.CATProduct", kFirst, 3),
        ImageRecord::object("CATPart", "C:\\w\\ctx.CATPart", kSecond, 300),
        ImageRecord::object("CATPart", "C:\\w\\ctx.CATPart", kThird, -1),
        ImageRecord::object("CATDrawing", "C:\\w\\frame.CATDrawing", kFirst),
        ImageRecord::object("Catproduct", "C:\\w\\case.CATProduct", kFirst),
        ImageRecord::whole("CATProduct", "C:\\w\\whole.CATProduct"),
        ImageRecord::whole("CATPart", "\xC3\xA9t\xC3\xA9.CATPart"),
        ImageRecord::whole("CATPart", "\xFF\xFE.CATPart"),
        ImageRecord::whole("CATPart", ""),
        ImageRecord::whole("CATPart", "gone.CATPart", 0),
        ImageRecord::object("CATProduct", "C:\\w\\renamed.CATProduct", kFirst, 0),
        ImageRecord::object("CATDrawing", "C:\\w\\renamed.CATDrawing", kFirst, 0),
        {"\x05Undef\0\0\0\0\x06"s + "CATWin", 1, 0},
        ImageRecord::whole("CATfct", "Catalog.CATfct"),
        ImageRecord::unloadable("C:\\w\\sizes.xls", 2),
        ImageRecord::unloadable("C:\\w\\gone.xls", 0),
        ImageRecord::unloadable(""),
        ImageRecord::whole("model", "/u/File/\xC3\xA9t\xC3\xA9.model", -1),
        ImageRecord::object("CATMaterial", "C:\\w\\" + std::string(300, 'm') + ".CATMaterial", kFirst),
        {"\x01r\0\0\0\0\x04"s + "File\x7F"
                                "cut",
         1, 0},
        {"\x01r\0\0\0\0\x04"s + "File\x05modelxx", 1, 0},
        {"\x01r\0\0\0\0\x04"s + "File\x05model\xFF\xFF"
                                "short.model",
         1, 0},
        {"\x01r\0\0\0\0\x04"s + "File\x05model\x03\0m.xtail"s, 1, 0},
        {"\x01r\0\0\0\0\x04"s + "File\x05model\x2C\x01" + std::string(300, 'n') + "tail", 1, 0},
    };
    for (const bool littleEndian : {true, false}) {
        DocumentImage image(littleEndian);
        image.raw("noise").properties("C:\\w\\own.CATPart", records).raw("CATDocumentProperty");
        const LinkedNamesOfImage names = namesIn(image);
        EXPECT_EQ(names.partFiles,
                  Texts({"C:\\w\\file.CATPart", eightBit("\xC3\xA9t\xC3\xA9.CATPart"), "\xFF\xFE.CATPart"}));
        EXPECT_EQ(names.products, Texts({"C:\\w\\ctx.CATProduct"}));
        EXPECT_EQ(names.parts, Texts({"C:\\w\\ctx.CATPart", "C:\\w\\ctx.CATPart"}));
        EXPECT_EQ(names.references, Texts({kSecond.substr(8), kThird.substr(8)}));
        EXPECT_EQ(names.ghosts, Texts({"gone.CATPart", "C:\\w\\renamed.CATProduct", "C:\\w\\renamed.CATDrawing"}));
        EXPECT_EQ(names.others,
                  Texts({"Catproduct|C:\\w\\case.CATProduct|1", "CATProduct|C:\\w\\whole.CATProduct|1",
                         "CATUnloadable|C:\\w\\sizes.xls|2", eightBit("model|/u/File/\xC3\xA9t\xC3\xA9.model|-1"),
                         "CATMaterial|C:\\w\\" + std::string(300, 'm') + ".CATMaterial|1", "model|short.model|1",
                         "model|m.x|1", "model|" + std::string(300, 'n') + "|1"}));
    }
}

/** The use count lies 12 bytes behind the text of a record: a document may end within it. */
TEST_F(LinksTest, ARecordHoldsOnePathAndLittleBeside) {
    constexpr std::size_t longest = 0x10000 + 256;
    for (const std::size_t length : {longest, longest + 1}) {
        ImageRecord record = ImageRecord::whole("CATPart", "long.CATPart");
        record.text.resize(length, 'x');
        DocumentImage image;
        image.properties("own", {record, ImageRecord::whole("CATPart", "next.CATPart")});
        EXPECT_EQ(namesIn(image).partFiles.size(), length > longest ? 0U : 2U) << length;
    }
}

TEST_F(LinksTest, WithoutABlockOfItsOwnAStreamNamesNothing) {
    const std::string whole = DocumentImage().properties("own", {ImageRecord::whole("CATPart", "a.CATPart")}).bytes();
    const std::size_t own = whole.find("\x3B\x01"s), record = whole.find("\x9F\x22"s) + 45 - 4;
    ASSERT_EQ(whole.substr(record + 4, 2), "\x3B\x01");
    // The record lies where the first one does behind a block that begins at 0 and has no text.
    DocumentImage image;
    image.raw(std::string(45, '.') + whole.substr(record) + whole.substr(0, own - 4));
    EXPECT_EQ(namesIn(image).partFiles, Texts());
}

TEST_F(LinksTest, BytesOfAUseCountBeyondTheImageAreZero) {
    for (const bool littleEndian : {true, false}) {
        DocumentImage whole(littleEndian);
        whole.properties("own", {ImageRecord::whole("CATPart", "other.CATPart"),
                                 ImageRecord::whole("CATPart", "last.CATPart", littleEndian ? 1 : 0x100)});
        const std::size_t count = whole.bytes().rfind("\x3B\x01t"s) + 3 + 12;
        for (int bytes = -12; bytes <= 4; ++bytes) {
            DocumentImage image;
            image.raw(whole.bytes().substr(0, count - 12 + static_cast<std::size_t>(bytes + 12)));
            const LinkedNamesOfImage names = namesIn(image);
            const bool named = bytes >= -10, used = bytes >= (littleEndian ? 1 : 3);
            EXPECT_EQ(names.partFiles, Texts({"other.CATPart"}) + (used ? Texts({"last.CATPart"}) : Texts())) << bytes;
            EXPECT_EQ(names.ghosts, named && !used ? Texts({"last.CATPart"}) : Texts()) << bytes;
        }
    }
}

TEST_F(LinksTest, ExternalReferencesComeFromTheTableOfNames) {
    const std::string longest(48, 'n');
    const auto part = [](const std::string& table) {
        DocumentImage image;
        return image.application().raw(table).properties("own", {});
    };
    const auto text = DocumentImage::tableText;
    const std::string names = text("_CntrName"), end = text("CATCatalogManager");
    const struct {
        std::string table;
        Texts references;
    } cases[] = {
        {names + text("..!A.1!x") + text("other") + text("..!..!B.1!y") + end, {"..!A.1!x", "..!..!B.1!y"}},
        {names + text("..!A.1!x") + text("..!A.1!x") + text("..!B!y") + end, {"..!A.1!x", "..!B!y"}},
        {names + text("..!" + longest.substr(3)) + text("..!" + longest) + end,
         {"..!" + longest.substr(3), "..!" + longest}},
        {names + text("..!\xC3\xA9!x") + text("..!\xE9!x") + end,
         eightBit("..!\xC3\xA9!x") == "..!\xE9!x" ? Texts({"..!\xE9!x"}) : Texts({"..!\xC3\xA9!x", "..!\xE9!x"})},
        {names + text("..!A!x") + "DASSAULT-SYSTEMES", {"..!A!x"}},
        {names + text("..!A!x"), {}},
        {text("..!A!x") + names + end + text("..!B!y"), {}},
        {text("..!A!x") + end, {}},
        {names + text("..!A!x") + "\x01..!B!y"s + text("..!C!z") + end, {"..!A!x"}},
        {names + text("..!A!x") + "\x7F..!B!y"s + end, {"..!A!x"}},
        {names + text("..!A!x") + "\x0F..!B!y"s + end, {"..!A!x"}},
        {names + text("..!A!x") + "\0\0\0\0\x7F..!B!y"s + end, {"..!A!x"}},
    };
    for (const auto& c : cases) EXPECT_EQ(references(part(c.table)), c.references) << c.table;

    DocumentImage noPart;
    EXPECT_EQ(references(noPart.references({"..!A!x"}).properties("own", {})), Texts()) << "no application container";
    DocumentImage before;
    before.references({"..!A!x"}).application().references({"..!B!y"}).properties("own", {});
    EXPECT_EQ(references(before), Texts({"..!B!y"}));
    EXPECT_EQ(links(before, "MMLASSY"), Texts({"MMLAssy_Ref||..!B!y|0"}));
    DocumentImage behind;
    behind.application().properties("own", {}).references({"..!A!x"});
    EXPECT_EQ(references(behind), Texts());
    EXPECT_EQ(links(behind, "MMLASSY"), Texts());
    DocumentImage nothing;
    EXPECT_EQ(references(nothing.application().references({"..!A!x"})), Texts()) << "no property stream";
    VornToolsString bytes = stringOf(behind.bytes());
    EXPECT_EQ(textsOf(VornToolsLinks::getImportLinksWithPub(&bytes)), Texts({"MMLAssy_Ref||..!A!x|0"}));
    bytes = stringOf(text("..!B") + behind.bytes() + text("..!C"));
    EXPECT_EQ(textsOf(VornToolsLinks::getImportLinksWithPub(&bytes)), Texts({"MMLAssy_Ref||..!A!x|0"}));
    bytes = stringOf(text("..!B") + DocumentImage().references({"..!A!x"}).bytes());
    EXPECT_EQ(textsOf(VornToolsLinks::getImportLinksWithPub(&bytes)), Texts({"MMLAssy_Ref||..!A!x|0"}));
}

TEST_F(LinksTest, VersionsStandBetweenTheirMarkers) {
    const struct {
        std::string bytes;
        int code, version, release, servicePack;
    } cases[] = {
        {"", 0, 0, 0, 0},
        {"<Version>5/<Version>", 0, 0, 0, 0},
        {DocumentImage().summary(5, 21, 3).bytes(), 0, 5, 21, 3},
        {DocumentImage().summary(5, 21, 3).summary(5, 12, 0).bytes(), 0, 5, 21, 3},
        {"CATSummaryInformation <Version>5/<Version><Release>19", 1, 5, 0, 0},
        {"CATSummaryInformation<ServicePack>9/<ServicePack>/<Version>", 1, 0, 0, 9},
        {"CATSummaryInformation<Version> 5x/<Version><Release>-3/<Release><ServicePack>x/<ServicePack>", 0, 5, -3, 0},
        {"CATSummaryInformation<Version>99999999999/<Version><Release>/<Release><ServicePack>+4/<ServicePack>", 0,
         2147483647, 0, 4},
        {"in front 5/<Version>CATSummaryInformation<Release>19/<Release><ServicePack>3/<ServicePack>", 1, 0, 19, 3},
    };
    for (const auto& c : cases) {
        VornToolsString bytes = stringOf(c.bytes);
        int version = 7, release = 7, servicePack = 7;
        EXPECT_EQ(VornToolsLinks::getVersion(&bytes, version, release, servicePack), c.code) << c.bytes;
        EXPECT_EQ(version, c.version) << c.bytes;
        EXPECT_EQ(release, c.release) << c.bytes;
        EXPECT_EQ(servicePack, c.servicePack) << c.bytes;
    }
}

// Large images are searched block by block: a name may stand across the end of one.
TEST_F(LinksTest, StreamsAreFoundWhereverTheyBegin) {
    const auto behind = [](std::size_t count) {
        DocumentImage image;
        image.raw(std::string(count, 'x')).properties("", {ImageRecord::object("CATProduct", "a.CATProduct", kFirst)});
        return image;
    };
    const int in_front = behind(0).propertyPosition();
    const Texts expected = links(behind(0));
    EXPECT_FALSE(expected.empty());
    for (const int begin : {262144 - 19, 262144 - 1, 262144, 2 * 262144 - 1}) {
        const DocumentImage image = behind(static_cast<std::size_t>(begin - in_front));
        EXPECT_EQ(image.propertyPosition(), begin);
        EXPECT_EQ(links(image), expected);
    }
}

TEST_F(LinksTest, StreamsAreFoundFarFromEachOther) {
    DocumentImage far;
    far.application().references({"..!A!x"}).raw(std::string(600000, '.'));
    far.properties("own", {ImageRecord::whole("CATPart", "a.CATPart")});
    EXPECT_EQ(links(far), Texts({"MMLAssy_Ref||..!A!x|0", "MML|a.CATPart||0"}));
}

TEST_F(LinksTest, IdentifiersFollowTheirKey) {
    const std::string first = "\xD3\xB5"
                              "abcde\xFE",
                      second = "\0\0pqrst\xFE"s, end = "CATCatalogManager";
    const struct {
        std::string bytes;
        Texts identifiers;
    } cases[] = {
        {"key" + second + first + "x" + first + end, {"abcde", "abcde", "pqrst"}},
        {"in front of the key" + first + "\0\0\xE8\0\x12\x01"s + first + end, {"abcde"}},
        {end + "key" + first, {}},
        {first + "key" + end + first, {}},
        {"\xD3\xB5key"
         "ab\xFE" +
             end,
         {}},
        {"key\xD3\xB5"
         "abcd\xFE\xFE" +
             end,
         {}},
        {"key\xD3\xB5"
         "abcdef\xFE" +
             end,
         {}},
        {"key\xD3\xB5"
         "abcde",
         {}},
        {"key" + std::string(3, '\0') + "pqrs\xFE" + std::string(4, '\0') + "uvwxy\xFE" + end, {"\0pqrs"s, "uvwxy"}},
        {"nothing" + end, {}},
    };
    for (const auto& c : cases) {
        VornToolsString bytes = stringOf(c.bytes), key = stringOf("key");
        EXPECT_EQ(textsOf(VornToolsLinks::findKey(&bytes, key)), c.identifiers) << c.bytes;
    }
    VornToolsString bytes = stringOf(first), none;
    EXPECT_EQ(VornToolsLinks::findKey(&bytes, none).size(), 0U);
}

TEST_F(LinksTest, KeysCountOutsideTheNamesOfContainers) {
    const std::string begin = "x_ShapeConnector", end = "Inputs", names = "_CntrName", catalog = "CATCatalogManager";
    const struct {
        std::string bytes;
        int found;
    } cases[] = {
        {"ShapeConnectorkey" + end, 1},
        {begin + "ke" + end + "key", 0},
        {"key" + begin + end, 0},
        {begin + "key", 0},
        {end + begin + "key", 0},
        {begin + "key" + names + catalog + end, 1},
        {begin + names + "key" + catalog + end, 0},
        {begin + names + catalog + "key" + end, 1},
        {begin + names + "key" + catalog + "key" + end, 0}, // only the first occurrence counts
        {begin + names + "key" + end + catalog, 0},
        {begin + catalog + "key" + end, 1},
        {begin + names + "KEY" + catalog + "other" + end, 1},
    };
    for (const auto& c : cases) {
        VornToolsString bytes = stringOf(c.bytes);
        Strings keys = stringsOf({"key", "", "absent", "_Cntr", "other"});
        EXPECT_EQ(VornToolsLinks::isKeyInFile(bytes, keys), c.found) << c.bytes;
        const Strings handed_on(std::move(keys));
        EXPECT_EQ(VornToolsLinks::isKeyInFile(bytes, keys), 0) << "no keys, nor slots for any";
    }
}

} // namespace
