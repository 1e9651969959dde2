#include "tests/properties/ParameterTest.h"

#include "embedded/Profile.h"
#include "tests/support/FaultAt.h"

namespace {

using ParameterUpdatesTest = ParameterTest;

TEST_F(ParameterUpdatesTest, AParameterTakesAnotherValue) {
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
    clearJournal();
    EXPECT_EQ(update(length, "25e-1", "d"), S_OK);
    EXPECT_EQ(messages(), (Texts{"Updating the Double property P (Length)", "    value applied : 25e-1mm"}));
    EXPECT_EQ(length.shown(), "2.5mm");
    environment().decimalSeparator = ",";
    EXPECT_EQ(update(real, "1.5", "d"), S_OK);
    EXPECT_EQ(update(length, "2.5", "d"), S_OK);
    EXPECT_EQ(real.shown() + " " + length.shown(), "1,5 2,5mm");
    EXPECT_EQ(update(real, "35E-1 x", "d"), S_OK);
    EXPECT_EQ(real.shown(), "3,5");
}

TEST_F(ParameterUpdatesTest, AListGrowsInFrontAndIsReplacedAsAWhole) {
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

TEST_F(ParameterUpdatesTest, SeveralNumbersThatCannotBeSplitAreNotTaken) {
    const struct {
        Parameter parameter;
        const char* type;
    } cases[] = {{set.add("I", 1), "i"}, {set.add("R", 1.0), "d"}};
    for (const auto& c : cases) {
        HRESULT code = S_OK;
        std::string before;
        EXPECT_TRUE(failAt("UTILString::split", 1, [&] {
            before = c.parameter.shown() + c.parameter.list();
            code = update(c.parameter, "7@=@8", c.type);
        }));
        EXPECT_EQ(code, E_FAIL);
        EXPECT_EQ(c.parameter.shown() + c.parameter.list(), before);
        EXPECT_EQ(messages().back(), "Unable to split parameter [P] with value [7@=@8]\n");
    }
}

TEST_F(ParameterUpdatesTest, DimensionsAreConvertedThroughTheMksUnit) {
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

TEST_F(ParameterUpdatesTest, ADimensionTakesANumberOfTheCurrentUnitOrATextWithAUnit) {
    const struct {
        const char* unit;
        const char* separator;
        const char* given;
        const char* applied; ///< null: it is not even tried
        const char* shown;   ///< null: refused
    } cases[] = {{"mm", ".", "11", "11mm", "11mm"},
                 {"mm", ".", "11mm", "11mm", "11mm"},
                 {"mm", ".", "5m", "5m", "5000mm"},
                 {"mm", ".", "5 m", "5 m", "5000mm"},
                 {"mm", ".", " +1e1 ", " +1e1 mm", "10mm"},
                 {"mm", ".", "1E-1cm", "1E-1cm", "1mm"},
                 {"mm", ".", ".5in", ".5in", "12.7mm"},
                 {"mm", ".", "2.mm", "2.mm", "2mm"},
                 {"m", ".", "5", "5m", "5m"},
                 {"m", ".", "5m", "5m", "5m"},
                 {"m", ".", "5mm", "5mm", "0.005m"},
                 {"in", ".", "10", "10in", "10in"},
                 {"in", ".", "25.4mm", "25.4mm", "1in"},
                 {"mm", ",", "2,5", "2,5mm", "2,5mm"},
                 {"mm", ",", "2.5", "2.5mm", "2,5mm"},
                 {"mm", ",", "2,5cm", "2,5cm", "25mm"},
                 {"mm", ",", "2.5cm", "2.5cm", "25mm"},
                 {"mm", ".", "5deg", "5deg", nullptr},
                 {"mm", ".", "5e", "5e", nullptr},
                 {"mm", ".", "5mm mm", "5mm mm", nullptr},
                 {"mm", ".", "2,5mm", nullptr, nullptr},
                 {"mm", ",", "1.234,5mm", nullptr, nullptr},
                 {"mm", ".", "mm", nullptr, nullptr},
                 {"mm", ".", ".", nullptr, nullptr},
                 {"mm", ".", "e5", nullptr, nullptr},
                 {"mm", ".", "1e999", nullptr, nullptr},
                 {"mm", ".", "1e999mm", "1e999mm", nullptr}};
    Parameter length = set.add("Length", "L", 1.0);
    const auto check = [&](const auto& c) {
        SCOPED_TRACE(std::string(c.given) + " in " + c.unit + " " + c.separator);
        embedded::selectUnit("Length", c.unit);
        environment().decimalSeparator = c.separator;
        length.get()->Valuate(0.125);
        const std::string before = length.shown();
        clearJournal();
        EXPECT_EQ(update(length, c.given, "d"), c.shown ? S_OK : E_FAIL);
        EXPECT_EQ(length.shown(), c.shown ? c.shown : before);
        Texts expected = {"Updating the Double property P (Length)"};
        if (c.applied) expected.push_back("    value applied : " + std::string(c.applied));
        if (c.applied && !c.shown)
            expected.push_back("Unable to update parameter [P] with value [" + std::string(c.given) + "]\n");
        EXPECT_EQ(messages(), expected);
        EXPECT_EQ(reports(), c.applied && !c.shown ? Texts{kClass + "updateParameter 9003 ValuateReal"} : Texts());
    };
    embedded::Switches switches = embedded::switches();
    for (const auto mark : {embedded::DecimalMark::session, embedded::DecimalMark::point}) {
        switches.dimensionMark = mark;
        embedded::setSwitches(switches);
        for (const auto& c : cases) check(c);
    }
}

TEST_F(ParameterUpdatesTest, WhatTheReadersGiveIsTakenBack) {
    const Parameter parameters[] = {set.add("Length", "L", 0.0125), set.add("Angle", "A", 0.5), set.add("R", 0.1),
                                    set.add("I", -3), set.add("S", "x")};
    const char* const types[] = {"d", "d", "d", "i", "s"};
    for (const char* const unit : {"mm", "m", "cm", "km", "in"})
        for (const char* const separator : {".", ","}) {
            embedded::selectUnit("Length", unit);
            environment().decimalSeparator = separator;
            for (std::size_t i = 0; i < std::size(parameters); ++i) {
                const std::string shown = parameters[i].shown();
                EXPECT_EQ(update(parameters[i], shown, types[i]), S_OK) << shown;
                EXPECT_EQ(parameters[i].shown(), shown);
            }
        }
}

TEST_F(ParameterUpdatesTest, WhatThePlatformDoesNotTakeIsAFailureThatChangesNothing) {
    const struct {
        const char* parameter;
        const char* value;
        const char* type;
    } cases[] = {{"I", "0", "s"},
                 {"I", "0", "?"},
                 {"I", "7", "d"},
                 {"I", "1", "b"},
                 {"S", "7", "i"},
                 {"S", "1", "b"},
                 {"B", "true", "s"},
                 {"B", "1", "i"},
                 {"B", "1", "d"},
                 {"R", "0.5", "s"},
                 {"R", "1", "b"},
                 {"L", "7mm", "s"},
                 {"L", "", "b"},
                 {"I", "0@=@1", "s"},
                 {"I", "0@=@1", "d"},
                 {"S", "1@=@2", "i"},
                 {"S", "1@=@2", "d"},
                 {"B", "1@=@0", "i"},
                 {"B", "1@=@0", "s"},
                 {"R", "1@=@2", "s"},
                 {"L", "1@=@2", "s"},
                 {"Driven S", "y", "s"},
                 {"Driven I", "7", "i"},
                 {"Driven B", "1", "b"},
                 {"Driven R", "7", "d"},
                 {"Driven R", "0.500001", "d"},
                 {"Driven I", "7@=@8", "i"}};
    for (const std::string prefix : {"", "Driven "}) {
        Parameter made[] = {set.add(prefix + "S", "x"), set.add(prefix + "I", 0), set.add(prefix + "R", 0.5),
                            set.add(prefix + "B", false), set.add("Length", prefix + "L", 0.25)};
        for (Parameter& parameter : made)
            if (!prefix.empty()) parameter.driven();
    }
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.parameter) + " " + c.value + " " + c.type);
        const Parameter parameter = set.parameter(c.parameter);
        const std::string digest = session().digest();
        clearJournal();
        EXPECT_EQ(update(parameter, c.value, c.type), E_FAIL);
        EXPECT_EQ(session().digest(), digest);
        EXPECT_EQ(messages().back(), "Unable to update parameter [P] with value [" + std::string(c.value) + "]\n");
        EXPECT_EQ(reports(), (Texts{kClass + "updateParameter 9003 Valuate"}));
    }
    const std::string digest = session().digest();
    EXPECT_EQ(update(set.parameter("Driven L"), "7", "d"), E_FAIL);
    EXPECT_EQ(update(set.parameter("Driven L"), "7@=@8", "d"), E_FAIL);
    EXPECT_EQ(session().digest(), digest);
    EXPECT_EQ(reports(), Texts(2, kClass + "updateParameter 9003 ValuateReal"));
    EXPECT_EQ(update(set.parameter("R"), "7", "i"), S_OK) << "an integer is a real number";
    EXPECT_EQ(set.parameter("R").shown(), "7");
}

TEST_F(ParameterUpdatesTest, AParameterThatDoesNotTellItsTypeOrMagnitudeTakesNothingUnseen) {
    Parameter length = set.add("Length", "L", 0.25), driven = set.add("Length", "D", 0.25).driven();
    const auto failed = [&](const char* call, const Parameter& parameter, const char* value, const char* type) {
        HRESULT code = S_OK;
        std::string before;
        EXPECT_TRUE(failAt(call, 1, [&] {
            before = parameter.shown() + parameter.list();
            code = update(parameter, value, type);
        }));
        EXPECT_EQ(code, E_FAIL);
        EXPECT_EQ(parameter.shown() + parameter.list(), before);
        return reports();
    };
    for (const char* const type : {"s", "i", "b", "d"})
        EXPECT_EQ(failed("CATICkeParm::Type", length, "7", type), (Texts{kClass + "updateParameter 9002 sp_type"}));
    EXPECT_EQ(failed("QueryInterface(CATICkeMagnitude)", driven, "7", "d"),
              (Texts{kClass + "updateParameter 9002 pi_magnitude", kClass + "updateParameter 9003 ValuateReal"}));
    EXPECT_EQ(messages(), (Texts{"Updating the Double property P (Length)", "    value applied : 7 (MKS unit)",
                                 "Unable to update parameter [P] with value [7]\n"}));
    EXPECT_EQ(
        failed("QueryInterface(CATICkeMagnitude)", driven, "7@=@8", "d"),
        (Texts{kClass + "getParamValueInStorageUnit 9002 ipi_magnitude", kClass + "updateParameter 9003 ValuateReal"}));
}

TEST_F(ParameterUpdatesTest, WithoutItsMagnitudeADimensionTakesWhatChangesIt) {
    Parameter length;
    HRESULT code = E_FAIL;
    EXPECT_TRUE(failAt("QueryInterface(CATICkeMagnitude)", 1, [&] {
        length = set.add("Length", "L", 0.25);
        code = update(length, "7", "d");
    }));
    EXPECT_EQ(code, S_OK);
    EXPECT_EQ(length.shown(), "7mm");
    EXPECT_EQ(reports(), (Texts{kClass + "updateParameter 9002 pi_magnitude"}));
}

TEST_F(ParameterUpdatesTest, TheKindOfTheKeptListDecidesHowValuesAreRead) {
    const std::string line = "multiple String values";
    Parameter truth = set.add("B", true), integer = set.add("I", 7), length = set.add("Length", "L", 1.0);
    EXPECT_EQ(update(truth, "1@=@0", "b"), S_OK);
    EXPECT_EQ(truth.shown() + " " + truth.list(), "true string: 1, 0");
    EXPECT_EQ(update(truth, "no", "b"), S_OK);
    EXPECT_EQ(truth.shown() + " " + truth.list(), "false string: no, 1, 0");

    integer.list("ListOfValues", Texts{"7", "x"});
    clearJournal();
    EXPECT_EQ(update(integer, "9", "i"), S_OK);
    EXPECT_EQ(messages().front(), line);
    EXPECT_EQ(integer.shown() + " " + integer.list(), "9 string: 9, 7, x");
    EXPECT_EQ(update(integer, "8@=@y", "s"), S_OK);
    EXPECT_EQ(update(integer, "z", "i"), E_FAIL);
    EXPECT_EQ(reports(), (Texts{kClass + "updateParameter 9003 Valuate"}));
    EXPECT_EQ(integer.shown() + " " + integer.list(), "8 string: 8, y");

    EXPECT_EQ(update(length, "5@=@6", "i"), S_OK);
    EXPECT_EQ(length.shown() + " " + length.list(), "5mm integer: 5, 6") << "in the unit that users see";
    Parameter texts = set.add("Length", "T", 1.0).list("ListOfValues", Texts{"5", "some"});
    EXPECT_EQ(update(texts, "2.5", "d"), S_OK);
    EXPECT_EQ(texts.shown() + " " + texts.list(), "2.5mm string: 2.5, 5, some");
    environment().decimalSeparator = ",";
    EXPECT_EQ(update(texts, "3.5", "d"), S_OK);
    EXPECT_EQ(texts.shown() + " " + texts.list(), "3,5mm string: 3.5, 2.5, 5, some");
    environment().decimalSeparator = ".";
    clearJournal();
    EXPECT_EQ(pairs(set), "kept|X.B|no@=@1@=@0|X.I|8@=@y|X.L|5@=@6|X.T|3.5@=@2.5@=@5@=@some|");
    EXPECT_EQ(messages(), (Texts{line, line, "multiple integer values", line}));
}

TEST_F(ParameterUpdatesTest, TheJournalTellsWhatAKeptListHolds) {
    const auto told = [&] {
        clearJournal();
        CATListValCATUnicodeString list;
        properties().appendAttributesWithParamsList(set.set(), "X", list);
        return messages();
    };
    const std::string none = "Unable to concat values of parameter ", by_one = "Multiple value but empty list\n";
    const auto check = [&](Parameter parameter, auto values, const std::string& call, const std::string& kind,
                           const std::string& kind_of_empty) {
        const std::string read = "CATISpecAttrAccess::GetList" + call, name = parameter.role();
        parameter.list("ListOfValues", values);
        EXPECT_TRUE(failAt(read.c_str(), 1, told));
        EXPECT_EQ(messages(), (Texts{"Cannot get " + kind_of_empty + " values list", none + name, by_one}));
        EXPECT_EQ(told(), (Texts{"multiple " + kind + " values"}));
        values.clear();
        parameter.list("ListOfValues", values);
        Texts expected = {"multiple " + kind_of_empty + " values but empty list", none + name, by_one};
        if (kind_of_empty == "physical") expected.insert(expected.begin() + 1, "Cannot get physical values list");
        EXPECT_EQ(told(), expected);
        empty(set);
    };
    check(set.add("S", "a"), Texts{"a"}, "String", "String", "String");
    check(set.add("I", 7), std::vector<int>{7}, "Integer", "integer", "integer");
    check(set.add("R", 0.5), std::vector<double>{0.5}, "Double", "double", "double");
    check(set.add("Length", "L", 1.0), std::vector<double>{7.0}, "Double", "double", "physical");
}

TEST_F(ParameterUpdatesTest, NumbersAreReadAndWrittenInTheSessionsNotation) {
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

TEST_F(ParameterUpdatesTest, WhatIsKeptHasMoreDigitsThanWhatIsShown) {
    Parameter length = set.add("Length", "L", 0.0123456).list("ListOfValues", std::vector<double>{0.0000015});
    EXPECT_EQ(update(length, "7.00055", "d"), S_OK);
    EXPECT_EQ(length.shown() + " " + length.list(), "7.00055mm double: 7.00055, 12.3456, 0.0015");
    EXPECT_TRUE(embedded::Journal::get().contains("    value applied : 0.00700055m"));
}

TEST_F(ParameterUpdatesTest, NumbersOutOfRangeAreNotTakenSilently) {
    Parameter integer = set.add("I", 1).range(0, 10), real = set.add("R", 1.5).range(0, 10);
    Parameter length = set.add("Length", "L", 0.001).range(0, 0.01);
    for (const auto& [parameter, type, setter] :
         {std::tuple<Parameter*, const char*, const char*>{&integer, "i", "Valuate"},
          {&real, "d", "Valuate"},
          {&length, "d", "ValuateReal"}}) {
        const std::string before = parameter->shown();
        for (const char* const value : {"11", "-1", "11@=@1"}) EXPECT_EQ(update(*parameter, value, type), E_FAIL);
        EXPECT_EQ(parameter->shown() + parameter->list(), before);
        EXPECT_EQ(reports(), Texts(3, kClass + "updateParameter 9003 " + setter));
        EXPECT_EQ(update(*parameter, "10", type), S_OK);
        EXPECT_EQ(parameter->shown().substr(0, 2), "10");
    }
}

TEST_F(ParameterUpdatesTest, FaultsOfThePlatformAreMet) {
    Parameter string = set.add("S", "a").list("ListOfValues", Texts{"a", "b"}), single = set.add("R", 1.0);
    Parameter length = set.add("Length", "L", 0.01).list("ListOfValues", std::vector<double>{0.02});
    Parameter dimension = set.add("Length", "D", 1.0);
    Parameter integer = set.add("I", 1).list("ListOfValues", std::vector<int>{1, 2});
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
    sweepUpdate(length, "10@=@30", "d",
                [&] { length.list("ListOfValues", std::vector<double>{0.02}).get()->Valuate(0.01); });
    for (const char* const value : {"30", "30mm"})
        sweepUpdate(dimension, value, "d", [&] { dimension.get()->Valuate(1.0); });
    reports();
}

} // namespace
