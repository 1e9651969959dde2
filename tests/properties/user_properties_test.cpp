#include "CATBSTR.h"
#include "CATICkeParm.h"
#include "CATIParmPublisher.h"
#include "CATIProduct.h"
#include "VornToolsCommon.h"
#include "embedded/Parameters.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include <functional>

namespace {

const std::string kCommon = "VornToolsCommon::";

class UserPropertiesTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        root = session().product("/w/Root.CATProduct").root();
        bolt = root.add(session().part("/w/Bolt.CATPart"), "Bolt.1");
        properties = embedded::userProperties(bolt);
    }
    static CATListValCATUnicodeString list(const Texts& texts) {
        CATListValCATUnicodeString result;
        for (const std::string& text : texts) result.Append(CATUnicodeString(text.data(), text.size()));
        return result;
    }
    static HRESULT set(const embedded::Product& product, const Texts& names, const Texts& values, const Texts& types) {
        return VornToolsCommon::setUserProperties(product.get(), list(names), list(values), list(types));
    }
    /** "name=value" of every user property that is read. */
    static Texts read(const embedded::Product& product, HRESULT expected = S_OK) {
        CATListValCATUnicodeString names = list({"before"}), values = list({"before"});
        EXPECT_EQ(VornToolsCommon::getUserProperties(product.get(), names, values), expected);
        EXPECT_EQ(names.Size(), values.Size());
        Texts result;
        for (int i = 1; i <= names.Size(); ++i)
            result.push_back(std::string(names[i].ConvertToChar()) + "=" + values[i].ConvertToChar());
        return result;
    }
    /** Runs an operation with its first call of a name failing, on a part with one user property; its code. */
    HRESULT failAt(const std::string& call, const std::function<HRESULT()>& operation) {
        auto& failures = embedded::Failures::get();
        std::string met = "none yet";
        for (int nth = 1; !met.empty(); ++nth) {
            reports();
            clearJournal();
            session().reset();
            environment().createsProperties = true;
            bolt = session().part("/w/Bolt.CATPart").root();
            properties = embedded::userProperties(bolt);
            properties.add("EBS_DatasetUid", "x");
            failures.arm(nth, false, embedded::FaultFlavour::code);
            const HRESULT code = operation();
            met = failures.firedAt();
            failures.disarm();
            if (met == call) return code;
        }
        ADD_FAILURE() << "never called: " << call;
        return S_OK;
    }
    static HRESULT changeAccess(const embedded::Product& product, const char* name, int mode) {
        return VornToolsCommon::changePropertyAccess(product.get(), name, mode);
    }

    embedded::Product root, bolt;
    embedded::Publisher properties;
};

TEST_F(UserPropertiesTest, ValuesAreReadAsOneLineEach) {
    properties.add("Text", "a\r\nb\x1A\nc");
    properties.add("True", true);
    properties.add("False", false);
    properties.add("Length", "Width", 0.0125);
    properties.add("Unset", 1).withoutValue();
    properties.add("", "no name").userName("");
    properties.add("", "x").userName("a\\b\\Deep");
    properties.add("km/h", 1);
    properties.addSet("Inner").add("hidden", 1);
    clearJournal();
    EXPECT_EQ(read(bolt), (Texts{"Text=a b_ c", "True=1", "False=0", "Width=12.5mm", "=no name", "Deep=x", "km/h=1"}));
    EXPECT_EQ(messages(), (Texts{"This param is not set"}));
    EXPECT_EQ(read(root), Texts()) << "nobody made user properties";
    EXPECT_EQ(read(embedded::Product(), E_FAIL), Texts());
    EXPECT_EQ(read(root.addUnresolved("x.1"), E_FAIL), Texts());
    EXPECT_EQ(read(bolt.withoutProperties(), E_FAIL), Texts());
}

TEST_F(UserPropertiesTest, ExistingPropertiesAreUpdatedAndMissingOnesMadeWhenAllowed) {
    properties.add("A", "old").userName("path\\to\\A");
    properties.add("OEM_old", "old");
    clearJournal();
    EXPECT_EQ(set(bolt, {"A", "N"}, {"new", "1"}, {"s", "i"}), S_OK);
    EXPECT_EQ(read(bolt), (Texts{"A=new", "OEM_old=old"}));
    EXPECT_EQ(messages(),
              (Texts{"looking for parameter name [A]", "--> parameter name from CATIA [path\\to\\A]", "found",
                     "looking for parameter name [N]", "--> parameter name from CATIA [path\\to\\A]",
                     "--> parameter name from CATIA [Bolt\\Properties\\OEM_old]"}));
    environment().createsProperties = true;
    environment().ignoresOemProperties = true;
    environment().propertiesReadOnlyOnCreate = {"R"};
    EXPECT_EQ(set(bolt, {"OEM_new", "OEM_old", "R", "M", "M", ""}, {"x", "y", "1.5", "a@=@b", "c", "z"},
                  {"s", "s", "d", "s", "s", "s"}),
              S_OK);
    EXPECT_EQ(read(bolt), (Texts{"A=new", "OEM_old=y", "R=1.5", "M=c", "=z"}));
    EXPECT_EQ(properties.parameter("R").access(), 1);
    EXPECT_EQ(properties.parameter("M").access(), 3);
    EXPECT_EQ(properties.parameter("M").list(), "string: c, a, b");
    EXPECT_EQ(set(bolt, {"B", "A"}, {"x", "later"}, {"i", "s"}), S_OK) << "the last one counts";
    EXPECT_EQ(set(bolt, {"A", "B"}, {"later", "x"}, {"s", "i"}), E_FAIL);
    EXPECT_EQ(read(bolt).front(), "A=later");
    EXPECT_EQ(set(bolt, {"km/h"}, {"1"}, {"i"}), S_OK);
    EXPECT_EQ(set(bolt, {"km/h"}, {"2"}, {"i"}), S_OK) << "a slash is no path";
    EXPECT_EQ(read(bolt).back(), "km/h=2");
    EXPECT_EQ(VornToolsCommon::RemoveProperty(bolt.get(), "km/h"), S_OK);
    EXPECT_EQ(read(bolt).size(), 5U);
    environment().ignoresOemProperties = false;
    EXPECT_EQ(set(root, {"OEM_new"}, {"x"}, {"s"}), S_OK);
    EXPECT_EQ(read(root), (Texts{"OEM_new=x"}));
    environment().missingManagers = {"ENVManager", "PROCManager"};
    EXPECT_EQ(set(root, {"Q"}, {"x"}, {"s"}), S_OK);
    EXPECT_EQ(read(root), (Texts{"OEM_new=x"}));
}

TEST_F(UserPropertiesTest, BadInputIsReportedAndChangesNothing) {
    const std::string digest = session().digest();
    EXPECT_EQ(set(embedded::Product(), {}, {}, {}), E_FAIL);
    EXPECT_EQ(set(bolt, {"A"}, {}, {"s"}), E_FAIL);
    EXPECT_EQ(set(bolt, {"A"}, {"x"}, {"s", "s"}), E_FAIL);
    EXPECT_EQ(set(root.addUnresolved("x.1"), {"A"}, {"x"}, {"s"}), E_FAIL);
    EXPECT_EQ(VornToolsCommon::RemoveProperty(nullptr, "A"), E_FAIL);
    EXPECT_EQ(VornToolsCommon::removeEBSProperties(root.addUnresolved("y.1").get()), E_FAIL);
    EXPECT_EQ(changeAccess(embedded::Product(), "A", 1), E_FAIL);
    CATUnicodeString name("before");
    EXPECT_EQ(VornToolsCommon::getNameProperty(CATICkeParm_var(), name), E_FAIL);
    EXPECT_TRUE(name.IsNull());
    EXPECT_EQ(set(bolt, {}, {}, {}), S_OK);
    EXPECT_EQ(
        reports(),
        (Texts{kCommon + "setUserProperties 9001 ipi_catiproduct", kCommon + "setUserProperties 9001 i_values",
               kCommon + "setUserProperties 9001 i_types", kCommon + "setUserProperties 9002 pi_catiparmpublisher",
               kCommon + "RemoveProperty 9001 ipi_catiproduct",
               kCommon + "removeEBSProperties 9002 pi_catiparmpublisher",
               kCommon + "changePropertyAccess 9001 ipi_catiproduct", kCommon + "getNameProperty 9001 i_parameter"}));
    bolt.withoutProperties();
    EXPECT_EQ(set(bolt, {"A"}, {"x"}, {"s"}), E_FAIL);
    EXPECT_EQ(changeAccess(bolt, "A", 1), E_FAIL);
    EXPECT_EQ(reports(), (Texts{kCommon + "setUserProperties 9002 pi_cati_prd_properties",
                                kCommon + "changePropertyAccess 9002 pi_cati_prd_properties"}));
    EXPECT_NE(session().digest(), digest) << "the broken instance is new";
}

TEST_F(UserPropertiesTest, PropertiesAreRemovedByName) {
    for (const char* const name : {"A", "EBS_DatasetUid", "B", "EBS_ItemRevName", "EBS_DatasetLastVersion",
                                   "EBS_ItemRevName", "XEBS_DatasetUid", "A"})
        properties.add(name, "x");
    clearJournal();
    EXPECT_EQ(VornToolsCommon::RemoveProperty(bolt.get(), "A"), S_OK);
    EXPECT_EQ(VornToolsCommon::RemoveProperty(bolt.get(), "a"), S_FALSE);
    EXPECT_EQ(VornToolsCommon::removeEBSProperties(bolt.get()), S_OK);
    EXPECT_EQ(read(bolt), (Texts{"B=x", "XEBS_DatasetUid=x", "A=x"}));
    EXPECT_EQ(messages(),
              (Texts{"parameter removed [A]", "parameter to remove not found [a]",
                     "EBS parameter removed [EBS_DatasetUid]", "EBS parameter removed [EBS_ItemRevName]",
                     "EBS parameter removed [EBS_DatasetLastVersion]", "EBS parameter removed [EBS_ItemRevName]"}));
}

TEST_F(UserPropertiesTest, AProductWithoutUserPropertiesHasNothingToRemove) {
    const std::string digest = session().digest();
    EXPECT_EQ(VornToolsCommon::RemoveProperty(root.get(), "A"), S_FALSE);
    EXPECT_EQ(VornToolsCommon::removeEBSProperties(root.get()), S_OK);
    EXPECT_EQ(messages(), (Texts{"parameter to remove not found [A]"}));
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(session().digest(), digest);
}

TEST_F(UserPropertiesTest, ANameThatIsAPathIsAWholeName) {
    environment().createsProperties = true;
    properties.add("b", "old");
    properties.add("c", "old").userName("to\\c");
    EXPECT_EQ(set(bolt, {"a\\b", "a\\b", "to\\c"}, {"1", "2", "new"}, {"s", "s", "s"}), S_OK);
    EXPECT_EQ(set(bolt, {"a\\b"}, {"3"}, {"s"}), S_OK);
    EXPECT_EQ(read(bolt), (Texts{"b=old", "c=new", "b=3"}));
    EXPECT_EQ(changeAccess(bolt, "a\\b", 0), S_OK);
    EXPECT_EQ(properties.parameter("a\\b").access(), 1);
    EXPECT_EQ(VornToolsCommon::RemoveProperty(bolt.get(), "x\\b"), S_FALSE);
    EXPECT_EQ(VornToolsCommon::RemoveProperty(bolt.get(), "a\\b"), S_OK);
    EXPECT_EQ(read(bolt), (Texts{"b=old", "c=new"}));
}

TEST_F(UserPropertiesTest, WhatIsThereStillIsNotRemoved) {
    const std::pair<const char*, std::function<HRESULT()>> operations[] = {
        {"RemoveProperty", [&] { return VornToolsCommon::RemoveProperty(bolt.get(), "EBS_DatasetUid"); }},
        {"removeEBSProperties", [&] { return VornToolsCommon::removeEBSProperties(bolt.get()); }}};
    for (const auto& [method, operation] : operations) {
        EXPECT_EQ(failAt("CATIParmPublisher::RemoveChild", operation), E_FAIL);
        EXPECT_EQ(reports(), (Texts{kCommon + method + " 9003 RemoveChild"}));
        EXPECT_EQ(messages(), Texts());
    }
}

TEST_F(UserPropertiesTest, AccessHasThreeModes) {
    embedded::Parameter property = properties.add("A", "x");
    clearJournal();
    const std::pair<int, int> modes[] = {{0, 1}, {1, 3}, {2, 4}};
    for (const auto& [mode, access] : modes) {
        EXPECT_EQ(changeAccess(bolt, "A", mode), S_OK);
        EXPECT_EQ(property.access(), access);
    }
    EXPECT_EQ(
        messages(),
        (Texts{"try to set access mode to 0 for propertie = A", "change user access mode to ReadOnly for parameter A",
               "try to set access mode to 1 for propertie = A", "change user access mode to ReadWrite for parameter A",
               "try to set access mode to 2 for propertie = A", "change user access mode to User for parameter A"}));
    clearJournal();
    EXPECT_EQ(changeAccess(bolt, "A", 3), E_FAIL);
    EXPECT_EQ(changeAccess(bolt, "A", -1), E_FAIL);
    EXPECT_EQ(property.access(), 4);
    EXPECT_EQ(changeAccess(bolt, "B", 0), S_FALSE);
    EXPECT_EQ(changeAccess(root, "A", 0), E_FAIL);
    EXPECT_EQ(messages(),
              (Texts{"try to set access mode to 3 for propertie = A", "try to set access mode to -1 for propertie = A",
                     " propertie not found yet", "pi_catia_parameters = null"}));
    EXPECT_EQ(reports(), Texts(2, kCommon + "changePropertyAccess 9004 user_access_mode is unknown"));
}

TEST_F(UserPropertiesTest, ANameIsTheLastPartOfThePath) {
    const std::pair<const char*, const char*> names[] = {
        {"a\\b\\c", "c"}, {"plain", "plain"}, {"a\\", ""}, {"a/b", "a/b"}};
    embedded::Parameter property = properties.add("P", "x");
    for (const auto& [full, expected] : names) {
        property.userName(full);
        CATUnicodeString name("before");
        clearJournal();
        EXPECT_EQ(VornToolsCommon::getNameProperty(CATICkeParm_var(property.get()), name), S_OK);
        EXPECT_STREQ(name.ConvertToChar(), expected);
        EXPECT_EQ(messages(), (Texts{"Property name of [" + std::string(full) + "] is [" + expected + "]"}));
    }
}

TEST_F(UserPropertiesTest, NothingIsMadeWithoutKnowingWhatIsReadOnly) {
    EXPECT_EQ(failAt("ENVManager::getReadOnlyPropertiesOnCreate", [&] { return set(bolt, {"A"}, {"x"}, {"s"}); }),
              E_FAIL);
    EXPECT_EQ(reports(), (Texts{kCommon + "setUserProperties 9003 getReadOnlyPropertiesOnCreate"}));
    EXPECT_EQ(read(bolt), (Texts{"EBS_DatasetUid=x"}));
}

TEST_F(UserPropertiesTest, WithoutAContainerNothingIsMadeOrRemoved) {
    EXPECT_EQ(failAt("CATIParmPublisher::GetContainer", [&] { return set(bolt, {"A"}, {"x"}, {"s"}); }), E_FAIL);
    EXPECT_EQ(reports(), (Texts{kCommon + "setUserProperties 9002 sp_container"}));
    const auto remove = [&] { return VornToolsCommon::RemoveProperty(bolt.get(), "EBS_DatasetUid"); };
    EXPECT_EQ(failAt("CATIParmPublisher::GetContainer", remove), E_FAIL);
    EXPECT_EQ(reports(), (Texts{kCommon + "RemoveProperty 9002 spi_container"}));
    EXPECT_EQ(read(bolt), (Texts{"EBS_DatasetUid=x"}));
}

TEST_F(UserPropertiesTest, AMemberThatDoesNotTellItsNameMayBeTheOneLookedFor) {
    const std::pair<const char*, std::function<HRESULT()>> operations[] = {
        {"setUserProperties", [&] { return set(bolt, {"EBS_DatasetUid"}, {"x"}, {"s"}); }},
        {"changePropertyAccess", [&] { return changeAccess(bolt, "EBS_DatasetUid", 1); }},
        {"RemoveProperty", [&] { return VornToolsCommon::RemoveProperty(bolt.get(), "EBS_DatasetUid"); }},
        {"removeEBSProperties", [&] { return VornToolsCommon::removeEBSProperties(bolt.get()); }}};
    for (const auto& [method, operation] : operations)
        for (const char* const call :
             {"QueryInterface(CATICkeParm)", "CATICkeParm::Name", "UTILFile::splitPathAndFileName"}) {
            SCOPED_TRACE(std::string(method) + " " + call);
            EXPECT_EQ(failAt(call, operation), E_FAIL);
            EXPECT_EQ(reports(), (Texts{kCommon + method + " 9002 sp_cke_parm"}));
            EXPECT_EQ(read(bolt), (Texts{"EBS_DatasetUid=x"}));
        }
    const std::string unsplit = "UTILFile::splitPathAndFileName is failed";
    const struct {
        const char* call;
        Texts ofReading;
        std::string lastOfWriting;
    } cases[] = {{"QueryInterface(CATICkeParm)", {"sp_cke_parm is NULL_var"}, "looking for parameter name [A]"},
                 {"CATICkeParm::Name", {unsplit}, "setUserProperties : " + unsplit + "."},
                 {"UTILFile::splitPathAndFileName", {unsplit}, "setUserProperties : " + unsplit + "."}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.call);
        CATListValCATUnicodeString names, values;
        EXPECT_EQ(failAt(c.call, [&] { return VornToolsCommon::getUserProperties(bolt.get(), names, values); }), S_OK);
        EXPECT_EQ(names.Size() + values.Size(), 0);
        EXPECT_EQ(messages(), c.ofReading);
        EXPECT_EQ(failAt(c.call, [&] { return set(bolt, {"A"}, {"x"}, {"s"}); }), E_FAIL);
        EXPECT_EQ(messages().back(), c.lastOfWriting);
        reports();
    }
}

TEST_F(UserPropertiesTest, FaultsOfThePlatformAreMet) {
    embedded::Parameter text = properties.add("A", "x"), number = properties.add("EBS_DatasetUid", 1);
    const auto keep = [&] {
        while (properties.parameters().size() > 2)
            properties.publisher()->RemoveChild(CATISpecObject_var(properties.parameters().back().specObject()));
        if (properties.parameters().size() < 2) {
            properties.publisher()->RemoveChild(CATISpecObject_var(number.specObject()));
            properties.publisher()->Append(CATISpecObject_var(text.specObject()));
            properties.publisher()->Append(CATISpecObject_var(number.specObject()));
        }
        text.access(3).get()->Valuate(CATUnicodeString("x"));
    };
    const auto sweep = [&](const char* method, const std::function<HRESULT()>& call) {
        sweepFailures({kCommon + method, [&] { return SweepOutcome{call(), true}; }, keep});
    };
    sweepFailures({kCommon + "getUserProperties", [&] {
                       CATListValCATUnicodeString names, values;
                       const HRESULT code = VornToolsCommon::getUserProperties(bolt.get(), names, values);
                       return outcomeOf(code, names, values);
                   }});
    sweep("setUserProperties", [&] { return set(bolt, {"A"}, {"y"}, {"s"}); });
    environment().createsProperties = true;
    sweep("setUserProperties", [&] { return set(bolt, {"new"}, {"y"}, {"s"}); });
    sweep("RemoveProperty", [&] { return VornToolsCommon::RemoveProperty(bolt.get(), "A"); });
    sweep("removeEBSProperties", [&] { return VornToolsCommon::removeEBSProperties(bolt.get()); });
    sweep("changePropertyAccess", [&] { return changeAccess(bolt, "A", 0); });
    sweepFailures({kCommon + "getNameProperty", [&] {
                       CATUnicodeString name;
                       const HRESULT code = VornToolsCommon::getNameProperty(CATICkeParm_var(text.get()), name);
                       return outcomeOf(code, name);
                   }});
    reports();
}

} // namespace
