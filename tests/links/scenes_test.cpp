#include "VornToolsScenes.h"

#include "CATIProduct.h"
#include "CATMathTransformation.h"
#include "IEnumVARIANT.h"
#include "embedded/Scenes.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <limits>

using embedded::scenes;
using embedded::translation;

namespace {

const std::string kScenes = "VornToolsScenes::";
/** A quarter turn about the third axis, then a shift. */
constexpr embedded::Components kTurned = {0, 1, 0, -1, 0, 0, 0, 0, 1, 0, 5, 0};

Texts toTexts(const CATListValCATUnicodeString& list) {
    Texts texts;
    for (int i = 1; i <= list.Size(); ++i) texts.emplace_back(list[i].ConvertToChar());
    return texts;
}

CATListValCATUnicodeString toList(const Texts& texts) {
    CATListValCATUnicodeString list;
    for (const std::string& text : texts) list.Append(text.c_str());
    return list;
}

std::string matrixText(std::array<double, 12> values) {
    char buffer[320] = "before";
    VornToolsScenes::getMatrixString(values.data(), buffer);
    return buffer;
}

/** r.CATProduct holds g.1 (g.CATProduct with the component c.1, which holds p.1) and b.1. */
class ScenesTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        auto inner = session().product("/w/g.CATProduct").root();
        inner.addComponent("comp", "c.1").add(session().part("/w/p.CATPart"), "p.1");
        root = session().product("/w/r.a.CATProduct").root();
        group = root.add(session().product("/w/g.CATProduct"), "g.1");
        block = root.add(session().part("/w/b.CATPart"), "b.1");
        component = root.at({"g.1", "c.1"});
        pin = root.at({"g.1", "c.1", "p.1"});
    }

    /** In scene F everything but b.1 is shown; scene P only knows p.1. */
    void addScenes() {
        auto full = scenes(root).addFull("F");
        full.move(group, translation(10, 0, 0)).move(component, kTurned).hide(pin).drop(block);
        full.move(pin, translation(1, 0, 0));
        scenes(root).addPartial("P").move(pin, translation(0, 0, 3));
    }

    Texts data(const embedded::Product& product, HRESULT expected = S_OK, const char* name = "/w/r.a.CATProduct") {
        CATListValCATUnicodeString list = toList({"before"});
        EXPECT_EQ(VornToolsScenes::readScenesDataInAssy(name, product.get(), nullptr, {}, 0, list), expected);
        return toTexts(list);
    }
    Texts names(const embedded::Product& product, HRESULT expected = S_OK) {
        CATListValCATUnicodeString list = toList({"before"});
        EXPECT_EQ(VornToolsScenes::readScenesNamesInAssy(product.get(), list), expected);
        return toTexts(list);
    }
    std::string path(const embedded::Product& product, int hasComponent, HRESULT expected = S_OK) {
        CATUnicodeString text("before");
        unsigned char answer = 7;
        EXPECT_EQ(VornToolsScenes::getParentsWithComponents(product.get(), text, answer), expected);
        EXPECT_EQ(answer, hasComponent);
        return text.ConvertToChar();
    }
    static std::string hidden(const embedded::Product& product, const Texts& list, HRESULT expected = S_OK) {
        CATUnicodeString byParent("before");
        CATUnicodeString byComponent("before");
        EXPECT_EQ(VornToolsScenes::hasParentHideInScene(product.get(), toList(list), "F", byParent, byComponent),
                  expected);
        return std::string(byParent.ConvertToChar()) + " " + byComponent.ConvertToChar();
    }
    static std::string hiddenByComponent(const embedded::Product& product, const Texts& list, HRESULT expected = S_OK) {
        CATUnicodeString answer("before");
        EXPECT_EQ(VornToolsScenes::hasParentComponentHideInScene(product.get(), toList(list), "F", answer), expected);
        return answer.ConvertToChar();
    }

    embedded::Product root, group, block, component, pin;
};

TEST_F(ScenesTest, EveryProductHasAGroupInEveryScene) {
    addScenes();
    const std::string before = session().digest();
    EXPECT_EQ(data(root), Texts({"<CATProduct>",
                                 "r.a", //
                                 "g.1!",
                                 "F",
                                 "1 0 0 0 1 0 0 0 1 10 0 0",
                                 "FALSE", //
                                 "g.1!",
                                 "P",
                                 "",
                                 "", //
                                 "c.1!g.1!",
                                 "F",
                                 "0 1 0 -1 0 0 0 0 1 10 5 0",
                                 "FALSE", //
                                 "c.1!g.1!",
                                 "P",
                                 "",
                                 "", //
                                 "p.1!c.1!g.1!",
                                 "F",
                                 "0 1 0 -1 0 0 0 0 1 10 6 0",
                                 "TRUE", //
                                 "p.1!c.1!g.1!",
                                 "P",
                                 "1 0 0 0 1 0 0 0 1 10 0 3",
                                 "FALSE", //
                                 "b.1!",
                                 "F",
                                 "",
                                 "TRUE", //
                                 "b.1!",
                                 "P",
                                 "",
                                 "", //
                                 "</CATProduct>"}));
    EXPECT_TRUE(embedded::Journal::get().contains("it is a full scene"));
    EXPECT_TRUE(embedded::Journal::get().contains("it is a partial scene"));
    const Texts lines = embedded::Journal::get().lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "> VornToolsScenes::readScenesDataInAssy"), 3)
        << "parts are not looked into";
    EXPECT_EQ(session().digest(), before) << "reading takes nothing into a scene";
    EXPECT_EQ(names(root), Texts({"F", "P"}));
}

TEST_F(ScenesTest, BeforeAnyPresentProductThePositionIsTheIdentity) {
    auto scene = scenes(root).addPartial("P").move(group, translation(10, 0, 0)).move(pin, translation(0, 0, 3));
    EXPECT_EQ(data(root)[12], "1 0 0 0 1 0 0 0 1 0 0 3") << "c.1 is not in the scene: g.1 is forgotten";
    scene.take(component);
    EXPECT_EQ(data(root)[12], "1 0 0 0 1 0 0 0 1 10 0 3");
    scene.withoutPosition(component).hide(component);
    EXPECT_EQ(data(root)[8], "") << "its position cannot be read";
    EXPECT_EQ(data(root)[9], "TRUE");
    EXPECT_EQ(data(root)[12], "1 0 0 0 1 0 0 0 1 10 0 3") << "its parent's stands in for it";
}

TEST_F(ScenesTest, APositionThatIsNoNumberIsNotTold) {
    auto scene = scenes(root).addFull("F");
    for (const double bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity()}) {
        embedded::Components broken = translation(10, 0, 0);
        broken[4] = bad;
        scene.move(group, broken).move(component, translation(1, 0, 0));
        const Texts read = data(root);
        EXPECT_EQ(read[4], "");
        EXPECT_EQ(read[5], "FALSE");
        EXPECT_EQ(read[8], "1 0 0 0 1 0 0 0 1 1 0 0") << "below it the root's position stands in";
    }
}

TEST_F(ScenesTest, AnAssemblyWithoutScenesHasNoGroups) {
    EXPECT_EQ(data(root), Texts({"<CATProduct>", "r.a", "</CATProduct>"}));
    EXPECT_EQ(data(root, S_OK, "name"), Texts({"<CATProduct>", "name", "</CATProduct>"}));
    EXPECT_EQ(data(root, S_OK, "D:\\d.d\\.CATProduct"), Texts({"<CATProduct>", "", "</CATProduct>"}));
    EXPECT_EQ(names(root), Texts());
    EXPECT_EQ(reports(), Texts());
}

TEST_F(ScenesTest, WhatIsMissingIsReported) {
    const std::string names9001 = kScenes + "readScenesNamesInAssy 9001 ";
    const std::string data9001 = kScenes + "readScenesDataInAssy 9001 ";
    const std::string all9001 = kScenes + "getAllScenesOnRoot 9001 ";
    scenes(root).withhold();
    EXPECT_EQ(data(root), Texts());
    EXPECT_EQ(reports(),
              Texts({all9001 + "p_base_dispatch", data9001 + "list_scenes_enum", data9001 + "p_all_children"}));
    EXPECT_EQ(names(root, E_FAIL), Texts());
    EXPECT_EQ(reports(), Texts({all9001 + "p_base_dispatch", names9001 + "list_scenes_enum"}));
    EXPECT_EQ(names(embedded::Product(), E_FAIL), Texts());
    EXPECT_EQ(reports(), Texts({all9001 + "ipi_root", names9001 + "list_scenes_enum"}));
    EXPECT_EQ(data(embedded::Product(), E_FAIL), Texts());
    EXPECT_EQ(reports(), Texts({data9001 + "ip_parent_catiproduct"}));
    EXPECT_EQ(data(root, S_OK, ""), Texts({"before"})) << "below the root nothing is emptied";
    EXPECT_EQ(reports(), Texts({data9001 + "list_scenes_enum", data9001 + "p_all_children"}));
    EXPECT_EQ(path(embedded::Product(), 0, E_FAIL), "");
    EXPECT_EQ(hidden(embedded::Product(), {}, E_FAIL), "FALSE FALSE");
    EXPECT_EQ(hiddenByComponent(embedded::Product(), {}, E_FAIL), "FALSE");
    EXPECT_EQ(reports(), Texts({kScenes + "getParentsWithComponents 9001 ip_product",
                                kScenes + "hasParentHideInScene 9001 ip_product",
                                kScenes + "hasParentComponentHideInScene 9001 ip_product"}));
}

TEST_F(ScenesTest, AGroupEndsWhereItsSceneDoesNotAnswer) {
    scenes(root).addFull("F").move(group, translation(1, 0, 0)).hide(group);
    scenes(root).find("F").drop(component).drop(pin).drop(block);
    const struct {
        const char* site;
        const char* report;
        Texts group; ///< the first one, where the call fails once
        int nth = 1;
    } cases[] = {
        {"CATIAScene::get_Name", " 9003 get_Name", {"g.1!"}},
        {"QueryInterface(CATIAScene)", " 9001 catia_scene_object", {"g.1!", "F"}},
        {"CATIAScene::get_Type", " 9003 get_Type", {"g.1!", "F"}},
        {"QueryInterface(CATIAProduct)", " 9001 p_child_catiaproduct", {"g.1!", "F"}, 2}, // the first one is the root
        {"CATIAScene::ExistsInScene", " 9003 ExistsInScene", {"g.1!", "F"}},
        {"CATIAScene::GetSceneProductData", " 9001 scene_product_data", {"g.1!", "F"}},
        {"CATIASceneProduct::get_Position", "", {"g.1!", "F", "", "TRUE"}},
        {"CATIAPosition::GetComponents", "", {"g.1!", "F", "", "TRUE"}},
        {"CATIASceneProduct::get_Hidden", "", {"g.1!", "F", "1 0 0 0 1 0 0 0 1 1 0 0", ""}},
        {"IEnumVARIANT::Next", " 9003 Next", {}},
    };
    const Texts others = {"c.1!g.1!", "F", "", "TRUE", "p.1!c.1!g.1!", "F", "", "TRUE", "b.1!", "F", "", "TRUE"};
    for (const auto& c : cases) {
        CATListValCATUnicodeString read;
        const auto readAll = [&] {
            VornToolsScenes::readScenesDataInAssy("/w/r.a.CATProduct", root.get(), nullptr, {}, 0, read);
        };
        EXPECT_TRUE(failAt(c.site, c.nth, readAll));
        Texts expected = {"<CATProduct>", "r.a"};
        expected.insert(expected.end(), c.group.begin(), c.group.end());
        expected.insert(expected.end(), others.begin(), others.end());
        expected.emplace_back("</CATProduct>");
        EXPECT_EQ(toTexts(read), expected) << c.site;
        const Texts none;
        EXPECT_EQ(reports(), *c.report ? Texts({kScenes + "readScenesDataInAssy" + c.report}) : none) << c.site;
    }
}

TEST_F(ScenesTest, WhatDoesNotAnswerIsPassedOver) {
    scenes(root).addPartial("P");
    const Texts top = {"g.1!", "P", "", ""};
    const Texts below = {"c.1!g.1!", "P", "", "", "p.1!c.1!g.1!", "P", "", ""};
    const Texts last = {"b.1!", "P", "", ""};
    const auto data9001 = kScenes + "readScenesDataInAssy 9001 ";
    const struct {
        const char* site;
        std::string report;
        std::vector<Texts> groups;
    } cases[] = {
        {"QueryInterface(CATIProduct)", data9001 + "p_child_catiproduct", {last}},
        {"IEnumVARIANT::Reset",
         kScenes + "readScenesDataInAssy 9003 Reset",
         {top, {below.begin() + 4, below.end()}, last}},
        {"CATILinkableObject::GetDocument", "VornToolsCommon::getCATDocument 9002 pi_linkable_object", {top, last}},
        {"CATDocument::StorageName", "", {top, last}},
    };
    for (const auto& c : cases) {
        CATListValCATUnicodeString read;
        HRESULT code = E_FAIL;
        const auto readAll = [&] {
            code = VornToolsScenes::readScenesDataInAssy("/w/r.a.CATProduct", root.get(), nullptr, {}, 0, read);
        };
        EXPECT_TRUE(failAt(c.site, 1, readAll));
        Texts expected = {"<CATProduct>", "r.a"};
        for (const Texts& part : c.groups) expected.insert(expected.end(), part.begin(), part.end());
        expected.emplace_back("</CATProduct>");
        EXPECT_EQ(code, S_OK);
        EXPECT_EQ(toTexts(read), expected) << c.site;
        EXPECT_EQ(reports(), c.report.empty() ? Texts() : Texts({c.report})) << c.site;
    }
}

TEST_F(ScenesTest, NamesThatAreToldAreKept) {
    addScenes();
    const struct {
        const char* site;
        int nth;
        Texts names;
        const char* report;
    } cases[] = {{"IEnumVARIANT::Next", 2, {"F"}, "9003 Next"}, {"CATIAScene::get_Name", 1, {"P"}, "9003 get_Name"}};
    for (const auto& c : cases) {
        HRESULT code = S_FALSE;
        CATListValCATUnicodeString list;
        EXPECT_TRUE(failAt(c.site, c.nth, [&] { code = VornToolsScenes::readScenesNamesInAssy(root.get(), list); }));
        EXPECT_EQ(code, S_OK);
        EXPECT_EQ(toTexts(list), c.names);
        EXPECT_EQ(reports(), Texts({kScenes + "readScenesNamesInAssy " + c.report}));
    }
}

TEST_F(ScenesTest, EachStepToTheScenesIsNamedWhenItFails) {
    const struct {
        const char* site;
        HRESULT code;
        const char* report;
    } cases[] = {{"QueryInterface(CATIAProduct)", E_FAIL, "9001 p_base_dispatch"},
                 {"CATIAProduct::GetItem", E_FAIL, "9001 p_base_dispatch"},
                 {"QueryInterface(CATIACollection)", E_FAIL, "9001 catia_collection_scenes"},
                 {"CATIACollection::get_Count", E_FAIL, "9003 get_Count"},
                 {"CATIACollection::get__NewEnum", E_FAIL, "9001 o_list_scenes_enum"},
                 {"QueryInterface(IEnumVARIANT)", E_NOINTERFACE, "9001 o_list_scenes_enum"}};
    for (const auto& c : cases) {
        IEnumVARIANT* walk = nullptr;
        long count = 7;
        HRESULT code = S_OK;
        EXPECT_TRUE(failAt(c.site, 1, [&] {
            if (walk) walk->Release();
            code = VornToolsScenes::getAllScenesOnRoot(root.get(), walk, count);
        }));
        EXPECT_EQ(code, c.code) << c.site;
        EXPECT_EQ(walk, nullptr);
        EXPECT_EQ(count, 0);
        EXPECT_EQ(reports(), Texts({kScenes + "getAllScenesOnRoot " + c.report}));
    }
}

TEST_F(ScenesTest, AChildThatIsNotLoadedIsReportedAndHasItsGroups) {
    root.addUnresolved("u.1");
    scenes(root).addPartial("P");
    EXPECT_EQ(data(root), Texts({"<CATProduct>",
                                 "r.a",
                                 "g.1!",
                                 "P",
                                 "",
                                 "",
                                 "c.1!g.1!",
                                 "P",
                                 "",
                                 "",
                                 "p.1!c.1!g.1!",
                                 "P",
                                 "",
                                 "",
                                 "b.1!",
                                 "P",
                                 "",
                                 "",
                                 "u.1!",
                                 "P",
                                 "",
                                 "",
                                 "</CATProduct>"}));
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getCATDocument 9002 sp_reference"}));
}

TEST_F(ScenesTest, APartOfAnAssemblyTakesThePositionsOfItsParent) {
    addScenes();
    IEnumVARIANT* walk = nullptr;
    long count = 0;
    ASSERT_EQ(VornToolsScenes::getAllScenesOnRoot(root.get(), walk, count), S_OK);
    ASSERT_EQ(count, 2);
    CATMathTransformation parent;
    const embedded::Components up = translation(0, 0, 100);
    parent.SetCoefficients(up.data());
    CATListPtrCATMathTransformation positions;
    const auto read = [&](long scenesToRead) {
        CATListValCATUnicodeString list = toList({"before"});
        EXPECT_EQ(VornToolsScenes::readScenesDataInAssy("", component.get(), walk, positions, scenesToRead, list),
                  S_OK);
        return toTexts(list);
    };
    const std::string unmoved = "1 0 0 0 1 0 0 0 1 1 0 0";
    EXPECT_EQ(read(1), Texts({"before", "p.1!c.1!g.1!", "F", unmoved, "TRUE"}));
    positions.Append(&parent);
    positions.Append(nullptr);
    const Texts both = read(7);
    EXPECT_EQ(both.at(3), "1 0 0 0 1 0 0 0 1 1 0 100");
    EXPECT_EQ(both.at(7), "1 0 0 0 1 0 0 0 1 0 0 103") << "the position that was taken last";
    EXPECT_EQ(both.size(), 9U) << "no more scenes than there are";
    EXPECT_EQ(read(0), Texts({"before"}));
    walk->Release();
}

TEST_F(ScenesTest, PathsLeadFromTheProductToTheRoot) {
    pin.instanceName("p\r\n.1");
    EXPECT_EQ(path(pin, 1), "p.1!c.1!g.1!");
    EXPECT_EQ(messages(), Texts({"getParent is failed."}));
    EXPECT_EQ(path(component, 0), "c.1!g.1!") << "the product itself does not count";
    EXPECT_EQ(path(root, 0), "");
}

TEST_F(ScenesTest, ANameThatIsNotToldIsEmptyInThePath) {
    const Texts expected = {"!c.1!g.1!", "p.1!!g.1!", "p.1!c.1!!", "p.1!c.1!g.1!"};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        HRESULT code = E_FAIL;
        CATUnicodeString read;
        unsigned char hasComponent = 7;
        EXPECT_TRUE(failAt("CATIProduct::GetPrdInstanceName", static_cast<int>(i) + 1,
                           [&] { code = VornToolsScenes::getParentsWithComponents(pin.get(), read, hasComponent); }));
        EXPECT_EQ(code, S_OK);
        EXPECT_EQ(read.ConvertToChar(), expected[i]);
        EXPECT_EQ(hasComponent, 1);
        EXPECT_EQ(reports(), Texts());
    }
}

TEST_F(ScenesTest, ParentsHideWhatIsBelowThem) {
    const Texts byGroup = {"x", "g.1!", "F", "", "TRUE"};
    const Texts byComponent = {"c.1!g.1!", "F", "", "TRUE"};
    const Texts byBoth = {"g.1!", "F", "", "TRUE", "c.1!g.1!", "F", "", "TRUE"};
    EXPECT_EQ(hidden(pin, {}), "FALSE FALSE");
    EXPECT_EQ(hidden(pin, byGroup), "TRUE FALSE") << "at any place of the list";
    EXPECT_EQ(hidden(pin, byComponent), "FALSE TRUE");
    EXPECT_EQ(hidden(pin, byBoth), "TRUE TRUE");
    EXPECT_EQ(hidden(component, byComponent), "FALSE FALSE") << "the product itself does not count";
    EXPECT_EQ(hidden(component, byGroup), "TRUE FALSE");
    EXPECT_EQ(hidden(root, byBoth), "FALSE FALSE");
    EXPECT_EQ(hiddenByComponent(pin, byComponent), "TRUE");
    EXPECT_EQ(hiddenByComponent(pin, byGroup), "FALSE");
    EXPECT_EQ(hiddenByComponent(component, byGroup), "FALSE") << "its parent is no component";
    auto outer = root.addComponent("outer", "o.1");
    outer.add(session().product("/w/g.CATProduct"), "g.1");
    const auto lowest = root.at({"o.1", "g.1", "c.1", "p.1"});
    const Texts byOuter = {"o.1!", "F", "", "TRUE"};
    EXPECT_EQ(hidden(lowest, byOuter), "FALSE TRUE");
    EXPECT_EQ(hiddenByComponent(lowest, byOuter), "FALSE") << "a product that is none stands between";
    const Texts none[] = {{"g.1!", "G", "", "TRUE"},  {"g.1!", "F", "", "true"}, {"g.1!", "F", "TRUE"},
                          {"g.1!", "F", "", "FALSE"}, {"G.1!", "F", "", "TRUE"}, {"c.1!g.1", "F", "", "TRUE"}};
    for (const Texts& list : none) EXPECT_EQ(hidden(pin, list), "FALSE FALSE") << testing::PrintToString(list);
}

TEST_F(ScenesTest, PositionsAreWrittenWithAPoint) {
    EXPECT_EQ(matrixText(embedded::kIdentity), "1 0 0 0 1 0 0 0 1 0 0 0");
    EXPECT_EQ(matrixText({0.1, -0.5, 1e300, 1e-5, 1.0 / 3, 123456789012345678.0, 1e15, 0.0001, -0.0, 2, 3, 4}),
              "0.1 -0.5 1E+300 1E-05 0.3333333333333333 1.234567890123457E+17 1000000000000000 0.0001 -0 2 3 4");
    std::array<double, 12> longest{};
    longest.fill(-1.234567890123456e-308);
    EXPECT_LT(matrixText(longest).size(), 300U);
    char buffer[8] = "before";
    VornToolsScenes::getMatrixString(nullptr, buffer);
    EXPECT_STREQ(buffer, "");
    VornToolsScenes::getMatrixString(longest.data(), nullptr);

    const std::string usual = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "German", "de-DE"})
        if (std::setlocale(LC_NUMERIC, name)) break;
    EXPECT_EQ(matrixText(translation(0.5, 0, 0)), "1 0 0 0 1 0 0 0 1 0.5 0 0");
    std::setlocale(LC_NUMERIC, usual.c_str());
}

TEST_F(ScenesTest, PositionsAreComposed) {
    std::array<double, 12> a = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    std::array<double, 12> b = {1, 0, 2, 0, 3, 0, 4, 0, 5, 1, 2, 3};
    const std::array<double, 12> product = {15, 18, 21, 12, 15, 18, 39, 48, 57, 40, 47, 54};
    std::array<double, 12> result{};
    VornToolsScenes::multiplyPositionMatrix(a.data(), b.data(), result.data());
    EXPECT_EQ(result, product);
    EXPECT_EQ(embedded::Journal::get().size(), 0U);
    environment().debugMode = true;
    VornToolsScenes::multiplyPositionMatrix(a.data(), b.data(), b.data());
    EXPECT_EQ(b, product) << "in place";
    EXPECT_EQ(embedded::Journal::get().lines(),
              Texts({"> VornToolsScenes::multiplyPositionMatrix", "< VornToolsScenes::multiplyPositionMatrix"}));
    VornToolsScenes::multiplyPositionMatrix(nullptr, b.data(), result.data());
    VornToolsScenes::multiplyPositionMatrix(a.data(), nullptr, result.data());
    VornToolsScenes::multiplyPositionMatrix(a.data(), b.data(), nullptr);
    EXPECT_EQ(result, product);
}

TEST_F(ScenesTest, EveryOccurrenceIsReplaced) {
    const char* const cases[][4] = {{"a,b,c", ",", ".", "a.b.c"}, {"aaa", "aa", "b", "ba"},  {"abc", "", "x", "abc"},
                                    {"abc", "b", "", "ac"},       {"aa", "a", "aa", "aaaa"}, {"", "a", "b", ""},
                                    {"x", "xy", "z", "x"}};
    for (const auto& c : cases) EXPECT_STREQ(VornToolsScenes::replaceAll(c[0], c[1], c[2]).ConvertToChar(), c[3]);
}

TEST_F(ScenesTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    addScenes();
    CATIProduct* const top = root.get();
    CATIProduct* const lowest = pin.get();
    sweepFailures({kScenes + "getAllScenesOnRoot", [=] {
                       IEnumVARIANT* walk = nullptr;
                       long count = 7;
                       const HRESULT code = VornToolsScenes::getAllScenesOnRoot(top, walk, count);
                       const SweepOutcome outcome{code, walk == nullptr && count == 0, static_cast<int>(count),
                                                  textOfOutputs(walk != nullptr)};
                       if (walk) walk->Release();
                       return outcome;
                   }});
    const auto sweepList = [](const char* name, auto read) {
        sweepFailures({kScenes + name, [=] {
                           CATListValCATUnicodeString list = toList({"before"});
                           const HRESULT code = read(list);
                           return outcomeOf(code, list);
                       }});
    };
    sweepList("readScenesNamesInAssy", [=](auto& list) { return VornToolsScenes::readScenesNamesInAssy(top, list); });
    sweepList("readScenesDataInAssy", [=](auto& list) {
        return VornToolsScenes::readScenesDataInAssy("/w/r.CATProduct", top, nullptr, {}, 0, list);
    });
    sweepFailures({kScenes + "getParentsWithComponents", [=] {
                       CATUnicodeString text("before");
                       unsigned char answer = 7;
                       const HRESULT code = VornToolsScenes::getParentsWithComponents(lowest, text, answer);
                       return outcomeOf(code, text, answer);
                   }});
    const CATListValCATUnicodeString list = toList({"c.1!g.1!", "F", "", "TRUE", "g.1!", "F", "", "TRUE"});
    const auto isFalse = [](const CATUnicodeString& text) { return text == CATUnicodeString("FALSE"); };
    sweepFailures({kScenes + "hasParentHideInScene", [&] {
                       CATUnicodeString byParent("before");
                       CATUnicodeString byComponent("before");
                       const HRESULT code =
                           VornToolsScenes::hasParentHideInScene(lowest, list, "F", byParent, byComponent);
                       return SweepOutcome{code, isFalse(byParent) && isFalse(byComponent), 0,
                                           textOfOutputs(byParent, byComponent)};
                   }});
    sweepFailures({kScenes + "hasParentComponentHideInScene", [&] {
                       CATUnicodeString answer("before");
                       const HRESULT code = VornToolsScenes::hasParentComponentHideInScene(lowest, list, "F", answer);
                       return SweepOutcome{code, isFalse(answer) != 0, 0, textOfOutputs(answer)};
                   }});
}

TEST_F(ScenesTest, WithoutMemoryACallFails) {
    const std::string name(kLargeAllocation, 'n');
    scenes(root).addPartial(name).take(group).take(component).take(pin);
    group.instanceName("g" + name);
    component.instanceName("c" + name);
    pin.instanceName("p" + name);
    sweepAllocations("readScenesNamesInAssy", [&] {
        CATListValCATUnicodeString list = toList({"before"});
        const HRESULT code = VornToolsScenes::readScenesNamesInAssy(root.get(), list);
        return outcomeOf(code, list);
    });
    for (const char* file : {"/w/r.a.CATProduct", ""})
        sweepAllocations("readScenesDataInAssy", [&] {
            IEnumVARIANT* walk = nullptr;
            long count = 0;
            VornToolsScenes::getAllScenesOnRoot(root.get(), walk, count);
            CATListValCATUnicodeString list = toList({"before"});
            const HRESULT code = VornToolsScenes::readScenesDataInAssy(file, root.get(), walk, {}, count, list);
            walk->Release();
            return SweepOutcome{code, toTexts(list) == (*file ? Texts() : Texts({"before"})), list.Size()};
        });
    sweepAllocations("getParentsWithComponents", [&] {
        CATUnicodeString read("before");
        unsigned char answer = 7;
        const HRESULT code = VornToolsScenes::getParentsWithComponents(pin.get(), read, answer);
        return SweepOutcome{code, read.IsNull() && answer == 0};
    });
    sweepAllocations("hasParentHideInScene", [&] {
        CATUnicodeString byParent;
        CATUnicodeString byComponent;
        const HRESULT code = VornToolsScenes::hasParentHideInScene(pin.get(), {}, "F", byParent, byComponent);
        return SweepOutcome{code, true};
    });
    sweepAllocations("hasParentComponentHideInScene", [&] {
        CATUnicodeString byComponent;
        return SweepOutcome{VornToolsScenes::hasParentComponentHideInScene(pin.get(), {}, "F", byComponent), true};
    });
    const CATUnicodeString text(name.c_str());
    sweepAllocations("replaceAll", [&] {
        const CATUnicodeString replaced = VornToolsScenes::replaceAll("n", "n", text);
        EXPECT_EQ(reports(), replaced == text ? Texts() : Texts({kScenes + "replaceAll 9003 ReplaceAll"}));
        return SweepOutcome{replaced == text ? S_OK : E_FAIL, replaced.GetLengthInChar() == 1};
    });
}

} // namespace
