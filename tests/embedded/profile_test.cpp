#include "embedded/Profile.h"

#include "CATDocument.h"
#include "CATGetEnvValue.h"
#include "CATICkeParmFactory.h"
#include "CATIParmPublisher.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "CATISpecAttrAccess.h"
#include "CATLib.h"
#include "JNLManager.h"
#include "UTILFile.h"
#include "UTILString.h"
#include "UTILTime.h"
#include "embedded/Parameters.h"
#include "embedded/SessionFile.h"
#include "tests/support/Fixture.h"
#include "tests/support/Utf8.h"

#include <cstdlib>
#include <filesystem>
#include <utility>

using embedded::CodePage;
using embedded::FolderOrder;
using embedded::Switches;
using embedded::switches;

namespace {

class ProfileTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        m_profile = embedded::profile();
        set([](Switches&) {});
    }
    void TearDown() override {
        PlatformTest::TearDown();
        embedded::chooseProfile(m_profile);
    }
    /** The usual switches but for what `change` does to them. */
    template <class Change>
    static void set(Change change) {
        Switches changed;
        change(changed);
        embedded::setSwitches(changed);
    }
    static void useCodePage() {
        set([](Switches& one) { one.codePage = CodePage::windows1252; });
    }
    /** The entries as they come, the one that comes with the end of the folder in brackets. */
    Texts entries() {
        CATDirectory directory;
        if (CATOpenDirectory(folder().u8string().c_str(), &directory) != CATLibSuccess) return {"(not opened)"};
        Texts names;
        int atEnd = 0;
        while (atEnd == 0) {
            CATDirectoryEntry entry{};
            EXPECT_EQ(CATReadDirectory(&directory, &entry, &atEnd), CATLibSuccess);
            const std::string name = entry.name;
            if (!name.empty()) names.push_back(atEnd ? "[" + name + "]" : name);
        }
        CATDirectoryEntry behind{};
        EXPECT_EQ(CATReadDirectory(&directory, &behind, &atEnd), CATLibSuccess);
        EXPECT_EQ(std::string(behind.name) + std::to_string(atEnd), "1") << "nothing comes behind the end";
        CATCloseDirectory(&directory);
        return names;
    }

private:
    std::string m_profile;
};

TEST_F(ProfileTest, ASessionBeginsWithTheSwitchesOfItsProfile) {
    EXPECT_EQ(embedded::profiles(), Texts({"kind", "unkind", "resolving"}));
    ASSERT_TRUE(embedded::chooseProfile("unkind"));
    EXPECT_FALSE(embedded::chooseProfile("Unkind"));
    EXPECT_EQ(embedded::profile(), "unkind");
    EXPECT_TRUE(switches().codePage == CodePage::windows1252 && !switches().servicesKnowLogicalNames);
    set([](Switches& one) { one.servicesKnowLogicalNames = true; });
    EXPECT_EQ(switches().codePage, CodePage::utf8);
    session().reset();
    EXPECT_TRUE(switches().codePage == CodePage::windows1252 && !switches().servicesKnowLogicalNames);
    ASSERT_TRUE(embedded::chooseProfile("resolving"));
    EXPECT_TRUE(switches().servicesKnowLogicalNames);
    ASSERT_TRUE(embedded::chooseProfile("kind"));
    EXPECT_EQ(switches(), Switches());
}

TEST_F(ProfileTest, CompanionServicesKnowLogicalNamesOrDoNot) {
    environment().logicalNames = {{"LIB", folder().u8string()}};
    write("a.txt", "one\n");
    touch("a.txt", 1000000000);
    const auto logical = [](const char* directory, const char* file) {
        return CATUnicodeString("\x01\x02\\") + directory + UTILFile::getPathSeparator() + CATUnicodeString(file);
    };
    const CATUnicodeString name = logical("LIB", "a.txt");
    long long size = 0;
    UTILFile file;
    EXPECT_EQ(UTILFile::existingFile(name), 0);
    EXPECT_EQ(UTILFile::getFileSize(name, size), E_FAIL);
    EXPECT_EQ(UTILTime::compareFileTime(name, "1000000000"), -1);
    EXPECT_EQ(file.open(name, "r"), E_FAIL);
    set([](Switches& one) { one.servicesKnowLogicalNames = true; });
    EXPECT_EQ(UTILFile::existingFile(name), 1);
    EXPECT_EQ(UTILFile::getFileSize(name, size), S_OK);
    EXPECT_EQ(size, 4);
    EXPECT_EQ(UTILFile::getLastModificationDateOnFile(name), 1000000000);
    EXPECT_EQ(UTILTime::compareFileTime(name, "1000000000"), 0);
    CATUnicodeString line;
    EXPECT_EQ(file.open(name, "r"), S_OK);
    EXPECT_EQ(file.readLine(line), S_OK);
    file.close();
    EXPECT_TRUE(line == "one");
    EXPECT_EQ(UTILFile::copyFile(name, logical("LIB", "b.txt")), S_OK);
    EXPECT_EQ(UTILFile::renameFile(logical("LIB", "b.txt"), logical("LIB", "c.txt")), S_OK);
    EXPECT_TRUE(std::filesystem::exists(folder() / "c.txt"));
    EXPECT_EQ(UTILFile::deleteFile(logical("LIB", "c.txt")), S_OK);
    EXPECT_EQ(UTILFile::existingFile(logical("OTHER", "a.txt")), 0) << "a name that the session does not know";
    EXPECT_EQ(UTILFile::existingFile(path("a.txt").c_str()), 1);
}

TEST_F(ProfileTest, FoldersListTheirEntriesInAnOrderOfTheirOwn) {
    for (const char* const name : {"b", "a", "c"}) write(name, "");
    Texts system = entries();
    ASSERT_EQ(system.size(), 5U);
    EXPECT_EQ(system[0] + system[1], "...");
    set([](Switches& one) { one.folderOrder = FolderOrder::names; });
    EXPECT_EQ(entries(), Texts({".", "..", "a", "b", "c"}));
    set([](Switches& one) { one.folderOrder = FolderOrder::reversed; });
    EXPECT_EQ(entries(), Texts({".", "..", "c", "b", "a"}));
    set([](Switches& one) {
        one.folderOrder = FolderOrder::names;
        one.entryWithEndOfFolder = true;
    });
    EXPECT_EQ(entries(), Texts({".", "..", "a", "b", "[c]"}));
}

TEST_F(ProfileTest, FilesAreLookedForInOneFolderOrInAList) {
    const std::string inSecond = write("two/a.txt", "");
    write("three/a.txt", "");
#if defined(_WIN32)
    const std::string comma = ";";
#else
    const std::string comma = ":";
#endif
    const std::string list = path("one") + comma + path("two") + comma + path("three");
    EXPECT_EQ(CATFindPath("a.txt", list.c_str()), nullptr);
    set([](Switches& one) { one.pathLists = true; });
    const char* const found = CATFindPath("a.txt", list.c_str());
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(std::string(found), inSecond) << "the first folder that has it";
    EXPECT_EQ(CATFindPath("b.txt", list.c_str()), nullptr);
    ASSERT_NE(CATFindPath("a.txt", path("two").c_str()), nullptr);
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder());
    const char* const relative = CATFindPath("a.txt", "two");
    std::filesystem::current_path(before);
    ASSERT_NE(relative, nullptr);
    EXPECT_EQ(std::string(relative), inSecond) << "the answer is absolute";
}

TEST_F(ProfileTest, TextsOfBytesAreInTheCodePage) {
    useCodePage();
    const struct {
        const char* bytes;
        const char* text;
    } cases[] = {{"Bolt", "Bolt"},
                 {"\xC4\xDF\xFF", "\xC3\x84\xC3\x9F\xC3\xBF"},
                 {"\x80\x8A\x9F", "\xE2\x82\xAC\xC5\xA0\xC5\xB8"},
                 {"\x81\x8D\x8F\x90\x9D", "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D"},
                 {"\xC3\xA4", "\xC3\x83\xC2\xA4"},
                 {"", ""}};
    for (const auto& c : cases) {
        const CATUnicodeString text(c.bytes);
        EXPECT_EQ(toUtf8(text), c.text);
        EXPECT_STREQ(text.ConvertToChar(), c.bytes);
        EXPECT_EQ(text.GetLengthInByte(), static_cast<int>(std::string(c.bytes).size()));
        EXPECT_EQ(text.GetLengthInChar(), text.GetLengthInByte());
        CATUnicodeString assigned;
        assigned = c.bytes;
        EXPECT_TRUE(assigned == text);
        EXPECT_TRUE(CATUnicodeString("x") + c.bytes == CATUnicodeString((std::string("x") + c.bytes).c_str()));
        EXPECT_TRUE(CATUnicodeString((c.bytes + std::string("xy")).c_str(), std::string(c.bytes).size()) == text);
    }
}

TEST_F(ProfileTest, WhatTheCodePageLacksIsMissingInBytesOnly) {
    useCodePage();
    const std::string polish = "\xC5\x81\xC3\xB3\xC4\x87 \xF0\x9F\x94\xA7.CATPart";
    const CATUnicodeString text = utf8(polish);
    EXPECT_STREQ(text.ConvertToChar(), "?\xF3? ?.CATPart");
    EXPECT_EQ(text.GetLengthInByte(), 13);
    const char* const bytes = text.ConvertToChar();
    EXPECT_EQ(text.ConvertToChar(), bytes) << "the text owns it until it changes";
    CATUnicodeString copy = text;
    EXPECT_EQ(toUtf8(copy.SubString(0, 3)), "\xC5\x81\xC3\xB3\xC4\x87");
    copy += "\xE4";
    EXPECT_EQ(toUtf8(copy), polish + "\xC3\xA4");
    EXPECT_STREQ(copy.ConvertToChar(), "?\xF3? ?.CATPart\xE4");
    EXPECT_STREQ(text.ConvertToChar(), "?\xF3? ?.CATPart");
    CATBSTR automation = nullptr;
    text.ConvertToBSTR(&automation);
    CATUnicodeString back;
    back.BuildFromBSTR(automation);
    CATFreeString(automation);
    EXPECT_TRUE(back == text);
    EXPECT_FALSE(utf8("\xC5\x81") == utf8("\xC4\x87"));
    CATListValCATUnicodeString parts;
    UTILString::split(text, " ", parts);
    EXPECT_EQ(toUtf8(parts[1]), "\xC5\x81\xC3\xB3\xC4\x87");

    // Services that take a text find its file; those that take bytes do not.
    write(polish, "x");
    EXPECT_EQ(UTILFile::existingFile(utf8(path(polish))), 1);
    EXPECT_EQ(CATFindPath(text.ConvertToChar(), folder().u8string().c_str()), nullptr);
    set([](Switches& one) {
        one.codePage = CodePage::windows1252;
        one.folderOrder = FolderOrder::names;
    });
    EXPECT_EQ(entries(), Texts({".", "..", "?\xF3? ?.CATPart"}));
    std::filesystem::create_directories(folder() / std::filesystem::u8path("\xC3\xA4"));
    CATDirectory directory;
    ASSERT_EQ(CATOpenDirectory((folder().u8string() + "/\xE4").c_str(), &directory), CATLibSuccess);
    CATCloseDirectory(&directory);

    JNLManager::getInstance()->writeMsg("name is %s", text.ConvertToChar());
    EXPECT_EQ(messages(), Texts({"name is ?\xF3? ?.CATPart"}));
    environment().variables = {{"VORN_\xC3\xA4", "\xE2\x82\xAC\xC5\x81"}};
    char* value = nullptr;
    ASSERT_EQ(CATGetEnvValue("VORN_\xE4", &value), CATLibSuccess);
    EXPECT_STREQ(value, "\x80?");
    std::free(value);
    const auto part = parametersOf(session().part("/w/a.CATPart"), "MechanicalPart", "a");
    ASSERT_TRUE(part.addSetAs("\xC3\xA4", "S"));
    const CATISpecAttrAccess_var access(static_cast<CATBaseUnknown*>(part.get()));
    CATISpecAttrKey* const key = access->GetAttrKey("\xE4");
    ASSERT_NE(key, nullptr);
    EXPECT_STREQ(key->GetName().ConvertToChar(), "\xE4");
    key->Release();
}

TEST_F(ProfileTest, NumbersAreShownAndReadAsTheSessionHasThem) {
    const auto part = parametersOf(session().part("/w/a.CATPart"), "MechanicalPart", "a");
    const auto length = part.add("Length", "L", 0.0012345678), real = part.add("R", -1.0);
    const auto shown = [](const embedded::Parameter& parameter) { return toUtf8(parameter.get()->Show()); };
    EXPECT_EQ(shown(length) + " " + shown(real), "1.2345678mm -1");
    set([](Switches& one) { one.shownDecimals = 3; });
    EXPECT_EQ(shown(length) + " " + shown(real), "1.235mm -1");
    EXPECT_EQ(length.shown(), "1.2345678mm");
    real.get()->Valuate(-0.0001);
    EXPECT_EQ(shown(real), "0");
    environment().decimalSeparator = ",";
    for (const auto& [mark, kept] :
         {std::pair(embedded::DecimalMark::session, "2,5mm"), std::pair(embedded::DecimalMark::point, "3,5mm"),
          std::pair(embedded::DecimalMark::either, "3,5mm")}) {
        set([mark = mark](Switches& one) { one.dimensionMark = mark; });
        for (const char* const text : {"1.5mm", "2,5mm", "3.5mm"}) length.get()->ValuateReal(text);
        EXPECT_EQ(length.shown(), kept);
    }
    set([](Switches&) {});
    length.get()->ValuateReal("4,5mm");
    EXPECT_EQ(length.shown(), "4,5mm");

    int integer = 0;
    double number = 0.0;
    for (const bool isStrict : {false, true}) {
        set([&](Switches& one) { one.numbersEndTexts = isStrict; });
        for (const char* const text : {"7mm", "7 "}) {
            EXPECT_EQ(CATUnicodeString(text).ConvertToNum(&integer), isStrict ? 0 : 1);
            EXPECT_EQ(CATUnicodeString(text).ConvertToNum(&number), isStrict ? 0 : 1);
        }
        EXPECT_EQ(CATUnicodeString(" 7").ConvertToNum(&integer), 1);
        EXPECT_EQ(CATUnicodeString("7,5").ConvertToNum(&number), 1);
    }
}

TEST_F(ProfileTest, WhatIsWrittenMakesItsDocumentUnsavedAndOutOfDate) {
    auto document = session().part("/w/A.CATPART");
    EXPECT_STREQ(document.get()->IsA(), "CATPart") << "the class is that of the kind";
    const auto part = parametersOf(document, "MechanicalPart", "A");
    const auto text = part.add("T", "x"), driven = part.add("D", 1).driven(), bounded = part.add("B", 1).range(0, 2);
    const auto isTouched = [&] {
        const bool touched = !document.saved() && !document.upToDate();
        EXPECT_EQ(document.saved(), document.upToDate());
        document.saved(true).upToDate(true);
        return touched;
    };
    EXPECT_FALSE(isTouched()) << "by the builder";
    driven.get()->Valuate(2);
    bounded.get()->Valuate(3);
    text.get()->Valuate(CATUnicodeString("x"));
    const CATICkeParm_var loose = part.factory()->CreateReal("R", 1.0);
    loose->Rename("S");
    EXPECT_FALSE(isTouched()) << "nothing that the document holds has changed";
    text.get()->Valuate(CATUnicodeString("y"));
    EXPECT_TRUE(isTouched());
    part.publisher()->Append(CATISpecObject_var(loose));
    EXPECT_TRUE(isTouched());
    text.get()->SetUserAccess(CATICkeParm::ReadOnly);
    EXPECT_TRUE(isTouched());
}

TEST_F(ProfileTest, WhatIsWrittenInTheStructureBelongsToTheAssemblyOrToTheReference) {
    auto part = session().part("/w/A.CATPart"), assembly = session().product("/w/B.CATProduct");
    const auto instance = assembly.root().add(part, "A.1");
    const CATIProduct_var place(instance.get()), reference = place->GetReferenceProduct();
    const CATIPrdProperties_var properties(instance.get());
    using Touched = std::pair<bool, bool>;
    const auto touched = [&] {
        const Touched result(!part.saved() && !part.upToDate(), !assembly.saved() && !assembly.upToDate());
        for (auto* const document : {&part, &assembly}) document->saved(true).upToDate(true);
        return result;
    };
    const Touched nothing(false, false), thePart(true, false), theAssembly(false, true);
    EXPECT_EQ(touched(), nothing) << "by the builder";
    set([](Switches& one) { one.oddNamesAreRefused = true; });
    EXPECT_EQ(place->SetPrdInstanceName("a!b"), E_FAIL);
    reference->SetPartNumber("");
    EXPECT_EQ(touched(), nothing) << "what is refused";
    EXPECT_EQ(place->SetPrdInstanceName("A.2"), S_OK);
    EXPECT_EQ(touched(), theAssembly);
    EXPECT_EQ(properties->SetDescriptionInst("left"), S_OK);
    EXPECT_EQ(touched(), theAssembly);
    EXPECT_EQ(properties->SetDescriptionRef("a bolt"), S_OK);
    EXPECT_EQ(touched(), thePart);
    reference->SetPartNumber("A-1");
    EXPECT_EQ(touched(), thePart);
}

TEST_F(ProfileTest, ASessionFileTellsHowThePlatformBehaves) {
    const auto saved = [] {
        std::string text;
        EXPECT_EQ(embedded::sessionText(text).error, "");
        return text;
    };
    const auto load = [](const std::string& section) {
        return embedded::loadSessionText("s", "{\"platform\": " + section + "}").error;
    };
    embedded::chooseProfile("kind");
    EXPECT_EQ(saved().find("platform"), std::string::npos);
    EXPECT_EQ(load(R"({"profile": "unkind"})"), "");
    EXPECT_TRUE(switches().pathLists && switches().codePage == CodePage::windows1252);
    EXPECT_NE(saved().find(R"("profile": "unkind")"), std::string::npos);
    EXPECT_EQ(load(R"({"folder_order": "names", "code_page": "windows-1252", "services_know_logical_names": true,
                       "shown_decimals": 2, "row_zero_is_taken": true, "dimension_mark": "point"})"),
              "");
    const Switches mixed = switches();
    EXPECT_TRUE(mixed.folderOrder == FolderOrder::names && mixed.servicesKnowLogicalNames && !mixed.pathLists);
    const std::string text = saved();
    embedded::chooseProfile("unkind");
    ASSERT_EQ(embedded::loadSessionText("s", text).error, "");
    EXPECT_EQ(switches(), mixed) << "whatever the profile of whoever loads it";
    EXPECT_EQ(saved(), text);
    EXPECT_EQ(load(R"({"path_lists": false})"), "");
    EXPECT_TRUE(!switches().pathLists && switches().entryWithEndOfFolder) << "the others are those of the profile";
    ASSERT_EQ(embedded::loadSessionText("s", "{}").error, "");
    EXPECT_TRUE(switches().pathLists);

    EXPECT_EQ(load(R"({"profile": "mean"})"), "s:1: platform.profile: no profile is named 'mean'");
    EXPECT_EQ(load(R"({"folder_order": "odd"})"), "s:1: platform.folder_order: nothing is called 'odd' here");
    EXPECT_EQ(load(R"({"shown_decimals": 16})").substr(0, 30), "s:1: platform.shown_decimals: ");
    EXPECT_EQ(load(R"({"code_page": 1252})"), "s:1: platform.code_page: a text is expected");
    EXPECT_EQ(load(R"({"pathLists": true})"), "s:1: platform.pathLists: unknown key");
}

void setVariable(const char* value) {
#if defined(_WIN32)
    _putenv_s("VORNTOOLS_PROFILE", value);
#else
    setenv("VORNTOOLS_PROFILE", value, 1);
#endif
}

/** The variable is read once: in a process of its own. */
TEST(ProfileDeathTest, TheEnvironmentChoosesTheProfileOfThoseWhoDoNot) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const char* const given = std::getenv("VORNTOOLS_PROFILE");
    const std::string before = given ? given : "";
    constexpr int yes = 7;
    setVariable("unkind");
    EXPECT_EXIT(std::_Exit(switches().pathLists && embedded::profile() == "unkind" ? yes : EXIT_FAILURE),
                testing::ExitedWithCode(yes), "");
    setVariable("mean");
    EXPECT_EXIT(switches(), testing::ExitedWithCode(2),
                "VORNTOOLS_PROFILE=mean: no profile has that name; there are kind unkind resolving");
    setVariable(before.c_str());
}

} // namespace
