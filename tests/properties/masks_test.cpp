#include "VornToolsMask.h"

#include "CATIProduct.h"
#include "VornToolsDummyPart.h"
#include "embedded/Masks.h"
#include "embedded/SessionFile.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

using embedded::maskOf;

namespace {

const std::string kMask = "VornToolsMask::";

class MasksTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        root = session().product("/w/r.CATProduct").root();
        bolt = root.add(session().part("/w/b.CATPart"), "b.1");
        broken = root.addUnresolved("x.1");
    }
    void TearDown() override {
        VornToolsDummyPart::kill();
        PlatformTest::TearDown();
    }

    Texts set(const embedded::Product& product, int mask, unsigned char mark = 0, HRESULT expected = S_OK) {
        clearJournal();
        EXPECT_EQ(VornToolsMask::setMask(product.get(), mask, mark), expected);
        return messages();
    }
    static int get(const embedded::Product& product, HRESULT expected = S_OK) {
        int mask = 7;
        EXPECT_EQ(VornToolsMask::getMask(product.get(), &mask), expected);
        return mask;
    }

    embedded::Product root, bolt, broken;
};

TEST_F(MasksTest, AMaskIsSetReadAndTakenOff) {
    EXPECT_EQ(get(bolt), 0);
    EXPECT_EQ(messages(), Texts({"mask value = 0"}));
    EXPECT_EQ(set(bolt, 10), Texts({"Call MSKIMaskManager::setMask"}));
    EXPECT_EQ(set(bolt, 3), Texts({"Call MSKIMaskManager::setMask"}));
    EXPECT_EQ(get(bolt), 3);
    EXPECT_EQ(messages().back(), "mask value = 3");
    EXPECT_EQ(maskOf(bolt.reference()), 0) << "an instance has its own";
    EXPECT_EQ(set(bolt, 0), Texts({"Call MSKIMaskManager::removeAllMasks"}));
    EXPECT_EQ(maskOf(bolt), 0);
    for (const int mask : {11, -1, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(set(bolt, mask, 1, E_INVALIDARG), Texts({"invalid value for parameter i_mask_value"}));
        EXPECT_EQ(maskOf(bolt), 0);
    }
}

TEST_F(MasksTest, ARootIsLeftAloneUnlessTheEnvironmentWantsIt) {
    EXPECT_EQ(set(root, 1), Texts({"Mask not managed on root product"}));
    EXPECT_EQ(maskOf(root), 0);
    environment().managesStatusOnRoot = true;
    EXPECT_EQ(set(root, 1), Texts({"Call MSKIMaskManager::setMask"}));
    EXPECT_EQ(maskOf(root), 1);
    environment().missingManagers = {"ENVManager"};
    EXPECT_EQ(set(root, 2), Texts({"Mask not managed on root product"}));
}

TEST_F(MasksTest, ADummyPartIsMarkedWhereAsked) {
    environment().commandImport = true; // an empty part is a dummy part while files are imported
    const auto dummy = root.add(session().part(write("d.CATPart", "")), "d.1");
    const int marked[11] = {4, 4, 6, 6, 4, 5, 6, 7, 4, 4, 6};
    for (int mask = 0; mask <= 10; ++mask) {
        set(dummy, mask, 1);
        EXPECT_EQ(maskOf(dummy), marked[mask]) << mask;
        set(dummy, mask, 0);
        EXPECT_EQ(maskOf(dummy), mask);
        set(bolt, mask, 1);
        EXPECT_EQ(maskOf(bolt), mask) << "not a dummy part";
    }
}

TEST_F(MasksTest, WhatAMaskCannotBeSetWithoutIsReported) {
    const std::pair<const char*, std::string> cases[] = {{"CATSession::GetPtrSession", "9002 p_session"},
                                                         {"QueryInterface(CATISpecObject)", "9002 pi_spec_object"},
                                                         {"QueryInterface(MSKIMaskManager)", "9002 pi_mask_manager"},
                                                         {"MSKIMaskManager::setMask", "9003 MSKIMaskManager::setMask"}};
    for (const auto& [call, report] : cases) {
        HRESULT code = S_OK;
        EXPECT_TRUE(failAt(call, 1, [&] { code = VornToolsMask::setMask(bolt.get(), 3, 0); })) << call;
        EXPECT_EQ(code, E_FAIL);
        EXPECT_EQ(reports(), Texts({kMask + "setMask " + report}));
    }
    int mask = 7;
    EXPECT_TRUE(failAt("MSKIMaskManager::getMask", 1, [&] { VornToolsMask::getMask(bolt.get(), &mask); }));
    EXPECT_EQ(reports(), Texts({kMask + "getMask 9003 MSKIMaskManager::getMask"}));
}

TEST_F(MasksTest, MasksAreTakenOffTheReference) {
    embedded::setMask(bolt, 3);
    embedded::setMask(bolt.reference(), 5);
    EXPECT_EQ(VornToolsMask::removeAllMasks(bolt.get()), S_OK);
    EXPECT_EQ(maskOf(bolt.reference()), 0);
    EXPECT_EQ(maskOf(bolt), 3);
    EXPECT_EQ(VornToolsMask::removeAllMasks(broken.get()), E_FAIL);
    EXPECT_EQ(reports(), Texts({kMask + "removeAllMasks 9003 GetReferenceProduct"}));
    EXPECT_TRUE(failAt("MSKIMaskManager::removeAllMasks", 1, [&] { VornToolsMask::removeAllMasks(bolt.get()); }));
    EXPECT_EQ(reports(), Texts({kMask + "removeAllMasks 9003 MSKIMaskManager::removeAllMasks"}));
}

TEST_F(MasksTest, WhatIsMissingIsReported) {
    EXPECT_EQ(get(embedded::Product(), E_FAIL), 0);
    EXPECT_EQ(VornToolsMask::getMask(bolt.get(), nullptr), E_FAIL);
    EXPECT_EQ(set(embedded::Product(), 1, 0, E_FAIL), Texts());
    EXPECT_EQ(VornToolsMask::removeAllMasks(nullptr), E_FAIL);
    EXPECT_EQ(reports(), Texts({kMask + "getMask 9001 ip_product", kMask + "getMask 9001 op_mask",
                                kMask + "setMask 9001 ip_product", kMask + "removeAllMasks 9001 ip_product"}));
    EXPECT_EQ(get(broken, E_FAIL), 0);
    set(broken, 1, 0, E_FAIL);
    embedded::withoutMaskManager();
    EXPECT_EQ(get(bolt, E_FAIL), 0);
    set(bolt, 1, 0, E_FAIL);
    EXPECT_EQ(VornToolsMask::removeAllMasks(bolt.get()), E_FAIL);
    EXPECT_EQ(reports(), Texts({kMask + "getMask 9002 pi_spec_object", kMask + "setMask 9002 pi_spec_object",
                                kMask + "getMask 9002 pi_mask_manager", kMask + "setMask 9002 pi_mask_manager",
                                kMask + "removeAllMasks 9002 pi_mask_manager"}));
}

TEST_F(MasksTest, AMasksSectionIsSavedAndLoaded) {
    embedded::setMask(bolt, 3);
    embedded::setMask(root, 10);
    embedded::withoutMaskManager();
    const std::string digest = session().digest();
    std::string text;
    std::string again;
    ASSERT_TRUE(embedded::sessionText(text).ok);
    ASSERT_EQ(embedded::loadSessionText("s.json", text).error, "");
    EXPECT_EQ(session().digest(), digest);
    ASSERT_TRUE(embedded::sessionText(again).ok);
    EXPECT_EQ(again, text);
    const auto error = [](const std::string& section) {
        return embedded::loadSessionText("s", R"({"documents": [{"name": "P.CATPart"}], "masks": )" + section + "}")
            .error;
    };
    const std::string place = R"({"place": {"document": "P.CATPart"}, "mask": )";
    const std::string mask = "s:1: masks.products[0].mask: ";
    EXPECT_EQ(error(R"({"products": [)" + place + "10}]}"), "");
    for (const char* value : {"0", "11", "1.5", "-1", "1e300"})
        EXPECT_EQ(error(R"({"products": [)" + place + value + "}]}"), mask + "a whole number from 1 to 10 is expected");
    EXPECT_EQ(error(R"({"products": [)" + place + "\"1\"}]}"), mask + "a number is expected");
    EXPECT_EQ(error(R"({"products": [)" + place + "1}, " + place + "1}]}"),
              "s:1: masks.products[1].place: given twice");
    EXPECT_EQ(error(R"({"without": ["masks"]})"), "s:1: masks.without[0]: nothing named 'masks' can be missing here");
}

TEST_F(MasksTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    CATIProduct* const product = bolt.get();
    VornToolsDummyPart::getInstance(); // stays
    sweepFailures({kMask + "getMask",
                   [=] {
                       int mask = 7;
                       const HRESULT code = VornToolsMask::getMask(product, &mask);
                       return outcomeOf(code, mask);
                   },
                   [this] { embedded::setMask(bolt, 3); }});
    const auto sweepSetting = [&](int before, int mask) {
        sweepFailures({kMask + "setMask", [=] { return SweepOutcome{VornToolsMask::setMask(product, mask, 1)}; },
                       [=] { embedded::setMask(bolt, before); }});
    };
    sweepSetting(0, 3);
    sweepSetting(3, 0);
    sweepFailures({kMask + "removeAllMasks", [=] { return SweepOutcome{VornToolsMask::removeAllMasks(product)}; },
                   [this] { embedded::setMask(bolt.reference(), 3); }});
}

} // namespace
