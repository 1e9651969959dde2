#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "CATIProduct.h"
#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"
#include "VornToolsWorkModeServices.h"
#include "embedded/WorkModes.h"

namespace {

const std::string kCommon = "VornToolsCommon::";

class ProductSearchTest : public PlatformTest {
protected:
    /** The product that a call hands out, null for none; its reference is given back. */
    template <class Call>
    static CATIProduct* product(Call call, HRESULT expected) {
        CATIProduct* result = embedded::Session::current().documentAt(0).root().get(); // is to be cleared
        EXPECT_EQ(call(result), expected);
        if (result) result->Release();
        return result;
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
    const auto find = [&](CATIProduct* from, const char* file, const char* shape, VornToolsSwitchMgt* loader,
                          HRESULT expected = S_OK) {
        unsigned char flag = 7;
        return product(
            [&](auto& out) { return VornToolsCommon::getForeignFileInSession(from, file, shape, loader, out, flag); },
            expected);
    };
    EXPECT_EQ(find(root.get(), "LOW.CGR", "", &switcher), bolt.get());
    EXPECT_EQ(find(root.get(), "/w/low.cgr", "low", &switcher), bolt.get());
    EXPECT_EQ(find(root.get(), "high.stp", "", &switcher), nullptr);
    EXPECT_EQ(find(root.get(), "high.stp", "high", &switcher), bolt.get());
    EXPECT_EQ(find(root.get(), "high.stp", "none", &switcher), nullptr);
    EXPECT_EQ(reports(), Texts()) << "products without a shape are nothing to report";
    EXPECT_EQ(find(nullptr, "low.cgr", "", &switcher, E_FAIL), nullptr);
    EXPECT_EQ(find(root.get(), "", "", &switcher, E_FAIL), nullptr);
    EXPECT_EQ(find(root.get(), "low.cgr", "", nullptr, E_FAIL), nullptr);
    const std::string method = kCommon + "getForeignFileInSession 9001 ";
    EXPECT_EQ(reports(), Texts({method + "ipi_root_product", method + "i_file_name", method + "ip_switcher"}));
}

TEST_F(ProductSearchTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    VornToolsWorkModeServices::setCatiaCacheActivated(1);
    auto root = session().product("/w/a.CATProduct").root();
    const auto part = root.add(session().part("/w/p.CATPart"), "p.1");
    root.addComponent("bolt", "b.1").shape("low", "/w/low.cgr");
    CATIProduct* const from = root.get();
    const auto run = [](const char* name, auto question, const std::vector<int>& answers = {}) {
        sweepFailures({kCommon + name,
                       [=] {
                           CATIProduct* found = nullptr;
                           unsigned char flag = 7;
                           const HRESULT code = question(found, flag);
                           const SweepOutcome outcome{code, !found && !flag, flag};
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
    VornToolsWorkModeServices::setCatiaCacheActivated(0);
}

} // namespace
