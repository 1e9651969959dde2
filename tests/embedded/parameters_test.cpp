#include "embedded/Parameters.h"
#include "embedded/Profile.h"

#include "CATDocument.h"
#include "CATICkeMagnitude.h"
#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATIDftDocumentServices.h"
#include "CATIDrawing.h"
#include "CATIParmPublisher.h"
#include "CATISpecAttrAccess.h"
#include "CATISpecAttribute.h"
#include "CATISpecObject.h"
#include "UTILString.h"
#include "embedded/SessionFile.h"
#include "tests/support/Fixture.h"

#include <cmath>

using embedded::Parameter;
using embedded::parametersOf;
using embedded::Publisher;

namespace {

class ParametersTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        part = parametersOf(session().part("/w/Bolt.CATPart"), "MechanicalPart", "Bolt");
        set = part.addSet("Parameters.1");
    }
    static std::string text(const CATUnicodeString& value) { return value.ConvertToChar(); }

    Publisher part, set;
};

TEST_F(ParametersTest, NumbersFollowTheSessionsDecimalSeparator) {
    embedded::setSwitches({}); // what stands behind a number is left
    const struct {
        const char* text;
        double point; ///< 77: no number
        double comma;
    } cases[] = {{"1.5", 1.5, 77},     {"1,5", 77, 1.5},     {"12", 12, 12},       {"-1e3mm", -1000, -1000},
                 {"1.25in", 1.25, 77}, {"1,25in", 77, 1.25}, {" 2", 2, 2},         {"2  ", 2, 2},
                 {"", 77, 77},         {"x", 77, 77},        {"1.2.3", 77, 77},    {"1e999", 77, 77},
                 {"-1e999", 77, 77},   {"1e-999", 0, 0},     {"0x10", 16, 16},     {".5", 0.5, 77},
                 {",5", 77, 0.5},      {"1.234,5", 77, 77},  {"1,234.5", 77, 77},  {"5.", 5, 77},
                 {"+7deg", 7, 7},      {"1 2", 1, 1},        {"\xC3\xA4", 77, 77}, {"1e", 1, 1}};
    for (const char* const separator : {".", ","}) {
        environment().decimalSeparator = separator;
        for (const auto& c : cases) {
            const double expected = *separator == '.' ? c.point : c.comma;
            double value = 77;
            EXPECT_EQ(CATUnicodeString(c.text).ConvertToNum(&value), expected == 77 ? 0 : 1) << c.text << separator;
            EXPECT_EQ(value, expected) << c.text << separator;
        }
    }
    double value = 0;
    EXPECT_EQ(CATUnicodeString("nan").ConvertToNum(&value), 1);
    EXPECT_TRUE(std::isnan(value));
    EXPECT_EQ(CATUnicodeString("1").ConvertToNum(&value, "%d"), 0);
    int integer = 77;
    for (const char* const none : {"1.5", "1,5", "12.", "", "a"})
        EXPECT_EQ(CATUnicodeString(none).ConvertToNum(&integer), 0) << none;
    EXPECT_EQ(CATUnicodeString("12mm").ConvertToNum(&integer), 1);
    EXPECT_EQ(integer, 12);

    CATUnicodeString written;
    EXPECT_EQ(written.BuildFromNum(0.5), 3);
    EXPECT_EQ(text(written), "0,5");
    EXPECT_EQ(written.BuildFromNum(1.0 / 3, "%.3G"), 5);
    EXPECT_EQ(text(written), "0,333");
    EXPECT_EQ(written.BuildFromNum(1.0, "%s"), 0);
}

TEST_F(ParametersTest, ListsKeepTheFirstOfEqualElementsAndReadBackWhatTheyWrite) {
    CATListValCATUnicodeString texts;
    for (const char* const one : {"a", "b", "a", "A", "b"}) texts.Append(one);
    EXPECT_EQ(texts.RemoveDuplicates(), 2);
    CATUnicodeString joined;
    EXPECT_EQ(UTILString::concat(texts, "@=@", joined), S_OK);
    EXPECT_EQ(text(joined), "a@=@b@=@A");
    CATRawColldouble reals;
    for (const double one : {0.1, -0.0, 0.0, 1.0 / 3, 0.1}) reals.Append(one);
    EXPECT_EQ(reals.RemoveDuplicates(), 2);
    for (const char* const separator : {".", ","}) {
        environment().decimalSeparator = separator;
        EXPECT_EQ(UTILString::concat(reals, ";", joined), S_OK);
        CATRawColldouble back;
        EXPECT_EQ(UTILString::split(joined, ";", back), S_OK) << text(joined);
        EXPECT_TRUE(back == reals) << text(joined);
    }
    CATRawCollint integers;
    EXPECT_EQ(UTILString::split("3;x", ";", integers), E_FAIL);
    EXPECT_EQ(integers.Size(), 0);
    CATUnicodeString lines("a\r\nb\nc\rd");
    UTILString::replaceNewLineForMappings(lines);
    EXPECT_EQ(text(lines), "a b c d");
}

TEST_F(ParametersTest, EveryTypeShowsAndTakesItsOwnValues) {
    Parameter string = set.add("S", "x"), integer = set.add("I", 3), real = set.add("R", 0.5);
    Parameter truth = set.add("B", true), length = set.add("Length", "L", 0.0123),
              angle = set.add("Angle", "A", 3.14159265358979323846);
    EXPECT_EQ(string.shown() + " " + integer.shown() + " " + real.shown() + " " + truth.shown(), "x 3 0.5 true");
    EXPECT_EQ(length.shown() + " " + angle.shown(), "12.3mm 180deg");
    environment().decimalSeparator = ",";
    EXPECT_EQ(length.shown() + " " + real.shown(), "12,3mm 0,5");

    integer.get()->Valuate(4.5); // no integer: nothing happens
    string.get()->Valuate(7);
    real.get()->Valuate(2);
    truth.get()->Valuate(CATCke::False);
    EXPECT_EQ(string.shown() + " " + integer.shown() + " " + real.shown() + " " + truth.shown(), "x 3 2 false");
    embedded::setSwitches({});
    for (const auto& [value, shown] : {std::pair<const char*, const char*>{"3cm", "30mm"},
                                       {"1.5in", "38,1mm"},
                                       {"1,5 m", "1500mm"},
                                       {"7", "7mm"},
                                       {"7parsec", "7mm"},
                                       {"", "7mm"}}) {
        length.get()->ValuateReal(value);
        EXPECT_EQ(length.shown(), shown) << value;
    }
    ASSERT_TRUE(embedded::selectUnit("Length", "cm"));
    EXPECT_EQ(length.shown(), "0,7cm");
    EXPECT_FALSE(embedded::selectUnit("Length", "kg"));
    EXPECT_EQ(length.get()->Value()->AsReal(), 0.007);
    const CATICkeMagnitude_var magnitude(length.get()->Type());
    EXPECT_EQ(text(magnitude->MKSUnit()->Symbol()) + text(magnitude->CurrentUnit()->Symbol()), "mcm");
    EXPECT_EQ(magnitude->CurrentUnit()->Convert(5), 0.05);
    EXPECT_TRUE(CATICkeMagnitude_var(real.get()->Type()) == NULL_var);
    string.withoutValue();
    EXPECT_FALSE(string.get()->IsSet());
    EXPECT_TRUE(string.get()->Value() == NULL_var);
    string.get()->Valuate(CATUnicodeString("new"));
    EXPECT_TRUE(string.get()->IsSet());
}

TEST_F(ParametersTest, NamesArePathsUntilAUserGivesOne) {
    Publisher inner = set.addSet("Inner");
    Parameter parameter = inner.add("P", "x");
    EXPECT_EQ(text(parameter.get()->Name()), "Bolt\\Parameters.1\\Inner\\P");
    EXPECT_EQ(text(parameter.get()->RelativeName(CATIParmPublisher_var(set.publisher()))), "Inner\\P");
    EXPECT_FALSE(parameter.get()->IsNamed());
    parameter.get()->Rename("Mine");
    EXPECT_TRUE(parameter.get()->IsNamed());
    EXPECT_EQ(text(parameter.get()->Name()) + text(parameter.get()->RelativeName()), "MineMine");
    EXPECT_EQ(text(parameter.get()->Pathname()), "Bolt\\Parameters.1\\Inner\\Mine");
    EXPECT_EQ(text(parameter.get()->InternalRole()), "P");
    parameter.get()->Rename("");
    EXPECT_FALSE(parameter.get()->IsNamed());
    EXPECT_FALSE(parameter.get()->IsReadOnly());
    EXPECT_TRUE(parameter.driven().get()->IsReadOnly());
    EXPECT_TRUE(inner.add("Q", 1).access(1).get()->IsReadOnly());

    CATListValCATISpecObject_var direct, all;
    set.publisher()->GetDirectChildren("CATICkeParm", direct);
    set.publisher()->GetAllChildren("CATICkeParm", all);
    EXPECT_EQ(std::make_pair(direct.Size(), all.Size()), std::make_pair(0, 2));
    // What stands somewhere stays there, and nothing comes to contain itself.
    part.publisher()->Append(CATISpecObject_var(parameter.specObject()));
    inner.publisher()->Append(CATISpecObject_var(part.get()));
    EXPECT_EQ(text(parameter.get()->Name()), "Bolt\\Parameters.1\\Inner\\P");
    inner.publisher()->RemoveChild(CATISpecObject_var(parameter.specObject()));
    EXPECT_EQ(text(parameter.get()->Name()), "P");
}

TEST_F(ParametersTest, AttributesKeepOneKindOfValue) {
    Parameter parameter = set.add("P", "x");
    CATISpecObject* const object = parameter.specObject();
    const CATISpecAttrAccess_var access(static_cast<CATBaseUnknown*>(object));
    EXPECT_EQ(access->GetAttrKey("V"), nullptr);
    EXPECT_EQ(object->AddAttribute("V", tk_list, tk_octet), nullptr);
    CATISpecAttribute* const added = object->AddAttribute("V", tk_list, tk_integer);
    ASSERT_NE(added, nullptr);
    added->Release();
    EXPECT_EQ(object->AddAttribute("V", tk_list, tk_string), nullptr) << "one attribute a name";
    CATISpecAttrKey* const key = access->GetAttrKey("V");
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(key->GetType(), tk_list);
    EXPECT_EQ(key->GetListType(), tk_integer);
    EXPECT_FALSE(access->TestAttributeValue(key));
    CATRawCollint values;
    values.Append(4);
    EXPECT_EQ(access->SetListInteger(key, values), S_OK);
    EXPECT_TRUE(access->TestAttributeValue(key));
    EXPECT_EQ(access->SetListString(key, CATListValCATUnicodeString()), E_FAIL);
    EXPECT_EQ(access->GetListDouble(key), nullptr);
    EXPECT_EQ(access->GetListSize(key), 1);
    const CATISpecAttrAccess_var other(static_cast<CATBaseUnknown*>(set.get()));
    EXPECT_EQ(other->GetListSize(key), 0) << "a key of another object";
    key->Release();
    EXPECT_EQ(parameter.list("V"), "integer: 4");
}

TEST_F(ParametersTest, ADrawingIsReachedThroughItsServices) {
    auto document = session().document("/w/Sheet.CATDrawing");
    Publisher drawing = parametersOf(document, "Drawing", "Drawing");
    drawing.add("Sheet\\P", "x");
    const CATIDftDocumentServices_var services(static_cast<CATBaseUnknown*>(document.get()));
    void* found = nullptr;
    ASSERT_EQ(services->GetDrawing(IID_CATIDrawing, &found), S_OK);
    const CATIDrawing_var held(static_cast<CATIDrawing*>(found));
    held->Release();
    EXPECT_TRUE(held->IsEqual(drawing.get()));
    EXPECT_TRUE(CATIDftDocumentServices_var(static_cast<CATBaseUnknown*>(session().part("/w/Bolt.CATPart").get())) ==
                NULL_var);
    EXPECT_EQ(parametersOf(session().part("/w/Bolt.CATPart"), "MechanicalPart", "x").set(), nullptr);
}

TEST_F(ParametersTest, WhatIsSavedIsLoaded) {
    set.add("S", "two\nlines").userName("N").access(1).list("ListOfValues", Texts{"a", ""});
    set.add("R", 1.0 / 3).list("ListOfValues", std::vector<double>{0.1, -2e300}).driven();
    set.add("I", -7).list("ListOfValues", std::vector<int>{1, -2});
    set.addSet("Inner").add("Length", "L", 0.1);
    set.add("B", false).withoutValue();
    part.text("_FtrList", "t");
    part.addSetAs("_AttrForLiterals", "One").add("T", true);
    auto root = session().product("/w/Root.CATProduct").root();
    auto component = root.addComponent("Group", "Group.1");
    component.add(session().part("/w/Bolt.CATPart"), "Bolt.1");
    embedded::userProperties(component).add("U", "u");
    embedded::userProperties(root);
    parametersOf(component.reference().at({"Bolt.1"})).add("deep", 1);
    parametersOf(component).keepIn("_FtrList").addSet("Mine");
    environment().decimalSeparator = ",";
    environment().createsProperties = true;
    environment().propertiesReadOnlyOnCreate = {"Q"};
    embedded::selectUnit("Length", "in");

    const std::string digest = session().digest();
    EXPECT_NE(digest.find("0.3333333333333333"), std::string::npos) << digest;
    ASSERT_EQ(embedded::saveSession(path("s.json")).error, "");
    ASSERT_EQ(embedded::loadSession(path("s.json")).error, "");
    EXPECT_EQ(session().digest(), digest);
    EXPECT_EQ(environment().decimalSeparator + environment().propertiesReadOnlyOnCreate.at(0), ",Q");
    EXPECT_TRUE(environment().createsProperties);
    EXPECT_TRUE(embedded::existingUserProperties(session().find("/w/Root.CATProduct").root()));

    set = parametersOf(session().find("/w/Bolt.CATPart"), "MechanicalPart", "Bolt").sets().at(0);
    set.add(std::string("bad \xFF"), 1);
    EXPECT_EQ(embedded::saveSession(path("s.json")).error, path("s.json") + ": parameters: a text is not UTF-8");
}

TEST_F(ParametersTest, FaultsOfTheSectionNameTheirField) {
    const struct {
        const char* section;
        const char* error;
    } cases[] = {
        {R"({"unit": {}})", "parameters.unit: unknown key"},
        {R"({"units": {"Real": "m"}})", "parameters.units.Real: no magnitude has that name"},
        {R"({"units": {"Length": "kg"}})", "parameters.units.Length: no unit of it is named 'kg'"},
        {R"({"features": [{"document": "q.CATPart", "type": "T"}]})",
         "parameters.features[0].document: no document named 'q.CATPart'"},
        {R"({"products": [{"product": {"document": "p.CATPart", "path": ["x"]}}]})",
         "parameters.products[0].product.path[0]: no such instance"},
        {R"({"features": [{"document": "p.CATPart", "type": "T", "attributes": [{"name": "a", "reals": ["1,5"]}]}]})",
         "parameters.features[0].attributes[0].reals[0]: a number is expected"},
        {R"({"features": [{"document": "p.CATPart", "type": "T", "attributes": [{"name": "a", "integers": ["1.5"]}]}]})",
         "parameters.features[0].attributes[0].integers[0]: an integer is expected"},
        {R"({"features": [{"document": "p.CATPart", "type": "T", "attributes": [{"name": "a", "objects": [
            {"parameter": "p", "type": "Color"}]}]}]})",
         "parameters.features[0].attributes[0].objects[0].type: no type is named 'Color'"}};
    for (const auto& c : cases) {
        const std::string text =
            std::string(R"({"documents": [{"name": "p.CATPart"}], "parameters": )") + c.section + "}";
        const std::string error = embedded::loadSessionText("s", text).error;
        EXPECT_EQ(error.substr(std::min<std::size_t>(error.find(": ") + 2, error.size())), c.error);
    }
}

} // namespace
