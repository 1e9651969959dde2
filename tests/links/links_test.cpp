#include "VornToolsLinks.h"

#include "tests/support/DocumentImage.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "UTILFile.h"
#include "VornToolsCommon.h"
#include "VornToolsFolderMemory.h"

#include <nlohmann/json.hpp>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <memory>
#include <tuple>

using namespace std::string_literals;

namespace {

using Strings = VornToolsVector<VornToolsString>;

/** Identities of foreign containers: the last eight bytes tell them apart, NULs and all. */
const std::string kFirst = "\0\0\0\0\0\0\x1A\x60\x60\xC7\x4B\xFE\0\0\0\x83"s;
const std::string kSecond = "\0\0\0\0\0\0\x1A\x61\x61\xC7\0\xFF\0\0\0\x84"s;
const std::string kThird = "\0\0\0\0\0\0\x1A\x62\x62\0\0\0\0\0\0\x85"s;

VornToolsString stringOf(const std::string& bytes) {
    return VornToolsString(bytes.data(), static_cast<int>(bytes.size()));
}
std::string bytesOf(const VornToolsString& text) { return std::string(text.bytes(), text.size()); }
std::string bytesOf(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}
Texts textsOf(const Strings& strings) {
    Texts texts;
    for (unsigned int i = 0; i < strings.size(); ++i) texts.push_back(bytesOf(strings[i]));
    return texts;
}
Texts textsOf(const CATListValCATUnicodeString& list) {
    Texts texts;
    for (int i = 1; i <= list.Size(); ++i) texts.push_back(bytesOf(list[i]));
    return texts;
}
Strings stringsOf(const Texts& texts) {
    Strings strings;
    for (const std::string& text : texts) strings.append(stringOf(text));
    return strings;
}
/** "type|file|reference|flag" */
Texts textsOf(const VornToolsVector<VornToolsLink>& links) {
    Texts texts;
    for (unsigned int i = 0; i < links.size(); ++i)
        texts.push_back(bytesOf(links[i].get_type()) + "|" + bytesOf(links[i].get_linkedFileName()) + "|" +
                        bytesOf(links[i].get_reference()) + "|" + std::to_string(links[i].get_link_tag_found()));
    return texts;
}
Texts operator+(Texts left, const Texts& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

struct LinkedNamesOfImage {
    Texts partFiles, products, parts, references, ghosts;
};

LinkedNamesOfImage namesIn(const DocumentImage& image, const std::string& fileName = "/nowhere/own.CATPart") {
    VornToolsString bytes = stringOf(image.bytes()), file = stringOf(fileName);
    Strings partFiles = stringsOf({"stale"}), products = partFiles, parts = partFiles, references = partFiles,
            ghosts = partFiles;
    const int position = image.propertyPosition();
    EXPECT_EQ(VornToolsLinks::getLinkedDocName(&bytes, position, &file, "", partFiles, products, parts, references), 0);
    EXPECT_EQ(VornToolsLinks::getGhosts(&bytes, position, ghosts), 0);
    return {textsOf(partFiles), textsOf(products), textsOf(parts), textsOf(references), textsOf(ghosts)};
}

class LinksTest : public PlatformTest {
protected:
    Texts links(const DocumentImage& image, const char* type = "", int missing = 0) {
        VornToolsString bytes = stringOf(image.bytes()), file = stringOf("/nowhere/own.CATPart");
        unsigned char missingTag = 7;
        const Texts found = textsOf(VornToolsLinks::getLinks(&bytes, type, &file, "", missingTag));
        EXPECT_EQ(missingTag, missing) << type;
        return found;
    }
    Texts references(const DocumentImage& image) {
        VornToolsString bytes = stringOf(image.bytes());
        Strings found = stringsOf({"stale"});
        EXPECT_EQ(VornToolsLinks::getExternalReference(&bytes, 0, image.applicationPosition(), image.propertyPosition(),
                                                       found),
                  0);
        return textsOf(found);
    }
    std::string located(const std::string& own, const std::string& file, const std::string& linked,
                        const std::string& directory = "") {
        VornToolsString ownPath = stringOf(own), fileName = stringOf(file), name = stringOf(linked);
        const CATUnicodeString place(directory.c_str());
        std::unique_ptr<VornToolsString> first(VornToolsLinks::realLinkedDocPath(&ownPath, &fileName, &name, place));
        std::unique_ptr<VornToolsString> second(VornToolsLinks::realLinkedDocPath_2(&ownPath, &fileName, &name, place));
        EXPECT_EQ(bytesOf(*first), bytesOf(*second));
        return bytesOf(*first);
    }
};

TEST_F(LinksTest, ALinkIsItsFourFields) {
    VornToolsLink link;
    EXPECT_EQ(link.set_type("MML") + link.set_linkedFileName("f") + link.set_reference("r"), 0);
    EXPECT_EQ(link.set_link_tag_found(1), 0);
    VornToolsLink copy;
    EXPECT_FALSE(copy == link);
    copy = link;
    EXPECT_TRUE(copy == link);
    VornToolsLink& same = copy;
    copy = same;
    EXPECT_TRUE(copy == link);
    const std::function<void(VornToolsLink&)> changes[] = {
        [](VornToolsLink& changed) { changed.set_type("m"); },
        [](VornToolsLink& changed) { changed.set_linkedFileName("F"); },
        [](VornToolsLink& changed) { changed.set_reference(""); },
        [](VornToolsLink& changed) { changed.set_link_tag_found(0); },
    };
    for (const auto& change : changes) {
        VornToolsLink changed(link);
        change(changed);
        EXPECT_FALSE(changed == link);
    }
}

TEST_F(LinksTest, RecordsNameDocumentsByKind) {
    const std::vector<ImageRecord> records = {
        ImageRecord::whole("feat", "Literals.feat", 4),
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
    };
    for (const bool littleEndian : {true, false}) {
        DocumentImage image(littleEndian);
        image.raw("noise").properties("C:\\w\\own.CATPart", records).raw("CATDocumentProperty");
        const LinkedNamesOfImage names = namesIn(image);
        EXPECT_EQ(names.partFiles, Texts({"C:\\w\\file.CATPart", "\xC3\xA9t\xC3\xA9.CATPart", "\xFF\xFE.CATPart"}));
        EXPECT_EQ(names.products, Texts({"C:\\w\\ctx.CATProduct"}));
        EXPECT_EQ(names.parts, Texts({"C:\\w\\ctx.CATPart", "C:\\w\\ctx.CATPart"}));
        EXPECT_EQ(names.references, Texts({kSecond.substr(8), kThird.substr(8)}));
        EXPECT_EQ(names.ghosts, Texts({"gone.CATPart", "C:\\w\\renamed.CATProduct", "C:\\w\\renamed.CATDrawing"}));
    }
}

TEST_F(LinksTest, DocumentsWithoutTheirStreamsHaveNoLinks) {
    for (const std::string& bytes : {""s, "CATDocumentProperty"s, "x"s, std::string(5000, '\0'), "\x3B\x01"s,
                                     DocumentImage().application().summary(5, 21, 0).bytes()}) {
        DocumentImage image;
        image.raw(bytes);
        const LinkedNamesOfImage names = namesIn(image);
        EXPECT_EQ(names.partFiles + names.products + names.parts + names.references + names.ghosts, Texts());
        for (const char* type : {"", "MML", "MMLASSY"}) EXPECT_EQ(links(image, type), Texts());
    }
}

TEST_F(LinksTest, GroupsComeInOrderAndByFilter) {
    DocumentImage image;
    image.application().references({"..!..!SKEL.1!Axis", "..!SKEL.1!Plane"}).raw("CATPrdInputProxy").pointer(kSecond);
    image.imports({{2, {4, 5}}}, {"InputToDoc:Doc!Geometry:AJADAAAAAA!", "InputToDoc:Doc!Parameters:`a b`!"});
    image.properties("C:\\w\\own.CATPart", {ImageRecord::object("CATPart", "ctx.CATPart", kSecond),
                                            ImageRecord::whole("CATPart", "file.CATPart"),
                                            ImageRecord::object("CATProduct", "ctx.CATProduct", kFirst),
                                            ImageRecord::object("CATPart", "neighbour.CATPart", kThird)});
    image.summary(5, 21, 0);
    const Texts assembly = {"MMLAssy_Context|ctx.CATProduct||0", "MMLAssy_Ref||..!..!SKEL.1!Axis|0",
                            "MMLAssy_Ref||..!SKEL.1!Plane|0", "MMLAssy_ImportNotPub|ctx.CATPart||0"};
    const Texts multiModel = {"MML|file.CATPart|AJADAAAAAA|1", "MML|file.CATPart|`a b`|1"};
    EXPECT_EQ(links(image, ""), assembly + multiModel);
    EXPECT_EQ(links(image, "mml"), assembly + multiModel);
    EXPECT_EQ(links(image, "MMLASSY"), assembly);
    EXPECT_EQ(links(image, "MML"), multiModel);

    VornToolsString bytes = stringOf(image.bytes()), file = stringOf("own.CATPart");
    EXPECT_EQ(textsOf(VornToolsLinks::getAllLinks(&bytes, &file, "")), multiModel + assembly);
    EXPECT_EQ(textsOf(VornToolsLinks::getMMLLinks(&bytes, &file, "")), multiModel);
    EXPECT_EQ(textsOf(VornToolsLinks::getMMLAssyLinks(&bytes, nullptr, "")), assembly);
    EXPECT_EQ(textsOf(VornToolsLinks::getContextLinks(&bytes, &file, "")), Texts({assembly[0]}));
    EXPECT_EQ(textsOf(VornToolsLinks::getImportLinks(&bytes, &file, "")), Texts(assembly.begin() + 1, assembly.end()));
    EXPECT_EQ(textsOf(VornToolsLinks::getImportLinksWithoutPub(&bytes, &file, "")), Texts({assembly[3]}));
    EXPECT_EQ(textsOf(VornToolsLinks::getImportLinksWithPub(&bytes)), Texts({assembly[1], assembly[2]}));
    EXPECT_EQ(textsOf(VornToolsLinks::getMMLDrawingLinks(&bytes, &file, "")),
              Texts({"MMLDrawing|ctx.CATProduct||0", "MMLDrawing|ctx.CATPart||0", "MMLDrawing|neighbour.CATPart||0"}));
}

TEST_F(LinksTest, DrawingsShowEachDocumentOnce) {
    DocumentImage image;
    image.properties("own.CATDrawing", {ImageRecord::object("CATPart", "a.CATPart", kFirst),
                                        ImageRecord::object("CATDrawing", "frame.CATDrawing", kFirst),
                                        ImageRecord::object("CATPart", "a.CATPart", kSecond),
                                        ImageRecord::object("CATProduct", "p.CATProduct", kThird),
                                        ImageRecord::object("CATPart", "gone.CATPart", kThird, 0)});
    const std::string file = write("own.CATDrawing", image.bytes());
    double count = 7;
    CATListValCATUnicodeString lists[5];
    VornToolsVector<unsigned char> flags;
    unsigned char missing = 7;
    EXPECT_EQ(VornToolsLinks::searchLinks(file.c_str(), "MMLDrawing", "", count, lists[0], lists[1], lists[2], lists[3],
                                          lists[4], flags, missing),
              0);
    EXPECT_EQ(textsOf(lists[0]), Texts({"p.CATProduct", "a.CATPart", "frame.CATDrawing"}));
    EXPECT_EQ(textsOf(lists[1]), Texts(3, "MMLDrawing"));
    for (int i = 2; i < 5; ++i) EXPECT_EQ(textsOf(lists[i]), Texts(3, ""));
    EXPECT_EQ(count, 3);
    EXPECT_EQ(flags.size(), 3U);
    EXPECT_EQ(missing, 0);
    for (const std::string& unreadable : {path("absent.CATPart"), folder().u8string(), write("empty.CATPart", "")}) {
        EXPECT_EQ(VornToolsLinks::searchLinks(unreadable.c_str(), "", "", count, lists[0], lists[1], lists[2], lists[3],
                                              lists[4], flags, missing),
                  0);
        for (const auto& list : lists) EXPECT_EQ(list.Size(), 0);
        EXPECT_EQ(count, 0);
        EXPECT_EQ(flags.size(), 0U);
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
        {names + text("..!\xC3\xA9!x") + text("..!\xE9!x") + end, {"..!\xC3\xA9!x", "..!\xE9!x"}},
        {names + text("..!A!x") + "DASSAULT-SYSTEMES", {"..!A!x"}},
        {names + text("..!A!x"), {}},
        {text("..!A!x") + names + end + text("..!B!y"), {}},
        {text("..!A!x") + end, {}},
        {names + text("..!A!x") + "\x01..!B!y"s + text("..!C!z") + end, {"..!A!x"}},
        {names + text("..!A!x") + "\x7F..!B!y"s + end, {"..!A!x"}},
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
    VornToolsString bytes = stringOf(behind.bytes());
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

TEST_F(LinksTest, IdentifiersFollowTheirKey) {
    const std::string first = "\xD3\xB5"
                              "abcde\xFE",
                      second = "\0\0pqrst\xFE"s, end = "CATCatalogManager";
    const struct {
        std::string bytes;
        Texts identifiers;
    } cases[] = {
        {"key" + second + first + "x" + first + end, {"abcde", "abcde", "pqrst"}},
        {"key" + first + "\0\0\xE8\0\x12\x01"s + first + end, {"abcde"}},
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
        {begin + "key" + end, 1},
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
        Strings keys = stringsOf({"", "absent", "key", "other"});
        EXPECT_EQ(VornToolsLinks::isKeyInFile(bytes, keys), c.found) << c.bytes;
        Strings none;
        EXPECT_EQ(VornToolsLinks::isKeyInFile(bytes, none), 0);
    }
}

TEST_F(LinksTest, ImportedElementsBelongToThePartOfTheirRepository) {
    const std::string geometry = "InputToDoc:Doc!Geometry:AJADAAAAAA!", depth = "InputToDoc:Doc!Parameters:Depth!",
                      far = "InputToDoc:Doc!Publication:" + std::string(60, 'p') + "!";
    const auto a = ImageRecord::whole("CATPart", "a.CATPart", 1, 17),
               b = ImageRecord::whole("CATPart", "b.CATPart", 1, 300),
               gone = ImageRecord::whole("CATPart", "gone.CATPart", 0, 18);
    const struct {
        std::vector<ImageRepository> repositories;
        Texts texts;
        std::vector<ImageRecord> records;
        Texts links; // without "MML|"
        int missing;
    } cases[] = {
        {{{17, {4, 5}}, {300, {5}}},
         {geometry, depth},
         {a, gone, b},
         {"a.CATPart|AJADAAAAAA|1", "a.CATPart|Depth|1", "b.CATPart|Depth|1"},
         0},
        {{{300, {4}}, {17, {4}}}, {depth}, {a, b}, {"b.CATPart|Depth|1", "a.CATPart|Depth|1"}, 0}, // by number
        {{{5, {4}}, {6, {5}}},
         {depth, far},
         {a, b},
         {"a.CATPart|Depth|1", "b.CATPart|" + std::string(60, 'p') + "|1"},
         0}, // by place
        {{{17, {4, 200}}}, {"other", depth}, {a, b}, {"a.CATPart|Depth|1", "b.CATPart||0"}, 1},
        {{{17, {4}}}, {"InputToDoc:Doc!"}, {a}, {"a.CATPart||0"}, 1},
        {{{17, {4}}, {18, {4}}}, {depth}, {a}, {"a.CATPart|Depth|1"}, 1}, // an element without its part
        {{{17, {}}}, {}, {a}, {"a.CATPart||0"}, 1},
        {{{17, {4}}}, {depth}, {gone}, {}, 0},
    };
    for (const auto& c : cases) {
        DocumentImage image;
        image.application().raw("OSMXCATCatalogManager").imports(c.repositories, c.texts).properties("own", c.records);
        Texts expected;
        for (const std::string& link : c.links) expected.push_back("MML|" + link);
        EXPECT_EQ(links(image, "MML", c.missing), expected);
        EXPECT_EQ(links(image, "", 0), expected);
    }
    // A table whose head is damaged leaves the texts themselves.
    DocumentImage damaged;
    damaged.application().imports({{1, {4}}}, {geometry, far}).properties("own", {a});
    std::string bytes = damaged.bytes();
    bytes[bytes.find("\x7C\x02") + 1] = '\x05';
    DocumentImage image;
    image.raw(bytes);
    EXPECT_EQ(links(image, "MML"),
              Texts({"MML|a.CATPart|AJADAAAAAA|1", "MML|a.CATPart|" + std::string(60, 'p') + "|1"}));
}

TEST_F(LinksTest, ContextPartsAreImportsOnlyWhereThePartSaysSo) {
    const std::string own = kThird.substr(0, 12) + "\0\0\0\x99"s, element = "\x09\x92\0\0\0"s;
    const auto image = [&](int release, bool part, bool proxy) {
        DocumentImage result;
        if (part) result.application();
        if (proxy) result.raw("CATPrdInputProxy");
        result.raw(own)
            .pointer(kFirst, element)
            .properties("own", {ImageRecord::object("CATPart", "linked.CATPart", kFirst),
                                ImageRecord::object("CATPart", "bare.CATPart", kSecond),
                                ImageRecord::object("CATPart", "itself.CATPart", kThird)});
        return result.summary(5, release, 0);
    };
    const Texts unpublished = {"MMLAssy_ImportNotPub|linked.CATPart||0"};
    const Texts bare = {"MML|bare.CATPart||0"};
    EXPECT_EQ(links(image(21, true, true)), unpublished);
    EXPECT_EQ(links(image(21, true, false)), Texts());
    EXPECT_EQ(links(image(21, false, true)), Texts()) << "a product's parts are no imports";
    EXPECT_EQ(links(image(12, false, true)), Texts());
    EXPECT_EQ(links(image(11, true, true)), unpublished + bare);
    EXPECT_EQ(links(image(13, true, true)), unpublished);
    EXPECT_EQ(links(image(12, true, false)), Texts({"MML|linked.CATPart|AJJCAAAAAA|1"}) + bare);
    EXPECT_EQ(links(image(12, true, false), "MML", 1), Texts({"MML|linked.CATPart|AJJCAAAAAA|1"}) + bare);
    EXPECT_EQ(links(image(0, true, false)), Texts());

    const DocumentImage older = image(12, true, false);
    VornToolsString bytes = stringOf(older.bytes());
    const int application = older.applicationPosition(), property = older.propertyPosition();
    Strings tags, publications, unpublishedNames, olderNames;
    VornToolsLinks::getMMLTag(&bytes, 12, application, property, tags);
    VornToolsLinks::getMmlPublication(&bytes, 12, application, property, publications);
    EXPECT_EQ(textsOf(tags), Texts({"AJJCAAAAAA"}));
    EXPECT_EQ(textsOf(publications), Texts({"AJJCAAAAAA"}));
    VornToolsLinks::getMMLTag(&bytes, 21, application, property, tags);
    EXPECT_EQ(textsOf(tags), Texts());
    Strings names = stringsOf({"L", "B", "I", "unknown", "without reference"}),
            references = stringsOf({kFirst.substr(8), kSecond.substr(8), kThird.substr(8), "?"});
    VornToolsLinks::sortImportUnpublished_and_MMLR12(&bytes, 12, application, property, names, references,
                                                     unpublishedNames, olderNames);
    EXPECT_EQ(textsOf(unpublishedNames), Texts());
    EXPECT_EQ(textsOf(olderNames), Texts({"L", "B"}));
}

TEST_F(LinksTest, MultiModelLinksPairByIndex) {
    Strings tags = stringsOf({"t1", "", "t3"}), publications = stringsOf({"p1", "p2", "p3"}),
            names = stringsOf({"a", "b", "", "d"});
    VornToolsVector<VornToolsLink> links;
    links.append(VornToolsLink());
    EXPECT_EQ(VornToolsLinks::updateMMLLink(tags, publications, names, links), 0);
    EXPECT_EQ(textsOf(links), Texts({"MML|a|t1|1", "MML|b||0", "MML|d||0"}));
}

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
    for (const char* name : {"copy/asm/own.CATProduct", "copy/asm/sub/a.CATPart", "copy/parts/b.CATPart",
                             "copy/asm/x/y/c.CATPart", "copy/asm/.hidden/d.CATPart", "stored.CATPart"})
        write(name, "x");
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
        {"C:\\pro\\asm\\own.CATProduct", "C:\\proj\\e\\f.CATPart", "C:\\proj\\e\\f.CATPart"},
        {path("copy/own.CATProduct"), path("copy/sub/a.CATPart"), path("copy/asm/sub/a.CATPart")},
        {path("copy/asm2/own.CATProduct"), path("copy/asm2/sub/a.CATPart"), path("copy/asm/sub/a.CATPart")},
    };
    for (const auto& c : cases) EXPECT_EQ(located(c.own, file, c.linked), c.found) << c.own << " " << c.linked;
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
}

TEST_F(LinksTest, FoldersAreReadOnceWhileAMemoryForThemExists) {
    write("w/old/a.CATPart", "x");
    const std::string own = path("w/own.CATProduct");
    const auto find = [&](const char* name) { return located("", own, "\\gone\\"s + name); };
    {
        const VornToolsFolderMemory memory;
        { const VornToolsFolderMemory another; }
        EXPECT_EQ(find("b.CATPart"), "\\gone\\b.CATPart");
        write("w/old/b.CATPart", "x");
        write("w/new/c.CATPart", "x");
        EXPECT_EQ(find("a.CATPart"), path("w/old/a.CATPart"));
        EXPECT_EQ(find("b.CATPart"), path("w/old/b.CATPart")) << "files are noticed";
        EXPECT_EQ(find("c.CATPart"), "\\gone\\c.CATPart") << "folders are not";
    }
    EXPECT_EQ(find("c.CATPart"), path("w/new/c.CATPart"));
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

TEST_F(LinksTest, FilesThatAreNoDocumentsHaveNoLinks) {
    std::filesystem::create_directories(folder() / "folder.CATPart");
    for (const std::string& name : {path("folder.CATPart"), path("absent.CATPart"), write("empty.CATPart", ""),
                                    write("text.CATPart", "AppliCont_CntrNameCATDocumentProperty")}) {
        double count = 7;
        CATListValCATUnicodeString lists[5];
        VornToolsVector<unsigned char> flags;
        unsigned char missing = 7;
        EXPECT_EQ(VornToolsLinks::searchLinks(name.c_str(), "", "", count, lists[0], lists[1], lists[2], lists[3],
                                              lists[4], flags, missing),
                  0);
        EXPECT_EQ(count, 0) << name;
        EXPECT_EQ(missing, 0) << name;
    }
}

/** Places are remembered with an image: one that changes, or another in its memory, is searched anew. */
TEST_F(LinksTest, StreamsAreFoundInTheImageAsItIs) {
    const auto streams = [](VornToolsString& image) {
        int application = 7, property = 7, version = 0, release = 0, servicePack = 0;
        VornToolsLinks::findStreams(&image, application, property);
        VornToolsLinks::getVersion(&image, version, release, servicePack);
        return std::to_string(application) + "," + std::to_string(property) + "," + std::to_string(release);
    };
    const std::string summary = "CATSummaryInformation<Version>5/<Version><Release>21/<Release>";
    VornToolsString image = stringOf(".AppliCont...CATDocumentProperty" + summary), other = stringOf("AppliCont");
    EXPECT_EQ(streams(image), "1,13,21");
    EXPECT_EQ(streams(other), "0,-1,0");
    EXPECT_EQ(streams(image), "1,13,21");
    image.replaceAll(stringOf("."), stringOf(".."));
    EXPECT_EQ(streams(image), "2,17,21");
    image.replaceAll(stringOf("A"), stringOf("B"));
    EXPECT_EQ(streams(image), "-1,-1,0");
    image = stringOf("CATDocumentProperty" + std::string(image.size() - 19U, ' '));
    EXPECT_EQ(streams(image), "-1,0,0");
    image = VornToolsString();
    EXPECT_EQ(streams(image), "-1,-1,0");
    for (int i = 0; i < 20; ++i) {
        VornToolsString brief = stringOf(std::string(static_cast<std::size_t>(i), '.') + "AppliCont");
        brief = stringOf(bytesOf(brief).substr(1) + ".");
        EXPECT_EQ(streams(brief), std::to_string(i - 1) + ",-1,0");
    }
}

TEST_F(LinksTest, NamesAndSeparators) {
    const std::pair<const char*, int> names[] = {{"a.CATPart", 1}, {"", 1}, {"d\\a", 0}, {"d/a", 0}, {"\\", 0}};
    for (const auto& name : names) EXPECT_EQ(VornToolsLinks::isAFilename(stringOf(name.first)), name.second);
    VornToolsString path = stringOf("/a//b\\c\0/d"s);
    EXPECT_EQ(VornToolsLinks::replaceSeparatorInString(path), 0);
    EXPECT_EQ(bytesOf(path), "\\a\\\\b\\c\0\\d"s);
}

TEST_F(LinksTest, AMissingImageIsReported) {
    unsigned char missing = 7;
    int number = 7;
    Strings list = stringsOf({"stale"}), other, third, fourth;
    VornToolsString key;
    EXPECT_EQ(VornToolsLinks::getLinks(nullptr, "", nullptr, "", missing).size(), 0U);
    EXPECT_EQ(VornToolsLinks::getAllLinks(nullptr, nullptr, "").size(), 0U);
    EXPECT_EQ(VornToolsLinks::getImportLinksWithPub(nullptr).size(), 0U);
    EXPECT_EQ(VornToolsLinks::getVersion(nullptr, number, number, number), 0);
    EXPECT_EQ(VornToolsLinks::findStreams(nullptr, number, number), 0);
    EXPECT_EQ(number, -1);
    number = 0;
    EXPECT_EQ(VornToolsLinks::findKey(nullptr, key).size(), 0U);
    EXPECT_EQ(VornToolsLinks::getLinkedDocName(nullptr, 0, nullptr, "", list, other, third, fourth), 0);
    EXPECT_EQ(list.size(), 0U);
    EXPECT_EQ(VornToolsLinks::getExternalReference(nullptr, 0, 0, 0, list), 0);
    EXPECT_EQ(VornToolsLinks::getGhosts(nullptr, 0, list), 0);
    EXPECT_EQ(VornToolsLinks::getMMLTag(nullptr, 0, 0, 0, list), 0);
    EXPECT_EQ(VornToolsLinks::getMmlPublication(nullptr, 0, 0, 0, list), 0);
    EXPECT_EQ(VornToolsLinks::sortImportUnpublished_and_MMLR12(nullptr, 0, 0, 0, list, list, other, third), 0);
    EXPECT_EQ(missing, 0);
    EXPECT_EQ(number, 0);
    const Texts reported = reports();
    EXPECT_EQ(reported.size(), 12U);
    for (const std::string& report : reported) EXPECT_NE(report.find(" 9001 ip_image"), std::string::npos) << report;
}

TEST_F(LinksTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    DocumentImage image;
    image.application().references({"..!A!x"}).imports({{1, {4}}}, {"InputToDoc:Doc!Parameters:Depth!"});
    image.properties("C:\\w\\own.CATPart", {ImageRecord::whole("CATPart", "C:\\w\\sub\\a.CATPart"),
                                            ImageRecord::object("CATProduct", "b.CATProduct", kFirst),
                                            ImageRecord::object("CATPart", ".\\c.CATPart", kSecond)});
    const std::string file = write("own.CATPart", image.bytes());
    write("deep/er/a.CATPart", "x");
    VornToolsString bytes = stringOf(image.bytes()), name = stringOf(file), linked = stringOf("C:\\x\\a.CATPart");
    const CATUnicodeString directory(folder().u8string().c_str());
    const int property = image.propertyPosition();
    const auto sweep = [&](const char* method, const std::function<void()>& operation) {
        const auto startCountAnew = [&] { located("", path("none/own"), "\\none\\none"); };
        sweepFailures({"VornToolsLinks::"s + method,
                       [&] {
                           operation();
                           return SweepOutcome();
                       },
                       startCountAnew});
    };
    sweep("searchLinks", [&] {
        double count = 0;
        CATListValCATUnicodeString lists[5];
        VornToolsVector<unsigned char> flags;
        unsigned char missing = 0;
        VornToolsLinks::searchLinks(file.c_str(), "", directory, count, lists[0], lists[1], lists[2], lists[3],
                                    lists[4], flags, missing);
        for (const auto& list : lists) EXPECT_EQ(list.Size(), static_cast<int>(count));
        EXPECT_TRUE(count == 0 || count == 3);
        EXPECT_EQ(flags.size(), static_cast<unsigned int>(count));
    });
    sweep("getLinks", [&] {
        unsigned char missing = 0;
        EXPECT_EQ(VornToolsLinks::getLinks(&bytes, "", &name, directory, missing).size(), 3U);
    });
    sweep("getLinkedDocName", [&] {
        Strings lists[4];
        VornToolsLinks::getLinkedDocName(&bytes, property, &name, directory, lists[0], lists[1], lists[2], lists[3]);
        for (const auto& list : lists) EXPECT_EQ(list.size(), 1U);
    });
    using OneKind = VornToolsVector<VornToolsLink> (*)(VornToolsString*, VornToolsString*, CATUnicodeString);
    const std::tuple<const char*, OneKind, unsigned int> kinds[] = {
        {"getAllLinks", VornToolsLinks::getAllLinks, 3},
        {"getMMLLinks", VornToolsLinks::getMMLLinks, 1},
        {"getMMLAssyLinks", VornToolsLinks::getMMLAssyLinks, 2},
        {"getContextLinks", VornToolsLinks::getContextLinks, 1},
        {"getImportLinks", VornToolsLinks::getImportLinks, 1},
        {"getImportLinksWithoutPub", VornToolsLinks::getImportLinksWithoutPub, 0},
        {"getMMLDrawingLinks", VornToolsLinks::getMMLDrawingLinks, 2},
    };
    for (const auto& [method, operation, count] : kinds)
        sweep(method,
              [&, &run = operation, &expected = count] { EXPECT_EQ(run(&bytes, &name, directory).size(), expected); });
    using Resolution = VornToolsString* (*)(VornToolsString*, VornToolsString*, VornToolsString*, CATUnicodeString);
    for (const auto& [method, resolve] :
         {std::pair<const char*, Resolution>{"realLinkedDocPath", VornToolsLinks::realLinkedDocPath},
          {"realLinkedDocPath_2", VornToolsLinks::realLinkedDocPath_2}})
        sweep(method, [&, &run = resolve] {
            const std::unique_ptr<VornToolsString> found(run(nullptr, &name, &linked, directory));
            EXPECT_TRUE(bytesOf(*found) == bytesOf(linked) || bytesOf(*found) == path("deep/er/a.CATPart"));
        });
    sweep("findFileInPath", [&] { VornToolsLinks::findFileInPath("a.CATPart", directory.ConvertToChar()); });
}

/** Base names of stored paths. */
Texts baseNames(const Texts& names) {
    Texts result;
    for (const std::string& name : names) result.push_back(name.substr(name.find_last_of("/\\") + 1));
    return result;
}

TEST_F(LinksTest, RealDocumentsHoldWhatTheirListSays) {
    const char* const documents = std::getenv("VORNTOOLS_DOCUMENTS");
    if (!documents || !std::filesystem::exists(documents)) GTEST_SKIP() << "VORNTOOLS_DOCUMENTS names no folder";
    std::ifstream list(std::filesystem::u8path(documents) / "EXPECTED.json");
    const nlohmann::json expected = nlohmann::json::parse(list).at("documents");
    EXPECT_FALSE(expected.empty());
    for (const auto& document : expected) {
        const std::string name = document.at("file");
        SCOPED_TRACE(name);
        const std::unique_ptr<VornToolsString> bytes(
            VornToolsCommon::readBinaryFile((documents + "/"s + name).c_str()));
        ASSERT_TRUE(bytes);
        DocumentImage image;
        image.raw(bytesOf(*bytes));
        const LinkedNamesOfImage names = namesIn(image);
        EXPECT_EQ(baseNames(names.partFiles), document.at("part_files").get<Texts>());
        EXPECT_EQ(baseNames(names.products), document.at("context_products").get<Texts>());
        EXPECT_EQ(baseNames(names.parts), document.at("context_parts").get<Texts>());
        for (const std::string& reference : names.references) EXPECT_EQ(reference.size(), 8U);
        EXPECT_EQ(references(image), document.at("external_references").get<Texts>());
        int version[3] = {7, 7, 7};
        EXPECT_EQ(VornToolsLinks::getVersion(bytes.get(), version[0], version[1], version[2]), 0);
        EXPECT_EQ(std::vector<int>(version, version + 3), document.at("version").get<std::vector<int>>());

        Strings publications;
        VornToolsLinks::getMmlPublication(bytes.get(), version[1], image.applicationPosition(),
                                          image.propertyPosition(), publications);
        unsigned char missing = 7;
        const auto links = VornToolsLinks::getLinks(bytes.get(), "MML", nullptr, "", missing);
        EXPECT_EQ(missing, 0);
        Texts elements;
        for (unsigned int i = 0; i < links.size() && i < publications.size(); ++i)
            elements.push_back(bytesOf(publications[i]) + " -> " +
                               baseNames({bytesOf(links[i].get_linkedFileName())}).front());
        EXPECT_EQ(elements, document.at("imported_elements").get<Texts>());
        EXPECT_EQ(links.size(), elements.size());
    }
}

} // namespace
