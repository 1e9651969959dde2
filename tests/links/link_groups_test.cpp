#include "VornToolsFolderMemory.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/LinksTest.h"

#include <functional>
#include <tuple>

namespace {

TEST_F(LinksTest, ALinkIsItsFourFields) {
    VornToolsLink link;
    EXPECT_EQ(link.get_link_tag_found(), 0);
    EXPECT_EQ(link.set_type("MML") + link.set_linkedFileName("f") + link.set_reference("r"), 0);
    EXPECT_EQ(link.set_link_tag_found(1), 0);
    VornToolsLink copy;
    EXPECT_FALSE(copy == link);
    copy = link;
    EXPECT_EQ(copy == link, 1);
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

TEST_F(LinksTest, ADocumentWithALogicalNameIsReadWhereItLies) {
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    DocumentImage image;
    image.properties("/old/own.CATDrawing", {ImageRecord::object("CATPart", "/gone/near.CATPart", kFirst)});
    write("own.CATDrawing", image.bytes());
    const std::string near = write("below/near.CATPart", "x");
    double count = 0;
    CATListValCATUnicodeString lists[5];
    VornToolsVector<unsigned char> flags;
    unsigned char missing = 7;
    VornToolsLinks::searchLinks("\x01\x02\\LIB\\own.CATDrawing", "MMLDrawing", "", count, lists[0], lists[1], lists[2],
                                lists[3], lists[4], flags, missing);
    EXPECT_EQ(textsOf(lists[0]), Texts({near}));
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

TEST_F(LinksTest, AMissingImageIsReported) {
    using Links = VornToolsLinks;
    unsigned char missing = 7;
    int number = 7;
    VornToolsString key;
    EXPECT_EQ(Links::getLinks(nullptr, "", nullptr, "", missing).size(), 0U);
    EXPECT_EQ(Links::getAllLinks(nullptr, nullptr, "").size(), 0U);
    EXPECT_EQ(Links::getImportLinksWithPub(nullptr).size(), 0U);
    EXPECT_EQ(Links::getVersion(nullptr, number, number, number), 0);
    EXPECT_EQ(Links::findKey(nullptr, key).size(), 0U);
    EXPECT_EQ(missing, 0);
    EXPECT_EQ(number, 0);
    Strings lists[4];
    VornToolsVector<int> uses;
    VornToolsFolderMemory folders;
    const auto expect_empty = [&](unsigned int outputs, const std::function<int()>& ask) {
        for (Strings& list : lists) list = stringsOf({"stale"});
        uses.append(9);
        EXPECT_EQ(ask(), 0);
        for (unsigned int i = 0; i < 4; ++i) EXPECT_EQ(lists[i].size(), i < outputs ? 0U : 1U);
    };
    expect_empty(
        4, [&] { return Links::getLinkedDocName(nullptr, 0, nullptr, "", lists[0], lists[1], lists[2], lists[3]); });
    expect_empty(1, [&] { return Links::getExternalReference(nullptr, 0, 0, 0, lists[0]); });
    expect_empty(1, [&] { return Links::getGhosts(nullptr, 0, lists[0]); });
    expect_empty(2,
                 [&] { return Links::getOtherDocuments(nullptr, 0, nullptr, "", lists[0], lists[1], uses, folders); });
    EXPECT_EQ(uses.size(), 0U);
    expect_empty(1, [&] { return Links::getMMLTag(nullptr, 0, 0, 0, lists[0]); });
    expect_empty(1, [&] { return Links::getMmlPublication(nullptr, 0, 0, 0, lists[0]); });
    expect_empty(1, [&] { return Links::getMmlDocuments(nullptr, 0, 0, 0, nullptr, "", lists[0]); });
    expect_empty(2, [&] {
        return Links::sortImportUnpublished_and_MMLR12(nullptr, 0, 0, 0, lists[2], lists[3], lists[0], lists[1]);
    });
    Texts expected;
    for (const char* const method :
         {"getLinks", "getAllLinks", "getImportLinksWithPub", "getVersion", "findKey", "getLinkedDocName",
          "getExternalReference", "getGhosts", "getOtherDocuments", "getMMLTag", "getMmlPublication", "getMmlDocuments",
          "sortImportUnpublished_and_MMLR12"})
        expected.push_back("VornToolsLinks::"s + method + " 9001 ip_image");
    EXPECT_EQ(reports(), expected);
}

TEST_F(LinksTest, WithoutMemoryACallHandsOutNothing) {
    const std::string name(kLargeAllocation - 1, 'n');
    DocumentImage image;
    image.application().properties("", {ImageRecord::whole("CATPart", name), ImageRecord::whole("CATPart", name, 0),
                                        ImageRecord::object("CATProduct", name, kFirst),
                                        ImageRecord::object("CATPart", name, kSecond), ImageRecord::unloadable(name)});
    image.summary(5, 11, 0);
    const std::string file = write("own.CATPart", image.bytes());
    VornToolsString bytes = stringOf(image.bytes());
    const int property = image.propertyPosition();
    const auto outcome = [](const auto&... outputs) {
        const bool nothing = (isEmptyOutput(outputs) && ...);
        return SweepOutcome{nothing ? E_FAIL : S_OK, true, static_cast<int>(textOfOutputs(outputs...).size())};
    };
    const Strings stale = stringsOf({"stale"});
    sweepAllocations("getLinks", [&] {
        unsigned char missing = 7;
        const auto links = VornToolsLinks::getLinks(&bytes, "MML", nullptr, "", missing);
        return outcome(textsOf(links), missing);
    });
    sweepAllocations("searchLinks", [&] {
        double count = 7;
        CATListValCATUnicodeString lists[5];
        for (CATListValCATUnicodeString& list : lists) list.Append("stale");
        VornToolsVector<unsigned char> flags;
        flags.append(7);
        unsigned char missing = 7;
        VornToolsLinks::searchLinks(file.c_str(), "MML", "", count, lists[0], lists[1], lists[2], lists[3], lists[4],
                                    flags, missing);
        return outcome(lists[0], lists[1], lists[2], lists[3], lists[4], flags, missing, count);
    });
    sweepAllocations("getLinkedDocName", [&] {
        Strings lists[] = {stale, stale, stale, stale};
        VornToolsLinks::getLinkedDocName(&bytes, property, nullptr, "", lists[0], lists[1], lists[2], lists[3]);
        return outcome(lists[0], lists[1], lists[2], lists[3]);
    });
    sweepAllocations("getGhosts", [&] {
        Strings names = stale;
        VornToolsLinks::getGhosts(&bytes, property, names);
        return outcome(names);
    });
    sweepAllocations("getOtherDocuments", [&] {
        Strings names = stale, of_what = stale;
        VornToolsVector<int> uses;
        uses.append(7);
        VornToolsFolderMemory folders;
        VornToolsLinks::getOtherDocuments(&bytes, property, nullptr, "", names, of_what, uses, folders);
        return outcome(names, of_what, uses);
    });
    sweepAllocations("getMmlDocuments", [&] {
        Strings documents = stale;
        VornToolsLinks::getMmlDocuments(&bytes, 11, image.applicationPosition(), property, nullptr, "", documents);
        return outcome(documents);
    });
    Strings tags = stringsOf({name}), names = stringsOf({name});
    sweepAllocations("updateMMLLink", [&] {
        VornToolsVector<VornToolsLink> links;
        links.append(VornToolsLink());
        VornToolsLinks::updateMMLLink(tags, tags, names, links);
        return outcome(textsOf(links));
    });
    // Every list has its hundred elements, however little there is to be found.
    DocumentImage small;
    small.application().properties("",
                                   {ImageRecord::whole("CATPart", "n"), ImageRecord::object("CATPart", "m", kFirst)});
    VornToolsString image_bytes = stringOf(small.bytes()), key = stringOf("k");
    using OneKind = VornToolsVector<VornToolsLink> (*)(VornToolsString*, VornToolsString*, CATUnicodeString);
    constexpr std::size_t kAny = 1;
    for (const OneKind of_kind : {OneKind(VornToolsLinks::getAllLinks), OneKind(VornToolsLinks::getMMLDrawingLinks),
                                  OneKind(VornToolsLinks::getContextLinks)})
        sweepAllocations(
            "links of one kind", [&] { return outcome(textsOf(of_kind(&image_bytes, nullptr, ""))); }, kAny);
    sweepAllocations(
        "getLinks",
        [&] {
            unsigned char missing = 7;
            return outcome(textsOf(VornToolsLinks::getLinks(&image_bytes, "MML", nullptr, "", missing)), missing);
        },
        kAny);
    sweepAllocations(
        "getMMLTag",
        [&] {
            Strings texts = stringsOf({"stale"});
            VornToolsLinks::getMMLTag(&image_bytes, 11, small.applicationPosition(), small.propertyPosition(), texts);
            return outcome(texts);
        },
        kAny);
}

TEST_F(LinksTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    DocumentImage image;
    image.application().references({"..!A!x"}).imports({{1, {4}}}, {"InputToDoc:Doc!Parameters:Depth!"});
    image.properties("C:\\w\\own.CATPart", {ImageRecord::whole("CATPart", "C:\\w\\sub\\a.CATPart"),
                                            ImageRecord::object("CATProduct", "b.CATProduct", kFirst),
                                            ImageRecord::object("CATPart", ".\\c.CATPart", kSecond),
                                            ImageRecord::unloadable("C:\\w\\sub\\sizes.xls")});
    const std::string file = write("own.CATPart", image.bytes());
    write("deep/er/a.CATPart", "x");
    VornToolsString bytes = stringOf(image.bytes()), name = stringOf(file), linked = stringOf("C:\\x\\a.CATPart");
    const CATUnicodeString directory(folder().u8string().c_str());
    const int property = image.propertyPosition();
    const auto sweep = [&](const char* method, const std::function<std::string()>& operation) {
        const auto startCountAnew = [&] { located("", path("none/own"), "\\none\\none"); };
        sweepFailures({"VornToolsLinks::"s + method,
                       [&] {
                           return SweepOutcome{S_OK, true, 0, operation()};
                       },
                       startCountAnew,
                       {},
                       {},
                       {},
                       {},
                       "each run counts its links, of which a call without memory finds none"});
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
        return textOfOutputs(lists[0], lists[1], lists[2], lists[3], lists[4], flags, missing);
    });
    sweep("getLinks", [&] {
        unsigned char missing = 0;
        const auto links = VornToolsLinks::getLinks(&bytes, "", &name, directory, missing);
        EXPECT_EQ(links.size(), 3U);
        return textOfOutputs(textsOf(links), missing);
    });
    sweep("getLinkedDocName", [&] {
        Strings lists[4];
        VornToolsLinks::getLinkedDocName(&bytes, property, &name, directory, lists[0], lists[1], lists[2], lists[3]);
        for (const auto& list : lists) EXPECT_EQ(list.size(), 1U);
        return textOfOutputs(lists[0], lists[1], lists[2], lists[3]);
    });
    sweep("getMmlDocuments", [&] {
        Strings documents;
        VornToolsLinks::getMmlDocuments(&bytes, 21, image.applicationPosition(), property, &name, directory, documents);
        EXPECT_EQ(documents.size(), 1U);
        return textOfOutputs(documents);
    });
    sweep("getOtherDocuments", [&] {
        Strings names, of_what;
        VornToolsVector<int> uses;
        VornToolsFolderMemory folders;
        VornToolsLinks::getOtherDocuments(&bytes, property, &name, directory, names, of_what, uses, folders);
        EXPECT_EQ(names.size(), 1U);
        EXPECT_EQ(of_what.size(), 1U);
        EXPECT_EQ(uses.size(), 1U);
        return textOfOutputs(names, of_what, uses);
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
        sweep(method, [&, &run = operation, &expected = count] {
            const auto links = run(&bytes, &name, directory);
            EXPECT_EQ(links.size(), expected);
            return textOfOutputs(textsOf(links));
        });
    using Resolution = VornToolsString* (*)(VornToolsString*, VornToolsString*, VornToolsString*, CATUnicodeString);
    for (const auto& [method, resolve] :
         {std::pair<const char*, Resolution>{"realLinkedDocPath", VornToolsLinks::realLinkedDocPath},
          {"realLinkedDocPath_2", VornToolsLinks::realLinkedDocPath_2}})
        sweep(method, [&, &run = resolve] {
            const std::unique_ptr<VornToolsString> found(run(nullptr, &name, &linked, directory));
            EXPECT_TRUE(bytesOf(*found) == bytesOf(linked) || bytesOf(*found) == path("deep/er/a.CATPart"));
            return textOfOutputs(found.get());
        });
    sweep("findFileInPath", [&] {
        const char* const found = VornToolsLinks::findFileInPath("a.CATPart", directory.ConvertToChar());
        return std::string(found ? found : "null");
    });
}

} // namespace
