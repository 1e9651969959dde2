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

class RecordedIdentityTest : public PlatformTest {
protected:
    std::string writeManaged(const std::string& name) {
        write(name + ".dat", kDat);
        return write(name, "x");
    }
    std::string separator() { return UTILFile::getPathSeparator().ConvertToChar(); }
};

TEST_F(RecordedIdentityTest, TheDatFileOfAFileTellsItsIdentity) {
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

TEST_F(RecordedIdentityTest, DebugModeJournalsTheIdentityOnSuccessAndFailure) {
    const std::string managed = writeManaged("p.CATPart");
    VornCache cache;
    Identity identity;
    identity.ofFile(managed, &cache);
    identity.ofFile(managed, nullptr);
    for (const std::string& line : messages()) EXPECT_EQ(line.find("rc="), std::string::npos) << "not in debug mode";
    environment().debugMode = true;
    identity.ofFile(managed, &cache);
    EXPECT_TRUE(embedded::Journal::get().contains(
        "VornToolsCommon::getOrvaneInformationsFromDatFile : rc=[0], o_itemrev_uid=[rev1], o_dataset_uid=[set1], "
        "o_named_ref_uid=[ref1], o_exist_in_ov=[TRUE]"));
    clearJournal();
    identity.ofFile(managed, nullptr);
    EXPECT_TRUE(embedded::Journal::get().contains(
        "VornToolsCommon::getOrvaneInformationsFromDatFile : rc=[-2147467259], o_itemrev_uid=[], o_dataset_uid=[], "
        "o_named_ref_uid=[], o_exist_in_ov=[TRUE]"));
    clearJournal();
    identity.ofFile(path("unmanaged.CATPart"), &cache);
    EXPECT_TRUE(embedded::Journal::get().contains(
        "VornToolsCommon::getOrvaneInformationsFromDatFile : rc=[0], o_itemrev_uid=[], o_dataset_uid=[], "
        "o_named_ref_uid=[], o_exist_in_ov=[FALSE]"));
}

TEST_F(RecordedIdentityTest, LogicalNamesAreReadByTheirPathOnDisk) {
    const std::string managed = writeManaged("p.CATPart");
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    VornCache cache;
    Identity identity;
    EXPECT_EQ(identity.ofFile("\x01\x02\\LIB" + separator() + "p.CATPart", &cache), S_OK);
    EXPECT_EQ(identity.text(), "rev1,set1,ref1,1");
    environment().filesDirectory = "\x01\x02\\LIB" + separator();
    EXPECT_EQ(identity.ofFile("p.CATPart", nullptr), E_FAIL) << "the DAT file is found in the files directory";
    EXPECT_EQ(identity.text(), ",,,1");
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

TEST_F(RecordedIdentityTest, AProductHasTheIdentityOfItsDocument) {
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

TEST_F(RecordedIdentityTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    const std::string managed = writeManaged("p.CATPart");
    auto root = session().product(path("r.CATProduct")).root();
    auto instance = root.add(session().part(managed), "p.1");

    sweepFailures({"VornToolsCommon::getOrvaneInformationsFromDatFile", [&] {
                       VornCache cache;
                       Identity identity;
                       const HRESULT code = identity.ofFile(managed, &cache);
                       return SweepOutcome{code, identity.empty(), 0, identity.text()};
                   }});
    sweepFailures({"VornToolsCommon::getOrvaneInformations", [&] {
                       VornCache cache;
                       Identity identity;
                       const HRESULT code = identity.ofProduct(instance.get(), &cache);
                       return SweepOutcome{code, identity.empty(), 0, identity.text()};
                   }});
}

} // namespace
