#include "VornToolsDummyPart.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

namespace {

class DummyPartTest : public PlatformTest {
protected:
    void TearDown() override {
        VornToolsDummyPart::kill();
        PlatformTest::TearDown();
    }
    /** Writes an empty file with a DAT file that says what was loaded. */
    std::string writeLoaded(const std::string& name, const std::string& loadType = "DummyPart") {
        write(name + ".dat", "<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>\n" + loadType + "\n</LoadType>\n");
        return write(name, "");
    }
    int isFile(const std::string& name) { return tester().isAFileDummyPart(name.c_str()); }
    int isNamed(const std::string& name) { return tester().isADummyPart(name.c_str()); }
    static VornToolsDummyPart& tester() { return *VornToolsDummyPart::getInstance(); }
};

TEST_F(DummyPartTest, AnEmptyFileIsTestedByItsDatFile) {
    const std::string dummy = writeLoaded("d.CATPart");
    EXPECT_EQ(isFile(dummy), 1);
    EXPECT_EQ(isFile(writeLoaded("lower.CATPart", "dummypart")), 0);
    EXPECT_EQ(isFile(writeLoaded("more.CATPart", "DummyPart2")), 0);
    EXPECT_EQ(messages(), Texts());
    write("front.CATPart.dat", "<LoadType>\nDummyPart\n</LoadType>\n");
    EXPECT_EQ(isFile(write("front.CATPart", "")), 1);
    write("cut.CATPart.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>");
    EXPECT_EQ(isFile(write("cut.CATPart", "")), 0);
    writeLoaded("full.CATPart");
    EXPECT_EQ(isFile(write("full.CATPart", "x")), 0);

    clearJournal();
    const std::string bare = write("bare.CATPart", "");
    EXPECT_EQ(isFile(bare), 0);
    EXPECT_EQ(messages().back(), "readDatTools returns failed for : " + bare);
    EXPECT_EQ(isFile(path("none")), 0);
    EXPECT_EQ(messages().back(), "getFileSize returns failed for : " + path("none"));
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(isFile(""), 0);
    EXPECT_EQ(reports(), Texts({"VornToolsDummyPart::isAFileDummyPart 9001 i_full_file_name"}));
}

TEST_F(DummyPartTest, ALogicalNameIsTestedByItsFile) {
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    writeLoaded("d.CATPart");
    write("full.CATPart", "x");
    const std::string lib = "\x01\x02\\LIB\\";
    EXPECT_EQ(isFile(lib + "d.CATPart"), 1);
    EXPECT_EQ(isNamed(lib + "d.CATPart"), 1);
    EXPECT_EQ(isFile(lib + "full.CATPart"), 0);
    EXPECT_EQ(isFile(lib + "none.CATPart"), 0);
    EXPECT_EQ(messages().back(), "getFileSize returns failed for : " + lib + "none.CATPart");
}

TEST_F(DummyPartTest, WhileFilesAreMadeTheSuffixDecides) {
    const struct {
        const char* name;
        int answer;
    } cases[] = {{"a.CATPart", 1}, {"a.catpart", 1}, {"a.model", 1},      {"a.CATShape", 1},
                 {"a.JT", 1},      {"a.cgr", 0},     {"a.CATProduct", 0}, {"CATPart", 0}};
    for (bool embedded::Environment::*command :
         {&embedded::Environment::commandImport, &embedded::Environment::commandCreateSpreadsheet}) {
        environment().*command = true;
        for (const auto& c : cases) EXPECT_EQ(isFile(write(c.name, "")), c.answer) << c.name;
        EXPECT_EQ(isFile(write("full.CATPart", "x")), 0);
        environment().*command = false;
    }
    EXPECT_EQ(isFile(path("a.jt")), 0);
}

TEST_F(DummyPartTest, ADummyPartIsRememberedUntilTheInstanceEnds) {
    const std::string dummy = writeLoaded("d.CATPart");
    EXPECT_EQ(isNamed(dummy), 1);
    std::filesystem::remove(folder() / "d.CATPart");
    clearJournal();
    EXPECT_EQ(isNamed(dummy), 1);
    EXPECT_EQ(embedded::Journal::get().lines(),
              Texts({"> VornToolsDummyPart::getInstance", "< VornToolsDummyPart::getInstance",
                     "> VornToolsDummyPart::isADummyPart", "Is a dummy part", "< VornToolsDummyPart::isADummyPart"}));
    EXPECT_EQ(isFile(dummy), 0) << "asked of the file itself";
    EXPECT_EQ(&tester(), VornToolsDummyPart::getInstance());
    EXPECT_EQ(VornToolsDummyPart::kill(), S_OK);
    EXPECT_EQ(VornToolsDummyPart::kill(), S_OK);
    EXPECT_EQ(isNamed(dummy), 0);
    clearJournal();
    EXPECT_EQ(isNamed(""), 0);
    EXPECT_EQ(messages(), Texts());
    environment().debugMode = true;
    EXPECT_EQ(isNamed(""), 0);
    EXPECT_EQ(messages(), Texts({"i_full_file_name is empty"}));
}

struct Variant : VornToolsDummyPart {
    using VornToolsDummyPart::initClassVariables;
    using VornToolsDummyPart::releaseClassVariables;
};

TEST_F(DummyPartTest, VariantsForgetWhatIsRemembered) {
    Variant variant;
    for (const auto forget : {&Variant::initClassVariables, &Variant::releaseClassVariables}) {
        const CATUnicodeString dummy(writeLoaded("d.CATPart").c_str());
        EXPECT_EQ(variant.isADummyPart(dummy), 1);
        std::filesystem::remove(folder() / "d.CATPart");
        EXPECT_EQ(variant.isADummyPart(dummy), 1);
        EXPECT_EQ((variant.*forget)(), S_OK);
        EXPECT_EQ(variant.isADummyPart(dummy), 0);
    }
}

TEST_F(DummyPartTest, AProductIsTestedByItsDocument) {
    auto root = session().product(writeLoaded("r.CATProduct")).root();
    auto dummy = root.add(session().part(writeLoaded("d.CATPart")), "d.1");
    auto real = root.add(session().part(write("p.CATPart", "x")), "p.1");
    auto component = root.addComponent("c", "c.1");
    EXPECT_EQ(tester().isADummyPart(dummy.get(), 0), 1);
    EXPECT_EQ(messages().back(), "Is a dummy part");
    EXPECT_EQ(tester().isADummyPart(real.get(), 1), 0);
    EXPECT_EQ(tester().isADummyPart(root.get(), 0), 0) << "a product document is none, whatever its DAT file says";
    EXPECT_EQ(tester().isADummyPart(component.get(), 0), 0);
    std::filesystem::remove(folder() / "d.CATPart");
    EXPECT_EQ(tester().isADummyPart(dummy.get(), 1), 1);
    EXPECT_EQ(tester().isADummyPart(dummy.get(), 0), 0);
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(tester().isADummyPart(static_cast<CATIProduct*>(nullptr), 1), 0);
    EXPECT_EQ(reports(), Texts({"VornToolsDummyPart::isADummyPart 9001 ip_product"}));
}

TEST_F(DummyPartTest, AComponentWhoseShapeIsNotToldIsReported) {
    auto root = session().product(path("r.CATProduct")).root();
    auto component = root.addComponent("c", "c.1").masterShape(path("c.model"));
    EXPECT_EQ(tester().isADummyPart(component.get(), 1), 0);
    EXPECT_EQ(reports(), Texts());
    unsigned char answer = 7;
    EXPECT_TRUE(failAt("CATIAProduct::GetMasterShapeRepresentationPathName", 2,
                       [&] { answer = tester().isADummyPart(component.get(), 1); }));
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(reports(),
              Texts({"VornToolsCommon::getMasterShapeRepresentationPathName 9004 GetMasterShapeRepresentationPathName",
                     "VornToolsDummyPart::isADummyPart 9004 VornToolsCommon::getMasterShapeRepresentationPathName"}));

    auto group = root.add(session().product(path("g.CATProduct")), "g.1").masterShape(path("g.model"));
    clearJournal();
    EXPECT_EQ(tester().isADummyPart(group.get(), 1), 0);
    EXPECT_FALSE(embedded::Journal::get().contains("> VornToolsCommon::getMasterShapeRepresentationPathName"))
        << "not asked of what is no component";
}

TEST_F(DummyPartTest, ADocumentWithoutANameIsNone) {
    auto part = session().part(writeLoaded("d.CATPart")).root();
    unsigned char answer = 7;
    EXPECT_TRUE(failAt("CATDocument::StorageName", 1, [&] { answer = tester().isADummyPart(part.get(), 1); }));
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(reports(), Texts());
}

TEST_F(DummyPartTest, ListsAndSelectionsAreSearchedForTheFirst) {
    auto document = session().part(writeLoaded("d.CATPart"));
    auto root = session().product(path("r.CATProduct")).root();
    auto dummy = root.add(document, "d.1");
    environment().filesDirectory = (folder() / "files" / "").u8string();
    const auto listed = [&](std::initializer_list<std::string> names) {
        CATListValCATUnicodeString files;
        for (const std::string& name : names) files.Append(name.c_str());
        unsigned char result = 7;
        EXPECT_EQ(tester().listOfFilesContainsADummyPart(files, result), S_OK);
        return int(result);
    };
    EXPECT_EQ(listed({}), 0);
    EXPECT_EQ(listed({path("none"), document.name(), ""}), 1);
    writeLoaded("files/e.CATPart");
    EXPECT_EQ(listed({"none", "e.CATPart"}), 1) << "completed with the files directory";
    EXPECT_EQ(listed({"d.CATPart"}), 0);
    clearJournal();
    EXPECT_EQ(listed({""}), 0);
    EXPECT_EQ(messages(), Texts({"file name may not contains path : "}));
    environment().missingManagers = {"ENVManager"};
    EXPECT_EQ(listed({"d.CATPart"}), 0);
    EXPECT_EQ(messages().back(), "can't get path for file : d.CATPart");
    EXPECT_EQ(reports(), Texts({"VornToolsDummyPart::listOfFilesContainsADummyPart 9002 ENVManager::getInstance("}));

    environment().missingManagers.clear();
    const auto selected = [&](std::initializer_list<CATBaseUnknown*> objects) {
        CATListPtrCATBaseUnknown list;
        for (CATBaseUnknown* const object : objects) list.Append(object);
        unsigned char result = 7;
        EXPECT_EQ(tester().selectionContainsADummyPart(list, result), S_OK);
        return int(result);
    };
    EXPECT_EQ(selected({}), 0);
    EXPECT_EQ(selected({root.get()}), 0);
    EXPECT_EQ(selected({nullptr, document.get(), root.get(), dummy.get(), nullptr}), 1);
    EXPECT_EQ(reports(),
              Texts(2, "VornToolsDummyPart::selectionContainsADummyPart 9004 QueryInterface IID_CATIProduct"));
    std::filesystem::remove(folder() / "d.CATPart");
    EXPECT_EQ(selected({dummy.get()}), 1) << "remembered";
}

TEST_F(DummyPartTest, TheInstanceIsAnObjectOfThePlatform) {
    EXPECT_STREQ(tester().IsA(), "VornToolsDummyPart");
    EXPECT_STREQ(VornToolsDummyPart::ClassName(), "VornToolsDummyPart");
    EXPECT_TRUE(tester().IsAKindOf("CATBaseUnknown"));
    EXPECT_FALSE(tester().IsAKindOf("CATIProduct"));
    EXPECT_EQ(tester().GetMetaObject(), VornToolsDummyPart::MetaObject());
    CATBaseUnknown* const another = VornToolsDummyPart::CreateItself();
    EXPECT_NE(another, &tester());
    EXPECT_EQ(another->Release(), 0U);
}

TEST_F(DummyPartTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    auto document = session().part(writeLoaded("d.CATPart"));
    auto root = session().product(path("r.CATProduct")).root();
    auto dummy = root.add(document, "d.1");
    auto component = root.addComponent("c", "c.1");
    environment().filesDirectory = (folder() / "").u8string();
    const auto forget = [] {
        VornToolsDummyPart::kill();
        VornToolsDummyPart::getInstance();
    };
    const auto answer = [](unsigned char yes) { return SweepOutcome{yes ? S_OK : E_FAIL}; };
    sweepFailures({"VornToolsDummyPart::isADummyPart",
                   [&] { return answer(tester().isADummyPart(document.name().c_str())); }, forget});
    sweepFailures(
        {"VornToolsDummyPart::isADummyPart", [&] { return answer(tester().isADummyPart(dummy.get(), 0)); }, forget});
    sweepFailures({"VornToolsDummyPart::isADummyPart",
                   [&] { return answer(tester().isADummyPart(component.get(), 0)); },
                   forget,
                   {},
                   {},
                   "a component is no dummy part"});
    CATListValCATUnicodeString files;
    files.Append("d.CATPart");
    sweepFailures({"VornToolsDummyPart::listOfFilesContainsADummyPart",
                   [&] {
                       unsigned char result = 7;
                       tester().listOfFilesContainsADummyPart(files, result);
                       return answer(result);
                   },
                   forget});
    CATListPtrCATBaseUnknown objects;
    objects.Append(dummy.get());
    sweepFailures({"VornToolsDummyPart::selectionContainsADummyPart",
                   [&] {
                       unsigned char result = 7;
                       tester().selectionContainsADummyPart(objects, result);
                       return answer(result);
                   },
                   forget});
}

TEST_F(DummyPartTest, WithoutMemoryNothingIsADummyPart) {
    const std::string name = writeLoaded("d.CATPart");
    write("d.CATPart.dat", "<DatFileVersion>\n2\n</DatFileVersion>\n<LoadType>\nDummyPart\n</LoadType>\n" +
                               std::string(kLargeAllocation, 'x'));
    auto part = session().part(name).root();
    const auto answer = [](unsigned char yes) { return SweepOutcome{yes ? S_OK : E_FAIL}; };
    const CATUnicodeString text(name.c_str());
    const auto forget = [] {
        VornToolsDummyPart::kill();
        VornToolsDummyPart::getInstance();
    };
    sweepAllocations("isAFileDummyPart", [&] {
        forget();
        return answer(tester().isAFileDummyPart(text));
    });
    sweepAllocations("isADummyPart", [&] {
        forget();
        return answer(tester().isADummyPart(part.get(), 1));
    });
    CATListValCATUnicodeString list;
    list.Append(std::string(2 * kLargeAllocation, 'n').c_str());
    sweepAllocations("listOfFilesContainsADummyPart", [&] {
        unsigned char result = 7;
        return SweepOutcome{tester().listOfFilesContainsADummyPart(list, result), result == 0};
    });
}

} // namespace
