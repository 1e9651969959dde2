#include "VornToolsSpreadsheet.h"

#include "TYPMapCATUnicodeStringPVoid.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include <map>

namespace {

const std::string kSpreadsheet = "VornToolsSpreadsheet::";
const std::string kMenu = "<menu>\n1\n2\n3\ngeo\n5\n6\n7\n8\nusual\nhide\n</menu>\n";

using Options = std::map<std::string, std::string>;

std::string entry(const std::string& name, const std::string& block) {
    return "<doc>\n" + name + "\nother\n<opts>\nx\n<main_body_only>\n" + block + "</main_body_only>\n</opts>\n</doc>\n";
}

/** Takes the options out and deletes them, as a caller does. */
Options take(TYPMapCATUnicodeStringPVoid& map) {
    Options options;
    while (map.size() > 0) {
        const CATUnicodeString key = map.keyAt(0);
        auto* const value = static_cast<CATUnicodeString*>(map.find(key, "CATUnicodeString"));
        options[key.ConvertToChar()] = value ? value->ConvertToChar() : "of another class";
        delete value;
        map.erase(key);
    }
    return options;
}

class SpreadsheetTest : public PlatformTest {
protected:
    void use(const std::string& bytes) { environment().spreadsheetPath = write("s.txt", bytes); }

    std::string option(int index, HRESULT expected = S_OK) {
        CATUnicodeString value("before");
        EXPECT_EQ(VornToolsSpreadsheet::getOptionValueFromImportSprdSht(index, value), expected) << index;
        return value.ConvertToChar();
    }
    Options mainBody(HRESULT expected = S_OK) {
        clearJournal();
        CATUnicodeString before("before");
        TYPMapCATUnicodeStringPVoid map;
        map.insert("before", &before, "CATUnicodeString");
        map.insert("other", &before, "int");
        EXPECT_EQ(VornToolsSpreadsheet::getCATPartMainBodyOption(map), expected);
        return take(map);
    }
};

TEST_F(SpreadsheetTest, MenuOptionsAreCountedFromOne) {
    use(kMenu + entry("a.CATPart", "y\n"));
    EXPECT_EQ(option(1), "1");
    EXPECT_EQ(option(VornToolsSpreadsheet::_CteMENU_GEO_COMPUTE_OPTION_INDEX), "geo");
    EXPECT_EQ(option(VornToolsSpreadsheet::_CteMENU_MGTHIDESHOW_OPTION_INDEX), "hide");
    use("<menu>\r\n\r\n \xC3\xA4\xFF\r\n</menu>");
    EXPECT_EQ(option(1), "");
    EXPECT_EQ(option(2), " \xC3\xA4\xFF") << "lines are taken whole";
    EXPECT_EQ(reports(), Texts());
    for (const int index : {0, -1, 3, 2147483647, -2147483647 - 1}) {
        EXPECT_EQ(option(index, E_FAIL), "");
        EXPECT_EQ(reports(), Texts({kSpreadsheet + "getOptionValueFromImportSprdSht 9101 i_option"}));
    }
    use("<menu>\n</menu>\n");
    EXPECT_EQ(option(1, E_FAIL), "");
    EXPECT_EQ(reports(), Texts({kSpreadsheet + "getOptionValueFromImportSprdSht 9101 i_option"}));
}

TEST_F(SpreadsheetTest, AFileOfAnotherFormatIsRefused) {
    const std::string method = kSpreadsheet + "getOptionValueFromImportSprdSht ";
    environment().spreadsheetPath = path("none");
    EXPECT_EQ(option(1, E_FAIL), "");
    EXPECT_EQ(reports(), Texts({method + "501 " + path("none")}));
    EXPECT_EQ(mainBody(E_FAIL), Options());
    EXPECT_EQ(messages(), Texts({"Cannot open file " + path("none")}));
    environment().missingManagers = {"ENVManager"};
    EXPECT_EQ(option(1, E_FAIL), "");
    EXPECT_EQ(reports(), Texts({method + "501 "}));
    environment().missingManagers.clear();

    for (const char* bytes :
         {"", "\n", "<doc>\n", "<Menu>\n</menu>\n", " <menu>\n</menu>\n", "\xEF\xBB\xBF<menu>\n</menu>\n"}) {
        use(bytes);
        EXPECT_EQ(option(1, E_FAIL), "") << bytes;
        EXPECT_EQ(reports(), Texts({method + "9112 " + path("s.txt")})) << bytes;
        EXPECT_EQ(mainBody(E_FAIL), Options()) << bytes;
        EXPECT_EQ(messages(), Texts({"Invalid spreadsheet format"})) << bytes;
    }
    for (const char* bytes : {"<menu>", "<menu>\n1\n", "<menu>\n1\n</menu> \n"}) {
        use(bytes);
        EXPECT_EQ(option(1, E_FAIL), "") << bytes;
        EXPECT_EQ(reports(), Texts({method + "9004 readBaliseInfos"})) << bytes;
        EXPECT_EQ(mainBody(E_FAIL), Options()) << bytes;
        EXPECT_EQ(messages(), Texts({"Invalid spreadsheet format"})) << bytes;
    }
}

TEST_F(SpreadsheetTest, EachPartHasTheOptionOfItsFirstEntry) {
    use(kMenu + "<doc>\na.CATProduct\n" + entry("a.CATPart", "yes\nmore\n") + entry("B.catpart", "") +
        entry("a.CATPart", "no\n") + entry("c.model", "no\n") + entry("a.catpart", "\n") + "<doc>");
    EXPECT_EQ(mainBody(), (Options{{"a.CATPart", "yes"}, {"B.catpart", "usual"}, {"a.catpart", ""}}));
    EXPECT_EQ(messages(), Texts());
    use(kMenu);
    EXPECT_EQ(mainBody(), Options());
    use("<menu>\n1\n</menu>\n" + entry("a.CATPart", ""));
    EXPECT_EQ(mainBody(), (Options{{"a.CATPart", ""}})) << "the menu has no ninth line";
}

TEST_F(SpreadsheetTest, AnEntryWithoutBlockIsLeftOut) {
    environment().importPath = "/import";
    environment().separator = "/";
    use(kMenu + entry("a.CATPart", "yes\n") + "<doc>\nb.CATPart\n<opts>\n</opts>\n");
    EXPECT_EQ(mainBody(), (Options{{"a.CATPart", "yes"}})) << "what was read before stays";
    EXPECT_EQ(messages(), Texts({"There is non balise main_body_only for [/import/b.CATPart]"}));
    environment().importPath = "D:\\import\\";
    environment().separator = "\\";
    use(kMenu + "<doc>\nb.CATPart\n<main_body_only>\n1\n</main_body_only>\n");
    EXPECT_EQ(mainBody(), Options());
    EXPECT_EQ(messages(), Texts({"There is non balise main_body_only for [D:\\import\\b.CATPart]"}));
    use(kMenu + "<doc>\nb.CATPart\n" + entry("c.CATPart", "next\n"));
    EXPECT_EQ(mainBody(), (Options{{"b.CATPart", "next"}})) << "the tags are looked for beyond the entry's end";
    use(kMenu + entry("a.CATPart", "yes\n") + "<doc>\nb.CATPart\n<opts>\n<main_body_only>\nno\n");
    EXPECT_EQ(mainBody(E_FAIL), Options()) << "nothing is half read";
    EXPECT_EQ(messages(), Texts({"Invalid spreadsheet format"}));
}

TEST_F(SpreadsheetTest, TagsThatStandElsewhereAreLines) {
    use(kMenu + "<doc>\n<doc>\nb.CATPart\n<opts>\n" + entry("a.CATPart", "<doc>\n<menu>\n"));
    EXPECT_EQ(mainBody(), (Options{{"a.CATPart", "<doc>"}})) << "the first <doc> names a file that is no part";
    use("<menu>\n<menu>\n<doc>\na.CATPart\n</menu>\n" + entry("b.CATPart", "yes\n"));
    EXPECT_EQ(mainBody(), (Options{{"b.CATPart", "yes"}})) << "what stands in the menu is a value";
    use("1\n");
    EXPECT_EQ(mainBody(E_FAIL), Options());
}

TEST_F(SpreadsheetTest, AHundredThousandDocumentsAreRead) {
    constexpr int kDocuments = 100000;
    std::string bytes = kMenu;
    for (int i = 0; i < kDocuments; ++i) bytes += entry("p" + std::to_string(i) + ".CATPart", i % 2 ? "" : "own\n");
    use(bytes + entry("p1.CATPart", "late\n"));
    const Options options = mainBody();
    EXPECT_EQ(options.size(), static_cast<std::size_t>(kDocuments));
    EXPECT_EQ(options.at("p99998.CATPart"), "own");
    EXPECT_EQ(options.at("p1.CATPart"), "usual");
    use(bytes + "<doc>\nopen.CATPart\n<opts>\n<main_body_only>\n");
    EXPECT_EQ(mainBody(E_FAIL), Options());
}

TEST_F(SpreadsheetTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    use(kMenu + entry("a.CATPart", "yes\n") + entry("b.CATPart", "no\n"));
    sweepFailures({kSpreadsheet + "getOptionValueFromImportSprdSht", [] {
                       CATUnicodeString value("before");
                       const HRESULT code = VornToolsSpreadsheet::getOptionValueFromImportSprdSht(4, value);
                       return outcomeOf(code, value);
                   }});
    sweepFailures({kSpreadsheet + "getCATPartMainBodyOption", [] {
                       TYPMapCATUnicodeStringPVoid map;
                       const HRESULT code = VornToolsSpreadsheet::getCATPartMainBodyOption(map);
                       embedded::Failures::get().disarm();
                       Texts options;
                       for (const auto& [document, value] : take(map)) options.push_back(document + "=" + value);
                       return outcomeOf(code, options);
                   }});
}

} // namespace
