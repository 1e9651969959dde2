#include "VornToolsCommon.h"

#include "CATDocument.h"
#include "UTILFile.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

namespace {

class DatFileNameTest : public PlatformTest {
protected:
    std::string datName(const std::string& name) {
        CATUnicodeString result("stale");
        m_code = VornToolsCommon::getDatFileFullFileName(name.c_str(), result);
        return result.ConvertToChar();
    }
    std::string withSeparator(const std::string& name) { return path(name) + separator(); }
    static std::string separator() { return UTILFile::getPathSeparator().ConvertToChar(); }
    /** Writes a file and its DAT file; the file's name. */
    std::string writeManaged(const std::string& name) {
        write(name + ".dat", "item");
        return write(name, "x");
    }

    HRESULT m_code = S_OK;
};

TEST_F(DatFileNameTest, NameOfTheDatFile) {
    environment().filesDirectory = withSeparator("files");
    environment().referencePath = withSeparator("reference");
    environment().referencePrefix = "REF_";
    EXPECT_EQ(datName("/w/p.CATPart"), "/w/p.CATPart.dat");
    EXPECT_EQ(datName("C:\\w\\p.CATPart"), "C:\\w\\p.CATPart.dat");
    EXPECT_EQ(datName("REF_bolt.CATPart"), withSeparator("reference") + "REF_bolt.CATPart.dat");
    EXPECT_EQ(datName("p.CATPart"), withSeparator("files") + "p.CATPart.dat");
    write("files/LFC/p.CATPart.dat", "");
    EXPECT_EQ(datName("p.CATPart"), withSeparator("files") + "LFC" + separator() + "p.CATPart.dat");
    EXPECT_EQ(m_code, S_OK);

    EXPECT_EQ(datName(""), "");
    EXPECT_EQ(m_code, E_FAIL);
    EXPECT_EQ(reports(), Texts{"VornToolsCommon::getDatFileFullFileName 9003 UTILFile::splitPathAndFileName"});
}

TEST_F(DatFileNameTest, ManagedFilesAreKnownByTheirDatFile) {
    environment().stagingDirectory = path("staging");
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
        EXPECT_EQ(std::filesystem::u8path(std::string(name.ConvertToChar())).lexically_normal(),
                  std::filesystem::u8path(c.managedName).lexically_normal());
        environment().*c.on = false;
    }
}

TEST_F(DatFileNameTest, LogicalNamesAreLookedUpByTheirPathOnDisk) {
    writeManaged("p.CATPart");
    writeManaged("LFC/made.CATPart");
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    const std::string library = "\x01\x02\\LIB" + separator();
    const std::string logical = library + "p.CATPart";
    CATUnicodeString name("stale");
    EXPECT_EQ(VornToolsCommon::isAOvElement(nullptr, logical.c_str(), name), 1);
    EXPECT_EQ(name.ConvertToChar(), logical);
    EXPECT_EQ(VornToolsCommon::isAOvElement(nullptr, (library + "q.CATPart").c_str(), name), 0);
    EXPECT_TRUE(name.IsNull());
    environment().filesDirectory = library;
    EXPECT_EQ(datName("made.CATPart"), library + "LFC" + separator() + "made.CATPart.dat");
    EXPECT_EQ(datName("p.CATPart"), library + "p.CATPart.dat");
}

TEST_F(DatFileNameTest, Sweep) {
    environment().stagingDirectory = path("staging");
    environment().processLifeCycleFactory = true;
    writeManaged("staging/LFC/made.CATPart");
    auto made = session().part("made.CATPart");
    sweepFailures({"VornToolsCommon::getDatFileFullFileName",
                   [] {
                       CATUnicodeString name("stale");
                       const HRESULT code = VornToolsCommon::getDatFileFullFileName("p.CATPart", name);
                       return outcomeOf(code, name);
                   },
                   {},
                   {}});
    sweepFailures({"VornToolsCommon::isAOvElement", [&] {
                       CATUnicodeString name("stale");
                       const bool is = VornToolsCommon::isAOvElement(made.get(), "made.CATPart", name) != 0;
                       return outcomeOf(is ? S_OK : E_FAIL, name);
                   }});
}

} // namespace
