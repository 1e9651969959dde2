#include "VornToolsIgnoreNodes.h"

#include "CATIProduct.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"

struct VornToolsIgnoreNodesTestAccess {
    static HRESULT load(VornToolsIgnoreNodes& nodes) { return nodes.loadPrefixIgnoreNodes(); }
    static bool startsWithPrefix(VornToolsIgnoreNodes& nodes, const CATUnicodeString& text) {
        unsigned char result = 7;
        EXPECT_EQ(nodes.isStartedByPrefix(text, result), S_OK);
        return result != 0;
    }
    static std::string formatted(VornToolsIgnoreNodes& nodes, const char* description) {
        CATUnicodeString text(description);
        EXPECT_EQ(nodes.setFormatInstanceDescription(text), S_OK);
        return text.ConvertToChar();
    }
};

namespace {

using Access = VornToolsIgnoreNodesTestAccess;

class IgnoreNodesTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        environment().configurationDirectory = folder().u8string();
        environment().instanceDescriptionMarksIgnoreNodes = true;
    }
    std::string writePrefixes(const std::string& bytes) { return write("IgnoreNodesIdentifiers.txt", bytes); }
    /** The answer, and in `decision` the last line that the journal has of it. */
    int ask(VornToolsIgnoreNodes& nodes, const embedded::Product& product, const char* fileName, int mode,
            HRESULT expected = S_OK) {
        clearJournal();
        unsigned char result = 7;
        EXPECT_EQ(nodes.isAnIgnoreNode(product ? product.get() : nullptr, fileName, mode, result), expected);
        const Texts lines = messages();
        decision = lines.empty() ? "" : lines.back();
        return result;
    }
    std::string decision;
};

TEST_F(IgnoreNodesTest, PrefixesAreReadLineByLineAsTheyStand) {
    writePrefixes("AB\r\n\n XY\nAB\nend");
    VornToolsIgnoreNodes nodes;
    EXPECT_EQ(messages(), Texts({"the ignore nodes prefix file was loaded"}));
    for (const char* text : {"AB", "ABC", " XYZ", "endless"})
        EXPECT_TRUE(Access::startsWithPrefix(nodes, text)) << text;
    for (const char* text : {"", "A", "XAB", "abc", "XYZ", "XABAB"})
        EXPECT_FALSE(Access::startsWithPrefix(nodes, text)) << text;
    writePrefixes("Q");
    EXPECT_EQ(Access::load(nodes), S_OK);
    EXPECT_FALSE(Access::startsWithPrefix(nodes, "AB")) << "loading starts over";
    EXPECT_TRUE(Access::startsWithPrefix(nodes, "Q"));
}

TEST_F(IgnoreNodesTest, PrefixesAreMadeOfCharactersNotOfBytes) {
    writePrefixes("x\xC3\n\xC3\x84rger");
    VornToolsIgnoreNodes nodes;
    EXPECT_TRUE(Access::startsWithPrefix(nodes, "x\xC3-"));
    EXPECT_EQ(Access::startsWithPrefix(nodes, "x\xC3\xA4"), eightBit("\xC3\xA4") == "\xE4")
        << "half a character is none";
    EXPECT_TRUE(Access::startsWithPrefix(nodes, "\xC3\x84rger 1"));
    EXPECT_FALSE(Access::startsWithPrefix(nodes, "\xC3\x96rger 1"));
    EXPECT_FALSE(Access::startsWithPrefix(nodes, utf8("\xC5\x81rger 1"))) << "not by what an encoding lacks";
}

TEST_F(IgnoreNodesTest, WithoutUsablePrefixesOnlyDescriptionsCount) {
    const std::string name = path("IgnoreNodesIdentifiers.txt");
    auto part = session().product("r.CATProduct").root().add(session().part("AB.CATPart"), "AB.1");
    const auto load = [&](HRESULT code, const Texts& lines) {
        clearJournal();
        VornToolsIgnoreNodes nodes;
        EXPECT_EQ(messages(), lines);
        EXPECT_EQ(Access::load(nodes), code);
        EXPECT_EQ(ask(nodes, part, "AB.CATPart", 0), 0);
        part.description("IgnoreNode");
        EXPECT_EQ(ask(nodes, part, "AB.CATPart", 0), 1);
        EXPECT_EQ(ask(nodes, part, "AB.CATPart", 1), 1) << "the active document is then tested as an element";
        part.description("");
    };
    load(E_FAIL, {"the ignore nodes prefix file " + name + " does not exist"});
    writePrefixes("\n\r\n");
    load(E_FAIL, {"the ignore nodes prefix file " + name + " is empty", "the ignore nodes prefix file was loaded"});
    environment().missingManagers = {"VornEnvConfig"};
    load(E_FAIL, {"the ignore nodes prefix file  does not exist"});

    environment().missingManagers = {"ENVManager"};
    std::filesystem::remove(folder() / "IgnoreNodesIdentifiers.txt");
    VornToolsIgnoreNodes neither;
    EXPECT_EQ(ask(neither, part, "AB.CATPart", 0), 0);
    EXPECT_EQ(decision, "Ignore Nodes are not managed");
    EXPECT_EQ(ask(neither, embedded::Product(), "", 0), 0) << "asked before the product is looked at";
}

TEST_F(IgnoreNodesTest, AFileThatBreaksOffGivesNoPrefix) {
    const std::string name = writePrefixes("AB\nCD\n");
    VornToolsIgnoreNodes nodes;
    clearJournal();
    embedded::Failures::get().arm(5, false, embedded::FaultFlavour::code); // the second line
    EXPECT_EQ(Access::load(nodes), E_FAIL);
    EXPECT_EQ(embedded::Failures::get().firedAt(), "UTILFile::readLine");
    embedded::Failures::get().disarm();
    EXPECT_EQ(messages(), Texts({"unable to read the ignore nodes prefix file " + name}));
    EXPECT_EQ(reports(), Texts({"VornToolsIgnoreNodes::loadPrefixIgnoreNodes 9001 p_prefix_file"}));
}

TEST_F(IgnoreNodesTest, EachKindOfNodeIsToldByItsOwnTexts) {
    writePrefixes("AB");
    auto root = session().product("r.CATProduct").root();
    auto reference = session().part("p.CATPart");
    auto part = root.add(reference, "p.1");
    const struct {
        int mode;
        const char *partNumber, *fileName, *instanceName, *description;
        const char* decision; ///< null: none
    } cases[] = {
        {0, "x", "x", "x", "IgnoreNode\nKETO", "the Component is an Ignore Node (by Instance Description)"},
        {0, "ABC", "ABC", "ABC", "", "the element is an ignore node (by PartNumber)"},
        {7, "x", "ABC", "ABC", "", "the element is an ignore node (by File Name)"},
        {0, "x", "x", "ABC", " IgnoreNode", "the element is an ignore node (by Instance Name)"},
        {0, "x", "x", "xAB", "ignorenode", nullptr},
        {1, "ABC", "ABC", "x", "IgnoreNode", "the ActiveDocument is an Ignore Node (by PartNumber)"},
        {1, "x", "ABC", "x", "", "the ActiveDocument is an Ignore Node (by File Name)"},
        {1, "x", "x", "ABC", "IgnoreNode", nullptr},
        {2, "x", "x", "x", "IgnoreNodes", "the BrokenIcon is an Ignore Node (by Instance Description)"},
        {2, "ABC", "ABC", "ABC", "", "the BrokenIcon is an Ignore Node (by Instance Name)"},
        {2, "ABC", "ABC", "x", "", nullptr},
        {3, "x", "x", "x", "IgnoreNode", "the Component is an Ignore Node (by Instance Description)"},
        {3, "ABC", "x", "x", "", "the Component is an Ignore Node (by PartNumber)"},
        {3, "x", "ABC", "ABC", "", "the Component is an Ignore Node (by Instance Name)"},
        {3, "x", "ABC", "x", "", nullptr},
    };
    VornToolsIgnoreNodes nodes;
    for (const auto& c : cases) {
        SCOPED_TRACE(std::to_string(c.mode) + " " + (c.decision ? c.decision : "none"));
        reference.root().partNumber(c.partNumber);
        part.instanceName(c.instanceName).description(c.description);
        EXPECT_EQ(ask(nodes, part, c.fileName, c.mode), c.decision ? 1 : 0);
        EXPECT_EQ(decision, c.decision ? c.decision : "the element is NOT an ignore node");
    }
    EXPECT_EQ(ask(nodes, embedded::Product(), "x", 0, E_FAIL), 0);
    EXPECT_EQ(decision, "ip_product is NULL. Exit.");
    EXPECT_EQ(reports(), Texts({"VornToolsIgnoreNodes::isAnIgnoreNode 9001 ip_product"}));

    environment().instanceDescriptionMarksIgnoreNodes = false;
    VornToolsIgnoreNodes prefixesOnly;
    part.description("IgnoreNode").instanceName("x");
    for (const int mode : {0, 3}) EXPECT_EQ(ask(prefixesOnly, part, "x", mode), 0) << mode;
    EXPECT_EQ(ask(prefixesOnly, part, "x", 2), 1) << "a broken icon's description always counts";
}

TEST_F(IgnoreNodesTest, WhatCannotBeReadIsJournalled) {
    const std::string description = "VornToolsCommon::getInstanceDescription is failed.";
    const std::string partNumber = "product_part_number is empty.";
    const std::string name = "getPrdInstanceNameWithoutNewLines is failed.";
    const std::string none = "the element is NOT an ignore node";
    writePrefixes("AB");
    auto root = session().product("r.CATProduct").root();
    auto part = root.add(session().part("p.CATPart"), "p.1");
    VornToolsIgnoreNodes nodes;
    const struct {
        const char* site;
        Texts lines, debugLines;
    } cases[] = {{"CATIPrdProperties::GetDescriptionInst", {none}, {description, none}},
                 {"CATIProduct::GetPartNumber", {partNumber, none}, {partNumber, none}},
                 {"CATIProduct::GetPrdInstanceName", {none}, {name, none}}};
    for (const auto& c : cases)
        for (const int mode : {0, 3})
            for (const bool debug : {false, true}) {
                environment().debugMode = debug;
                EXPECT_TRUE(failAt(c.site, 1, [&] { EXPECT_EQ(ask(nodes, part, "p.CATPart", mode), 0); }));
                EXPECT_EQ(messages(), debug ? c.debugLines : c.lines) << c.site;
            }
    EXPECT_EQ(reports(), Texts());
}

TEST_F(IgnoreNodesTest, NamesAreReadOnlyWhereTheyCount) {
    auto part = session().product("r.CATProduct").root().add(session().part("p.CATPart"), "p.1");
    VornToolsIgnoreNodes nodes; // without prefixes
    for (const int mode : {0, 2, 3}) {
        EXPECT_EQ(ask(nodes, part, "p.CATPart", mode), 0);
        EXPECT_EQ(messages(), Texts({"the element is NOT an ignore node"}));
        EXPECT_FALSE(embedded::Journal::get().contains("> VornToolsCommon::getPrdInstanceNameWithoutNewLines"));
        part.description("IgnoreNode");
        EXPECT_EQ(ask(nodes, part, "p.CATPart", mode), 1);
        EXPECT_EQ(decision, std::string(mode == 2 ? "the BrokenIcon" : "the Component") +
                                " is an Ignore Node (by Instance Description)");
        part.description("");
    }
}

TEST_F(IgnoreNodesTest, AncestorsAreTestedUpToTheRoot) {
    writePrefixes("AB");
    auto part = session().part("ABpart.CATPart");
    auto inner = session().product("inner.CATProduct");
    auto ignored = session().product("ABgroup.CATProduct");
    auto root = session().product("r.CATProduct").root();
    inner.root().add(part, "p.1");
    ignored.root().partNumber("group").add(inner, "i.1"); // told by its file name
    root.add(ignored, "g.1");
    root.add(inner, "i.1");
    VornToolsIgnoreNodes nodes;
    const auto has = [&](const embedded::Product& product) {
        clearJournal();
        unsigned char result = 7;
        EXPECT_EQ(nodes.hasAnIgnoreNode(product.get(), result), S_OK);
        EXPECT_EQ(messages().back() == "the element is NOT a child of an ignore node", result == 0);
        return int(result);
    };
    EXPECT_EQ(has(root.at({"g.1", "i.1", "p.1"})), 1);
    EXPECT_EQ(has(root.at({"i.1", "p.1"})), 0) << "the part itself does not count";
    EXPECT_EQ(has(root.at({"g.1"})), 0);
    EXPECT_EQ(has(ignored.root()), 0) << "nothing is above a root";
    unsigned char result = 7;
    EXPECT_EQ(nodes.hasAnIgnoreNode(nullptr, result), E_FAIL);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(reports(), Texts({"VornToolsIgnoreNodes::hasAnIgnoreNode 9001 ip_product"}));
}

TEST_F(IgnoreNodesTest, DescriptionsBecomeThoseOfAnIgnoreNode) {
    VornToolsIgnoreNodes nodes;
    const struct {
        const char *before, *after;
    } cases[] = {
        {"", "IgnoreNode"},
        {"IgnoreNode\nfoo", "IgnoreNode\nfoo"},
        {"IgnoreNodeX", "IgnoreNodeX"},
        {"foo", "IgnoreNode\nfoo"},
        {"BrokenIcon", "IgnoreNode"},
        {"BrokenIcon\nKETO_ID_1\nfoo", "IgnoreNode\nKETO_ID_1\nfoo"},
        {"SecondaryPartX", "IgnoreNodeX"},
        {"KETO_ID_1", "IgnoreNode"},
        {"KETO_ID_1\nfoo\nbar", "IgnoreNode\nfoo\nbar"},
        {"\nKETO_ID_1", "IgnoreNode\n\nKETO_ID_1"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Access::formatted(nodes, c.before), c.after);
        EXPECT_EQ(Access::formatted(nodes, c.after), c.after) << "a second time changes nothing";
    }
}

TEST_F(IgnoreNodesTest, AnInstanceIsMarked) {
    auto root = session().product("r.CATProduct").root();
    auto part = root.add(session().part("p.CATPart"), "p.1").description("KETO_ID_1\nfoo");
    VornToolsIgnoreNodes nodes;
    EXPECT_EQ(nodes.updateInstanceDescription(part.get()), S_OK);
    EXPECT_EQ(part.description(), "IgnoreNode\nfoo");
    EXPECT_EQ(nodes.updateInstanceDescription(nullptr), E_FAIL);
    EXPECT_EQ(nodes.updateInstanceDescription(root.get()), S_OK);
    part.withoutProperties();
    EXPECT_EQ(nodes.updateInstanceDescription(part.get()), S_OK);
    const std::string method = "VornToolsIgnoreNodes::updateInstanceDescription ";
    EXPECT_EQ(reports(), Texts({method + "9001 ip_catiproduct", method + "9004 getInstanceInFirstProductParent",
                                method + "9002 p_product_child_properties"}));
}

TEST_F(IgnoreNodesTest, FailedCallsAreReported) {
    writePrefixes("AB");
    auto root = session().product("r.CATProduct").root();
    auto part = root.add(session().part("p.CATPart"), "p.1");
    VornToolsIgnoreNodes nodes;
    const auto mark = [&] {
        part.description("foo");
        return nodes.updateInstanceDescription(part.get());
    };
    const auto ask = [&](int mode) {
        unsigned char result = 7;
        const HRESULT code = nodes.isAnIgnoreNode(part.get(), "p.CATPart", mode, result);
        EXPECT_EQ(result, 0);
        return code;
    };
    const auto askAncestors = [&] {
        unsigned char result = 7;
        const HRESULT code = nodes.hasAnIgnoreNode(part.get(), result);
        EXPECT_EQ(result, 0);
        return code;
    };
    const struct {
        const char* site;
        std::function<HRESULT()> call;
        HRESULT code;
        const char* report;
    } cases[] = {
        {"CATIPrdProperties::GetDescriptionInst", mark, S_OK, "updateInstanceDescription 9004 GetDescriptionInst"},
        {"CATIPrdProperties::SetDescriptionInst", mark, S_OK, "updateInstanceDescription 9004 SetDescriptionInst"},
        {"QueryInterface(CATIPrdProperties)", mark, S_OK, "updateInstanceDescription 9002 p_product_child_properties"},
        {"CATIProduct::GetPartNumber", [&] { return ask(1); }, S_OK, "isActiveDocumentAnIgnoreNode 9004 GetPartNumber"},
        {"CATIProduct::GetPrdInstanceName", [&] { return ask(2); }, E_FAIL,
         "isBrokenIconAnIgnoreNode 9004 VornToolsCommon::getPrdInstanceNameWithoutNewLines"},
        {"UTILFile::splitPathAndFileName", askAncestors, E_FAIL, "hasAnIgnoreNode 9004 splitPathAndFileName"},
    };
    for (const auto& c : cases) {
        HRESULT code = S_FALSE;
        EXPECT_TRUE(failAt(c.site, 1, [&] { code = c.call(); }));
        EXPECT_EQ(code, c.code) << c.site;
        EXPECT_EQ(part.description(), "foo") << c.site;
        EXPECT_EQ(reports(), Texts({std::string("VornToolsIgnoreNodes::") + c.report}));
        EXPECT_FALSE(embedded::Journal::get().contains("the element is NOT a child of an ignore node"));
    }
}

TEST_F(IgnoreNodesTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    writePrefixes("AB\nCD");
    auto inner = session().product("CDi.CATProduct");
    inner.root().add(session().part("p.CATPart"), "p.1");
    auto root = session().product("r.CATProduct").root();
    root.add(inner, "i.1");
    auto part = root.at({"i.1", "p.1"});
    VornToolsIgnoreNodes nodes;

    const auto start = [&] { return nodes.initClassVariables(); };
    sweepFailures({"VornToolsIgnoreNodes::initClassVariables", [&] { return SweepOutcome{start()}; }, start});
    for (const int mode : {0, 1, 2, 3})
        sweepFailures({"VornToolsIgnoreNodes::isAnIgnoreNode", [&] {
                           unsigned char result = 7;
                           const HRESULT code = nodes.isAnIgnoreNode(part.get(), "CD.CATPart", mode, result);
                           return outcomeOf(code, result);
                       }});
    sweepFailures({"VornToolsIgnoreNodes::hasAnIgnoreNode", [&] {
                       unsigned char result = 7;
                       const HRESULT code = nodes.hasAnIgnoreNode(part.get(), result);
                       return outcomeOf(code, result);
                   }});
    auto instance = root.at({"i.1"});
    sweepFailures({"VornToolsIgnoreNodes::updateInstanceDescription",
                   [&] { return SweepOutcome{nodes.updateInstanceDescription(instance.get())}; },
                   [&] { instance.description("KETO_ID_1"); }});
}

TEST_F(IgnoreNodesTest, WithoutMemoryACallFails) {
    const std::string text(200000, 'n');
    writePrefixes("x\n" + text + "x");
    auto group = session().product("g.CATProduct").root();
    group.partNumber(text);
    auto part = group.add(session().part("p.CATPart"), "p.1");
    auto root = session().product("r.CATProduct").root();
    auto instance = root.add(session().product("g.CATProduct"), "g.1").instanceName("g" + text).description(text);
    VornToolsIgnoreNodes nodes;
    for (const int mode : {0, 1, 2, 3})
        sweepAllocations("isAnIgnoreNode", [&] {
            unsigned char result = 7;
            const HRESULT code = nodes.isAnIgnoreNode(instance.get(), "g.CATProduct", mode, result);
            return outcomeOf(code, result);
        });
    sweepAllocations("hasAnIgnoreNode", [&] {
        unsigned char result = 7;
        const HRESULT code = nodes.hasAnIgnoreNode(root.at({"g" + text, "p.1"}).get(), result);
        return outcomeOf(code, result);
    });
    sweepAllocations("updateInstanceDescription", [&] {
        instance.description(text);
        const HRESULT code = nodes.updateInstanceDescription(instance.get());
        return SweepOutcome{code, instance.description() == text};
    });
    sweepAllocations("initClassVariables", [&] {
        const HRESULT code = nodes.initClassVariables();
        unsigned char result = 7;
        nodes.isAnIgnoreNode(part.get(), "xp.CATPart", 0, result);
        return outcomeOf(code, result);
    });
    environment().configurationDirectory = text;
    sweepAllocations("initClassVariables", [&] { return SweepOutcome{nodes.initClassVariables()}; });
}

} // namespace
