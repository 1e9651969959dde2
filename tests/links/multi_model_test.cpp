#include "tests/support/LinksTest.h"

#include <algorithm>

namespace {

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
        {{{17, {4}}, {70000, {5}}},
         {depth, geometry},
         {a, b, ImageRecord::whole("CATPart", "c.CATPart", 1, 70000)},
         {"a.CATPart|Depth|1", "c.CATPart|AJADAAAAAA|1", "b.CATPart||0"},
         1},
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
    // A repository whose number is none is none.
    DocumentImage two;
    two.application().imports({{17, {4}}, {18, {5}}}, {depth, geometry}).properties("own", {a, b});
    bytes = two.bytes();
    bytes[bytes.find("\x93\xE8\x01\x6F\xFE")] = '\x50';
    DocumentImage one;
    EXPECT_EQ(links(one.raw(bytes), "MML", 1),
              Texts({"MML|a.CATPart|Depth|1", "MML|a.CATPart|AJADAAAAAA|1", "MML|b.CATPart||0"}));
    // A text that is longer than the rest of its table is none.
    DocumentImage whole;
    whole.application().imports({{17, {4, 5}}}, {depth, geometry}).properties("own", {a});
    bytes = whole.bytes();
    bytes[bytes.find(geometry) - 1] = '\x2F';
    DocumentImage beyond;
    EXPECT_EQ(links(beyond.raw(bytes), "MML"), Texts({"MML|a.CATPart|Depth|1"}));
    DocumentImage bare;
    bare.raw("CATXDLRepository" + DocumentImage::tableText(depth)).application().properties("own", {a});
    EXPECT_EQ(links(bare, "MML"), Texts({"MML|a.CATPart|Depth|1"}));
    DocumentImage without_length;
    without_length.raw("CATXDLRepository1" + std::string{static_cast<char>(depth.size()), 0, 0, 0} + depth);
    EXPECT_EQ(links(without_length.application().properties("own", {a}), "MML", 1), Texts({"MML|a.CATPart||0"}));
    DocumentImage in_front;
    in_front.raw(DocumentImage::tableText(depth) + "CATXDLRepository").application().properties("own", {a});
    EXPECT_EQ(links(in_front, "MML"), Texts({"MML|a.CATPart|Depth|1"}));
    // The inputs stand between the head of their stream and its table, within a mebibyte; the table alone has an order
    // of its own.
    const std::string inputs_and_table = DocumentImage().imports({{17, {5, 4}}}, {depth, geometry}).bytes().substr(4);
    const std::size_t table = inputs_and_table.find("\x7C\x02");
    const std::string inputs = inputs_and_table.substr(0, table), texts = inputs_and_table.substr(table);
    const Texts by_input = {"MML|a.CATPart|AJADAAAAAA|1", "MML|a.CATPart|Depth|1"},
                by_table = {by_input[1], by_input[0]};
    // The first input means a text by another attribute, or by one that goes on.
    std::string of_another = inputs, going_on = inputs;
    const std::size_t input = inputs.find("\xE9\xC0\x1D\x02");
    of_another[input + 2] = '\x1E';
    going_on[input + 6] = '\x01';
    const std::pair<std::string, Texts> places[] = {
        {inputs + texts, by_input},
        {of_another + texts, by_table},
        {going_on + texts, by_table},
        {"OSMX" + inputs + std::string(600000, '\0') + texts, by_input},
        {"OSMX" + inputs + std::string(1 << 20, '\0') + texts, by_table},
        {inputs + "OSMX" + texts, by_table},
    };
    for (const auto& [stream, expected] : places) {
        DocumentImage placed;
        EXPECT_EQ(links(placed.application().raw(stream).properties("own", {a}), "MML"), expected) << stream.size();
    }
    // Without the numbers of its records a stream leaves the place alone.
    DocumentImage numbered, cut;
    numbered.application().imports({{5, {4}}, {1, {5}}}, {depth, geometry}).properties("own", {a, b});
    constexpr std::size_t numbers = 2 * 5, closing_word = 11;
    cut.raw(numbered.bytes().substr(0, numbered.bytes().size() - closing_word - numbers));
    EXPECT_EQ(links(cut, "MML"), Texts({"MML|a.CATPart|Depth|1", "MML|b.CATPart|AJADAAAAAA|1"}));
}

TEST_F(LinksTest, ContextPartsAreImportsOnlyWhereThePartSaysSo) {
    const std::string own = kThird.substr(0, 12) + "\0\0\0\x99"s, element = "\x09\x92\0\0\0"s;
    const auto image = [&](int release, bool part, bool proxy) {
        DocumentImage result;
        result.raw((proxy ? "CATPrdInputProxy" : "") + own); // what counts may stand at the very beginning
        if (part) result.application();
        result.pointer(kFirst, element)
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
    DocumentImage named_before;
    named_before.raw("\x11\x03" + own + image(12, true, false).bytes());
    EXPECT_EQ(links(named_before), Texts({"MML|linked.CATPart|AJJCAAAAAA|1"}) + bare)
        << "its own container stands behind a foreign one of the same name";
    EXPECT_EQ(links(image(12, true, false), "MML", 1), Texts({"MML|linked.CATPart|AJJCAAAAAA|1"}) + bare);
    EXPECT_EQ(links(image(0, true, false)), Texts());
    for (const int release : {0, 11, 21}) links(image(release, true, true), "MML", release == 11 ? 1 : 0);

    DocumentImage saidFirst;
    saidFirst.summary(5, 12, 0).raw(image(21, true, false).bytes());
    EXPECT_EQ(links(saidFirst), Texts({"MML|linked.CATPart|AJJCAAAAAA|1"}) + bare) << "the first summary counts";
    for (const bool first : {true, false}) { // the whole pointer, at the beginning of the streams or at their end
        DocumentImage pointed;
        const std::string pointer = "\x11\x03"s + kFirst;
        pointed.raw((first ? pointer : "") + "CATPrdInputProxy").application().raw(first ? "" : pointer);
        pointed.properties("own", {ImageRecord::object("CATPart", "linked.CATPart", kFirst)});
        EXPECT_EQ(links(pointed), unpublished) << first;
    }

    // A pointer without an object tells nothing; the next one may.
    for (const bool again : {false, true}) {
        DocumentImage pointed;
        pointed.raw(own).application().pointer(kFirst);
        if (again) pointed.pointer(kFirst, element);
        pointed.properties("own", {ImageRecord::object("CATPart", "linked.CATPart", kFirst)}).summary(5, 12, 0);
        EXPECT_EQ(links(pointed), Texts({again ? "MML|linked.CATPart|AJJCAAAAAA|1" : "MML|linked.CATPart||0"}));
    }

    // Pointers to one part do not hide those to another.
    DocumentImage often;
    often.raw("CATPrdInputProxy").application().pointer(kFirst).pointer(kFirst).pointer(kFirst).pointer(kSecond);
    often.properties("own", {ImageRecord::object("CATPart", "a.CATPart", kFirst),
                             ImageRecord::object("CATPart", "b.CATPart", kSecond)});
    EXPECT_EQ(links(often), Texts({"MMLAssy_ImportNotPub|a.CATPart||0", "MMLAssy_ImportNotPub|b.CATPart||0"}));
    DocumentImage with_objects;
    with_objects.raw(own).application().pointer(kFirst, element).pointer(kFirst, element).pointer(kSecond, element);
    with_objects
        .properties("own", {ImageRecord::object("CATPart", "a.CATPart", kFirst),
                            ImageRecord::object("CATPart", "b.CATPart", kSecond)})
        .summary(5, 12, 0);
    EXPECT_EQ(links(with_objects), Texts({"MML|a.CATPart|AJJCAAAAAA|1", "MML|b.CATPart|AJJCAAAAAA|1"}));

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
    Strings documents;
    VornToolsLinks::getMmlDocuments(&bytes, 12, application, property, nullptr, "", documents);
    EXPECT_EQ(textsOf(documents), Texts({"linked.CATPart", "bare.CATPart"}));
    VornToolsLinks::getMmlDocuments(&bytes, 21, application, property, nullptr, "", documents);
    EXPECT_EQ(textsOf(documents), Texts());
    Strings names = stringsOf({"L", "B", "I", "unknown", "without reference"}),
            references = stringsOf({kFirst.substr(8), kSecond.substr(8), kThird.substr(8), "?"});
    VornToolsLinks::sortImportUnpublished_and_MMLR12(&bytes, 12, application, property, names, references,
                                                     unpublishedNames, olderNames);
    EXPECT_EQ(textsOf(unpublishedNames), Texts());
    EXPECT_EQ(textsOf(olderNames), Texts({"L", "B"}));
    VornToolsLinks::sortImportUnpublished_and_MMLR12(&bytes, 21, application, property, names, references,
                                                     unpublishedNames, olderNames);
    EXPECT_EQ(textsOf(unpublishedNames) + textsOf(olderNames), Texts()) << "the caller's release counts";
    const Strings handed_on(std::move(references));
    VornToolsLinks::sortImportUnpublished_and_MMLR12(&bytes, 12, application, property, names, references,
                                                     unpublishedNames, olderNames);
    EXPECT_EQ(textsOf(olderNames), Texts()) << "no references, nor slots for any";
}

TEST_F(LinksTest, InputsThatShareALongTextEndWithTheAllowance) {
    const std::string element(1000, 'p'), path = "InputToDoc:Doc!Parameters:" + element + "!";
    const std::vector<unsigned char> inputs(100, DocumentImage::firstImportText);
    for (const std::string& name : {"a.CATPart"s, std::string(50, 'n')}) {
        DocumentImage image;
        image.application().imports({{1, inputs}}, {path}).properties("own", {ImageRecord::whole("CATPart", name)});
        const std::size_t largest = std::max(path.size(), element.size() + name.size());
        const std::size_t allowed = 16 * image.bytes().size() / largest;
        ASSERT_LT(allowed, inputs.size());
        EXPECT_EQ(links(image, "MML"), Texts(allowed, "MML|" + name + "|" + element + "|1"));
    }
}

TEST_F(LinksTest, MultiModelLinksPairByIndex) {
    Strings tags = stringsOf({"t1", "", "t3"}), publications = stringsOf({"p1", "p2", "p3"}),
            names = stringsOf({"a", "b", "", "d"});
    VornToolsVector<VornToolsLink> links;
    links.append(VornToolsLink());
    EXPECT_EQ(VornToolsLinks::updateMMLLink(tags, publications, names, links), 0);
    EXPECT_EQ(textsOf(links), Texts({"MML|a|t1|1", "MML|b||0", "MML|d||0"}));
    names = stringsOf({"a", "b", "c", "d"});
    Strings two = stringsOf({"x", "y"});
    for (const bool fewer_tags : {false, true}) {
        VornToolsLinks::updateMMLLink(fewer_tags ? two : tags, fewer_tags ? publications : two, names, links);
        EXPECT_EQ(textsOf(links), Texts({fewer_tags ? "MML|a|x|1" : "MML|a|t1|1", fewer_tags ? "MML|b|y|1" : "MML|b||0",
                                         "MML|c||0", "MML|d||0"}));
    }
    const Strings handed_on(std::move(names));
    VornToolsLinks::updateMMLLink(tags, publications, names, links);
    EXPECT_EQ(textsOf(links), Texts()) << "no names, nor slots for any";
}

} // namespace
