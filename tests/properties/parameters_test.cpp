#include "VornToolsCADDOCProperties.h"

#include "CATICkeMagnitude.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATIParmPublisher.h"
#include "CATISpecAttrAccess.h"
#include "CATISpecObject.h"
#include "VornToolsCADDOCPropertiesDflt.h"
#include "VornToolsCADDOCPropertiesPX1.h"
#include "embedded/Parameters.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include <memory>

using embedded::Parameter;
using embedded::parametersOf;
using embedded::Publisher;
using Service = VornToolsCADDOCProperties;

struct VornToolsCADDOCPropertiesTestAccess {
    static HRESULT setByKey(CATISpecAttrKey* key, CATISpecAttrAccess* access, CATICkeParameterSet*& set) {
        return Service::getInstance()->getParameterSetByAttributKey(key, access, set);
    }
    static HRESULT joined(CATISpecAttrAccess* access, CATISpecAttrKey* key, const CATICkeType_var& type,
                          CATUnicodeString& text) {
        return Service::getParamMultipleValues(access, key, "P", type, "1", text);
    }
    static HRESULT current(CATICkeMagnitude* magnitude, double value, CATUnicodeString& text) {
        return Service::getParamValueInCurrentUnit(magnitude, value, text);
    }
    static HRESULT stored(CATICkeMagnitude* magnitude, double value, CATUnicodeString& text) {
        return Service::getParamValueInStorageUnit(magnitude, value, text);
    }
};
using Access = VornToolsCADDOCPropertiesTestAccess;

namespace {

const std::string kClass = "VornToolsCADDOCProperties::";

class PropertiesTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        part = parametersOf(session().part("/w/Bolt.CATPart"), "MechanicalPart", "Bolt");
        set = part.addSet("Parameters.1");
        clearJournal();
    }
    void TearDown() override {
        if (service) service->Release();
        PlatformTest::TearDown();
    }
    Service& properties() {
        service = Service::getInstance();
        return *service;
    }
    HRESULT create(const std::string& name, const std::string& value, const char* type, int readOnly = 0, int user = 0,
                   int rename = 0) {
        const auto flag = [](int value01) { return static_cast<unsigned char>(value01); };
        return Service::createParameter(set.factory(), set.publisher(), name.c_str(),
                                        CATUnicodeString(value.data(), value.size()), type, flag(readOnly), flag(user),
                                        flag(rename));
    }
    static HRESULT update(const Parameter& parameter, const std::string& value, const char* type) {
        return Service::updateParameter(parameter.get(), "P", CATUnicodeString(value.data(), value.size()), type);
    }
    /** Type, value and list of the set's last parameter; empty when there is none. */
    std::string last() {
        const auto all = set.parameters();
        if (all.empty()) return "";
        const Parameter& parameter = all.back();
        return parameter.type() + " " + parameter.shown() + (parameter.list().empty() ? "" : " " + parameter.list());
    }
    static Texts texts(const CATListValCATUnicodeString& list) {
        Texts result;
        for (int i = 1; i <= list.Size(); ++i) result.emplace_back(list[i].ConvertToChar());
        return result;
    }
    std::string pairs(const Publisher& from, HRESULT expected = S_OK) {
        CATListValCATUnicodeString list;
        list.Append("kept");
        EXPECT_EQ(properties().appendAttributesWithParamsList(from.set(), "X", list), expected);
        std::string text;
        for (const std::string& one : texts(list)) text += one + "|";
        return text;
    }
    /** The set of a feature: its name, "none" without one. */
    std::string found(const Publisher& feature, HRESULT expected) {
        CATICkeParameterSet* result = set.set();
        EXPECT_EQ(properties().getParameterSet(feature.get(), result), expected);
        if (!result) return "none";
        const std::string name =
            CATISpecObject_var(static_cast<CATBaseUnknown*>(result))->GetDisplayName().ConvertToChar();
        result->Release();
        return name;
    }

    Publisher part, set;
    Service* service = nullptr;
};

TEST_F(PropertiesTest, TheVariantFollowsTheEnvironmentUntilTheServiceEnds) {
    EXPECT_NE(dynamic_cast<VornToolsCADDOCPropertiesDflt*>(&properties()), nullptr);
    environment().platformPdmConnection = true;
    EXPECT_EQ(Service::getInstance(), service);
    service->Release();
    EXPECT_NE(dynamic_cast<VornToolsCADDOCPropertiesPX1*>(&properties()), nullptr);
}

TEST_F(PropertiesTest, ValuesAreReadByTheirType) {
    const struct {
        const char* separator;
        const char* value;
        const char* type;
        const char* expected; ///< empty: nothing is made
    } cases[] = {{".", "x", "s", "String x"},
                 {".", "", "s", "String "},
                 {".", "7", "?", "String 7"},
                 {".", "7", "S", "String 7"},
                 {".", "-12", "i", "Integer -12"},
                 {".", " 5mm", "i", "Integer 5"},
                 {".", "", "i", ""},
                 {".", "x", "i", ""},
                 {".", "1.5", "i", ""},
                 {".", "2147483648", "i", ""},
                 {".", "0x10", "i", "Integer 0"},
                 {".", "", "b", "Boolean true"},
                 {".", "tRuE", "b", "Boolean true"},
                 {".", "1", "b", "Boolean true"},
                 {".", "yes", "b", "Boolean false"},
                 {".", " 1", "b", "Boolean false"},
                 {".", "1.5", "d", "Real 1.5"},
                 {".", "1,5", "d", ""},
                 {",", "1.5", "d", "Real 1,5"},
                 {",", "1,5", "d", "Real 1,5"},
                 {",", "1.234,5", "d", ""},
                 {".", "1e3 ", "d", "Real 1000"},
                 {".", "1e999", "d", ""},
                 {".", "-1e999", "d", ""},
                 {".", "1e-999", "d", "Real 0"},
                 {".", "1e308", "d", "Real 1e+308"},
                 {",", "-4.9e-324", "d", "Real -4,94065645841247e-324"},
                 {".", "-0", "d", "Real -0"},
                 {".", "0x10", "d", "Real 16"},
                 {".", "nan", "d", ""},
                 {",", "-inf", "d", ""},
                 {".", "1..5", "d", ""},
                 {",", "1,5  ", "d", "Real 1,5"},
                 {",", "1,5", "i", ""},
                 {",", "1.5", "i", ""},
                 {".", "-2147483648 ", "i", "Integer -2147483648"},
                 {".", "", "d", ""},
                 {".", "a@=@b@=@a", "s", "String a string: a, b"},
                 {".", "@=@", "s", "String  string: "},
                 {".", "@=@a", "s", "String  string: , a"},
                 {".", "a@=@", "s", "String a string: a, "},
                 {".", "1@=@0@=@1", "b", "String 1 string: 1, 0"},
                 {".", "10@=@20@=@010", "i", "Integer 10 integer: 10, 20"},
                 {".", "3@=@x", "i", ""},
                 {".", "3@=@", "i", ""},
                 {".", "1.5@=@2", "d", "Real 1.5 double: 1.5, 2"},
                 {",", "1.5@=@2,25", "d", "Real 1,5 double: 1,5, 2,25"},
                 {".", "1@=@2,5", "d", ""},
                 {",", "1,5@=@1.5@=@15e-1@=@2", "d", "Real 1,5 double: 1,5, 2"},
                 {",", "1,5@=@nan", "d", ""},
                 {".", "@=@", "d", ""},
                 {",", "@=@1", "d", ""},
                 {".", "1@=@", "d", ""},
                 {".", "1@=@@=@2", "d", ""},
                 {".", "@=@", "i", ""},
                 {".", "a@=@@=@b@=@", "s", "String a string: a, , b"},
                 {".", "a\\b\n\x1A\xC3\xA4", "s", "String a\\b\n\x1A\xC3\xA4"}};
    for (const auto& c : cases) {
        environment().decimalSeparator = c.separator;
        SCOPED_TRACE(std::string(c.value) + " " + c.type + " " + c.separator);
        const std::size_t before = set.parameters().size();
        EXPECT_EQ(create("P", c.value, c.type), *c.expected ? S_OK : E_FAIL);
        EXPECT_EQ(set.parameters().size(), before + (*c.expected ? 1 : 0));
        if (*c.expected) {
            EXPECT_EQ(last(), c.expected);
        }
    }
    EXPECT_EQ(create("Z", std::string("a\0b", 3), "s"), S_OK);
    EXPECT_EQ(last(), std::string("String a\0b", 10));
    std::string many = "0";
    for (int i = 1; i < 10000; ++i) many += "@=@" + std::to_string(i);
    EXPECT_EQ(create("M", many, "i"), S_OK);
    EXPECT_EQ(last().size(), std::string("Integer 0 integer:").size() + 10000 * 2 - 1 + 38890);
    EXPECT_EQ(create("M", many, "d"), S_OK);
    EXPECT_EQ(last().size(), std::string("Real 0 double:").size() + 10000 * 2 - 1 + 38890);
}

TEST_F(PropertiesTest, TheJournalTellsWhyNothingWasMade) {
    EXPECT_EQ(create("P", "x", "i"), E_FAIL);
    EXPECT_EQ(create("Q", "3@=@x", "i"), E_FAIL);
    EXPECT_EQ(messages(), (Texts{"Unable to create parameter [P] with type [i]\n",
                                 "Unable to split parameter [Q] with value [3@=@x]\n"}));
    EXPECT_EQ(embedded::Journal::get().lines().back(), "< " + kClass + "createParameter " + std::to_string(E_FAIL));
    EXPECT_EQ(Service::createParameter(nullptr, set.publisher(), "P", "", "s", 0, 0, 0), E_FAIL);
    EXPECT_EQ(Service::createParameter(set.factory(), nullptr, "P", "", "s", 0, 0, 0), E_FAIL);
    EXPECT_EQ(Service::updateParameter(nullptr, "P", "", "s"), E_FAIL);
    EXPECT_EQ(reports(), (Texts{kClass + "createParameter 9001 ipi_param_factory",
                                kClass + "createParameter 9001 ipi_param_publisher",
                                kClass + "updateParameter 9002 ipi_parameter"}));
    clearJournal();
    EXPECT_EQ(create("P", "a@=@b", "s"), S_OK);
    EXPECT_EQ(messages(), (Texts{"get spec attr access successfull", "key ListOfValues not found",
                                 "key ListOfValues successfully added", "key update"}));
    EXPECT_EQ(Service::isMultipleValuesParameter("a@=@"), 1);
    EXPECT_EQ(Service::isMultipleValuesParameter("a@=b"), 0);
}

TEST_F(PropertiesTest, FlagsAreAppliedInTheirOrder) {
    const struct {
        int readOnly, user, rename, access;
        const char* userName;
    } cases[] = {{0, 0, 0, 3, ""},  {1, 0, 0, 1, ""},  {0, 1, 0, 4, "P"},
                 {1, 1, 0, 1, "P"}, {0, 0, 1, 3, "P"}, {1, 1, 1, 1, "P"}};
    for (const auto& c : cases) {
        ASSERT_EQ(create("P", "x", "s", c.readOnly, c.user, c.rename), S_OK);
        const Parameter made = set.parameters().back();
        EXPECT_EQ(made.access(), c.access);
        EXPECT_EQ(made.userName(), c.userName);
    }
}

TEST_F(PropertiesTest, AParameterThatDoesNotTakeAFlagIsNotPutAnywhere) {
    const struct {
        const char* setter;
        int readOnly, rename;
    } cases[] = {{"SetUserAccess", 1, 0}, {"Rename", 0, 1}};
    auto& failures = embedded::Failures::get();
    for (const auto& c : cases) {
        const std::string call = std::string("CATICkeParm::") + c.setter;
        std::string met = "none yet";
        for (int nth = 1; met != call && !met.empty(); ++nth) {
            const std::size_t before = set.parameters().size();
            reports();
            failures.arm(nth, false, embedded::FaultFlavour::code);
            const HRESULT code = create("P", "x", "s", c.readOnly, 0, c.rename);
            met = failures.firedAt();
            failures.disarm();
            if (met != call) continue;
            EXPECT_EQ(code, E_FAIL);
            EXPECT_EQ(set.parameters().size(), before);
        }
        EXPECT_EQ(reports(), (Texts{kClass + "createParameter 9003 " + c.setter}));
    }
}

TEST_F(PropertiesTest, AParameterTakesAnotherValue) {
    Parameter string = set.add("S", "x"), integer = set.add("I", 3), real = set.add("R", 0.5);
    Parameter truth = set.add("B", true), length = set.add("Length", "L", 1.0);
    EXPECT_EQ(update(string, "y", "s"), S_OK);
    EXPECT_EQ(update(integer, "4", "i"), S_OK);
    EXPECT_EQ(update(integer, "", "i"), E_FAIL);
    EXPECT_EQ(update(truth, "0", "b"), S_OK);
    EXPECT_EQ(string.shown() + integer.shown() + truth.shown(), "y4false");
    clearJournal();
    EXPECT_EQ(update(real, "1,5", "d"), E_FAIL);
    EXPECT_EQ(real.shown(), "0.5");
    EXPECT_EQ(update(length, "12.5", "d"), S_OK);
    EXPECT_EQ(length.shown(), "12.5mm");
    for (const char* const none : {"x", "", "1,5", "nan", "1e999", "mm"}) EXPECT_EQ(update(length, none, "d"), E_FAIL);
    EXPECT_EQ(length.shown(), "12.5mm");
    EXPECT_EQ(update(string, "z", "d"), S_OK);
    EXPECT_EQ(string.shown(), "z");
    Texts expected(7, "Updating the Double property P (Length)");
    expected.insert(expected.begin() + 1, "    value applied : 12.5mm");
    expected.insert(expected.begin(), "Updating the Double property P (Real)");
    expected.push_back("Updating the Double property P (String)");
    EXPECT_EQ(messages(), expected);
    environment().decimalSeparator = ",";
    EXPECT_EQ(update(real, "1.5", "d"), S_OK);
    EXPECT_EQ(update(length, "2.5", "d"), S_OK);
    EXPECT_EQ(real.shown() + " " + length.shown(), "1,5 2,5mm");
}

TEST_F(PropertiesTest, AListGrowsInFrontAndIsReplacedAsAWhole) {
    Parameter string = set.add("S", "a").list("ListOfValues", Texts{"a", "b"});
    EXPECT_EQ(update(string, "c", "s"), S_OK);
    EXPECT_EQ(string.shown() + " " + string.list(), "c string: c, a, b");
    EXPECT_EQ(update(string, "", "s"), S_OK);
    EXPECT_EQ(update(string, "b", "s"), S_OK);
    EXPECT_EQ(string.shown() + " " + string.list(), "b string: b, c, a");
    EXPECT_EQ(update(string, "x@=@y", "s"), S_OK);
    EXPECT_EQ(string.shown() + " " + string.list(), "x string: x, y");
    Parameter integer = set.add("I", 1);
    EXPECT_EQ(update(integer, "7@=@8", "i"), S_OK);
    EXPECT_EQ(update(integer, "7@=@z", "i"), E_FAIL);
    EXPECT_EQ(integer.shown() + " " + integer.list(), "7 integer: 7, 8");
    Parameter real = set.add("R", 1.0);
    EXPECT_EQ(update(real, "0.5@=@1e3", "d"), S_OK);
    EXPECT_EQ(real.shown() + " " + real.list(), "0.5 double: 0.5, 1000");
    Parameter empty = set.add("E", "old").list("ListOfValues", Texts{});
    clearJournal();
    EXPECT_EQ(update(empty, "new", "s"), S_OK);
    EXPECT_EQ(empty.shown() + " " + empty.list(), "new string:");
    EXPECT_EQ(messages(), (Texts{"multiple String values but empty list", "Unable to concat values of parameter P",
                                 "Multiple value but empty list\n"}));
    // The first value of a dimension is in the unit that users see; the list stays as it was given.
    Parameter length = set.add("Length", "L", 1.0);
    clearJournal();
    EXPECT_EQ(update(length, "10@=@20", "d"), S_OK);
    EXPECT_EQ(length.shown() + " " + length.list(), "10mm double: 10, 20");
    EXPECT_EQ(messages().front(), "    value applied : 0.01m");
}

TEST_F(PropertiesTest, DimensionsAreConvertedThroughTheMksUnit) {
    const CATICkeMagnitude_var magnitude(set.add("Length", "L", 1.0).get()->Type());
    CATUnicodeString text("before");
    EXPECT_EQ(Access::current(magnitude, 0.25, text), S_OK);
    EXPECT_STREQ(text.ConvertToChar(), "250mm");
    EXPECT_EQ(Access::stored(magnitude, 250, text), S_OK);
    EXPECT_STREQ(text.ConvertToChar(), "0.25m");
    EXPECT_EQ(Access::current(nullptr, 0.25, text), S_OK);
    EXPECT_STREQ(text.ConvertToChar(), "0.25");
    EXPECT_EQ(Access::stored(nullptr, 1e-7, text), S_OK);
    EXPECT_STREQ(text.ConvertToChar(), "1e-07");
    EXPECT_EQ(reports(), (Texts{kClass + "getParamValueInCurrentUnit 9002 pi_magnitude",
                                kClass + "getParamValueInStorageUnit 9002 ipi_magnitude"}));
    EXPECT_EQ(messages(), (Texts{"    value applied : 0.25m", "    value applied : 0.25 (MKS unit)",
                                 "    value applied : 1e-07 (MKS unit)"}));
}

TEST_F(PropertiesTest, SetsAreReadAsTexts) {
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
    EXPECT_EQ(pairs(part, E_FAIL), "kept|");
    EXPECT_EQ(properties().getListOfParameters(nullptr, list, names, values, types, flags), E_FAIL);
    EXPECT_EQ(names.Size() + values.Size() + types.Size() + flags.Size(), 0);
    EXPECT_EQ(list, nullptr);
}

TEST_F(PropertiesTest, NumbersAreReadAndWrittenInTheSessionsNotation) {
    for (const char mark : {'.', ','}) {
        SCOPED_TRACE(mark);
        environment().decimalSeparator = mark;
        const auto noted = [mark](std::string text) {
            for (char& character : text)
                if (character == '.') character = mark;
            return text;
        };
        const Publisher numbers = part.addSet("Numbers");
        Parameter real = numbers.add("R", 1.5).list("ListOfValues", std::vector<double>{1.5, -1e-7});
        Parameter length = numbers.add("Length", "L", 0.0125).list("ListOfValues", std::vector<double>{0.0205});
        EXPECT_EQ(pairs(numbers), "kept|X.R|" + noted("1.5@=@-1e-07") + "|X.L|" + noted("12.5@=@20.5") + "|");
        // What was read is given back behind the new value.
        EXPECT_EQ(update(real, "0.25", "d"), S_OK);
        EXPECT_EQ(real.shown() + " " + real.list(), noted("0.25 double: 0.25, 1.5, -1e-07"));
        EXPECT_EQ(update(length, "7.5", "d"), S_OK);
        EXPECT_EQ(length.shown() + " " + length.list(), noted("7.5mm double: 7.5, 12.5, 20.5"));
        EXPECT_EQ(update(length, "2.5@=@3.75", "d"), S_OK);
        EXPECT_EQ(length.shown() + " " + length.list(), noted("2.5mm double: 2.5, 3.75"));
        EXPECT_EQ(update(length, "2.5@=@", "d"), E_FAIL);
        EXPECT_EQ(length.shown() + " " + length.list(), noted("2.5mm double: 2.5, 3.75"));
    }
}

TEST_F(PropertiesTest, TheSetOfAFeatureIsFoundByItsAttribute) {
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
    EXPECT_EQ(found(component, S_OK), "Literals");
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

TEST_F(PropertiesTest, ASetIsMadeBelowItsFeature) {
    Publisher bare = parametersOf(session().product("/w/Root.CATProduct").root());
    CATICkeParameterSet* made = nullptr;
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

TEST_F(PropertiesTest, FaultsOfThePlatformAreMet) {
    properties();
    Parameter string = set.add("S", "a").list("ListOfValues", Texts{"a", "b"}), single = set.add("R", 1.0);
    Parameter length = set.add("Length", "L", 0.0).list("ListOfValues", std::vector<double>{0.02});
    Parameter integer = set.add("I", 1).list("ListOfValues", std::vector<int>{1, 2});
    Publisher bare = parametersOf(session().part("/w/New.CATPart"), "MechanicalPart", "New").keepIn("UserParameters");
    const auto takeAway = [](const Publisher& from, std::size_t kept) {
        return [=] {
            while (from.parameters().size() > kept)
                from.publisher()->RemoveChild(CATISpecObject_var(from.parameters().back().specObject()));
            while (kept == 0 && !from.sets().empty())
                from.publisher()->RemoveChild(CATISpecObject_var(from.sets().back().get()));
        };
    };
    for (const auto& [value, type] : {std::pair<const char*, const char*>{"x", "s"},
                                      {"1", "i"},
                                      {"1.5", "d"},
                                      {"", "b"},
                                      {"a@=@b", "s"},
                                      {"1@=@2", "i"},
                                      {"1@=@2", "d"}})
        sweepFailures({kClass + "createParameter",
                       [&, v = value, t = type] {
                           return SweepOutcome{create("P", v, t, 1, 1, 1), true};
                       },
                       takeAway(set, 4)});
    const auto sweepUpdate = [&](Parameter& parameter, const char* value, const char* type,
                                 const std::function<void()>& restore) {
        sweepFailures({kClass + "updateParameter",
                       [&, value, type] {
                           return SweepOutcome{update(parameter, value, type), true};
                       },
                       restore});
    };
    sweepUpdate(string, "a", "s", [&] {
        string.list("ListOfValues", Texts{"a", "b"}).get()->Valuate(CATUnicodeString("a"));
    });
    sweepUpdate(integer, "1@=@5", "i", [&] { integer.list("ListOfValues", std::vector<int>{1, 2}); });
    sweepUpdate(single, "2.5", "d", [&] { single.get()->Valuate(1.0); });
    sweepUpdate(length, "0@=@30", "d",
                [&] { length.list("ListOfValues", std::vector<double>{0.02}).get()->Valuate(0.0); });
    sweepFailures({kClass + "createParameterSet",
                   [&] {
                       CATICkeParameterSet* made = set.set();
                       const HRESULT code = Service::createParameterSet(bare.get(), made);
                       const bool empty = !made;
                       if (made) made->Release();
                       return SweepOutcome{code, empty};
                   },
                   takeAway(bare, 0)});
    for (const Publisher& feature : {part, parametersOf(session().product("/w/P.CATProduct").root())})
        sweepFailures({kClass + "getParameterSet", [&] {
                           CATICkeParameterSet* result = set.set();
                           const HRESULT code = service->getParameterSet(feature.get(), result);
                           const bool empty = !result;
                           if (result) result->Release();
                           return SweepOutcome{code, empty};
                       }});
    sweepFailures({kClass + "redrawParametersNode", [&] {
                       return SweepOutcome{Service::redrawParametersNode(set.set()), true};
                   }});
    sweepFailures({kClass + "getListOfParameters", [&] {
                       CATListValCATUnicodeString names, values, types, flags;
                       CATListValCATBaseUnknown_var* list = nullptr;
                       const HRESULT code = service->getListOfParameters(set.set(), list, names, values, types, flags);
                       const std::unique_ptr<CATListValCATBaseUnknown_var> owned(list);
                       return SweepOutcome{code, !list && names.Size() + values.Size() + types.Size() == 0};
                   }});
    sweepFailures(
        {kClass + "appendAttributesWithParamsList", [&] {
             CATListValCATUnicodeString list;
             return SweepOutcome{service->appendAttributesWithParamsList(set.set(), "X", list), list.Size() == 0};
         }});
    reports();
}

TEST_F(PropertiesTest, ReferencePropertiesGoThroughTheProduct) {
    auto root = session().product("/w/Root.CATProduct").root();
    auto bolt = root.add(session().part("/w/Bolt.CATPart"), "Bolt.1");
    CATListValCATUnicodeString names, values;
    for (const char* const name :
         {"partNumber", "definition", "revision", "nomenclature", "source", "DescriptionRef", "other", "Revision"}) {
        names.Append(name);
        values.Append(CATUnicodeString("v ") + name);
    }
    EXPECT_EQ(properties().setReferenceProperties(bolt.get(), names, values), S_OK);
    const auto kept = embedded::referenceProperties(bolt);
    EXPECT_EQ(kept.definition + "|" + kept.revision + "|" + kept.nomenclature,
              "v definition|v revision|v nomenclature");
    EXPECT_EQ(bolt.partNumber() + "|" + bolt.referenceDescription(), "v partNumber|v DescriptionRef");
    EXPECT_EQ(messages(), (Texts{"SetPartNumber to [v partNumber]", "SetDefinition to [v definition]",
                                 "SetRevision to [v revision]", "SetNomenclature to [v nomenclature]", "SetSource",
                                 "SetDescriptionRef to [v DescriptionRef]"}));
    values[1] = "not this";
    EXPECT_EQ(properties().setReferencePropertiesForForeignFile(bolt.get(), names, values), S_OK);
    EXPECT_EQ(bolt.partNumber(), "v partNumber");
    EXPECT_EQ(properties().updatePartNumber(bolt.get(), "B-7"), S_OK);
    EXPECT_EQ(bolt.partNumber(), "B-7");
    const std::string name = "VornToolsCADDOCPropertiesDflt::";
    values.RemovePosition(1);
    EXPECT_EQ(properties().setReferenceProperties(bolt.get(), names, values), E_FAIL);
    EXPECT_EQ(properties().setReferenceProperties(nullptr, names, names), E_FAIL);
    EXPECT_EQ(properties().updatePartNumber(root.addUnresolved("x.1").get(), "x"), E_FAIL);
    EXPECT_EQ(reports(),
              (Texts{name + "setReferenceProperties 9001 i_values", name + "setReferenceProperties 9002 ipi_product",
                     name + "updatePartNumber 9002 sp_reference_product"}));
    CATListValCATUnicodeString one, value;
    one.Append("revision");
    value.Append("C");
    const auto restore = [&] { properties().setReferenceProperties(bolt.get(), one, one); };
    sweepFailures({name + "setReferenceProperties",
                   [&] {
                       return SweepOutcome{properties().setReferenceProperties(bolt.get(), one, value), true};
                   },
                   restore});
    sweepFailures(
        {name + "setReferencePropertiesForForeignFile",
         [&] {
             return SweepOutcome{properties().setReferencePropertiesForForeignFile(bolt.get(), one, value), true};
         },
         restore});
    sweepFailures({name + "updatePartNumber",
                   [&] {
                       return SweepOutcome{properties().updatePartNumber(bolt.get(), "N"), true};
                   },
                   [&] { bolt.partNumber("B-7"); }});
    reports();
}

TEST_F(PropertiesTest, ReferencePropertiesGoThroughThePdmItem) {
    environment().platformPdmConnection = true;
    auto root = session().product("/w/Root.CATProduct").root();
    auto& px1 = dynamic_cast<VornToolsCADDOCPropertiesPX1&>(properties());
    CATListValCATUnicodeString names, values;
    for (const char* const name : {"partNumber", "source", "DescriptionRef", "none"}) {
        names.Append(name);
        values.Append(CATUnicodeString("v ") + name);
    }
    using Map = std::map<std::string, std::string>;
    EXPECT_EQ(px1.setReferencePropertiesForForeignFile(root.get(), names, values), S_OK);
    EXPECT_EQ(embedded::pdmProperties(root),
              (Map{{"CN_SOURCE", "v source"}, {"CN_DESCRIPTIONREF", "v DescriptionRef"}}));
    EXPECT_EQ(px1.setReferenceProperties(root.get(), names, values), S_OK);
    EXPECT_EQ(embedded::pdmProperties(root)["CN_PART_NUMBER"], "v partNumber");
    clearJournal();
    EXPECT_EQ(px1.setProductProperties(root.get(), "N-1", names, values), S_OK);
    EXPECT_EQ(px1.setProductProperties(root.get(), names, values), S_OK);
    EXPECT_EQ(px1.updatePartNumber(root.get(), "N-2"), S_OK);
    EXPECT_EQ(messages(), (Texts{"Set Part Number to [N-1]", "Set Source to [v source]",
                                 "Set DescriptionRef to [v DescriptionRef]", "Set Source to [v source]",
                                 "Set DescriptionRef to [v DescriptionRef]", "Set Part Number to [N-2]"}));
    EXPECT_EQ(root.partNumber(), "Root");
    const std::string name = "VornToolsCADDOCPropertiesPX1::";
    EXPECT_EQ(px1.updatePartNumber(nullptr, "x"), E_FAIL);
    environment().platformPdmConnection = false;
    EXPECT_EQ(px1.updatePartNumber(root.get(), "x"), E_FAIL);
    environment().platformPdmConnection = true;
    EXPECT_EQ(reports(),
              (Texts{name + "updatePartNumber 9002 ipi_product", name + "updatePartNumber 9003 getPDMItem"}));
    CATListValCATUnicodeString one, value;
    one.Append("source");
    value.Append("s");
    const auto restore = [&] {
        px1.updatePartNumber(root.get(), "N-2");
        px1.setProductProperties(root.get(), one, one);
    };
    const auto sweep = [&](const char* method, const std::function<HRESULT()>& call) {
        sweepFailures({name + method, [&] { return SweepOutcome{call(), true}; }, restore});
    };
    sweep("setReferenceProperties", [&] { return px1.setReferenceProperties(root.get(), one, value); });
    sweep("setReferencePropertiesForForeignFile",
          [&] { return px1.setReferencePropertiesForForeignFile(root.get(), one, value); });
    sweep("setProductProperties", [&] { return px1.setProductProperties(root.get(), one, value); });
    sweep("setProductProperties", [&] { return px1.setProductProperties(root.get(), "N-2", one, value); });
    sweep("updatePartNumber", [&] { return px1.updatePartNumber(root.get(), "N-3"); });
    reports();
}

} // namespace
