#include "tests/properties/AttributesTest.h"

namespace {

using PartProductAttributesTest = AttributesTest;

TEST_F(PartProductAttributesTest, PartsAndProductsNameWhatTheyCouldNotSetInTheLog) {
    document = session().part("/w/Bolt.CATPart");
    const Publisher features[] = {parametersOf(document, "MechanicalPart", "Bolt"),
                                  parametersOf(session().product("/w/Root.CATProduct").root())};
    const Entries entries = {
        {"Free", "b", "s"}, {"Fixed", "b", "s"}, {"Driven", "2", "i"}, {"Count", "x", "i"}, {"New", "n@=@m", "s"}};
    for (const bool isPart : {true, false}) {
        SCOPED_TRACE(isPart ? "part" : "product");
        auto values = features[isPart ? 0 : 1].addSet("Values");
        values.add("Free", "a");
        values.add("Fixed", "a").access(1);
        values.add("Driven", 1).driven();
        values.add("Count", 1);
        unsigned char needUpdate = 0;
        const auto run = [&] {
            clearJournal();
            return isPart ? setPart(features[0], entries, needUpdate) : setProduct(features[1], entries);
        };
        environment().createsProperties = false;
        EXPECT_EQ(run(), E_FAIL) << "the last call is the update of Count";
        const std::string name = isPart ? "Bolt.CATPart" : "Root.CATProduct";
        EXPECT_EQ(embedded::logFile(), (Texts{"Error:\nunable to set the value to the Fixed parameter of " + name +
                                              "\nunable to set the value to the Driven parameter of " + name +
                                              "\nunable to set the value to the Count parameter of " + name + "\n"}));
        EXPECT_EQ(contents(values), (Texts{"Free = b", "Fixed = a (read-only)", "Driven = 1", "Count = 1"}));
        EXPECT_EQ(linesWith("parameter_set collection"),
                  (Texts{std::string("getParameterSet returns a parameter_set collection") +
                         (isPart ? " for object MechanicalPart" : "")}));
        EXPECT_EQ(values.redraws(), 0);
        failAt("UTILLog::writeInLogFile", [&](CATDocument*, CATListValCATUnicodeString&) { return run(); });
        EXPECT_EQ(reports(), report(isPart ? "setMechanicalPartParameters" : "setReferenceProductParameters",
                                    "9003 writeInLogFile"));

        environment().createsProperties = true;
        EXPECT_EQ(run(), S_OK);
        EXPECT_EQ(contents(values)[4], "New = n string: n, m");
        EXPECT_EQ(values.parameters()[4].userName(), "");
        EXPECT_EQ(values.redraws(), 1);
        EXPECT_EQ(needUpdate, isPart ? 1 : 0);
        embedded::logFile().clear();
    }
}

TEST_F(PartProductAttributesTest, PartsAndProductsGetTheirFirstSet) {
    document = session().part("/w/Bolt.CATPart").upToDate(false);
    const Publisher part = parametersOf(document, "MechanicalPart", "Bolt");
    const Publisher product = parametersOf(session().product("/w/Root.CATProduct").root());
    part.addSet("ExternalParameterSet");
    unsigned char needUpdate = 0;
    EXPECT_EQ(setPart(part, {{"A", "1", "i"}}, needUpdate), S_OK);
    EXPECT_EQ(setProduct(product, {{"A", "1", "i"}}), S_OK);
    EXPECT_EQ(part.sets().size() + product.sets().size(), 1U);
    EXPECT_EQ(needUpdate, 1);
    EXPECT_EQ(linesWith("o_need_update"), (Texts{"o_need_update is set to TRUE"}));

    environment().createsProperties = true;
    document.upToDate(true);
    EXPECT_EQ(setPart(part, {{"A", "1", "i"}}, needUpdate), S_OK);
    EXPECT_EQ(needUpdate, 1) << "the caller's";
    EXPECT_EQ(setProduct(product, {}), S_OK);
    ASSERT_EQ(part.sets().size(), 2U);
    EXPECT_EQ(contents(part.sets()[0]), Texts());
    EXPECT_EQ(contents(part.sets()[1]), (Texts{"A = 1"}));
    EXPECT_EQ(part.sets()[1].redraws(), 1);
    ASSERT_EQ(product.sets().size(), 1U);
    EXPECT_EQ(product.sets()[0].redraws(), 1);
    EXPECT_EQ(embedded::logFile(), Texts());

    EXPECT_EQ(setPart(Publisher(), {}, needUpdate), E_FAIL);
    EXPECT_EQ(reports(), report("setMechanicalPartParameters", "9002 ipi_spec_obj_ref"));
    EXPECT_EQ(setProduct(Publisher(), {}), E_FAIL);
    EXPECT_EQ(reports(), report("setReferenceProductParameters", "9002 ipi_spec_obj_ref"));
}

TEST_F(PartProductAttributesTest, TheSetIsMadeWhenItsAttributesAreAbsentNotWhenTheyFailed) {
    for (const char* const attribute : {"_FtrList", "UserParameters"})
        for (const bool isPart : {true, false})
            for (const bool creates : {true, false}) {
                session().reset();
                environment().createsProperties = creates;
                Publisher feature = isPart ? parametersOf(session().part("/w/Bolt.CATPart"), "MechanicalPart", "Bolt")
                                           : parametersOf(session().product("/w/Root.CATProduct").root());
                feature.keepIn(attribute).addSet("ExternalParameterSet").add("Old", "a");
                const Publisher values = feature.addSet("Values");
                values.add("Old", "a");
                service();
                unsigned char needUpdate = 0;
                const Entries entries = {{"Old", "b", "s"}};
                const std::string name = isPart ? "setMechanicalPartParameters" : "setReferenceProductParameters";
                const auto run = [&] {
                    return isPart ? setPart(feature, entries, needUpdate) : setProduct(feature, entries);
                };
                // No fault leads to another set, neither to a new one nor to the excluded one.
                sweepFailures({kClass + name, [&] { return SweepOutcome{run()}; }, [&] { reset(values, "Old"); }});
                failAt("CATISpecAttrAccess::TestAttributeValue",
                       [&](CATDocument*, CATListValCATUnicodeString&) { return run(); });
                EXPECT_EQ(reports(), report(name, "9003 getParameterSet"));
            }
    session().reset();
    Publisher elsewhere = parametersOf(session().product("/w/Root.CATProduct").root()).keepIn("Parameters");
    elsewhere.addSet("NotFoundByItsAttribute").add("New", "old");
    EXPECT_EQ(setProduct(elsewhere, {{"New", "x", "s"}}), S_OK);
    EXPECT_EQ(contents(elsewhere.sets()[0]), (Texts{"New = old"}));
    environment().createsProperties = true;
    EXPECT_EQ(setProduct(elsewhere, {{"New", "x", "s"}}), S_OK);
    ASSERT_EQ(elsewhere.sets().size(), 2U);
    EXPECT_EQ(contents(elsewhere.sets()[1]), (Texts{"New = x"}));
}

TEST_F(PartProductAttributesTest, ANewNameGivenTwiceIsOneParameter) {
    const Publisher product = parametersOf(session().product("/w/Root.CATProduct").root());
    environment().createsProperties = true;
    const Entries entries = {{"a\\b", "1", "s"}, {"N", "many", "i"}, {"N", "2", "i"},
                             {"N", "some", "i"}, {"N", "3", "i"},    {"a\\b", "2", "s"}};
    EXPECT_EQ(setProduct(product, entries), S_OK);
    EXPECT_EQ(contents(product.sets().at(0)), (Texts{"a\\b = 2", "N = 3"})) << "entry by entry";
    EXPECT_EQ(embedded::logFile(), (Texts{"Error:\nunable to set the value to the N parameter of Root.CATProduct\n"}));
    EXPECT_EQ(setProduct(product, {{"a\\b", "3", "s"}}), S_OK);
    EXPECT_EQ(contents(product.sets().at(0)), (Texts{"a\\b = 3", "N = 3"}));
}

} // namespace
