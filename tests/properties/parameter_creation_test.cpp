#include "tests/properties/ParameterTest.h"
#include "tests/support/FaultAt.h"

namespace {

/** A value to make a parameter of. */
struct Value {
    const char* separator;
    const char* value;
    const char* type;
    const char* expected; ///< type, value and list; empty: nothing is made
};

class ParameterCreationTest : public ParameterTest {
protected:
    void createEach(const std::vector<Value>& values) {
        for (const Value& each : values) {
            environment().decimalSeparator = each.separator;
            SCOPED_TRACE(std::string(each.value) + " " + each.type + " " + each.separator);
            const std::size_t before = set.parameters().size();
            EXPECT_EQ(create("P", each.value, each.type), *each.expected ? S_OK : E_FAIL);
            EXPECT_EQ(set.parameters().size(), before + (*each.expected ? 1 : 0));
            if (*each.expected) {
                EXPECT_EQ(last(), each.expected);
            }
        }
    }
};

TEST_F(ParameterCreationTest, ASingleValueIsReadByItsType) {
    createEach({{".", "x", "s", "String x"},
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
                {".", "-2.5e1mm", "d", "Real -25"},
                {".", "2.5e mm", "d", "Real 2.5"},
                {".", "1.5.2", "d", ""},
                {".", "1,5mm", "d", ""},
                {".", "1.5mm", "i", ""},
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
                {".", "a\\b\n\x1A\xC3\xA4", "s", "String a\\b\n\x1A\xC3\xA4"}});
    EXPECT_EQ(create("Z", std::string("a\0b", 3), "s"), S_OK);
    EXPECT_EQ(last(), std::string("String a\0b", 10));
}

TEST_F(ParameterCreationTest, SeveralValuesAreReadByTheirType) {
    createEach({{".", "a@=@b@=@a", "s", "String a string: a, b"},
                {".", "\xC5\x81@=@\xC4\x86", "s", "String \xC5\x81 string: \xC5\x81, \xC4\x86"},
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
                {".", "a@=@@=@b@=@", "s", "String a string: a, , b"}});
    std::string many = "0";
    for (int i = 1; i < 10000; ++i) many += "@=@" + std::to_string(i);
    EXPECT_EQ(create("M", many, "i"), S_OK);
    EXPECT_EQ(last().size(), std::string("Integer 0 integer:").size() + 10000 * 2 - 1 + 38890);
    EXPECT_EQ(create("M", many, "d"), S_OK);
    EXPECT_EQ(last().size(), std::string("Real 0 double:").size() + 10000 * 2 - 1 + 38890);
}

TEST_F(ParameterCreationTest, TheJournalTellsWhyNothingWasMade) {
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
    EXPECT_TRUE(failAt("CATISpecObject::AddAttribute", 1, [&] { create("R", "a@=@b", "s"); }));
    EXPECT_FALSE(embedded::Journal::get().contains("key ListOfValues successfully added"));
    reports();
    EXPECT_EQ(Service::isMultipleValuesParameter("a@=@"), 1);
    EXPECT_EQ(Service::isMultipleValuesParameter("@=@a"), 1);
    EXPECT_EQ(Service::isMultipleValuesParameter("a@=b"), 0);
}

TEST_F(ParameterCreationTest, FlagsAreAppliedInTheirOrder) {
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

TEST_F(ParameterCreationTest, AParameterThatDoesNotTakeAFlagIsNotPutAnywhere) {
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

TEST_F(ParameterCreationTest, FaultsOfThePlatformAreMet) {
    set.keepIn("Parameters");
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
                       [&] { empty(set); }});
    reports();
}

} // namespace
