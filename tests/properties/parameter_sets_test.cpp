#include "tests/properties/ParameterTest.h"

#include "VornToolsCADDOCPropertiesDflt.h"
#include "VornToolsCADDOCPropertiesPX1.h"
#include "tests/support/FaultAt.h"

namespace {

using ParameterSetsTest = ParameterTest;

TEST_F(ParameterSetsTest, TheVariantFollowsTheEnvironmentUntilTheServiceEnds) {
    EXPECT_NE(dynamic_cast<VornToolsCADDOCPropertiesDflt*>(&properties()), nullptr);
    environment().platformPdmConnection = true;
    EXPECT_EQ(Service::getInstance(), service);
    service->Release();
    EXPECT_NE(dynamic_cast<VornToolsCADDOCPropertiesPX1*>(&properties()), nullptr);
}

TEST_F(ParameterSetsTest, SetsAreReadAsTexts) {
    set.add("S", "x").access(1);
    set.add("B", true).userName("Mine");
    set.addSet("Inner").add("hidden", 1);
    set.add("I", 2).list("ListOfValues", std::vector<int>{2, 3});
    set.add("L", 0.5).withoutValue();
    set.add("Length", "D", 0.01).list("ListOfValues", std::vector<double>{0.02});
    set.add("E", "x").list("ListOfValues", Texts{});
    CATListValCATUnicodeString names, values, types, flags;
    CATListValCATBaseUnknown_var* list = nullptr;
    ASSERT_EQ(properties().getListOfParameters(set.set(), list, names, values, types, flags), S_OK);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->Size(), 6);
    delete list;
    EXPECT_EQ(texts(names), (Texts{"S", "Mine", "I", "L", "D", "E"}));
    EXPECT_EQ(texts(values), (Texts{"x", "true", "2", "", "10mm", "x"}));
    EXPECT_EQ(texts(types), (Texts{"String", "Boolean", "Integer", "Real", "Length", "String"}));
    EXPECT_EQ(texts(flags), (Texts{"true", "false", "false", "false", "false", "false"}));
    EXPECT_EQ(pairs(set), "kept|X.S|x|X.Mine|1|X.I|2@=@3|X.L||X.D|10@=@20|X.E||");
    clearJournal();
    EXPECT_EQ(pairs(part.addSet("Empty")), "kept|");
    EXPECT_EQ(messages(), (Texts{"0 parameter\n"}));
    const auto read_set = [&] { pairs(set, E_FAIL); };
    EXPECT_TRUE(failAt("CATICkeParameterSet::Parameters", 1, read_set, embedded::FaultFlavour::nullOutput));
    EXPECT_EQ(messages(), (Texts{"no parameter collection\n"}));
    reports();
    EXPECT_EQ(pairs(part, E_FAIL), "kept|");
    EXPECT_EQ(properties().getListOfParameters(nullptr, list, names, values, types, flags), E_FAIL);
    EXPECT_EQ(names.Size() + values.Size() + types.Size() + flags.Size(), 0);
    EXPECT_EQ(list, nullptr);
}

TEST_F(ParameterSetsTest, TheSetOfAFeatureIsFoundByItsAttribute) {
    const auto feature = [&](const char* name) {
        return parametersOf(session().part("/w/" + std::string(name) + ".CATPart"), "MechanicalPart", name);
    };
    EXPECT_EQ(found(part, S_OK), "Parameters.1");
    EXPECT_EQ(messages(), (Texts{"\tGet attribut for UserParameters ", "Manage list of component"}));
    Publisher excluded = feature("Excluded").keepIn("_FtrList");
    excluded.addSet("ExternalParameterSet");
    EXPECT_EQ(found(excluded, E_FAIL), "none");
    excluded.addSet("Second");
    EXPECT_EQ(found(excluded, S_OK), "Second");
    Publisher component = feature("Component");
    component.addSetAs("_AttrForLiterals", "Literals");
    component.addSetAs("_FtrList", "List");
    clearJournal();
    EXPECT_EQ(found(component, S_OK), "Literals");
    EXPECT_EQ(messages(), (Texts{"\tGet attribut for _AttrForLiterals ", "Manage component"}));
    Publisher other = feature("Other").text("_AttrForLiterals", "t");
    other.addSet("Late");
    clearJournal();
    EXPECT_EQ(found(other, S_OK), "Late");
    EXPECT_EQ(messages(),
              (Texts{"\tGet attribut for _AttrForLiterals ", "This attribut type is not managed", "No ParameterSet\n",
                     "\tGet attribut for UserParameters ", "Manage list of component"}));
    EXPECT_EQ(found(feature("Bare"), E_FAIL), "none");
    Publisher loose = feature("Loose");
    loose.add("P", "x");
    EXPECT_EQ(found(loose, S_OK), "none") << "the last look-up met a parameter";
    EXPECT_EQ(found(Publisher(), E_FAIL), "none");
    EXPECT_EQ(reports(), (Texts{kClass + "getParameterSet 9002 ipi_spec_object"}));
    CATICkeParameterSet* none = set.set();
    clearJournal();
    EXPECT_EQ(Access::setByKey(nullptr, nullptr, none), E_FAIL);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(messages(), (Texts{"No ParameterSet\n"}));
}

TEST_F(ParameterSetsTest, ASetIsMadeBelowItsFeature) {
    Publisher bare = parametersOf(session().product("/w/Root.CATProduct").root());
    CATICkeParameterSet* made = nullptr;
    EXPECT_TRUE(failAt("QueryInterface(CATICkeParameterSet)", 1,
                       [&] { EXPECT_EQ(Service::createParameterSet(bare.get(), made), E_FAIL); }));
    EXPECT_EQ(bare.sets().size(), 0U);
    clearJournal();
    ASSERT_EQ(Service::createParameterSet(bare.get(), made), S_OK);
    EXPECT_EQ(Service::redrawParametersNode(made), S_OK);
    made->Release();
    EXPECT_EQ(messages(), (Texts{"Create ParameterSet \"Parameters.1\" append to feature Root in container "
                                 "CATProductCont\n"}));
    EXPECT_EQ(bare.sets().at(0).redraws(), 1);
    EXPECT_EQ(found(bare, S_OK), "Parameters.1");
    EXPECT_EQ(Service::createParameterSet(nullptr, made), E_FAIL);
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(Service::redrawParametersNode(nullptr), E_FAIL);
    clearJournal();
    EXPECT_EQ(Service::createParameterSet(set.add("P", "x").specObject(), made), E_FAIL);
    EXPECT_EQ(messages(), (Texts{"Unable to create ParameterSet\n"}));
    Service::setAttributeOnCATISpecObject(nullptr, "K", CATRawCollint());
    EXPECT_EQ(reports(),
              (Texts{kClass + "createParameterSet 9002 ipi_spec_object", kClass + "redrawParametersNode 9002 ipi_set",
                     kClass + "setAttributeOnCATISpecObject 9002 ipi_spec_object"}));
}

TEST_F(ParameterSetsTest, FaultsOfThePlatformAreMet) {
    properties();
    set.add("S", "a").list("ListOfValues", Texts{"a", "b"});
    set.add("Length", "L", 0.0).list("ListOfValues", std::vector<double>{0.02});
    set.add("I", 1).list("ListOfValues", std::vector<int>{1, 2});
    Publisher bare = parametersOf(session().part("/w/New.CATPart"), "MechanicalPart", "New").keepIn("UserParameters");
    sweepFailures({kClass + "createParameterSet",
                   [&] {
                       CATICkeParameterSet* made = set.set();
                       const HRESULT code = Service::createParameterSet(bare.get(), made);
                       const SweepOutcome outcome = outcomeOf(code, made);
                       if (made) made->Release();
                       return outcome;
                   },
                   [&] { empty(bare); }});
    for (const Publisher& feature : {part, parametersOf(session().product("/w/P.CATProduct").root())})
        sweepFailures({kClass + "getParameterSet",
                       [&] {
                           CATICkeParameterSet* result = set.set();
                           const HRESULT code = service->getParameterSet(feature.get(), result);
                           const SweepOutcome outcome = outcomeOf(code, result);
                           if (result) result->Release();
                           return outcome;
                       },
                       {},
                       {},
                       {},
                       feature.get() == part.get() ? "" : "a new product has no set"});
    sweepFailures({kClass + "redrawParametersNode", [&] {
                       return SweepOutcome{Service::redrawParametersNode(set.set()), true};
                   }});
    sweepFailures({kClass + "getListOfParameters", [&] {
                       CATListValCATUnicodeString names, values, types, flags;
                       CATListValCATBaseUnknown_var* list = nullptr;
                       const HRESULT code = service->getListOfParameters(set.set(), list, names, values, types, flags);
                       const std::unique_ptr<CATListValCATBaseUnknown_var> owned(list);
                       // The list is the set's own, whatever it holds.
                       return outcomeOf(code, list ? list->Size() : 0, names, values, types, flags);
                   }});
    sweepFailures({kClass + "appendAttributesWithParamsList", [&] {
                       CATListValCATUnicodeString list;
                       const HRESULT code = service->appendAttributesWithParamsList(set.set(), "X", list);
                       return outcomeOf(code, list);
                   }});
    reports();
}

} // namespace
