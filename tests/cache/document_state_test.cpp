#include "VornToolsCommon.h"

#include "CATDocument.h"
#include "UTILFile.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

namespace {

using DocumentStateTest = PlatformTest;

TEST_F(DocumentStateTest, OnlyTheListedTypesAreManaged) {
    auto document = session().part("p.CATPart");
    for (const char* type : {"CATPart", "CATProduct", "CATDrawing", "CATProcess", "CATAnalysis", "catalog", "wrl",
                             "CATShape", "model", "cgr", "jt", "CATAnalysisResults", "CATAnalysisComputations"})
        EXPECT_EQ(VornToolsCommon::isDocumentInSessionManagedByMaro(document.type(type).get()), 1) << type;
    for (const char* type : {"CATPART", "Catalog", "CATPar", "CATParts", "txt", ""})
        EXPECT_EQ(VornToolsCommon::isDocumentInSessionManagedByMaro(document.type(type).get()), 0) << type;
    reports();
    EXPECT_EQ(VornToolsCommon::isDocumentInSessionManagedByMaro(nullptr), 0);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::isDocumentInSessionManagedByMaro 9001 ip_cat_document"}));
}

TEST_F(DocumentStateTest, TheSessionTellsWhatIsNotSaved) {
    auto document = session().part(write("p.CATPart", "x"));
    session().part(path("nofile.CATPart")).saved(false);
    const std::string elsewhere = write("elsewhere.CATPart", "x");
    const auto toBeSaved = [](CATDocument* doc) {
        unsigned char answer = 7;
        EXPECT_EQ(VornToolsCommon::isDocumentToBeSaved(doc, answer), S_OK);
        return int(answer);
    };
    const auto modified = [](const std::string& name, HRESULT code) {
        unsigned char answer = 7;
        EXPECT_EQ(VornToolsCommon::isModifiedStatusInCATIA(name.c_str(), answer), code) << name;
        return int(answer);
    };
    EXPECT_EQ(toBeSaved(document.get()), 0);
    EXPECT_EQ(modified(document.name(), S_OK), 0);
    document.saved(false);
    EXPECT_EQ(toBeSaved(document.get()), 1);
    EXPECT_EQ(modified(document.name(), S_OK), 1);
    document.saved(true).withoutAutomation();
    EXPECT_EQ(toBeSaved(document.get()), 1);
    EXPECT_EQ(modified(document.name(), S_OK), 1);
    EXPECT_EQ(toBeSaved(nullptr), 1);
    EXPECT_EQ(modified(path("nofile.CATPart"), S_OK), 0) << "without a file nobody is asked";
    EXPECT_EQ(modified(elsewhere, E_FAIL), 0);

    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    const std::string logical =
        std::string("\x01\x02\\LIB") + UTILFile::getPathSeparator().ConvertToChar() + "p.CATPart";
    session().part(logical).saved(false);
    EXPECT_EQ(modified(logical, S_OK), 1);
}

TEST_F(DocumentStateTest, DrawingsAreUpdatedWhenTheEnvironmentAsksForIt) {
    auto drawing = session().document("d.CATDrawing");
    for (int bits = 0; bits < 16; ++bits) {
        environment().commandBrr = bits & 1;
        environment().updateDrawing = bits & 2;
        environment().commandCreateSpreadsheet = bits & 4;
        environment().updateDrawingInLastUpdateState = bits & 8;
        const bool expected = (bits & 1) ? (bits & 8) != 0 : (bits & 2) != 0 && !(bits & 4);
        clearJournal();
        session().updatedDrawings().clear();
        EXPECT_EQ(VornToolsCommon::documentIsUpToDate(drawing.get(), VornToolsCommon::DocumentTypeDrawing), S_OK);
        EXPECT_EQ(session().updatedDrawings(), expected ? Texts({"d.CATDrawing"}) : Texts()) << bits;
        EXPECT_EQ(messages(), expected ? Texts() : Texts({"Do not manage update of drawing"})) << bits;
    }
    environment().saveDetailSheet = true;
    VornToolsCommon::documentIsUpToDate(drawing.get(), VornToolsCommon::DocumentTypeDrawing);
    EXPECT_EQ(session().updatedDrawings().back(), "d.CATDrawing+details");
    EXPECT_EQ(VornToolsCommon::documentIsUpToDate(session().part("p.CATPart").get(), 3), S_OK);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::documentIsUpToDate 9003 APIDraftingInterfaces::updateDrawing"}));
    environment().missingManagers = {"ENVManager", "PROCManager"};
    clearJournal();
    EXPECT_EQ(VornToolsCommon::documentIsUpToDate(drawing.get(), 3), S_OK);
    EXPECT_EQ(messages(), Texts({"Do not manage update of drawing"}));
}

TEST_F(DocumentStateTest, APartThatIsNotUpToDateIsShownToTheUser) {
    auto part = session().part("p.CATPart");
    const auto check = [&](CATDocument* document, int type) {
        clearJournal();
        const HRESULT code = VornToolsCommon::documentIsUpToDate(document, type);
        EXPECT_EQ(embedded::Journal::get().mismatches(), 0);
        return code;
    };
    part.upToDate(false);
    EXPECT_EQ(check(part.get(), 2), S_OK);
    EXPECT_EQ(messages(), Texts({"checkForUpdatePart preference is set to false"}));
    environment().checkForUpdatePart = true;
    EXPECT_EQ(embedded::Messages::get().take(), Texts());
    EXPECT_EQ(check(part.get(), 2), S_OK);
    EXPECT_EQ(messages(), Texts({"checkForUpdatePart preference is set to true"}));
    EXPECT_EQ(embedded::Messages::get().take(), Texts({"localized 0 11208 11125", "unlocalized 11208 0 p.CATPart"}));
    part.upToDate(true);
    EXPECT_EQ(check(part.get(), 2), S_OK);
    EXPECT_EQ(check(part.upToDate(false).get(), 1), S_OK);
    EXPECT_EQ(embedded::Messages::get().take(), Texts());
    EXPECT_EQ(embedded::Journal::get().repeats(), 0);

    EXPECT_EQ(check(part.withoutRoots().get(), 2), S_OK);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::documentIsUpToDate 9002 pi_doc_root"}));
    EXPECT_EQ(embedded::Journal::get().lines(),
              Texts({"> VornToolsCommon::documentIsUpToDate", "checkForUpdatePart preference is set to true",
                     "< VornToolsCommon::documentIsUpToDate", "< VornToolsCommon::documentIsUpToDate"}));
    EXPECT_EQ(check(nullptr, 2), E_FAIL);
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::documentIsUpToDate 9001 ip_document"}));
}

TEST_F(DocumentStateTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    environment().checkForUpdatePart = true;
    environment().updateDrawing = true;
    const std::string file = write("p.CATPart", "x");
    auto part = session().part(file).upToDate(false);
    auto drawing = session().document("d.CATDrawing");

    sweepFailures(
        {"VornToolsCommon::isDocumentInSessionManagedByMaro",
         [&] { return SweepOutcome{VornToolsCommon::isDocumentInSessionManagedByMaro(part.get()) ? S_OK : E_FAIL}; }});
    environment().usesLogicalNames = false;
    sweepFailures({"VornToolsCommon::isModifiedStatusInCATIA", [&] {
                       unsigned char answer = 7;
                       const HRESULT code = VornToolsCommon::isModifiedStatusInCATIA(file.c_str(), answer);
                       return outcomeOf(code, answer);
                   }});
    environment().usesLogicalNames = true;
    sweepFailures({"VornToolsCommon::isDocumentToBeSaved",
                   [&] {
                       unsigned char answer = 7;
                       const HRESULT code = VornToolsCommon::isDocumentToBeSaved(part.get(), answer);
                       return SweepOutcome{code, true, answer};
                   },
                   {},
                   {},
                   {1}});
    sweepFailures({"VornToolsCommon::documentIsUpToDate",
                   [&] { return SweepOutcome{VornToolsCommon::documentIsUpToDate(part.get(), 2)}; }});
    sweepFailures({"VornToolsCommon::documentIsUpToDate",
                   [&] { return SweepOutcome{VornToolsCommon::documentIsUpToDate(drawing.get(), 3)}; },
                   [&] { session().updatedDrawings().clear(); }});
}

} // namespace
