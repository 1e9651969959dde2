#include "tests/support/AllocationSweep.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include "CATUnicodeString.h"
#include "VornToolsCommon.h"

namespace {

/** The assembly root / g.1 / p.1, where the group is a document of its own. */
class InstanceDescriptionsTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        group = session().product("g.CATProduct").root();
        direct = group.add(session().part("p.CATPart"), "p.1");
        root = session().product("r.CATProduct").root();
        groupInstance = root.add(session().product("g.CATProduct"), "g.1");
        occurrence = root.at({"g.1", "p.1"});
    }

    HRESULT read(const embedded::Product& product, const char* expected) {
        CATUnicodeString description("before");
        const HRESULT code = VornToolsCommon::getInstanceDescription(product.get(), description);
        EXPECT_STREQ(description.ConvertToChar(), expected);
        return code;
    }
    unsigned char isSecondary(const char* description, unsigned char datFileMissing, const char* itemRevision) {
        direct.description(description);
        unsigned char result = 7;
        clearJournal();
        EXPECT_EQ(VornToolsCommon::isElementSecondaryPart(direct.get(), datFileMissing, itemRevision, result), S_OK);
        return result;
    }

    embedded::Product group, direct, root, groupInstance, occurrence;
};

const std::string kCommon = "VornToolsCommon::";

TEST_F(InstanceDescriptionsTest, TheInstanceInTheFirstProductParentCarriesTheDescription) {
    direct.description("in the group");
    occurrence.description("in the root");
    EXPECT_EQ(read(direct, "in the group"), S_OK);
    EXPECT_EQ(read(occurrence, "in the group"), S_OK);
    EXPECT_EQ(VornToolsCommon::setInstanceDescription(occurrence.get(), "new"), S_OK);
    EXPECT_EQ(direct.description(), "new");
    EXPECT_EQ(occurrence.description(), "in the root");
    EXPECT_EQ(VornToolsCommon::setInstanceDescription(groupInstance.get(), "group"), S_OK);
    EXPECT_EQ(groupInstance.description(), "group");

    EXPECT_EQ(read(embedded::Product(), ""), E_INVALIDARG);
    EXPECT_EQ(VornToolsCommon::setInstanceDescription(nullptr, "x"), E_INVALIDARG);
    EXPECT_EQ(read(root, ""), E_FAIL) << "nothing carries a root's description";
    EXPECT_EQ(VornToolsCommon::setInstanceDescription(root.get(), "x"), E_FAIL);
    direct.withoutProperties();
    EXPECT_EQ(read(direct, ""), E_FAIL);
    EXPECT_EQ(VornToolsCommon::setInstanceDescription(occurrence.get(), "x"), E_FAIL);
    EXPECT_EQ(reports(), Texts());
}

TEST_F(InstanceDescriptionsTest, TheOwnDescriptionIsReadWhereTheProductStands) {
    direct.description("in the group");
    occurrence.description("in the root");
    CATUnicodeString description("before");
    EXPECT_EQ(VornToolsCommon::getProductInstanceDescription(occurrence.get(), description), S_OK);
    EXPECT_STREQ(description.ConvertToChar(), "in the root");
    EXPECT_EQ(VornToolsCommon::getProductInstanceDescription(nullptr, description), E_FAIL);
    EXPECT_TRUE(description.IsNull());
    occurrence.withoutProperties();
    EXPECT_EQ(VornToolsCommon::getProductInstanceDescription(occurrence.get(), description), E_FAIL);
    embedded::Failures::get().arm(2, false, embedded::FaultFlavour::codeWithOutput);
    EXPECT_EQ(VornToolsCommon::getProductInstanceDescription(direct.get(), description), E_FAIL);
    embedded::Failures::get().disarm();
    EXPECT_TRUE(description.IsNull());
    const std::string method = kCommon + "getProductInstanceDescription ";
    EXPECT_EQ(reports(), Texts({method + "9001 ipi_cati_product", method + "9002 pi_cati_prd_properties",
                                method + "9003 CATIPrdProperties::GetDescriptionInst"}));
}

TEST_F(InstanceDescriptionsTest, TheRelativeOccurrenceIsCleaned) {
    direct.description("KETO_ID_7\r\nmy text");
    occurrence.description("KETO_ID_8\nother");
    EXPECT_EQ(VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(occurrence.get()), S_OK);
    EXPECT_EQ(direct.description(), "my text");
    EXPECT_EQ(occurrence.description(), "KETO_ID_8\nother");

    EXPECT_EQ(VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(nullptr), E_FAIL);
    EXPECT_EQ(VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(root.get()), E_FAIL);
    direct.withoutProperties();
    EXPECT_EQ(VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(occurrence.get()), E_FAIL);
    const std::string method = kCommon + "cleanDescriptionForRelativeOccUnderComponent ";
    EXPECT_EQ(reports(), Texts({method + "9001 ipi_catiproduct", method + "9002 pi_parent_product",
                                method + "9002 pi_cati_prd_relative"}));
}

TEST_F(InstanceDescriptionsTest, EachFailureOfTheCleaningIsNamed) {
    const struct {
        int call;
        const char* report;
    } cases[] = {{1, "9002 pi_parent_product"},
                 {2, "9002 sp_parent_reference_product"},
                 {3, "9002 sp_product_relative_occurrence"},
                 {4, "9002 pi_cati_prd_relative"},
                 {5, "9003 GetDescriptionInst"},
                 {6, "9003 SetDescriptionInst"}};
    for (const auto& c : cases) {
        direct.description("KETO_ID_7");
        embedded::Failures::get().arm(c.call, false, embedded::FaultFlavour::codeWithOutput);
        EXPECT_EQ(VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(occurrence.get()), E_FAIL);
        embedded::Failures::get().disarm();
        EXPECT_EQ(reports(), Texts({kCommon + "cleanDescriptionForRelativeOccUnderComponent " + c.report}));
        EXPECT_EQ(direct.description(), "KETO_ID_7");
    }
    EXPECT_EQ(messages(), Texts({"Can't get reference product from parent"}));
}

TEST_F(InstanceDescriptionsTest, ASecondaryPartIsMarked) {
    const struct {
        const char *before, *after;
    } cases[] = {{"", "SecondaryPart"},
                 {"my text", "SecondaryPart\nmy text"},
                 {"KETO_ID_7\nmy text", "SecondaryPart\nKETO_ID_7\nmy text"},
                 {"SecondaryPartX", "SecondaryPartX"},
                 {"secondarypart", "SecondaryPart\nsecondarypart"},
                 {"my IgnoreNodes", "my IgnoreNodes"}};
    for (const auto& c : cases) {
        occurrence.description(c.before);
        clearJournal();
        EXPECT_EQ(VornToolsCommon::addSecondaryPartInInstanceDescription(occurrence.get()), S_OK);
        EXPECT_EQ(occurrence.description(), c.after);
    }
    EXPECT_EQ(messages(), Texts({"It is an ignore node, instance description will not be updated"}));
    EXPECT_EQ(direct.description(), "") << "the product's own description is marked, wherever it stands";

    EXPECT_EQ(VornToolsCommon::addSecondaryPartInInstanceDescription(nullptr), E_FAIL);
    EXPECT_EQ(VornToolsCommon::addSecondaryPartInInstanceDescription(root.get()), E_FAIL) << "a root cannot be written";
    direct.withoutProperties();
    EXPECT_EQ(VornToolsCommon::addSecondaryPartInInstanceDescription(direct.get()), E_FAIL);
    const std::string method = kCommon + "addSecondaryPartInInstanceDescription ";
    EXPECT_EQ(reports(), Texts({method + "9001 ipi_cati_product", method + "9003 CATIPrdProperties::SetDescriptionInst",
                                method + "9002 pi_cati_prd_properties"}));
}

TEST_F(InstanceDescriptionsTest, ASecondaryPartIsMarkedAndUnknownToThePdm) {
    const struct {
        const char* description;
        unsigned char datFileMissing;
        const char* itemRevision;
        int answer;
        const char* line;
    } cases[] = {
        {"my SecondaryPart", 1, "", 0,
         "Product is not a secondary part: instance description does not contain SecondaryPart"},
        {"SecondaryPart\nfoo", 255, "rev", 1, "Product is a secondary part: .dat file does not exist"},
        {"SecondaryPart", 0, "", 1, "Product is a secondary part: itemRevUID field is empty"},
        {"SecondaryPart", 0, "rev", 0, "Product is not a secondary part: itemRevUID field is not empty"},
    };
    direct.instanceName("p\r\n.1");
    for (const auto& c : cases) {
        EXPECT_EQ(isSecondary(c.description, c.datFileMissing, c.itemRevision), c.answer);
        EXPECT_EQ(messages(), Texts({"instance name is p.1", std::string("instance description is ") + c.description,
                                     c.line, "0"}));
    }
    clearJournal();
    unsigned char result = 7;
    EXPECT_EQ(VornToolsCommon::isElementSecondaryPart(nullptr, 1, "", result), E_INVALIDARG);
    EXPECT_EQ(result, 0);
    result = 7;
    EXPECT_EQ(VornToolsCommon::isElementSecondaryPart(root.get(), 1, "", result), E_FAIL);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(messages(), Texts({"-2147024809", "-2147467259"}));
    const std::string report = kCommon + "isElementSecondaryPart 9003 VornToolsCommon::getInstanceDescription";
    EXPECT_EQ(reports(), Texts({report, report}));
}

TEST_F(InstanceDescriptionsTest, NamesComeWithoutLineBreaks) {
    const struct {
        const char *name, *expected;
        HRESULT code;
    } cases[] = {{"p.1", "p.1", S_FALSE},
                 {"p\r\n.\r\n1", "p.1", S_OK},
                 {"a\rb\nc", "a\rb\nc", S_FALSE},
                 {"a\r\r\n\nb", "a\r\nb", S_OK},
                 {"\r\n", "", S_OK}};
    for (const auto& c : cases) {
        direct.instanceName(c.name);
        CATUnicodeString name("before");
        EXPECT_EQ(VornToolsCommon::getPrdInstanceNameWithoutNewLines(direct.get(), name), c.code);
        EXPECT_STREQ(name.ConvertToChar(), c.expected);
    }
    CATUnicodeString name("before");
    EXPECT_EQ(VornToolsCommon::getPrdInstanceNameWithoutNewLines(nullptr, name), E_FAIL);
    EXPECT_TRUE(name.IsNull());
}

TEST_F(InstanceDescriptionsTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    using Read = HRESULT (*)(CATIProduct*, CATUnicodeString&);
    const std::pair<const char*, Read> reads[] = {
        {"getInstanceDescription", &VornToolsCommon::getInstanceDescription},
        {"getProductInstanceDescription", &VornToolsCommon::getProductInstanceDescription},
        {"getPrdInstanceNameWithoutNewLines", &VornToolsCommon::getPrdInstanceNameWithoutNewLines}};
    direct.description("my text");
    for (const auto& [name, method] : reads)
        sweepFailures({kCommon + name, [this, call = method] {
                           CATUnicodeString text("before");
                           const HRESULT code = call(occurrence.get(), text);
                           return outcomeOf(code, text);
                       }});
    const auto reset = [this](const char* description) { return [=] { direct.description(description); }; };
    sweepFailures({kCommon + "setInstanceDescription",
                   [this] { return SweepOutcome{VornToolsCommon::setInstanceDescription(occurrence.get(), "new")}; },
                   reset("old")});
    sweepFailures({kCommon + "cleanInstanceDescription", [] {
                       CATUnicodeString text("KETO_ID_7\nmy text");
                       const HRESULT code = VornToolsCommon::cleanInstanceDescription(text);
                       return SweepOutcome{code, true, 0, textOfOutputs(text)};
                   }});
    sweepFailures({kCommon + "cleanDescriptionForRelativeOccUnderComponent",
                   [this] {
                       return SweepOutcome{
                           VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(occurrence.get())};
                   },
                   reset("KETO_ID_7\nmy text")});
    sweepFailures(
        {kCommon + "addSecondaryPartInInstanceDescription",
         [this] { return SweepOutcome{VornToolsCommon::addSecondaryPartInInstanceDescription(direct.get())}; },
         reset("")});
    direct.description("SecondaryPart");
    const auto isSecondary = [this] {
        unsigned char result = 7;
        const HRESULT code = VornToolsCommon::isElementSecondaryPart(occurrence.get(), 1, "", result);
        return SweepOutcome{code, result == 0, result};
    };
    sweepFailures({kCommon + "isElementSecondaryPart", isSecondary});
    direct.description("user's text");
    sweepFailures({kCommon + "isElementSecondaryPart", isSecondary, {}, {}, {0}});
}

TEST_F(InstanceDescriptionsTest, WithoutMemoryACallFails) {
    const std::string text = "KETO_ID_7\r\n" + std::string(200000, 'x');
    direct.description(text).instanceName("p\r\n" + text);
    using Read = HRESULT (*)(CATIProduct*, CATUnicodeString&);
    const std::pair<const char*, Read> reads[] = {
        {"getInstanceDescription", &VornToolsCommon::getInstanceDescription},
        {"getProductInstanceDescription", &VornToolsCommon::getProductInstanceDescription},
        {"getPrdInstanceNameWithoutNewLines", &VornToolsCommon::getPrdInstanceNameWithoutNewLines}};
    for (const auto& [name, method] : reads)
        sweepAllocations(name, [this, call = method] {
            CATUnicodeString read("before");
            const HRESULT code = call(direct.get(), read);
            return SweepOutcome{code, read.IsNull() != 0};
        });
    sweepAllocations("isElementSecondaryPart", [this] {
        unsigned char result = 7;
        const HRESULT code = VornToolsCommon::isElementSecondaryPart(direct.get(), 1, "", result);
        return SweepOutcome{code, result == 0};
    });
    const auto sweepChange = [&](const char* name, const auto& change) {
        sweepAllocations(name, [&] {
            direct.description(text);
            const HRESULT code = change(direct.get());
            return SweepOutcome{code, direct.description() == text};
        });
    };
    const CATUnicodeString other(text.c_str());
    sweepChange("setInstanceDescription",
                [&](auto* p) { return VornToolsCommon::setInstanceDescription(p, other + "x"); });
    sweepChange("addSecondaryPart", [](auto* p) { return VornToolsCommon::addSecondaryPartInInstanceDescription(p); });
    sweepChange("cleanDescription",
                [](auto* p) { return VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(p); });
}

} // namespace
