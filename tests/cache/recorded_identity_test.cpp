#include "VornToolsCommon.h"

#include "CATDocument.h"
#include "UTILFile.h"
#include "VornCache.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

namespace {

constexpr const char* kDat = "<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nrev1\n</ItemRevUID>\n"
                             "<DatasetUID>\nset1\n</DatasetUID>\n<NamedRefUID>\nref1\n</NamedRefUID>\n";

std::string bytes(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}

/** What the two readers of identities give, from outputs that held something before. */
struct Identity {
    CATUnicodeString itemRev{"stale"}, dataset{"stale"}, namedRef{"stale"}, fileName{"stale"};
    unsigned char exists = 7;

    HRESULT ofFile(const std::string& name, VornCache* cache) {
        fileName = "";
        return VornToolsCommon::getOrvaneInformationsFromDatFile(name.c_str(), cache, itemRev, dataset, namedRef,
                                                                 exists);
    }
    HRESULT ofProduct(CATIProduct* product, VornCache* cache) {
        return VornToolsCommon::getOrvaneInformations(product, cache, itemRev, dataset, namedRef, fileName, exists);
    }
    bool empty() const { return itemRev.IsNull() && dataset.IsNull() && namedRef.IsNull() && fileName.IsNull(); }
    std::string text() const {
        return bytes(itemRev) + "," + bytes(dataset) + "," + bytes(namedRef) + "," + std::to_string(exists);
    }
};

class IdentityTest : public PlatformTest {
protected:
    std::string writeManaged(const std::string& name) {
        write(name + ".dat", kDat);
        return write(name, "x");
    }
    /** A directory of the environment: the folder's subfolder. */
    std::string directory(const std::string& name) {
        std::filesystem::create_directories(folder() / name);
        return path(name);
    }
    std::string separator() { return UTILFile::getPathSeparator().ConvertToChar(); }
};

TEST_F(IdentityTest, TheDatFileOfAFileTellsItsIdentity) {
    const std::string managed = writeManaged("p.CATPart");
    const std::string local = write("local.CATPart", "x");
    VornCache cache;
    Identity identity;
    EXPECT_EQ(identity.ofFile(managed, &cache), S_OK);
    EXPECT_EQ(identity.text(), "rev1,set1,ref1,1");
    EXPECT_EQ(identity.ofFile(local, &cache), S_OK);
    EXPECT_EQ(identity.text(), ",,,0");
    EXPECT_EQ(identity.ofFile(local, nullptr), S_OK) << "without a DAT file no cache is needed";
    EXPECT_EQ(identity.ofFile(managed, nullptr), E_FAIL);
    EXPECT_EQ(identity.text(), ",,,1");
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(identity.ofFile("", &cache), E_FAIL);
    EXPECT_EQ(identity.text(), ",,,0");
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getOrvaneInformationsFromDatFile 9001 "
                                "VornToolsCommon::getPhysicalPathFromDLName"}));

    CATUnicodeString both(managed.c_str());
    EXPECT_EQ(VornToolsCommon::getOrvaneInformationsFromDatFile(both, &cache, both, identity.dataset, identity.namedRef,
                                                                identity.exists),
              S_OK);
    EXPECT_EQ(bytes(both), "rev1") << "the name may be an output as well";
}

TEST_F(IdentityTest, DebugModeJournalsTheIdentityOnSuccessAndFailure) {
    environment().debugMode = true;
    const std::string managed = writeManaged("p.CATPart");
    VornCache cache;
    Identity identity;
    identity.ofFile(managed, &cache);
    EXPECT_TRUE(embedded::Journal::get().contains(
        "VornToolsCommon::getOrvaneInformationsFromDatFile : rc=[0], o_itemrev_uid=[rev1], o_dataset_uid=[set1], "
        "o_named_ref_uid=[ref1], o_exist_in_ov=[TRUE]"));
    clearJournal();
    identity.ofFile(managed, nullptr);
    EXPECT_TRUE(embedded::Journal::get().contains(
        "VornToolsCommon::getOrvaneInformationsFromDatFile : rc=[-2147467259], o_itemrev_uid=[], o_dataset_uid=[], "
        "o_named_ref_uid=[], o_exist_in_ov=[TRUE]"));
}

TEST_F(IdentityTest, LogicalNamesAreReadByTheirPathOnDisk) {
    const std::string managed = writeManaged("p.CATPart");
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    VornCache cache;
    Identity identity;
    EXPECT_EQ(identity.ofFile("\x01\x02\\LIB" + separator() + "p.CATPart", &cache), S_OK);
    EXPECT_EQ(identity.text(), "rev1,set1,ref1,1");
    EXPECT_EQ(identity.ofFile("\x01\x02\\UNKNOWN" + separator() + "p.CATPart", &cache), E_FAIL);
    EXPECT_EQ(identity.text(), ",,,0");
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getOrvaneInformationsFromDatFile 9003 "
                                "VornToolsCommon::getPhysicalPathFromDLName"}));

    auto instance = session()
                        .product("r.CATProduct")
                        .root()
                        .add(session().part("\x01\x02\\LIB" + separator() + "p.CATPart"), "p.1");
    EXPECT_EQ(identity.ofProduct(instance.get(), &cache), S_OK);
    EXPECT_EQ(identity.text(), "rev1,set1,ref1,1");
    EXPECT_EQ(bytes(identity.fileName), managed);
}

TEST_F(IdentityTest, AProductHasTheIdentityOfItsDocument) {
    const std::string managed = writeManaged("p.CATPart");
    auto root = session().product(path("r.CATProduct")).root();
    auto part = root.add(session().part(managed), "p.1");
    auto broken = root.addUnresolved("gone.1");
    VornCache cache;
    Identity identity;
    EXPECT_EQ(identity.ofProduct(part.get(), &cache), S_OK);
    EXPECT_EQ(identity.text(), "rev1,set1,ref1,1");
    EXPECT_EQ(bytes(identity.fileName), managed);
    EXPECT_EQ(identity.ofProduct(part.get(), nullptr), E_FAIL);
    EXPECT_TRUE(identity.empty());
    EXPECT_EQ(identity.ofProduct(nullptr, &cache), E_FAIL);
    EXPECT_EQ(identity.text(), ",,,0");
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::getOrvaneInformations 9001 ipi_product"}));
    EXPECT_EQ(identity.ofProduct(broken.get(), &cache), E_FAIL);
    EXPECT_TRUE(identity.empty());
    EXPECT_EQ(reports().back(), "VornToolsCommon::getOrvaneInformations 9003 "
                                "VornToolsCommon::getMasterShapeRepresentationPathName");
}

TEST_F(IdentityTest, TheSessionKeepsItsIdentifier) {
    const std::string first = bytes(VornToolsCommon::getCATIA_UUID());
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(bytes(VornToolsCommon::getCATIA_UUID()), first);
    EXPECT_EQ(messages(), Texts(2, "CATIA session UUID = [" + first + "]"));
}

TEST_F(IdentityTest, ManagedFilesAreKnownByTheirDatFile) {
    environment().stagingDirectory = directory("staging");
    const std::string saved = writeManaged("p.CATPart");
    const std::string staged = writeManaged(std::string("staging/new.CATPart"));
    const std::string factory = writeManaged(std::string("staging/LFC/made.CATPart"));
    auto savedDocument = session().part(saved);
    auto newDocument = session().part("new.CATPart");
    using Switch = bool embedded::Environment::*;
    const Switch none = &embedded::Environment::debugMode;
    const struct {
        CATDocument* document;
        std::string name, managedName;
        Switch on;
    } cases[] = {
        {nullptr, saved, saved, none},
        {savedDocument.get(), saved, saved, none},
        {savedDocument.get(), saved, saved, &embedded::Environment::commandImport},
        {savedDocument.get(), "new.CATPart", "", none},
        {savedDocument.get(), "made.CATPart", "", &embedded::Environment::processLifeCycleFactory},
        {newDocument.get(), "new.CATPart", staged, none},
        {newDocument.get(), "new.CATPart", "", &embedded::Environment::manualPartNumberInput},
        {newDocument.get(), "new.CATPart", "", &embedded::Environment::commandImport},
        {newDocument.get(), "new.CATPart", "", &embedded::Environment::commandCreateSpreadsheet},
        {newDocument.get(), "made.CATPart", "", none},
        {newDocument.get(), "made.CATPart", factory, &embedded::Environment::processLifeCycleFactory},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name + (c.document == newDocument.get() ? ", new" : ", saved or none"));
        environment().*c.on = true;
        CATUnicodeString name("stale");
        EXPECT_EQ(VornToolsCommon::isAOvElement(c.document, c.name.c_str(), name), c.managedName.empty() ? 0 : 1);
        EXPECT_EQ(std::filesystem::u8path(bytes(name)).lexically_normal(),
                  std::filesystem::u8path(c.managedName).lexically_normal());
        environment().*c.on = false;
    }
}

TEST_F(IdentityTest, OnlyTheListedTypesAreManaged) {
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

TEST_F(IdentityTest, TheSessionTellsWhatIsNotSaved) {
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
}

TEST_F(IdentityTest, DrawingsAreUpdatedWhenTheEnvironmentAsksForIt) {
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

TEST_F(IdentityTest, APartThatIsNotUpToDateIsShownToTheUser) {
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

TEST_F(IdentityTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    environment().stagingDirectory = directory("staging");
    environment().processLifeCycleFactory = true;
    environment().checkForUpdatePart = true;
    environment().updateDrawing = true;
    const std::string managed = writeManaged("p.CATPart");
    writeManaged(std::string("staging/LFC/made.CATPart"));
    auto root = session().product(path("r.CATProduct")).root();
    auto part = session().part(managed).upToDate(false);
    auto instance = root.add(part, "p.1");
    auto made = session().part("made.CATPart");
    auto drawing = session().document("d.CATDrawing");

    sweepFailures({"VornToolsCommon::getOrvaneInformationsFromDatFile", [&] {
                       VornCache cache;
                       Identity identity;
                       const HRESULT code = identity.ofFile(managed, &cache);
                       return SweepOutcome{code, identity.empty()};
                   }});
    sweepFailures({"VornToolsCommon::getOrvaneInformations", [&] {
                       VornCache cache;
                       Identity identity;
                       const HRESULT code = identity.ofProduct(instance.get(), &cache);
                       return SweepOutcome{code, identity.empty()};
                   }});
    sweepFailures({"VornToolsCommon::isAOvElement", [&] {
                       CATUnicodeString name("stale");
                       const bool is = VornToolsCommon::isAOvElement(made.get(), "made.CATPart", name) != 0;
                       return SweepOutcome{is ? S_OK : E_FAIL, is || name.IsNull()};
                   }});
    sweepFailures(
        {"VornToolsCommon::isDocumentInSessionManagedByMaro",
         [&] { return SweepOutcome{VornToolsCommon::isDocumentInSessionManagedByMaro(part.get()) ? S_OK : E_FAIL}; }});
    sweepFailures({"VornToolsCommon::isModifiedStatusInCATIA", [&] {
                       unsigned char answer = 7;
                       const HRESULT code = VornToolsCommon::isModifiedStatusInCATIA(managed.c_str(), answer);
                       return SweepOutcome{code, answer == 0};
                   }});
    sweepFailures({"VornToolsCommon::isDocumentToBeSaved", [&] {
                       unsigned char answer = 7;
                       return SweepOutcome{VornToolsCommon::isDocumentToBeSaved(part.get(), answer)};
                   }});
    sweepFailures({"VornToolsCommon::documentIsUpToDate",
                   [&] { return SweepOutcome{VornToolsCommon::documentIsUpToDate(part.get(), 2)}; }});
    sweepFailures({"VornToolsCommon::documentIsUpToDate",
                   [&] { return SweepOutcome{VornToolsCommon::documentIsUpToDate(drawing.get(), 3)}; },
                   [&] { session().updatedDrawings().clear(); }});
}

} // namespace
