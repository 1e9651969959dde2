#include "VornToolsDocumentFile.h"

#include "tests/support/AllocationSweep.h"
#include "tests/support/DocumentAnswers.h"
#include "tests/support/DocumentContainer.h"
#include "tests/support/DocumentImage.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"

#include "VornToolsCommon.h"
#include "VornToolsFolderMemory.h"
#include "VornToolsLinks.h"

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <set>

using namespace std::string_literals;

namespace {

using Container = DocumentContainer;
using Condition = VornToolsDocumentFile::EnumDocumentCondition;

const std::string kProperty = "\x03"
                              "CATDocumentProperty";
const std::string kSets = "\x03"
                          "CATPropertySets";
const std::string kPreview = "\x05"
                             "CATPreview";
const std::string kProductIdentity = "\0\0\0\0\0\0\x1A\x60\x60\xC7\x4B\xFE\0\0\0\x83"s;
const std::string kPartIdentity = "\0\0\0\0\0\0\x1A\x61\x61\xC7\0\xFF\0\0\0\x84"s;
/** What no link hangs on: as long as the link streams are not neighbours, and the file is not read in one go. */
const std::string kGeometry(40000, '\x55');

std::string bytesOf(const VornToolsString* text) { return text ? std::string(text->bytes(), text->size()) : "none"; }
std::string bytesOf(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}

/** A part in the context of an assembly: a reference, an unpublished import and an import with link. */
struct PartStreams {
    std::string data = DocumentImage().application().bytes();
    std::string properties =
        DocumentImage()
            .properties("/own/Part.CATPart",
                        {ImageRecord::object("CATProduct", "/own/Assembly.CATProduct", kProductIdentity),
                         ImageRecord::object("CATPart", "/own/Neighbour.CATPart", kPartIdentity),
                         ImageRecord::whole("CATPart", "/own/Skeleton.CATPart"),
                         ImageRecord::whole("CATPart", "/own/Ghost.CATPart", 0)})
            .bytes();
    std::string product = DocumentImage()
                              .references({"..!..!SKELETON.1!Axis"})
                              .raw("CATPrdInputProxy")
                              .pointer(kProductIdentity)
                              .pointer(kPartIdentity, "\x09\1\0\0\0"s)
                              .bytes();
    std::string imports = DocumentImage().imports({{3, {4}}}, {"InputToDoc:Doc!Geometry:AJBAAAAAAA!"}).bytes();
    std::string summary = DocumentImage().summary(5, 27, 3).bytes();

    Container container() const {
        Container file;
        file.stream("Data", data).container("CATProdCont", product).container("CGMGeom", kGeometry);
        file.container("CATXDocLinkCont", imports).container("CATMFBRP", kGeometry);
        return file.stream(kProperty, properties).stream(kSets, summary);
    }
};

class DocumentFileTest : public PlatformTest {
protected:
    /** Everything that hangs on the links of an image. */
    static Texts linksOf(VornToolsString* image) {
        VornToolsString file("/own/Part.CATPart", 17);
        unsigned char missing = 0;
        Texts texts;
        const auto add = [&](const VornToolsVector<VornToolsLink>& links) {
            for (unsigned int i = 0; i < links.size(); ++i)
                texts.push_back(bytesOf(links[i].get_type()) + "|" + bytesOf(links[i].get_linkedFileName()) + "|" +
                                bytesOf(links[i].get_reference()) + "|" +
                                std::to_string(links[i].get_link_tag_found()));
            texts.push_back("--");
        };
        add(VornToolsLinks::getLinks(image, "", &file, "", missing));
        add(VornToolsLinks::getAllLinks(image, &file, ""));
        add(VornToolsLinks::getMMLDrawingLinks(image, &file, ""));
        int version = 0, release = 0, pack = 0;
        const int code = VornToolsLinks::getVersion(image, version, release, pack);
        texts.push_back(std::to_string(code) + "|" + std::to_string(version) + "|" + std::to_string(release) + "|" +
                        std::to_string(pack));
        const std::string bytes = bytesOf(image);
        const auto place = [&](const char* marker) {
            const std::size_t found = bytes.find(marker);
            return found == std::string::npos ? -1 : static_cast<int>(found);
        };
        const int application = place("AppliCont"), property = place("CATDocumentProperty");
        VornToolsVector<VornToolsString> lists[6];
        VornToolsLinks::getLinkedDocName(image, property, &file, "", lists[0], lists[1], lists[2], lists[3]);
        VornToolsLinks::getGhosts(image, property, lists[4]);
        VornToolsLinks::getExternalReference(image, release, application, property, lists[5]);
        for (const auto& list : lists) {
            for (unsigned int i = 0; i < list.size(); ++i) texts.push_back(bytesOf(&list[i]));
            texts.push_back("--");
        }
        return texts;
    }

    struct Read {
        std::string image;
        Texts links;
        Condition condition = VornToolsDocumentFile::DocumentNotOpen;
    };
    /** What is read at once is what the operations tell about the whole file. */
    static void expectSameAnswers(const std::string& name) {
        const std::unique_ptr<VornToolsString> whole(VornToolsCommon::readBinaryFile(name.c_str()));
        ASSERT_TRUE(whole);
        const std::string directory = name.substr(0, name.find_last_of("/\\"));
        VornToolsFolderMemory folders;
        VornToolsDocumentLinks document;
        for (const char* const type : {"", "MML", "MMLASSY", "MMLDrawing"}) {
            SCOPED_TRACE(type);
            ASSERT_EQ(document.read(name.c_str(), type, directory.c_str(), folders), S_OK);
            EXPECT_EQ(DocumentAnswers::of(document), DocumentAnswers::of(*whole, name, type, directory));
        }
    }
    Read readFile(const CATUnicodeString& name) {
        VornToolsDocumentFile file;
        EXPECT_EQ(file.open(name), S_OK);
        const std::unique_ptr<VornToolsString> image(file.readLinkImage());
        return {bytesOf(image.get()), image ? linksOf(image.get()) : Texts(), file.getCondition()};
    }
    Read read(const std::string& bytes) { return readFile(write("document", bytes).c_str()); }
    /** Links of the whole file, read as bytes. */
    static Texts linksOfWhole(const std::string& bytes) {
        VornToolsString image(bytes.data(), static_cast<int>(bytes.size()));
        return linksOf(&image);
    }
    Condition conditionOf(const std::string& bytes) {
        VornToolsDocumentFile file;
        EXPECT_EQ(file.open(write("document", bytes).c_str()), S_OK);
        return file.getCondition();
    }
};

TEST_F(DocumentFileTest, ListsStoragesAndStreams) {
    Container file("");
    file.stream("Format", "twelve bytes");
    const std::uint32_t inner = file.storage("inner", file.root());
    file.stream("Cont_inner", "one two three", inner, 3, true);
    VornToolsDocumentFile document;
    ASSERT_EQ(document.open(write("d", file.bytes()).c_str()), S_OK);
    EXPECT_EQ(document.getSize(), file.bytes().size());

    Texts entries;
    for (int i = 1; i <= document.getEntryCount(); ++i) {
        CATUnicodeString name("before"), date;
        int parent = -1, pieces = -1;
        unsigned char is_stream = 2;
        unsigned int size = 99;
        EXPECT_EQ(document.getEntry(i, name, parent, is_stream, size, pieces), S_OK);
        entries.push_back(bytesOf(name) + " " + std::to_string(parent) + " " + std::to_string(is_stream) + " " +
                          std::to_string(size) + " " + std::to_string(pieces));
    }
    EXPECT_EQ(entries, Texts({".0123456789abcdef 0 0 0 0", "CATIA1 1 0 0 0", "Format 2 1 12 1", "inner 2 0 0 0",
                              "Cont_inner 4 1 13 3"}));
    CATUnicodeString first, second, third;
    EXPECT_EQ(document.getEntryDate(3, 1, first), S_OK);
    EXPECT_EQ(document.getEntryDate(3, 2, second), S_OK);
    EXPECT_EQ(document.getEntryDate(3, 3, third), S_OK);
    EXPECT_EQ(bytesOf(first), "2021-04-22 13:07:23");
    EXPECT_EQ(bytesOf(second), "");
    EXPECT_EQ(bytesOf(third), bytesOf(first));

    const auto stream = [&](int index, unsigned int from, unsigned int count) {
        return bytesOf(std::unique_ptr<VornToolsString>(document.readStream(index, from, count)).get());
    };
    EXPECT_EQ(stream(5, 0, 0xFFFFFFFF), "one two three") << "pieces in the order of the stream";
    EXPECT_EQ(stream(5, 2, 7), "e two t");
    EXPECT_EQ(stream(5, 12, 5), "e");
    EXPECT_EQ(stream(5, 13, 1), "");
    EXPECT_EQ(stream(5, 0xFFFFFFFF, 0xFFFFFFFF), "");
    EXPECT_EQ(stream(4, 0, 9), "") << "a storage";
}

TEST_F(DocumentFileTest, DatesAreThoseOfTheCalendar) {
    const struct {
        long long seconds; ///< since 1970
        const char* text;
    } cases[] = {{-11644473599, "1601-01-01 00:00:01"},
                 {-8520336001, "1699-12-31 23:59:59"},
                 {-8515324800, "1700-02-28 00:00:00"},
                 {-8515238400, "1700-03-01 00:00:00"},
                 {0, "1970-01-01 00:00:00"},
                 {951868799, "2000-02-29 23:59:59"},
                 {951868800, "2000-03-01 00:00:00"},
                 {1612088430, "2021-01-31 10:20:30"},
                 {1703980800, "2023-12-31 00:00:00"},
                 {253402300799, "9999-12-31 23:59:59"}};
    const std::string made = Container().bytes();
    const std::size_t at = made.find(Container::bigEndian(0x6F73C420) + Container::bigEndian(0x01D73778));
    ASSERT_NE(at, std::string::npos);
    for (const auto& c : cases) {
        const auto ticks = static_cast<std::uint64_t>(c.seconds + 11644473600) * 10000000 + 9999999;
        const std::string date = Container::bigEndian(static_cast<std::uint32_t>(ticks)) +
                                 Container::bigEndian(static_cast<std::uint32_t>(ticks >> 32));
        VornToolsDocumentFile document;
        ASSERT_EQ(document.open(write("d", std::string(made).replace(at, date.size(), date)).c_str()), S_OK);
        CATUnicodeString text;
        EXPECT_EQ(document.getEntryDate(1, 1, text), S_OK);
        EXPECT_EQ(bytesOf(text), c.text);
    }
}

TEST_F(DocumentFileTest, IndicesOutsideAndFilesThatAreNotThereAreReported) {
    VornToolsDocumentFile document;
    CATUnicodeString text("before");
    int number = 5, pieces = 5;
    unsigned char flag = 5;
    unsigned int size = 5;
    EXPECT_EQ(document.open(path("missing").c_str()), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsDocumentFile::open 501 " + path("missing")}));
    EXPECT_EQ(document.open(folder().u8string().c_str()), E_FAIL) << "a folder";
    reports();
    EXPECT_EQ(document.getCondition(), VornToolsDocumentFile::DocumentNotOpen);
    EXPECT_EQ(document.getSize(), 0U);
    EXPECT_EQ(document.readLinkImage(), nullptr);
    EXPECT_EQ(document.readPreview(), nullptr);

    ASSERT_EQ(document.open(write("d", Container().bytes()).c_str()), S_OK);
    for (const int index : {0, -1, 4}) {
        EXPECT_EQ(document.getEntry(index, text, number, flag, size, pieces), E_FAIL);
        EXPECT_EQ(bytesOf(text) + std::to_string(number) + std::to_string(flag) + std::to_string(size), "000");
        EXPECT_EQ(document.getEntryDate(index, 1, text), E_FAIL);
        EXPECT_EQ(document.readStream(index), nullptr);
        EXPECT_EQ(reports(), Texts({"VornToolsDocumentFile::getEntry 9006 i_index",
                                    "VornToolsDocumentFile::getEntryDate 9006 i_index",
                                    "VornToolsDocumentFile::readStream 9006 i_index"}));
    }
    EXPECT_EQ(document.getEntryDate(1, 4, text), E_FAIL);
    EXPECT_EQ(document.getEntryDate(1, 0, text), E_FAIL);
    EXPECT_EQ(reports(), Texts(2, "VornToolsDocumentFile::getEntryDate 9006 i_which"));
    EXPECT_EQ(document.close(), S_OK);
    EXPECT_EQ(document.getEntryCount(), 0);
    EXPECT_EQ(document.close(), S_OK);
}

TEST_F(DocumentFileTest, NamesOfStreamsAreUtf16) {
    Container plain("");
    plain.stream("ABCDEF", "");
    std::string bytes = plain.bytes();
    // A letter, one of two bytes in UTF-8, one of three, half a pair, a pair.
    bytes.replace(bytes.find("\0A\0B\0C\0D\0E\0F"s), 12, "\0A\0\xE9\x20\xAC\xD8\x3D\xDB\xFF\xDF\xFD"s);
    VornToolsDocumentFile document;
    ASSERT_EQ(document.open(write("d", bytes).c_str()), S_OK);
    CATUnicodeString name;
    int parent = 0, pieces = 0;
    unsigned char is_stream = 0;
    unsigned int size = 0;
    ASSERT_EQ(document.getEntry(3, name, parent, is_stream, size, pieces), S_OK);
    EXPECT_EQ(toUtf8(name), "A\xC3\xA9\xE2\x82\xAC\xEF\xBF\xBD\xF4\x8F\xBF\xBD");
}

TEST_F(DocumentFileTest, LinksOfTheStreamsAreThoseOfTheFile) {
    const PartStreams part;
    const std::string bytes = part.container().bytes();
    const Read found = read(bytes);
    EXPECT_EQ(found.links, linksOfWhole(bytes));
    EXPECT_EQ(
        Texts(found.links.begin(), found.links.begin() + 5),
        Texts({"MMLAssy_Context|/own/Assembly.CATProduct||0", "MMLAssy_Ref||..!..!SKELETON.1!Axis|0",
               "MMLAssy_ImportNotPub|/own/Neighbour.CATPart||0", "MML|/own/Skeleton.CATPart|AJBAAAAAAA|1", "--"}));
    EXPECT_LT(found.image.size(), 4000U) << "the geometry is not read";
    EXPECT_EQ(found.condition, VornToolsDocumentFile::DocumentIntact);

    // The same streams in another order, the application container among the properties, the product's in pieces.
    Container turned;
    const std::uint32_t geometry = turned.storage("g", turned.root());
    turned.stream(kSets, part.summary + part.data).stream("Cont_g", kGeometry, geometry);
    const std::string told = Container::classStream("CGMGeom"); // its class and nothing in front
    turned.stream("\x03"
                  "CATStorageProperty",
                  told.substr(told.find("CATUnicodeString")), geometry);
    const std::uint32_t storage = turned.storage("p", turned.root());
    turned.stream("Cont_p", part.product, storage, 2);
    turned.gap(kGeometry).stream("\x03"
                                 "CATStorageProperty",
                                 Container::classStream("CATProdCont"), storage);
    turned.container("CATXDocLinkCont", part.imports).stream(kProperty, part.properties).gap(kGeometry);
    const Read other = read(turned.bytes());
    EXPECT_EQ(other.links, found.links);
    EXPECT_LT(other.image.size(), 4000U);

    // The application container far from all others; properties of a container, which are not asked for.
    Container far;
    far.container("CGMGeom", kGeometry).stream("Data", part.data).gap(kGeometry);
    far.stream(kSets, kGeometry, far.storage("s", far.root())).container("CATProdCont", part.product);
    far.container("CATXDocLinkCont", part.imports).gap(kGeometry);
    const Read apart = read(far.stream(kProperty, part.properties).stream(kSets, part.summary).bytes());
    EXPECT_EQ(apart.links, found.links);
    EXPECT_LT(apart.image.size(), 4000U);
}

TEST_F(DocumentFileTest, NeighboursStayTogetherInTheImage) {
    const std::string names = DocumentImage().properties("/own/p.CATPart", {}).bytes();
    const std::string sets = PartStreams().summary;
    Container near(""), apart("");
    near.stream(kProperty, names).stream(kSets, sets);
    apart.gap("x").stream(kProperty, names).gap("x").stream(kSets, sets);
    const std::string header = near.bytes().substr(0, 16), zeros(8, '\0');
    EXPECT_EQ(read(near.bytes()).image, header + names + sets);
    EXPECT_EQ(read(apart.bytes()).image, apart.bytes().substr(0, 16) + zeros + names + zeros + sets);
}

TEST_F(DocumentFileTest, ProductsAndDrawingsAreToldByTheirProperties) {
    const std::string names =
        DocumentImage()
            .properties("/own/A.CATProduct",
                        {ImageRecord::object("CATProduct", "/own/Group.CATProduct", kProductIdentity, 2),
                         ImageRecord::object("CATPart", "/own/Bolt.CATPart", kPartIdentity),
                         ImageRecord::object("CATDrawing", "/own/Frame.CATDrawing", kPartIdentity)})
            .bytes();
    for (const char* const type : {"CATProduct", "CATDrawing"}) {
        Container file(type);
        // What a part would be asked for is not looked at.
        file.stream("Data", "containers").container("CATProdCont", kGeometry);
        const std::string bytes = file.stream(kProperty, names).stream(kSets, PartStreams().summary).bytes();
        const Read found = read(bytes);
        EXPECT_EQ(found.links, linksOfWhole(bytes));
        EXPECT_EQ(found.links[0], "MMLAssy_Context|/own/Group.CATProduct||0");
        EXPECT_LT(found.image.size(), 4000U);
    }
}

// Each of these is something that the platform always writes and that nothing in the layout promises.
TEST_F(DocumentFileTest, WhatTheStreamsDoNotTellIsReadFromTheWholeFile) {
    const struct {
        const char* what;
        std::function<std::string(PartStreams)> make;
    } cases[] = {
        {"references and pointers in a container of another class",
         [](PartStreams part) {
             Container file;
             file.stream("Data", part.data).container("CATPrtCont", part.product).container("", kGeometry);
             file.container("CATXDocLinkCont", part.imports);
             return file.stream(kProperty, part.properties).stream(kSets, part.summary).bytes();
         }},
        {"references, pointers and imports in containers of other classes",
         [](PartStreams part) {
             Container file;
             file.stream("Data", part.data).container("CATPrtCont", part.product).container("CATStdCont", part.imports);
             file.gap(kGeometry);
             return file.stream(kProperty, part.properties).stream(kSets, part.summary).bytes();
         }},
        {"imports in a container of another class",
         [](PartStreams part) {
             Container file;
             file.stream("Data", part.data).container("CATProdCont", part.product).container("CGMGeom", kGeometry);
             file.container("CATStdCont", part.imports);
             return file.stream(kProperty, part.properties).stream(kSets, part.summary).bytes();
         }},
        {"a pointer that is not where the others are",
         [](PartStreams part) {
             const std::string pointer = DocumentImage().pointer(kPartIdentity, "\x09\1\0\0\0"s).bytes();
             part.product.erase(part.product.find(pointer), pointer.size());
             Container file;
             file.stream("Data", part.data).container("CATProdCont", part.product);
             file.container("CATPrtCont", kGeometry + pointer).container("CATXDocLinkCont", part.imports);
             return file.stream(kProperty, part.properties).stream(kSets, part.summary).bytes();
         }},
        {"more pointers counted to one container than there are",
         [](PartStreams part) {
             std::vector<ImageRecord> records(2, ImageRecord::object("CATPart", "/own/Two.CATPart", kPartIdentity));
             records.push_back(ImageRecord::whole("CATPart", "/own/Skeleton.CATPart"));
             part.properties = DocumentImage().properties("/own/Part.CATPart", records).bytes();
             return part.container().bytes();
         }},
        {"a release that stores imports in the older form",
         [](PartStreams part) {
             part.summary = DocumentImage().summary(5, 11, 0).bytes();
             part.product.replace(part.product.find("CATPrdInputProxy"), 16, 16, '-');
             return part.container().bytes();
         }},
        {"a part whose application container stands elsewhere",
         [](PartStreams part) {
             Container file;
             file.stream("Elsewhere", part.data + kGeometry).container("CATProdCont", part.product);
             file.container("CATXDocLinkCont", part.imports);
             return file.stream(kProperty, part.properties).stream(kSets, part.summary).bytes();
         }},
        {"a product with part files",
         [](PartStreams part) {
             Container file("CATProduct");
             file.container("CATXDocLinkCont", part.imports).container("CGMGeom", kGeometry);
             return file.stream(kProperty, part.properties).stream(kSets, part.summary).bytes();
         }},
        {"no property stream of that name",
         [](PartStreams part) {
             Container file;
             file.stream("Data", part.data).container("CATProdCont", part.product).gap(kGeometry);
             file.container("CATXDocLinkCont", part.imports);
             return file.stream("Properties", part.properties).stream(kSets, part.summary).bytes();
         }},
        {"another layout",
         [](PartStreams part) {
             std::string bytes = part.container().bytes();
             bytes[6] = '4';
             return bytes;
         }},
        {"no container at all", [](PartStreams part) {
             return part.data + part.product + part.imports + part.properties + part.summary + kGeometry;
         }}};
    for (const auto& made : cases) {
        SCOPED_TRACE(made.what);
        const std::string bytes = made.make(PartStreams());
        const Read found = read(bytes);
        EXPECT_EQ(found.image.size(), bytes.size());
        EXPECT_EQ(found.links, linksOfWhole(bytes));
        expectSameAnswers(path("document"));
        EXPECT_GT(found.links.size(), 15U);
        EXPECT_EQ(found.condition, VornToolsDocumentFile::DocumentIntact);
    }
}

TEST_F(DocumentFileTest, PiecesOutOfOrderAreReadInTheOrderOfTheStream) {
    const PartStreams part;
    Container file;
    file.stream("Data", part.data).container("CATProdCont", part.product).container("CATXDocLinkCont", part.imports);
    file.stream(kProperty, part.properties, file.root(), 3, true).stream(kSets, part.summary).gap(kGeometry);
    EXPECT_EQ(read(file.bytes()).links, read(part.container().bytes()).links);
}

TEST_F(DocumentFileTest, ContainersThatTellNoClassAreRead) {
    const PartStreams part;
    Container file;
    file.stream("Data", part.data).container("", part.product).container("CGMGeom", kGeometry);
    // A class of eight letters has a form of its own; here they end their streams.
    for (const std::string& name : {"CGMGeoms"s, "CGMGeom"s}) {
        const std::uint32_t storage = file.storage(name, file.root());
        const std::string told = Container::classStream(name);
        file.stream("Cont_" + name, kGeometry, storage)
            .stream("\x03"
                    "CATStorageProperty",
                    told.substr(0, told.find(name) + name.size()), storage);
    }
    // A text without the name of its type is no class.
    const std::uint32_t untold = file.storage("i", file.root());
    file.stream("Cont_i", part.imports, untold)
        .stream("\x03"
                "CATStorageProperty",
                std::string(21, 'x') + "\x34\x07" + "CGMGeom", untold);
    const std::string bytes = file.stream(kProperty, part.properties).stream(kSets, part.summary).bytes();
    const Read found = read(bytes);
    EXPECT_EQ(found.links, linksOfWhole(bytes));
    EXPECT_LT(found.image.size(), 4000U);
}

// Classes of containers are asked one by one: what is found first must not hide what stands elsewhere.
TEST_F(DocumentFileTest, ContainersAreFoundWhereverTheyStand) {
    const PartStreams part;
    const auto others = [](Container& file) {
        for (int i = 0; i < 20; ++i) file.container("CATStdCont", "other");
    };
    const auto expect_same = [&](Container& file, const PartStreams& streams) {
        const std::string bytes = file.gap(kGeometry).stream(kProperty, streams.properties).bytes();
        const Read found = read(bytes);
        EXPECT_EQ(found.links, linksOfWhole(bytes));
        EXPECT_LT(found.image.size(), 4000U);
        expectSameAnswers(path("document"));
        return found.links;
    };
    Container middle;
    middle.stream("Data", part.data).stream(kSets, part.summary);
    others(middle);
    middle.container("CATXDocLinkCont", part.imports).container("CATProdCont", part.product).gap(kGeometry);
    others(middle);
    EXPECT_EQ(expect_same(middle, part), read(part.container().bytes()).links);

    // A second container of either class, far from the first.
    PartStreams twice;
    twice.properties =
        DocumentImage()
            .properties("/own/Part.CATPart",
                        {ImageRecord::object("CATProduct", "/own/Assembly.CATProduct", kProductIdentity, 2),
                         ImageRecord::whole("CATPart", "/own/First.CATPart"),
                         ImageRecord::whole("CATPart", "/own/Second.CATPart")})
            .bytes();
    const std::string first = DocumentImage().imports({{2, {4}}}, {"InputToDoc:Doc!Geometry:AJBAAAAAAA!"}).bytes();
    const std::string second = DocumentImage().imports({{3, {4}}}, {"InputToDoc:Doc!Geometry:AJCAAAAAAA!"}).bytes();
    Container apart;
    apart.stream("Data", part.data).stream(kSets, part.summary).container("CATProdCont", twice.product);
    others(apart);
    apart.container("CATXDocLinkCont", first);
    apart.container("CATProdCont", DocumentImage().pointer(kProductIdentity).bytes());
    others(apart);
    apart.container("CATXDocLinkCont", second);
    EXPECT_EQ(expect_same(apart, twice)[2], "MML|/own/First.CATPart|AJBAAAAAAA|1");
}

// Of an old release each context part must be an unpublished import by what was read.
TEST_F(DocumentFileTest, OldReleasesAreReadFromTheirStreamsWhenThoseTellEnough) {
    PartStreams part;
    part.summary = DocumentImage().summary(5, 11, 0).bytes();
    const std::string bytes = part.container().bytes();
    const Read found = read(bytes);
    EXPECT_EQ(found.links, linksOfWhole(bytes));
    EXPECT_EQ(found.links[2], "MMLAssy_ImportNotPub|/own/Neighbour.CATPart||0");
    EXPECT_LT(found.image.size(), 4000U);
}

// Only parts have an application container: in a drawing the stream that would hold it may be large.
TEST_F(DocumentFileTest, TheVersionIsThatOfTheDocumentsOwnStorage) {
    const std::string names =
        DocumentImage().properties("/own/A.CATDrawing", {ImageRecord::whole("CATPart", "/own/B.CATPart", 0)}).bytes();
    const std::string summary = DocumentImage().summary(5, 27, 3).bytes();
    Container file("CATDrawing");
    file.stream("Data", kGeometry).stream(kProperty, names);
    const std::uint32_t inner = file.storage("inner", file.root());
    file.stream(kSets, "flags" + kGeometry, inner).stream(kSets, summary);
    const Read found = read(file.bytes());
    EXPECT_EQ(found.links, linksOfWhole(file.bytes()));
    EXPECT_LT(found.image.size(), 4000U) << "neither the containers nor other property sets";

    Container other("CATDrawing");
    other.stream(kSets, "flags").stream(kProperty, names).gap(kGeometry);
    other.stream(kSets, summary, other.storage("inner", other.root()));
    EXPECT_EQ(read(other.bytes()).links, linksOfWhole(other.bytes())) << "where it has none, any other";
}

TEST_F(DocumentFileTest, DamageIsTold) {
    const PartStreams part;
    const std::string whole = part.container().bytes();
    EXPECT_EQ(conditionOf(whole), VornToolsDocumentFile::DocumentIntact);
    for (const std::size_t length : {whole.size() - 1, whole.size() * 9 / 10, whole.size() / 2, std::size_t{17}})
        EXPECT_EQ(conditionOf(whole.substr(0, length)), VornToolsDocumentFile::DocumentCutOff) << length;
    EXPECT_EQ(conditionOf(whole + "x"), VornToolsDocumentFile::DocumentDamaged);
    EXPECT_EQ(conditionOf(whole + std::string(100000, '\0')), VornToolsDocumentFile::DocumentDamaged);

    const auto with_properties = [&](const std::string& properties) {
        PartStreams changed = part;
        changed.properties = properties;
        return conditionOf(changed.container().bytes());
    };
    const std::string& names = part.properties;
    EXPECT_EQ(with_properties(names.substr(0, names.size() - 9)), VornToolsDocumentFile::DocumentDamaged)
        << "a closing word that is cut";
    EXPECT_EQ(with_properties(names.substr(0, names.size() / 2)), VornToolsDocumentFile::DocumentDamaged);
    std::string counts_more = names;
    counts_more[31] = 5;
    EXPECT_EQ(with_properties(counts_more), VornToolsDocumentFile::DocumentDamaged);

    EXPECT_EQ(conditionOf(""), VornToolsDocumentFile::DocumentNoDocument);
    EXPECT_EQ(read("").image, "none");
    EXPECT_EQ(read("x").image, "x");
    EXPECT_EQ(conditionOf("version https://example.invalid/file\n"), VornToolsDocumentFile::DocumentNoDocument);
    EXPECT_EQ(conditionOf("V5_CF"), VornToolsDocumentFile::DocumentNoDocument);
    EXPECT_EQ(conditionOf("V5_CFV2"), VornToolsDocumentFile::DocumentCutOff);
    EXPECT_EQ(conditionOf(names + part.summary), VornToolsDocumentFile::DocumentIntact) << "properties alone";
    EXPECT_EQ(conditionOf(names.substr(0, names.size() / 2)), VornToolsDocumentFile::DocumentDamaged);
}

TEST_F(DocumentFileTest, FormsOfOldReleasesAreIntact) {
    const Container file = PartStreams().container();
    // The root entry has a piece of its own, and room is left behind the end.
    std::string directory = file.directory();
    directory.replace(64, 4, Container::bigEndian(106)).insert(158, 20, '\0');
    directory += std::string(500, '\0');
    const std::string bytes = file.bytesWithDirectory(directory);
    const Read found = read(bytes);
    EXPECT_EQ(found.links, linksOfWhole(bytes));
    EXPECT_LT(found.image.size(), 4000U) << "the directory is believed";
    EXPECT_EQ(found.condition, VornToolsDocumentFile::DocumentIntact);
}

TEST_F(DocumentFileTest, ADirectoryWithAnythingThatDoesNotFitIsNotBelieved) {
    Container file("");
    file.stream("xyz", "bytes of the stream").stream("uvw", "and others");
    const std::string directory = file.directory();
    const std::size_t first = 158, stream = directory.find("\0x\0y\0z"s);
    const std::size_t rest = stream + 8;
    const struct {
        const char* what;
        std::size_t at;
        std::uint32_t value;
    } damages[] = {{"signature", 0, 0},
                   {"length of the root", 64, 85},
                   {"a root that ends nowhere", 64, 0xFFFFFFFF},
                   {"kind of an entry", first + 4, 3},
                   {"length of a name", stream - 4, 0xFFFFFFFE},
                   {"name of no length", stream - 4, 0},
                   {"name of odd length", stream - 4, 7},
                   {"rest of an entry", rest, 0xFFFFFFFF},
                   {"short rest of an entry", rest, 85},
                   {"rest with half a piece", rest, 96},
                   {"number of pieces", rest + 82, 2},
                   {"huge number of pieces", rest + 82, 0xFFFFFFFF},
                   {"piece outside the file", rest + 86, 0xFFFFFFF0},
                   {"length of a piece", rest + 90, 0xFFFFFFFF},
                   {"length that is not the stream's", rest + 90, 18},
                   {"position of a piece", rest + 98, 1},
                   {"size of a stream", stream - 4 - 76 + 8, 20}};
    for (const auto& damage : damages) {
        SCOPED_TRACE(damage.what);
        std::string changed = directory;
        changed.replace(damage.at, 4, Container::bigEndian(damage.value));
        VornToolsDocumentFile document;
        ASSERT_EQ(document.open(write("d", file.bytesWithDirectory(changed)).c_str()), S_OK);
        EXPECT_EQ(document.getEntryCount(), 0);
    }
    // Without a name or the rest it is none, whatever its numbers make it look like.
    const std::size_t begin = stream - 4 - 76;
    for (const std::string& entry :
         {Container::bigEndian(86) + Container::bigEndian(1) + std::string(78, '\0'),
          directory.substr(begin, rest - begin), directory.substr(begin, rest - begin) + Container::bigEndian(86)}) {
        std::string changed = directory;
        changed.insert(directory.size() - 12, entry);
        VornToolsDocumentFile document;
        ASSERT_EQ(document.open(write("d", file.bytesWithDirectory(changed)).c_str()), S_OK);
        EXPECT_EQ(document.getEntryCount(), 0) << entry.size();
    }
    // What is too short or odd is so although everything stands in its place behind it.
    std::string odd_name = directory, short_root = directory;
    odd_name.replace(stream - 4, 4, Container::bigEndian(9)).insert(stream, "n");
    short_root.replace(64, 4, Container::bigEndian(85)).erase(100, 1);
    for (const std::string& changed : {odd_name, short_root}) {
        VornToolsDocumentFile document;
        ASSERT_EQ(document.open(write("d", file.bytesWithDirectory(changed)).c_str()), S_OK);
        EXPECT_EQ(document.getEntryCount(), 0);
    }
    for (const std::size_t length : {std::size_t{0}, std::size_t{15}, std::size_t{70}, first, stream, rest + 90,
                                     directory.size() - 12, directory.size() - 1}) {
        VornToolsDocumentFile document;
        ASSERT_EQ(document.open(write("d", file.bytesWithDirectory(directory.substr(0, length))).c_str()), S_OK);
        EXPECT_EQ(document.getEntryCount(), 0) << length;
    }
}

TEST_F(DocumentFileTest, StoragesThatHoldThemselvesOrAreNotThereDoNoHarm) {
    Container file("");
    file.stream("loop", "x", 5).stream("lost", "y", 77).storage("self", 6);
    VornToolsDocumentFile document;
    ASSERT_EQ(document.open(write("d", file.bytes()).c_str()), S_OK);
    Texts parents;
    for (int i = 1; i <= document.getEntryCount(); ++i) {
        CATUnicodeString name;
        int parent = -1, pieces = 0;
        unsigned char is_stream = 0;
        unsigned int size = 0;
        EXPECT_EQ(document.getEntry(i, name, parent, is_stream, size, pieces), S_OK);
        parents.push_back(bytesOf(name) + std::to_string(parent));
    }
    EXPECT_EQ(parents, Texts({".0123456789abcdef0", "CATIA11", "loop0", "lost0", "self5"}));
}

// Streams may name the same bytes: the image of them is never longer than the file.
TEST_F(DocumentFileTest, StreamsThatShareTheirBytesCostNoMoreThanTheFile) {
    const PartStreams part;
    Container file = part.container();
    std::string entry = file.directory();
    const std::size_t begin = entry.find("\0D\0a\0t\0a"s) - 80;
    const std::size_t end = entry.find("\0C\0o\0n\0t"s);
    ASSERT_LT(begin, end);
    std::string shared = entry.substr(begin, 80 + 10 + 86 + 20);
    const std::size_t piece = shared.size() - 20;
    shared.replace(8, 4, Container::bigEndian(60000))
        .replace(piece, 8, Container::bigEndian(16) + Container::bigEndian(60000));
    std::string many;
    for (int i = 0; i < 500; ++i) many += shared;
    entry.insert(begin, many);
    const std::string bytes = file.bytesWithDirectory(entry);
    const Read found = read(bytes);
    EXPECT_LE(found.image.size(), bytes.size());
    EXPECT_EQ(found.links, linksOfWhole(bytes));
}

// What was read before gives way to a stretch that covers it, but for what the entries refer to.
TEST_F(DocumentFileTest, AStreamOverTheDirectoryLeavesTheEntriesTheirNames) {
    Container file("");
    file.gap(std::string(40000, 'g')).stream("over", "x");
    std::string directory = file.directory();
    const std::size_t name = directory.find("\0o\0v\0e\0r"s), piece = name + 10 + 86;
    const auto size = static_cast<std::uint32_t>(file.bytes().size());
    directory.replace(name - 80 + 8, 4, Container::bigEndian(size - 20000))
        .replace(piece, 8, Container::bigEndian(20000) + Container::bigEndian(size - 20000));
    VornToolsDocumentFile document;
    ASSERT_EQ(document.open(write("d", file.bytesWithDirectory(directory)).c_str()), S_OK);
    const std::string stream = bytesOf(std::unique_ptr<VornToolsString>(document.readStream(3)).get());
    EXPECT_EQ(stream.substr(stream.size() - directory.size()), directory);
    CATUnicodeString found;
    int parent = 0, pieces = 0;
    unsigned char is_stream = 0;
    unsigned int length = 0;
    ASSERT_EQ(document.getEntry(3, found, parent, is_stream, length, pieces), S_OK);
    EXPECT_EQ(bytesOf(found) + " " + std::to_string(length), "over " + std::to_string(size - 20000));
    EXPECT_EQ(bytesOf(std::unique_ptr<VornToolsString>(document.readStream(3)).get()), stream);
}

TEST_F(DocumentFileTest, AFileThatShrinksIsNotReadBeyondItsEnd) {
    const PartStreams part;
    const std::string bytes = part.container().bytes();
    const std::string name = write("d", bytes);
    VornToolsDocumentFile document;
    ASSERT_EQ(document.open(name.c_str()), S_OK);
    int geometry = 0;
    CATUnicodeString stream_name;
    int parent = 0, pieces = 0;
    unsigned char is_stream = 0;
    for (unsigned int size = 0; size != kGeometry.size();)
        ASSERT_EQ(document.getEntry(++geometry, stream_name, parent, is_stream, size, pieces), S_OK);
    std::filesystem::resize_file(std::filesystem::u8path(name), 5000);
    EXPECT_EQ(document.readStream(geometry), nullptr);
    EXPECT_EQ(reports(), Texts({"VornToolsDocumentFile::readStream 9003 readStream"}));
    EXPECT_EQ(document.readLinkImage(), nullptr);
    EXPECT_EQ(document.getCondition(), VornToolsDocumentFile::DocumentDamaged);
}

TEST_F(DocumentFileTest, PreviewIsThePictureBehindFourBytes) {
    const std::string picture = "\xFF\xD8\xFF\xE0 picture";
    const auto preview = [this](const Container& file) {
        VornToolsDocumentFile document;
        EXPECT_EQ(document.open(write("d", file.bytes()).c_str()), S_OK);
        return bytesOf(std::unique_ptr<VornToolsString>(document.readPreview()).get());
    };
    EXPECT_EQ(preview(Container().stream(kPreview, "\0\0\0\0"s + picture)), picture);
    EXPECT_EQ(preview(Container().stream(kPreview, "\0\0\0\0"s)), "none");
    EXPECT_EQ(preview(Container().stream(kPreview, "")), "none");
    EXPECT_EQ(preview(Container().stream(kPreview, "\0\0\0\0no picture"s)), "none");
    EXPECT_EQ(preview(Container()), "none");
    Container other;
    EXPECT_EQ(preview(other.stream(kPreview, "\0\0\0\0"s + picture, other.storage("inner", other.root()))), "none")
        << "that of another storage";
}

TEST_F(DocumentFileTest, SurvivesFailingCalls) {
    const std::string name = write("d", PartStreams().container().bytes());
    sweepFailures({"VornToolsDocumentFile::open", [&] {
                       VornToolsDocumentFile document;
                       const HRESULT code = document.open(name.c_str());
                       const std::unique_ptr<VornToolsString> image(document.readLinkImage());
                       const std::unique_ptr<VornToolsString> stream(document.readStream(3));
                       const std::unique_ptr<VornToolsString> picture(document.readPreview());
                       return SweepOutcome{
                           code, document.getEntryCount() == 0, document.getCondition(),
                           textOfOutputs(document.getEntryCount(), image.get(), stream.get(), picture.get())};
                   }});
}

TEST_F(DocumentFileTest, ReadingAtOnceSurvivesFailingCalls) {
    const std::string name = write("d", PartStreams().container().bytes());
    sweepFailures({"VornToolsDocumentLinks::read", [&] {
                       VornToolsDocumentLinks document;
                       VornToolsFolderMemory folders;
                       const HRESULT code = document.read(name.c_str(), "", "", folders);
                       unsigned int documents = 0, links = 0, references = 0;
                       document.getDocuments(documents);
                       document.getLinks(links);
                       document.getExternalReferences(references);
                       return SweepOutcome{code, documents + links + references == 0, 0,
                                           textOfOutputs(DocumentAnswers::of(document))};
                   }});
}

TEST_F(DocumentFileTest, WithoutMemoryNothingIsHandedOut) {
    const std::string large(kLargeAllocation, 'n');
    PartStreams part;
    part.product += DocumentImage().references({large}).bytes();
    Container file = part.container();
    file.stream(large, large).stream(kPreview, "\0\0\0\0\xFF\xD8\xFF"s + large);
    const std::string name = write("d", file.bytes());
    sweepAllocations("open", [&] {
        VornToolsDocumentFile document;
        const HRESULT code = document.open(name.c_str());
        return outcomeOf(code, document.getEntryCount(), document.getSize());
    });
    VornToolsDocumentFile document;
    ASSERT_EQ(document.open(name.c_str()), S_OK);
    const int last = document.getEntryCount();
    sweepAllocations("getEntry", [&] {
        CATUnicodeString text("stale");
        int parent = 7, pieces = 7;
        unsigned char is_stream = 7;
        unsigned int size = 7;
        const HRESULT code = document.getEntry(last - 1, text, parent, is_stream, size, pieces);
        return outcomeOf(code, text, parent, is_stream, size, pieces);
    });
    const std::function<VornToolsString*(VornToolsDocumentFile&)> readings[] = {
        [&](auto& from) { return from.readStream(last); },
        [](auto& from) { return from.readLinkImage(); },
        [](auto& from) { return from.readPreview(); },
    };
    for (const auto& read : readings)
        sweepAllocations("read", [&] {
            const std::unique_ptr<VornToolsString> bytes(read(document));
            return outcomeOf(bytes ? S_OK : E_FAIL, bytes.get());
        });
    sweepAllocations("getCondition", [&] {
        VornToolsDocumentFile fresh;
        fresh.open(name.c_str());
        const Condition condition = fresh.getCondition();
        return SweepOutcome{condition == VornToolsDocumentFile::DocumentIntact ? S_OK : E_FAIL,
                            condition == VornToolsDocumentFile::DocumentDamaged ||
                                condition == VornToolsDocumentFile::DocumentNotOpen};
    });
    VornToolsFolderMemory folders;
    sweepAllocations("VornToolsDocumentLinks::read", [&] {
        VornToolsDocumentLinks links;
        const HRESULT code = links.read(name.c_str(), "", "", folders);
        unsigned int counts[3] = {};
        links.getDocuments(counts[0]);
        links.getLinks(counts[1]);
        links.getExternalReferences(counts[2]);
        return SweepOutcome{code, counts[0] + counts[1] + counts[2] == 0 && links.getSize() == 0, 0,
                            textOfOutputs(DocumentAnswers::of(links))};
    });
}

TEST_F(DocumentFileTest, EverythingIsReadAtOnce) {
    const std::string names =
        DocumentImage()
            .properties("/saved/Part.CATPart",
                        {ImageRecord::object("CATProduct", "/saved/Assembly.CATProduct", kProductIdentity, 2),
                         ImageRecord::object("CATPart", "/saved/Neighbour.CATPart", kPartIdentity),
                         ImageRecord::whole("CATPart", "/saved/Skeleton.CATPart"),
                         ImageRecord::whole("CATPart", "/saved/Ghost.CATPart", 0),
                         ImageRecord::whole("model", "/saved/Old.model", 4)})
            .bytes();
    PartStreams part;
    part.properties = names;
    part.product += DocumentImage().pointer(kProductIdentity).bytes();
    const std::string name = write("d/Part.CATPart", part.container().bytes());
    for (const char* const there : {"Skeleton.CATPart", "sub/Neighbour.CATPart", "Ghost.CATPart"})
        write("d/"s + there, "x");
    expectSameAnswers(name);

    VornToolsDocumentLinks document;
    VornToolsFolderMemory folders;
    const auto text = [](const VornToolsDocumentLinks::Text& bytes) { return std::string(bytes.bytes, bytes.length); };
    const auto records = [&](unsigned char find_unused) {
        EXPECT_EQ(document.read(name.c_str(), "", path("d").c_str(), folders, find_unused), S_OK);
        unsigned int count = 99;
        const auto* const list = document.getDocuments(count);
        Texts texts;
        for (unsigned int i = 0; i < count; ++i)
            texts.push_back(std::to_string(list[i].kind) + text(list[i].type) + " " + text(list[i].storedName) + " " +
                            text(list[i].foundName) + " " + std::to_string(list[i].isFound) + " " +
                            std::to_string(list[i].uses) + " " + std::to_string(list[i].identity.length));
        return texts;
    };
    const Texts expected = {"1 /saved/Assembly.CATProduct /saved/Assembly.CATProduct 0 2 16",
                            "2 /saved/Neighbour.CATPart " + path("d/sub/Neighbour.CATPart") + " 1 1 16",
                            "0 /saved/Skeleton.CATPart " + path("d/Skeleton.CATPart") + " 1 1 0",
                            "0 /saved/Ghost.CATPart /saved/Ghost.CATPart 0 0 0",
                            "4model /saved/Old.model /saved/Old.model 0 4 0"};
    EXPECT_EQ(records(0), expected);
    Texts with_ghost = expected;
    with_ghost[3] = "0 /saved/Ghost.CATPart " + path("d/Ghost.CATPart") + " 1 0 0";
    EXPECT_EQ(records(1), with_ghost);

    unsigned int count = 99;
    const auto* const links = document.getLinks(count);
    Texts texts;
    for (unsigned int i = 0; i < count; ++i)
        texts.push_back(text(links[i].type) + " " + text(links[i].storedName) + " " + text(links[i].foundName) + " " +
                        text(links[i].reference) + " " + std::to_string(links[i].isFound) +
                        std::to_string(links[i].isTagFound));
    EXPECT_EQ(texts, Texts({"MMLAssy_Context /saved/Assembly.CATProduct /saved/Assembly.CATProduct  00",
                            "MMLAssy_Ref   ..!..!SKELETON.1!Axis 00",
                            "MMLAssy_ImportNotPub /saved/Neighbour.CATPart " + path("d/sub/Neighbour.CATPart") + "  10",
                            "MML /saved/Skeleton.CATPart " + path("d/Skeleton.CATPart") + " AJBAAAAAAA 11"}));
    EXPECT_EQ(text(document.getSavedPath()), "/saved/Part.CATPart");
    std::string save;
    for (const char letter : ".0123456789abcdef"s) save += {'\0', letter};
    EXPECT_EQ(text(document.getSave()), save);
    EXPECT_EQ(document.getCondition(), VornToolsDocumentFile::DocumentIntact);
    EXPECT_EQ(document.getSize(), part.container().bytes().size());
}

TEST_F(DocumentFileTest, ThePictureIsReadWhenItIsWanted) {
    const auto written = [&](const char* name, const std::string& picture) {
        DocumentContainer file;
        return write(name, file.stream("\x05"
                                       "CATPreview",
                                       "\0\0\0\0"s + picture)
                               .bytes());
    };
    const std::string with = written("with", "\xFF\xD8\xFF<picture>"), other = written("other", "no picture");
    VornToolsDocumentLinks document;
    VornToolsFolderMemory folders;
    const auto picture = [&](const std::string& name) {
        EXPECT_EQ(document.read(name.c_str(), "", "", folders), S_OK);
        return std::string(document.getPreview().bytes, document.getPreview().length);
    };
    EXPECT_EQ(picture(with), "");
    document.setPreviewRead(1);
    EXPECT_EQ(picture(with), "\xFF\xD8\xFF<picture>");
    EXPECT_EQ(picture(other), "");
    EXPECT_EQ(picture(write("plain", "no document")), "");
    EXPECT_EQ(picture(with), "\xFF\xD8\xFF<picture>");
    EXPECT_EQ(document.read(path("missing").c_str(), "", "", folders), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsDocumentLinks::read 501 " + path("missing")}));
    EXPECT_EQ(document.getPreview().length, 0U);
    document.setPreviewRead(0);
    EXPECT_EQ(picture(with), "");
}

TEST_F(DocumentFileTest, WhatCannotBeReadLeavesNothing) {
    VornToolsDocumentLinks document;
    VornToolsFolderMemory folders;
    const auto is_empty = [&document] {
        unsigned int counts[3] = {9, 9, 9};
        int version = 9, release = 9, pack = 9;
        return !document.getDocuments(counts[0]) && !document.getLinks(counts[1]) &&
               !document.getExternalReferences(counts[2]) && counts[0] + counts[1] + counts[2] == 0 &&
               document.getVersion(version, release, pack) == 0 && version + release + pack == 0 &&
               document.getSavedPath().length == 0 && document.getSave().length == 0 && document.getMissingTag() == 0 &&
               document.getSize() == 0;
    };
    EXPECT_TRUE(is_empty()) << "before the first read";
    EXPECT_EQ(document.getCondition(), VornToolsDocumentFile::DocumentNotOpen);
    ASSERT_EQ(document.read(write("d", PartStreams().container().bytes()).c_str(), "", "", folders), S_OK);
    EXPECT_FALSE(is_empty());
    EXPECT_EQ(document.read(path("missing").c_str(), "", "", folders), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsDocumentLinks::read 501 " + path("missing")}));
    EXPECT_TRUE(is_empty()) << "what was read before is forgotten";
    EXPECT_EQ(document.getCondition(), VornToolsDocumentFile::DocumentNotOpen);
    EXPECT_EQ(document.read(write("empty", "").c_str(), "", "", folders), S_OK);
    EXPECT_TRUE(is_empty());
    EXPECT_EQ(document.getCondition(), VornToolsDocumentFile::DocumentNoDocument);
}

TEST_F(DocumentFileTest, RealDocumentsAreReadFromTheirStreams) {
    const char* const folder = std::getenv("VORNTOOLS_DOCUMENTS");
    if (!folder) GTEST_SKIP() << "VORNTOOLS_DOCUMENTS names no folder of real documents";
    int streams = 0;
    std::set<std::string> saves;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension().u8string().rfind(".CAT", 0) != 0) continue;
        SCOPED_TRACE(entry.path().u8string());
        const CATUnicodeString name(entry.path().u8string().c_str());
        const Read found = readFile(name);
        const std::unique_ptr<VornToolsString> whole(VornToolsCommon::readBinaryFile(name));
        ASSERT_TRUE(whole);
        EXPECT_EQ(found.links, linksOf(whole.get()));
        expectSameAnswers(entry.path().u8string());
        const bool is_document = entry.path().filename() != "not_a_document.CATPart";
        EXPECT_EQ(found.condition,
                  is_document ? VornToolsDocumentFile::DocumentIntact : VornToolsDocumentFile::DocumentNoDocument);
        streams += found.image.size() < whole->size() ? 1 : 0;
        VornToolsDocumentLinks document;
        VornToolsFolderMemory folders;
        ASSERT_EQ(document.read(name, "", "", folders), S_OK);
        saves.emplace(document.getSave().bytes, document.getSave().length);
    }
    EXPECT_EQ(streams, 16) << "all but the picture";
    EXPECT_EQ(saves.size(), 17U) << "one each, and none";
}

} // namespace
