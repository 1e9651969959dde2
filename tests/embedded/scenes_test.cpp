#include "CATIProduct.h"
#include "IEnumVARIANT.h"
#include "VornToolsScenes.h"
#include "embedded/Scenes.h"
#include "embedded/SessionFile.h"
#include "tests/support/Fixture.h"

#include <limits>

using embedded::scenes;
using embedded::translation;

namespace {

/** r.CATProduct holds g.1, which holds p.1, and has a full scene F and a partial scene P. */
class EmbeddedScenesTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        session().product("/w/g.CATProduct").root().add(session().part("/w/p.CATPart"), "p.1");
        root = session().product("/w/r.CATProduct").root();
        group = root.add(session().product("/w/g.CATProduct"), "g.1");
        pin = root.at({"g.1", "p.1"});
        scenes(root).addFull("F");
        scenes(root).addPartial("P");
    }

    embedded::Product root, group, pin;
};

TEST_F(EmbeddedScenesTest, AScenesSectionIsSavedAndLoaded) {
    scenes(root).find("F").move(pin, translation(1, 0, 0)).hide(pin).drop(group);
    scenes(root).find("P").move(pin, translation(0, 0, 3)).withoutPosition(group);
    scenes(session().find("/w/g.CATProduct").root()).withhold();
    const std::string digest = session().digest();
    std::string text;
    ASSERT_TRUE(embedded::sessionText(text).ok);
    ASSERT_EQ(embedded::loadSessionText("s.json", text).error, "");
    EXPECT_EQ(session().digest(), digest);
    std::string again;
    ASSERT_TRUE(embedded::sessionText(again).ok);
    EXPECT_EQ(again, text);
    const auto loaded = session().find("/w/r.CATProduct").root();
    scenes(loaded).find("P").move(loaded.at({"g.1"}), translation(0, 0, std::numeric_limits<double>::infinity()));
    EXPECT_EQ(embedded::sessionText(text).error, "scenes: a position in a scene is no number");
}

TEST_F(EmbeddedScenesTest, ABadScenesSectionIsRefused) {
    const std::string documents =
        R"({"documents": [{"name": "P.CATPart"}, {"name": "R.CATProduct",
            "children": [{"instance": "p.1", "document": "P.CATPart"}]}], "scenes": )";
    const auto error = [&](const std::string& section) {
        const std::string text = embedded::loadSessionText("s", documents + section + "}").error;
        return text.substr(0, 4) == "s:2:" ? text.substr(5) : text;
    };
    const auto scene = [&](const std::string& rest) {
        return error(R"([{"document": "R.CATProduct", "scenes": [{"name": "S", )" + rest + "}]}]");
    };
    EXPECT_EQ(scene(R"("type": "full")"), "");
    EXPECT_TRUE(scenes(session().find("R.CATProduct").root())
                    .find("S")
                    .knows(session().find("R.CATProduct").root().at({"p.1"})));
    EXPECT_EQ(error(R"([{"document": "P.CATPart"}])"), "scenes[0].document: only a product document has scenes");
    EXPECT_EQ(scene(R"("type": "half")"), "scenes[0].scenes[0].type: \"full\" or \"partial\" is expected");
    const std::pair<const char*, const char*> products[] = {
        {R"({"path": ["q"]})", ".path[0]: no such instance"},
        {R"({"path": []})", ".path: the root itself is in no scene"},
        {R"({"path": ["p.1"], "position": [1]})", ".position: 12 numbers are expected"},
        {R"({"path": ["p.1"], "position": [1,1,1,1,1,1,1,1,1,1,1,true]})", ".position[11]: a number is expected"},
        {R"({"path": ["p.1"], "without": ["x"]})", ".without[0]: nothing named 'x' can be missing here"}};
    for (const auto& [product, what] : products)
        EXPECT_EQ(scene(R"("type": "partial", "products": [)" + std::string(product) + "]"),
                  "scenes[0].scenes[0].products[0]" + std::string(what));
    EXPECT_EQ(scene(R"("type": "partial", "products": [{"path": ["p.1"]}, {"path": ["p.1"]}])"),
              "scenes[0].scenes[0].products[1].path: given twice");
    EXPECT_EQ(scene(R"("type": "full"}, {"name": "S", "type": "full")"),
              "scenes[0].scenes[1].name: a second scene named 'S'");
}

TEST_F(EmbeddedScenesTest, AWalkOverScenesGoesOnWhereItStands) {
    IEnumVARIANT* walk = nullptr;
    IEnumVARIANT* copy = nullptr;
    long count = 0;
    ASSERT_EQ(VornToolsScenes::getAllScenesOnRoot(root.get(), walk, count), S_OK);
    CATVariant items[3];
    ULONG fetched = 7;
    EXPECT_EQ(walk->Skip(1), S_OK);
    ASSERT_EQ(walk->Clone(&copy), S_OK);
    EXPECT_EQ(copy->Next(3, items, &fetched), S_FALSE);
    EXPECT_EQ(fetched, 1U);
    for (CATVariant& item : items) CATVariantClear(&item);
    EXPECT_EQ(copy->Skip(1), S_FALSE);
    EXPECT_EQ(walk->Reset(), S_OK);
    EXPECT_EQ(walk->Next(2, items, nullptr), E_POINTER);
    EXPECT_EQ(walk->Next(2, items, &fetched), S_OK);
    for (CATVariant& item : items) CATVariantClear(&item);
    copy->Release();
    walk->Release();
}

} // namespace
