#include "tests/session/FailingCall.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Switches.h"

#include "CATIProduct.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"
#include "embedded/WorkModes.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace {

const std::string kCommon = "VornToolsCommon::";

class ProductSearchTest : public PlatformTest {
protected:
    using WorkMode = embedded::WorkMode;

    void SetUp() override {
        PlatformTest::SetUp();
        VornToolsWorkModeServices::setCatiaCacheActivated(1);
    }
    void TearDown() override {
        VornToolsWorkModeServices::setCatiaCacheActivated(0);
        PlatformTest::TearDown();
    }
    /** The product that a call hands out, null for none; its reference is given back. */
    template <class Call>
    static CATIProduct* product(Call call, HRESULT expected) {
        CATIProduct* result = embedded::Session::current().documentAt(0).root().get(); // is to be cleared
        EXPECT_EQ(call(result), expected);
        if (result) result->Release();
        return result;
    }

    /** What a search for a file by a representation, the default one when it has no name, finds. */
    CATIProduct* foreign(const embedded::Product& root, const char* file, const char* shape = "",
                         HRESULT expected = S_OK) {
        unsigned char flag = 7;
        CATIProduct* const result = product(
            [&](auto& out) {
                return VornToolsCommon::getForeignFileInSession(root.get(), file, shape, &switcher, out, flag);
            },
            expected);
        EXPECT_EQ(flag, result ? 1 : 0);
        return result;
    }
    /** The file names that the switcher would put back. */
    Texts remembered() {
        clearJournal();
        switcher.restoreAll(0);
        Texts names;
        for (const std::string& line : messages())
            if (line.rfind("restoring ", 0) == 0) names.push_back(line);
        return names;
    }

    VornToolsSwitchMgt switcher{1};
};

TEST_F(ProductSearchTest, ProductsAreFoundByTheFileOfTheirDocument) {
    auto root = session().product("/w/a.CATProduct").root();
    auto group = session().product("/w/g.CATProduct").root();
    const auto part = session().part("/w/p.CATPart");
    group.addComponent("comp", "c.1").add(part, "p.1");
    root.addUnresolved("p.CATPart");
    root.add(session().product("/w/g.CATProduct"), "g.1");
    root.add(session().product("/w/g.CATProduct"), "g.2");
    root.add(part, "p.9");
    const auto find = [&](const embedded::Product& from, const char* file, HRESULT expected = S_OK) {
        unsigned char flag = 7;
        CATIProduct* const result = product(
            [&](auto& out) { return VornToolsCommon::getProductInSession(from.get(), file, out, flag); }, expected);
        EXPECT_EQ(flag, result ? 1 : 0);
        return result;
    };
    CATIProduct* const first = root.at({"g.1", "c.1", "p.1"}).get();
    for (const char* name : {"p.CATPart", "P.catpart", "/w/p.CATPart", "/W/P.CATPart"})
        EXPECT_EQ(find(root, name), first) << name;
    EXPECT_EQ(find(root, "g.CATProduct"), root.at({"g.1"}).get());
    EXPECT_EQ(find(root, "a.CATProduct"), nullptr) << "only below the root";
    EXPECT_EQ(find(root, "/elsewhere/p.CATPart"), nullptr);
    EXPECT_EQ(find(part.root(), "p.CATPart"), nullptr);
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(find(embedded::Product(), "p.CATPart", E_FAIL), nullptr);
    EXPECT_EQ(find(root, "", E_FAIL), nullptr);
    EXPECT_EQ(reports(), Texts({kCommon + "getProductInSession 9001 ipi_root_product",
                                kCommon + "getProductInSession 9001 i_file_name"}));
}

TEST_F(ProductSearchTest, ForeignFilesAreFoundByTheShapesOfTheirProducts) {
    auto root = session().product("/w/a.CATProduct").root();
    auto bolt = root.addComponent("bolt", "b.1");
    bolt.shape("low", "/w/low.cgr").shape("high", "/w/high.stp");
    EXPECT_EQ(foreign(root, "LOW.CGR"), bolt.get());
    EXPECT_EQ(foreign(root, "/w/low.cgr", "low"), bolt.get());
    EXPECT_EQ(foreign(root, "high.stp"), nullptr);
    EXPECT_EQ(foreign(root, "high.stp", "high"), bolt.get());
    EXPECT_EQ(foreign(root, "high.stp", "none"), nullptr);
    EXPECT_EQ(reports(), Texts()) << "products without a shape are nothing to report";
    EXPECT_EQ(foreign(embedded::Product(), "low.cgr", "", E_FAIL), nullptr);
    EXPECT_EQ(foreign(root, "", "", E_FAIL), nullptr);
    CATIProduct* found = root.get();
    unsigned char flag = 7;
    EXPECT_EQ(VornToolsCommon::getForeignFileInSession(root.get(), "low.cgr", "", nullptr, found, flag), E_FAIL);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(flag, 0);
    const std::string method = kCommon + "getForeignFileInSession 9001 ";
    EXPECT_EQ(reports(), Texts({method + "ipi_root_product", method + "i_file_name", method + "ip_switcher"}));
}

TEST_F(ProductSearchTest, WhatIsOutOfReachAtOnePlaceIsLookedForAtTheNext) {
    choose(&embedded::Switches::picturesAreSilent, false);
    auto root = session().product("/w/a.CATProduct").root();
    const auto group = session().product("/w/g.CATProduct");
    const auto middle = session().product("/w/m.CATProduct");
    group.root().add(session().part("/w/p.CATPart"), "p.1");
    group.root().add(session().part("/w/q.CATPart"), "q.1");
    middle.root().add(group, "g.1");
    for (const char* const name : {"m.1", "m.2", "m.3"}) root.add(middle, name);
    embedded::setWorkMode(root.at({"m.1", "g.1", "p.1"}), WorkMode::visualisation);
    embedded::setWorkMode(root.at({"m.2", "g.1", "p.1"}), WorkMode::visualisation);
    const auto find = [&](const char* file) {
        unsigned char flag = 7;
        return product([&](auto& out) { return VornToolsCommon::getProductInSession(root.get(), file, out, flag); },
                       S_OK);
    };
    EXPECT_EQ(find("p.CATPart"), root.at({"m.3", "g.1", "p.1"}).get());
    EXPECT_EQ(find("q.CATPart"), root.at({"m.1", "g.1", "q.1"}).get());
    root.at({"m.1", "g.1", "p.1"}).reference().masterShape("/w/p.CATPart");
    EXPECT_EQ(find("p.CATPart"), root.at({"m.1", "g.1", "p.1"}).get()) << "its picture tells";
}

/** What no place can load is no reason to look below a reference again: this structure has 4,096 places. */
TEST_F(ProductSearchTest, EachReferenceIsWalkedOnce) {
    const auto level = [this](int i) { return session().product("/w/l" + std::to_string(i) + ".CATProduct"); };
    constexpr int kDeepest = 12;
    level(kDeepest).root().addUnresolved("x.1");
    level(kDeepest).root().addComponent("bolt", "b.1").shape("low", "/w/low.cgr");
    for (int i = kDeepest; i > 0; --i)
        for (const char* const name : {"a", "b"}) level(i - 1).root().add(level(i), name);
    embedded::Failures::get().arm(0, false, embedded::FaultFlavour::none);
    EXPECT_EQ(foreign(level(0).root(), "none.cgr"), nullptr);
    EXPECT_LT(embedded::Failures::get().calls(), 100 * kDeepest);
    embedded::Failures::get().disarm();
}

/** An assembly of two hundred parts, each at two places in visualisation. */
class SeenPartsTest : public ProductSearchTest {
protected:
    void SetUp() override {
        ProductSearchTest::SetUp();
        root = session().product("/w/a.CATProduct").root();
        for (int i = 0; i < 200; ++i) {
            const auto part = session().part("/w/p" + std::to_string(i) + ".CATPart");
            parts.push_back(part.root());
            for (const char* const number : {".1", ".2"})
                places.push_back(root.add(part, "p" + std::to_string(i) + number));
        }
        for (const embedded::Product& place : places) embedded::setWorkMode(place, WorkMode::visualisation);
    }
    /** Fails unless every place is as it was. */
    void expectNothingLoaded() {
        const auto isLoaded = [](const embedded::Product& place) {
            return embedded::workMode(place) != WorkMode::visualisation;
        };
        EXPECT_EQ(std::count_if(places.begin(), places.end(), isLoaded), 0);
        EXPECT_FALSE(session().find("/w/p0.CATPart").loaded());
        EXPECT_FALSE(session().find("/w/p199.CATPart").loaded());
    }

    embedded::Product root;
    std::vector<embedded::Product> parts, places;
};

TEST_F(SeenPartsTest, ASearchWithoutHitLeavesEveryPlaceAsItWas) {
    EXPECT_EQ(foreign(root, "none.cgr"), nullptr);
    expectNothingLoaded();
    EXPECT_EQ(embedded::workModeSwitches(), 800U) << "no picture tells anything: there and back";
    EXPECT_TRUE(embedded::Journal::get().contains("PERFX real switch DEFAULT"));
    EXPECT_FALSE(embedded::Journal::get().contains("PERFX real switch DESIGN")) << "no further than need be";
    EXPECT_EQ(foreign(root, "none.cgr", "low"), nullptr);
    expectNothingLoaded();
    EXPECT_EQ(embedded::workModeSwitches(), 1600U);
    EXPECT_EQ(remembered(), Texts()) << "what was put back is not put back again";

    // A place whose part was put back is remembered like any other when somebody switches it for good.
    EXPECT_EQ(switcher.setWorkMode(places[1].get(), VornToolsWorkModeServices::WorkModeDesign,
                                   VornToolsWorkModeServices::WorkModeUnknown, "", 0),
              S_OK);
    EXPECT_EQ(remembered(), Texts({"restoring p0.CATPart in visu"}));
    expectNothingLoaded();
}

TEST_F(SeenPartsTest, NothingIsLoadedForWhatAPictureTells) {
    choose(&embedded::Switches::picturesAreSilent, false);
    for (embedded::Product& part : parts) part.shape("low", "/w/" + part.partNumber() + ".cgr");
    EXPECT_EQ(foreign(root, "none.cgr"), nullptr);
    EXPECT_EQ(foreign(root, "p77.cgr"), places[154].get());
    EXPECT_EQ(foreign(root, "p77.cgr", "low"), places[154].get());
    EXPECT_EQ(foreign(root, "p77.cgr", "high"), nullptr) << "who tells one representation tells them all";
    EXPECT_EQ(embedded::workModeSwitches(), 0U);
    EXPECT_EQ(remembered(), Texts());

    // Where pictures tell nothing, the parts are loaded as far as need be, and the one that is found stays so.
    choose(&embedded::Switches::picturesAreSilent, true);
    EXPECT_EQ(foreign(root, "p77.cgr"), places[154].get());
    EXPECT_EQ(embedded::workModeSwitches(), 155U * 2);
    EXPECT_EQ(embedded::workMode(places[154]), WorkMode::standard);
    EXPECT_EQ(remembered(), Texts({"restoring p77.CATPart in visu"}));
    expectNothingLoaded();
    unsigned char flag = 7;
    CATIProduct* found = nullptr;
    EXPECT_EQ(VornToolsCommon::getProductInSession(root.get(), "p77.CATPart", found, flag), S_OK);
    EXPECT_EQ(flag, 0) << "what nobody tells is not found";
    // The name of a picture that does not tell its file is all there is; the directory stays unknown.
    parts[78].masterShape("/w/p78.CATPart");
    EXPECT_EQ(VornToolsCommon::getProductInSession(root.get(), "/w/P78.CATPart", found, flag), S_OK);
    EXPECT_EQ(flag, 0);
    EXPECT_EQ(VornToolsCommon::getProductInSession(root.get(), "P78.CATPart", found, flag), S_OK);
    EXPECT_EQ(found, places[156].get());
    if (found) found->Release();
    switcher.release();
}

TEST_F(SeenPartsTest, NothingIsSwitchedWhileThatIsForbidden) {
    switcher.setSwitchEnabled(0);
    EXPECT_EQ(foreign(root, "none.cgr"), nullptr);
    EXPECT_EQ(embedded::workModeSwitches(), 0U);
    switcher.setSwitchEnabled(1);
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
    EXPECT_EQ(foreign(root, "none.cgr"), nullptr);
    EXPECT_EQ(embedded::workModeSwitches(), 0U);
    VornToolsWorkModeServices::setCatiaCacheActivated(1);
    embedded::setSwitchOutcome(embedded::SwitchOutcome::refused);
    EXPECT_EQ(foreign(root, "none.cgr"), nullptr);
    EXPECT_EQ(reports(), Texts(400, "VornToolsWorkModeServices::setWorkMode 9004 SetWorkMode")) << "tried once each";
}

/** A part at two places that are only seen. Its picture tells nothing: the call that asks it fails. */
class SilentPictureTest : public ProductSearchTest {
protected:
    void SetUp() override {
        ProductSearchTest::SetUp();
        root = session().product("/w/a.CATProduct").root();
        for (const char* const name : {"p.1", "p.2"}) places.push_back(root.add(session().part("/w/p.CATPart"), name));
        reset();
    }
    void TearDown() override {
        switcher.release();
        ProductSearchTest::TearDown();
    }
    void reset() {
        switcher.release();
        for (const embedded::Product& place : places) embedded::setWorkMode(place, WorkMode::visualisation);
    }
    /** The product that shows a file by default. */
    CATIProduct* search(const char* file) {
        reset();
        CATIProduct* found = nullptr;
        unsigned char flag = 7;
        VornToolsCommon::getForeignFileInSession(root.get(), file, "", &switcher, found, flag);
        reports();
        if (found) found->Release();
        return found;
    }

    embedded::Product root;
    std::vector<embedded::Product> places;
};

TEST_F(SilentPictureTest, AHitStaysLoadedAndHeldUntilTheSwitcherIsReleased) {
    choose(&embedded::Switches::picturesAreSilent, false);
    places[0].reference().shape("low", "/w/low.cgr");
    CATIProduct* found = nullptr;
    const auto holders = [] { return embedded::Accounting::get().holders(); };
    const auto check = [&](int) {
        EXPECT_EQ(found, places[0].get());
        EXPECT_EQ(embedded::workMode(places[0]), WorkMode::standard);
        EXPECT_EQ(embedded::workMode(places[1]), WorkMode::visualisation);
        EXPECT_EQ(holders(), Texts({"product a/p.1: 1"}));
        CATIProduct* product = nullptr;
        EXPECT_EQ(switcher.getCATIProduct("p.CATPart", product), S_OK);
        EXPECT_EQ(product, places[0].get());
        EXPECT_EQ(holders(), Texts({"product a/p.1: 1"})) << "no reference is added";
        EXPECT_EQ(remembered(), Texts({"restoring p.CATPart in visu"}));
        EXPECT_EQ(embedded::workMode(places[0]), WorkMode::visualisation);
        switcher.release();
        EXPECT_EQ(holders(), Texts());
    };
    for (const char* const call : {"CATIAProduct::GetDefaultShapeName", "CATIAProduct::GetShapePathName"})
        EXPECT_EQ(whenFailing(
                      call, [&] { found = search("low.cgr"); }, check),
                  1)
            << call;
}

TEST_F(SilentPictureTest, WhatCannotBePutBackAtOnceIsTheSwitchersToPutBack) {
    int left = 0;
    const auto check = [&] {
        EXPECT_EQ(search("none.cgr"), nullptr);
        embedded::Failures::get().disarm();
        left += embedded::workMode(places[0]) != WorkMode::visualisation;
        switcher.restoreAll(0);
        for (const embedded::Product& place : places)
            EXPECT_EQ(embedded::workMode(place), WorkMode::visualisation) << embedded::Failures::get().firedAt();
    };
    EXPECT_EQ(whenFailing("CATPrsWorkModeServices::SetWorkMode", check, [](int) {}), 4);
    EXPECT_EQ(left, 1) << "the one fault that hinders it for the first place";
}

TEST_F(SilentPictureTest, APictureIsToldByItsNameWhereNobodyTellsTheMode) {
    for (const char* const shape : {"/w/p.CATPart", ""}) {
        places[0].reference().masterShape(shape);
        std::size_t switches = 0;
        const auto count = [&] {
            const std::size_t before = embedded::workModeSwitches();
            search("none.cgr");
            switches = embedded::workModeSwitches() - before;
        };
        const auto check = [&](int which) {
            if (which > 1) return;
            EXPECT_EQ(switches, *shape ? 4U : 2U) << "the second place is loaded all the same";
        };
        EXPECT_GT(whenFailing("CATPrsWorkModeServices::GetWorkMode", count, check), 1);
    }
}

TEST_F(SilentPictureTest, WhatThePlatformThrowsPassesThrough) {
    embedded::setSwitchOutcome(embedded::SwitchOutcome::foreign);
    CATIProduct* found = nullptr;
    unsigned char flag = 7;
    EXPECT_THROW(VornToolsCommon::getForeignFileInSession(root.get(), "none.cgr", "none", &switcher, found, flag),
                 std::runtime_error);
    EXPECT_EQ(embedded::Journal::get().open(), 0);
    EXPECT_EQ(embedded::Accounting::get().holders(), Texts());
}

TEST_F(ProductSearchTest, ChildrenThatAreCountedAndNotToldAreAFailure) {
    auto root = session().product("/w/a.CATProduct").root();
    root.add(session().product("/w/g.CATProduct"), "g.1").reference().add(session().part("/w/p.CATPart"), "p.1");
    HRESULT code = S_OK;
    const auto search = [&] {
        CATIProduct* found = root.get();
        unsigned char flag = 7;
        reports();
        code = VornToolsCommon::getProductInSession(root.get(), "none.CATPart", found, flag);
    };
    const auto check = [&](int which) { // the root, the group, the part, which has none
        EXPECT_EQ(code, which < 3 ? E_FAIL : S_OK);
        EXPECT_EQ(reports(), which < 3 ? Texts{kCommon + "getProductInSession 9004 GetChildren"} : Texts());
    };
    EXPECT_EQ(whenFailing("CATIProduct::GetChildren", search, check), 3);
}

TEST_F(ProductSearchTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    chooseForProducts(false);
    auto root = session().product("/w/a.CATProduct").root();
    const auto part = root.add(session().part("/w/p.CATPart"), "p.1");
    root.addComponent("bolt", "b.1").shape("low", "/w/low.cgr");
    CATIProduct* const from = root.get();
    const auto run = [](const char* name, auto question, const std::vector<int>& answers = {}) {
        sweepFailures({kCommon + name,
                       [&] {
                           CATIProduct* found = nullptr;
                           unsigned char flag = 7;
                           const HRESULT code = question(found, flag);
                           SweepOutcome outcome = outcomeOf(code, found, flag);
                           outcome.answer = flag;
                           if (found) found->Release();
                           return outcome;
                       },
                       {},
                       {},
                       answers});
    };
    const auto findProduct = [=](auto& out, auto& flag) {
        return VornToolsCommon::getProductInSession(from, "p.CATPart", out, flag);
    };
    run("getProductInSession", findProduct);
    run("getForeignFileInSession", [=](auto& out, auto& flag) {
        return VornToolsCommon::getForeignFileInSession(from, "low.cgr", "", &switcher, out, flag);
    });
    part.reference().masterShape("/w/p.CATPart");
    embedded::setWorkMode(part, embedded::WorkMode::visualisation);
    run("getProductInSession", findProduct);
    part.reference().masterShape("");
    run("getProductInSession", findProduct, {0});
    run("getForeignFileInSession",
        [=](auto& out, auto& flag) {
            const HRESULT code = VornToolsCommon::getForeignFileInSession(from, "none.cgr", "", &switcher, out, flag);
            embedded::setWorkMode(part, WorkMode::visualisation);
            switcher.release();
            return code;
        },
        {0});
}

} // namespace
