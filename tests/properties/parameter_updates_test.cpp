#include "tests/properties/ParameterTest.h"

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
    environment().decimalSeparator = ",";
    EXPECT_EQ(update(real, "1.5", "d"), S_OK);
    EXPECT_EQ(update(length, "2.5", "d"), S_OK);
    EXPECT_EQ(real.shown() + " " + length.shown(), "1,5 2,5mm");
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

TEST_F(ParameterUpdatesTest, FaultsOfThePlatformAreMet) {
    Parameter string = set.add("S", "a").list("ListOfValues", Texts{"a", "b"}), single = set.add("R", 1.0);
    Parameter length = set.add("Length", "L", 0.0).list("ListOfValues", std::vector<double>{0.02});
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
    sweepUpdate(length, "0@=@30", "d",
                [&] { length.list("ListOfValues", std::vector<double>{0.02}).get()->Valuate(0.0); });
    reports();
}

} // namespace
