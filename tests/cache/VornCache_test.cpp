#include "VornCache.h"
#include "VornToolsCommon.h"

#include "CATDocument.h"
#include "TYPMapCATUnicodeStringPVoid.h"
#include "UTILFile.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"

struct VornCacheTestAccess {
    static TYPMapCATUnicodeStringPVoid& cacheMap(VornCache& cache) { return *cache.m_cacheMap; }
    static HRESULT dataList(VornCache& cache, const char* name, const char* tag, CATListValCATUnicodeString& list) {
        return cache.getDataListAtLine(name, tag, list);
    }
    static int date(VornCache& cache, const std::string& path) {
        int result = 0;
        EXPECT_EQ(cache.getLastModificationDateOnFile(path.c_str(), &result), S_OK);
        return result;
    }
};

namespace {

using Access = VornCacheTestAccess;

constexpr int kDate = 1700000000;

Texts toTexts(const CATListValCATUnicodeString& list) {
    Texts result;
    for (int i = 1; i <= list.Size(); ++i) result.emplace_back(list[i].ConvertToChar());
    return result;
}

/** The list that a getter gives, whatever was in the list before. */
template <class Getter, class... Directory>
Texts listFrom(VornCache& cache, Getter getter, const std::string& name, const Directory&... directory) {
    CATListValCATUnicodeString list;
    list.Append("stale");
    EXPECT_EQ((cache.*getter)(name.c_str(), directory.c_str()..., list), S_OK);
    return toTexts(list);
}

template <class Getter>
std::string textFrom(VornCache& cache, Getter getter, const std::string& name) {
    CATUnicodeString value("stale");
    EXPECT_EQ((cache.*getter)(name.c_str(), value), S_OK);
    return value.ConvertToChar();
}

std::string dataAtLine(VornCache& cache, const std::string& name, const char* tag) {
    CATUnicodeString value("stale");
    EXPECT_EQ(cache.getDataAtLine(name.c_str(), tag, value), S_OK);
    return value.ConvertToChar();
}

int statusIn(VornCache& cache, const std::string& name) {
    VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
    EXPECT_EQ(cache.getModifiedStatus(name.c_str(), flag), S_OK);
    return flag;
}

/** What a cache knows of a document. */
std::string textOfCache(VornCache& cache, const CATUnicodeString& name) {
    VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
    CATUnicodeString revision, dataset;
    cache.getModifiedStatus(name, flag);
    cache.getItemRevUID(name, revision);
    cache.getDatasetUID(name, dataset);
    return textOfOutputs(cache.isInCache(name), flag, revision, dataset);
}

std::string tagged(const std::string& date) {
    return "<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nrev1\n</ItemRevUID>\n<DatasetUID>\nset1\n"
           "</DatasetUID>\n<LocalLastModDate>\n" +
           date + "\n</LocalLastModDate>\n";
}

class VornCacheTest : public PlatformTest {
protected:
    /** Writes a document file last changed at kDate with its DAT file; its name. */
    std::string writePart(const std::string& dat, const std::string& name = "p.CATPart") {
        write(name + ".dat", dat);
        const std::string file = write(name, "");
        touch(name, kDate);
        return file;
    }
    /** Journal lines that tell of the status. */
    Texts statusLines() {
        Texts result;
        for (const std::string& line : messages())
            if (line.compare(0, 8, "Modified") == 0) result.push_back(line);
        return result;
    }
    std::string joined(const std::string& directory, const std::string& name) {
        return directory + UTILFile::getPathSeparator().ConvertToChar() + name;
    }
};

TEST_F(VornCacheTest, StatusFollowsDateAndDocument) {
    enum Doc { none, saved, unsaved, mute };
    const std::string name = path("p.CATPart");
    const std::string date = std::to_string(kDate);
    const std::string positional = "item\nrev\n\n\n\n\n\n" + date;
    const std::string newCase1 = "Modified Status to New Case 1 for " + name + " ";
    const std::string newCase2 = "Modified Status to New Case 2 for " + name + " ";
    const std::string case1 = "Modified Status to Modified Case 1 for " + name + " ";
    const std::string case2 = "Modified Status to Modified Case 2 for " + name + " ";
    const std::string unchanged = "Modified Status to Not Modified for " + name + " ";
    struct Case {
        const char* dat; ///< null: no DAT file
        Doc doc;
        int status;
        Texts lines;
    };
    const std::string equal = tagged(date);
    const std::string older = tagged(std::to_string(kDate - 1));
    const std::string dateless = tagged("");
    const Case cases[] = {
        {nullptr, none, 3, {newCase1}},
        {equal.c_str(), none, 0, {unchanged}},
        {equal.c_str(), saved, 0, {unchanged}},
        {equal.c_str(), unsaved, 1, {case2}},
        {equal.c_str(), mute, 3, {}},
        {older.c_str(), saved, 1, {case1}},
        {older.c_str(), mute, 1, {case1}},
        {dateless.c_str(), none, 1, {newCase2, case1}},
        {"<DatFileVersion>\n1\n", none, 1, {newCase2, case1}},
        {positional.c_str(), none, 0, {unchanged}},
        {"", none, 1, {newCase2, case1}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(testing::Message() << (test.dat ? test.dat : "no DAT file") << " document " << test.doc);
        session().reset();
        writePart(test.dat ? test.dat : "");
        if (!test.dat) std::filesystem::remove(folder() / "p.CATPart.dat");
        embedded::Document document;
        if (test.doc != none) document = session().part(name).saved(test.doc == saved);
        if (test.doc == mute) document.withoutAutomation();

        VornCache cache;
        clearJournal();
        EXPECT_EQ(cache.addDocument(name.c_str(), document.get()), S_OK);
        EXPECT_EQ(statusLines(), test.lines);
        EXPECT_EQ(statusIn(cache, name), test.status);
        unsigned char isNew = 7, isOpen = 7, isModified = 7;
        cache.isNew(name.c_str(), isNew);
        cache.isOpen(name.c_str(), isOpen);
        cache.isModified(name.c_str(), isModified);
        EXPECT_EQ(isNew, test.status == 3);
        EXPECT_EQ(isOpen, test.status == 0);
        EXPECT_EQ(isModified, test.status == 1);
        VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
        CATDocument* found = reinterpret_cast<CATDocument*>(1);
        EXPECT_EQ(cache.getModifiedStatus(name.c_str(), flag, found), S_OK);
        EXPECT_EQ(found, document.get());
    }
}

TEST_F(VornCacheTest, DocumentsWithoutDirectory) {
    environment().stagingDirectory = path("staging");
    write("staging/new.CATPart.dat", tagged("5"));
    auto document = session().part("new.CATPart");
    {
        VornCache cache;
        clearJournal();
        cache.addDocument("new.CATPart", document.get());
        EXPECT_EQ(statusLines(), Texts{"Modified Status to Modified for new.CATPart (dynamic seed)"});
        EXPECT_EQ(statusIn(cache, "new.CATPart"), 3);
        EXPECT_EQ(textFrom(cache, &VornCache::getItemRevUID, "new.CATPart"), "rev1");
    }
    {
        VornCache cache;
        clearJournal();
        cache.addDocument("new.CATPart", nullptr);
        EXPECT_EQ(statusLines(), Texts{"Modified Status to Modified for new.CATPart (dynamic seed)"});
        EXPECT_EQ(statusIn(cache, "new.CATPart"), 1) << "asked by name alone the staged file counts like any other";
    }
    write("staging/new.CATPart", "");
    environment().commandImport = true;
    for (int round = 0; round < 2; ++round) {
        VornCache cache;
        cache.addDocument("new.CATPart", document.get());
        EXPECT_EQ(statusIn(cache, "new.CATPart"), 3);
        EXPECT_EQ(dataAtLine(cache, "new.CATPart", "<ItemRevUID>"), "");
        environment().commandImport = false;
    }

    std::filesystem::remove(folder() / "staging/new.CATPart");
    environment().commandImport = true;
    VornCache importing;
    clearJournal();
    importing.addDocument("new.CATPart", document.get());
    EXPECT_EQ(messages(), Texts());
    EXPECT_EQ(dataAtLine(importing, "new.CATPart", "<ItemRevUID>"), "") << "the command makes the document itself";
    environment().commandImport = false;

    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = path("staging");
    environment().stagingDirectory = "\x01\x02\\LIB";
    clearJournal();
    VornCache logical;
    logical.addDocument("new.CATPart", document.withoutDescriptor().get());
    EXPECT_EQ(dataAtLine(logical, "new.CATPart", "<ItemRevUID>"), "rev1");
    EXPECT_EQ(messages(), (Texts{"Extracting CATIA UUID from document new.CATPart", "ERROR : getDocUUID is failed.",
                                 "Modified Status to Modified for new.CATPart (dynamic seed)"}));
    EXPECT_EQ(reports(), Texts{"VornToolsCommon::getDocUUID 9003 GetDocumentDescriptor"});
    environment().logicalNames.clear();
    clearJournal();
    VornCache unknown;
    unknown.addDocument("new.CATPart", document.get());
    EXPECT_EQ(messages(), Texts{"ERROR : getPhysicalPathFromDLName is failed."});
}

TEST_F(VornCacheTest, EveryEntryIsClosedUnderItsOwnName) {
    const std::string name = writePart(tagged(std::to_string(kDate)));
    VornCache cache;
    clearJournal();
    cache.addDocument(name.c_str(), nullptr);
    EXPECT_EQ(
        embedded::Journal::get().lines(),
        (Texts{"> VornCache::addDocument", "> VornCache::ReadDataInDATFile", "> VornToolsCommon::getDocUUID",
               "< VornToolsCommon::getDocUUID", "> VornToolsCommon::readDatTools", "< VornToolsCommon::readDatTools",
               "> VornCache::fillDatMapFromStringList", "Modified Status to Not Modified for " + name + " ",
               "< VornCache::fillDatMapFromStringList", "< VornCache::ReadDataInDATFile", "< VornCache::addDocument"}));
    using List = HRESULT (VornCache::*)(CATUnicodeString, CATListValCATUnicodeString&);
    const std::pair<std::string, List> lists[] = {{"getConfiguration", &VornCache::getConfiguration},
                                                  {"getSkippedOccList", &VornCache::getSkippedOccList},
                                                  {"getDesignTableSheets", &VornCache::getDesignTableSheets},
                                                  {"getDesignTableConfigs", &VornCache::getDesignTableConfigs},
                                                  {"getDesignTableCksums", &VornCache::getDesignTableCksums},
                                                  {"getDesignTableMaps", &VornCache::getDesignTableMaps},
                                                  {"getAttributeList", &VornCache::getAttributeList},
                                                  {"getLinkedUnresolvedDoc", &VornCache::getLinkedUnresolvedDoc}};
    for (const auto& [method, getter] : lists) {
        clearJournal();
        CATListValCATUnicodeString list;
        (cache.*getter)(name.c_str(), list);
        EXPECT_EQ(embedded::Journal::get().lines(), (Texts{"> VornCache::" + method, "< VornCache::" + method}));
    }
    clearJournal();
    cache.setNewFullFileName(name.c_str(), "other");
    EXPECT_EQ(embedded::Journal::get().lines(),
              (Texts{"> VornCache::setNewFullFileName", "< VornCache::setNewFullFileName 0"}));
}

TEST_F(VornCacheTest, ADocumentIsReadOnce) {
    const std::string name = writePart(tagged(std::to_string(kDate)));
    auto document = session().part(name);
    VornCache cache;
    EXPECT_FALSE(cache.isInCache(name.c_str()));
    cache.addDocument(name.c_str(), nullptr);
    write("p.CATPart.dat", "changed");
    cache.addDocument(name.c_str(), document.get());
    EXPECT_EQ(dataAtLine(cache, name, "<DatFileVersion>"), "2");
    VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
    CATDocument* found = nullptr;
    cache.getModifiedStatus(name.c_str(), flag, found);
    EXPECT_EQ(found, document.get());
    auto other = session().part(path("other.CATPart"));
    cache.addDocument(name.c_str(), other.get());
    cache.addDocument(name.c_str(), nullptr);
    cache.getModifiedStatus(name.c_str(), flag, found);
    EXPECT_EQ(found, other.get()) << "the latest document given counts";
    EXPECT_TRUE(cache.isInCache(name.c_str()));
    unsigned char has = 7;
    cache.fileHasCache("P.CATPart", has);
    EXPECT_EQ(has, 0) << "names are compared exactly";

    EXPECT_EQ(cache.addDocument("", nullptr), S_OK);
    EXPECT_EQ(reports(), Texts{"VornCache::ReadDataInDATFile 9003 splitPathAndFileName"});
    EXPECT_EQ(statusIn(cache, ""), 3);
}

TEST_F(VornCacheTest, SingleValuesAndTheirJournalLines) {
    const std::string name = writePart("<DatFileVersion>\n2\n<ItemRevUID>\n\n<LoadType>\nCatalogComp\n"
                                       "<LinkedDocs>\na\nb\n</LinkedDocs>\n");
    VornCache cache;
    cache.addDocument(name.c_str(), nullptr);
    clearJournal();
    EXPECT_EQ(textFrom(cache, &VornCache::getItemRevUID, name), "");
    EXPECT_EQ(textFrom(cache, &VornCache::getDatasetUID, name), "");
    EXPECT_EQ(textFrom(cache, &VornCache::getItemRevUID, "none"), "");
    EXPECT_EQ(textFrom(cache, &VornCache::getDatasetUID, "none"), "");
    EXPECT_EQ(dataAtLine(cache, name, "<LinkedDocs>"), "");
    EXPECT_EQ(textFrom(cache, &VornCache::getCacheLastModifiedDate, "none"), "");
    EXPECT_EQ(messages(), (Texts{"ItemRevUID balise in cache file is empty for file [" + name + "]",
                                 "DatasetUID balise in cache file is empty for file [" + name + "]",
                                 "ItemRevUID balise in cache file is NULL for file [none]",
                                 "DatasetUID balise in cache file is NULL for file [none]",
                                 "failed to get line [<LinkedDocs>]", "failed to get file name [none]"}));
    EXPECT_TRUE(cache.isCatalogComp(name.c_str()));
    EXPECT_FALSE(cache.isCatalogComp("none"));
    const std::string other = writePart("<DatFileVersion>\n2\n<LoadType>\ncatalogcomp\n", "q.CATPart");
    cache.addDocument(other.c_str(), nullptr);
    EXPECT_FALSE(cache.isCatalogComp(other.c_str())) << "letter case counts";

    // Each line of a positional file under its own key.
    const Texts tags = {"<ItemId>",   "<ItemRevId>",   "<ItemRevName>",      "<DatasetUID>",   "<DatasetVersion>",
                        "<LoadType>", "<DatasetType>", "<LocalLastModDate>", "<DbLastModDate>"};
    std::string lines;
    for (const std::string& tag : tags) lines += "value of " + tag + "\n";
    const std::string positional = writePart(lines, "r.CATPart");
    cache.addDocument(positional.c_str(), nullptr);
    for (const std::string& tag : tags) EXPECT_EQ(dataAtLine(cache, positional, tag.c_str()), "value of " + tag);
    EXPECT_EQ(dataAtLine(cache, positional, "<DatFileVersion>"), "0");
}

TEST_F(VornCacheTest, Blocks) {
    const std::string name = writePart(
        tagged(std::to_string(kDate)) +
        "<Configuration>\nc1\nc2\n</Configuration>\n<OVSkippedOcc>\nonly\n</OVSkippedOcc>\n<DT_Sheets>\ns\n"
        "</DT_Sheets>\n<DT_Cfgs>\n</DT_Cfgs>\n<StructLastModDate>\n111\n222\n</StructLastModDate>\n<DT_Maps>\n<DT_Map>\n"
        "x\ny\n</DT_Map>\n</DT_Maps>\n<DT_CfgCksums>\nlost\n");
    VornCache cache;
    cache.addDocument(name.c_str(), nullptr);
    EXPECT_EQ(listFrom(cache, &VornCache::getConfiguration, name), (Texts{"c1", "c2"}));
    EXPECT_EQ(listFrom(cache, &VornCache::getSkippedOccList, name), Texts{"only"});
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableSheets, name), Texts{"s"});
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableConfigs, name), Texts());
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableCksums, name), Texts());
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableMaps, name), Texts{"!!!x!!!y"});
    EXPECT_EQ(dataAtLine(cache, name, "<DT_Maps>"), "!!!x!!!y") << "one mapping is a single value";
    EXPECT_EQ(dataAtLine(cache, name, "<DT_Sheets>"), "s");
    EXPECT_EQ(listFrom(cache, &VornCache::getConfiguration, "none"), Texts());
    EXPECT_EQ(textFrom(cache, &VornCache::getBVRDate, name), "111");
    EXPECT_EQ(textFrom(cache, &VornCache::getBVRDate, "none"), "");
    EXPECT_TRUE(cache.isDesignTable(name.c_str())) << "an empty and an unclosed block count";
    clearJournal();
    EXPECT_FALSE(cache.isDesignTable("none"));
    EXPECT_EQ(messages(), Texts({"failed to get file name [none]"}));
    for (const char* dat : {"<DT_Sheets>\n<DT_Cfgs>", "<DT_Sheets>\n<DT_CfgCksums>", "<DT_Cfgs>\n<DT_CfgCksums>"}) {
        VornCache partial;
        writePart(std::string("<DatFileVersion>\n2\n") + dat, "q.CATPart");
        partial.addDocument(path("q.CATPart").c_str(), nullptr);
        EXPECT_FALSE(partial.isDesignTable(path("q.CATPart").c_str())) << dat;
    }

    CATListValCATUnicodeString list;
    list.Append("stale");
    EXPECT_EQ(Access::dataList(cache, "none", "<DT_Cfgs>", list), E_FAIL);
    EXPECT_EQ(list.Size(), 0);
    EXPECT_EQ(Access::dataList(cache, name.c_str(), "<DT_Files>", list), E_FAIL);
    EXPECT_EQ(Access::dataList(cache, name.c_str(), "<DT_Cfgs>", list), S_OK);
    EXPECT_EQ(Access::dataList(cache, name.c_str(), "<NamedRefUID>", list), S_OK);
    EXPECT_EQ(list.Size(), 0) << "an empty single value is no element";
}

TEST_F(VornCacheTest, LinesInTwoBlocksBelongToBoth) {
    const std::string name =
        writePart("<DatFileVersion>\n2\n<Configuration>\na\n<OVSkippedOcc>\nb\nc\n</OVSkippedOcc>\n"
                  "</Configuration>\n<DT_Maps>\n<DT_Map>\n<DT_Cfgs>\nx\ny\n</DT_Map>\n</DT_Maps>\n"
                  "</DT_Cfgs>\n");
    VornCache cache;
    cache.addDocument(name.c_str(), nullptr);
    EXPECT_EQ(listFrom(cache, &VornCache::getConfiguration, name),
              (Texts{"a", "<OVSkippedOcc>", "b", "c", "</OVSkippedOcc>"}));
    EXPECT_EQ(listFrom(cache, &VornCache::getSkippedOccList, name), (Texts{"b", "c"}));
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableConfigs, name), (Texts{"x", "y", "</DT_Map>", "</DT_Maps>"}));
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableMaps, name), Texts{"!!!<DT_Cfgs>!!!x!!!y"});
}

TEST_F(VornCacheTest, LinksAreLookedUpBesideTheDocumentFirst) {
    const std::string name =
        writePart("<DatFileVersion>\n2\n<LinkedDocs>\na.CATPart\nMML|b.CATPart\nMML|a MMLAssy\nMMLAssy|d.CATPart\n"
                  "MMLAssy|c.catproduct\nMMLAssy|e.CATProduct\nUNRESOLVED|d\nan UNRESOLVED\nUNRESOLVED|\nMML|x\n"
                  "MML\n</LinkedDocs>\n<DT_Files>\nt.xls\n</DT_Files>\n");
    write("b.CATPart", "");
    VornCache cache;
    cache.addDocument(name.c_str(), nullptr);
    const std::string dir = "/elsewhere";
    EXPECT_EQ(listFrom(cache, &VornCache::getLinkedDoc, name, dir),
              (Texts{joined(dir, "a.CATPart"), joined(dir, "MML|b.CATPart"), joined(dir, "MML|a MMLAssy"),
                     joined(dir, "MMLAssy|d.CATPart"), joined(dir, "MMLAssy|c.catproduct"),
                     joined(dir, "MMLAssy|e.CATProduct"), joined(dir, "UNRESOLVED|d"), joined(dir, "an UNRESOLVED"),
                     joined(dir, "UNRESOLVED|"), joined(dir, "MML|x"), joined(dir, "MML")}));
    EXPECT_EQ(listFrom(cache, &VornCache::getLinkedMMLDoc, name, dir),
              (Texts{path("b.CATPart"), joined(dir, "x"), joined(dir, "")}));
    EXPECT_EQ(listFrom(cache, &VornCache::getLinkedMMLAssyDoc, name, dir),
              (Texts{joined(dir, "d.CATPart"), joined(dir, "c.catproduct"), joined(dir, "e.CATProduct")}));
    EXPECT_EQ(listFrom(cache, &VornCache::getLinkedUnresolvedDoc, name), (Texts{"", ""}));
    EXPECT_EQ(textFrom(cache, &VornCache::getExistingMMLAssyContextDocName, name), "c.catproduct");
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableFiles, name, dir), Texts{joined(dir, "t.xls")});
    write("t.xls", "");
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableFiles, name, dir), Texts{path("t.xls")});

    CATListValCATUnicodeString list;
    list.Append(dir.c_str());
    cache.getDesignTableFiles("none", list[1], list);
    list.Append(dir.c_str());
    cache.getLinkedMMLAssyDoc(name.c_str(), list[1], list);
    EXPECT_EQ(list.Size(), 3);
    EXPECT_EQ(list[1].ConvertToChar(), joined(dir, "d.CATPart")) << "the directory may be an element of the list";

    clearJournal();
    unsigned char has = 7;
    cache.hasLinkedUnresolvedDoc("none", has);
    EXPECT_EQ(has, 0);
    cache.hasLinkedUnresolvedDoc(name.c_str(), has);
    EXPECT_EQ(has, 1);
    EXPECT_EQ(messages(), Texts{"file [" + name + "] has unresolved context"});
    EXPECT_EQ(listFrom(cache, &VornCache::getLinkedMMLAssyDoc, "none", dir), Texts());
    EXPECT_EQ(textFrom(cache, &VornCache::getExistingMMLAssyContextDocName, "none"), "");
}

TEST_F(VornCacheTest, AttributesForThePdm) {
    struct Case {
        std::string dat;
        Texts attributes;
    };
    const Case cases[] = {
        {tagged("1"), {"ItemRevUID", "rev1", "EBS_DatasetUid", "set1", "PartNumber", "p.v1"}},
        {"<DatFileVersion>\n1\n<NamedRefUID>\nref1\n", {"NamedRefUID", "ref1", "PartNumber", "p.v1"}},
        {"item\nB\nname\nset\n7\n",
         {"Definition", "item", "Revision", "B", "EBS_ItemRevName", "name", "EBS_DatasetUid", "set",
          "EBS_DatasetLastVersion", "7", "PartNumber", "item_B"}},
        {"item\n\nname\n", {"Definition", "item", "EBS_ItemRevName", "name", "PartNumber", "p.v1"}},
        {"", {"PartNumber", "p.v1"}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.dat);
        const std::string name = writePart(test.dat, "p.v1.CATPart");
        VornCache cache;
        cache.addDocument(name.c_str(), nullptr);
        CATListValCATUnicodeString list;
        list.Append("kept");
        EXPECT_EQ(cache.getAttributeList(name.c_str(), list), S_OK);
        Texts expected{"kept"};
        expected.insert(expected.end(), test.attributes.begin(), test.attributes.end());
        EXPECT_EQ(toTexts(list), expected);
    }
    VornCache cache;
    CATListValCATUnicodeString list;
    EXPECT_EQ(cache.getAttributeList("", list), S_OK);
    EXPECT_EQ(toTexts(list), (Texts{"PartNumber", ""}));
    cache.getAttributeList("/w.x/seed", list);
    EXPECT_EQ(list[4].ConvertToChar(), std::string("seed")) << "no extension";
    EXPECT_EQ(reports(), Texts{"VornCache::getAttributeList 9003 UTILFile::splitPathAndFileName"});
}

TEST_F(VornCacheTest, RenameMovesEverythingAndFreesWhatItReplaces) {
    const std::string date = std::to_string(kDate);
    const std::string oldName = writePart(tagged(date));
    const std::string otherName = writePart("other\nrev\n", "q.CATPart");
    auto document = session().part(oldName);
    VornCache cache;
    cache.addDocument(oldName.c_str(), document.get());
    cache.addDocument(otherName.c_str(), nullptr);
    EXPECT_EQ(cache.setNewFullFileName(oldName.c_str(), oldName.c_str()), S_OK);
    EXPECT_EQ(statusIn(cache, oldName), 0);
    const std::string upperCase = path("P.CATPART");
    EXPECT_EQ(cache.setNewFullFileName(oldName.c_str(), upperCase.c_str()), S_OK);
    EXPECT_EQ(statusIn(cache, oldName), 3) << "letter case makes another name";
    EXPECT_EQ(cache.setNewFullFileName(upperCase.c_str(), oldName.c_str()), S_OK);
    EXPECT_EQ(cache.setNewFullFileName("unknown", oldName.c_str()), S_OK);
    EXPECT_EQ(statusIn(cache, oldName), 0);

    EXPECT_EQ(cache.setNewFullFileName(oldName.c_str(), otherName.c_str()), S_OK);
    EXPECT_FALSE(cache.isInCache(oldName.c_str()));
    EXPECT_EQ(statusIn(cache, oldName), 3);
    EXPECT_EQ(textFrom(cache, &VornCache::getItemRevUID, otherName), "rev1");
    VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
    CATDocument* found = nullptr;
    cache.getModifiedStatus(otherName.c_str(), flag, found);
    EXPECT_EQ(flag, VornCache::ModifiedFlagNotModified);
    EXPECT_EQ(found, document.get());

    EXPECT_EQ(cache.release(), S_OK);
    EXPECT_EQ(cache.release(), S_OK) << "and again";
    EXPECT_EQ(Access::cacheMap(cache).size(), 1) << "keys stay until the cache is destroyed";
}

TEST_F(VornCacheTest, NothingStaysOfTheOldBearerOfAName) {
    const std::string known = writePart(tagged(std::to_string(kDate)));
    auto document = session().part(known);
    VornCache cache;
    cache.addDocument(known.c_str(), document.get());
    environment().commandImport = true;
    cache.addDocument("seed.CATPart", session().part("seed.CATPart").get());
    environment().commandImport = false;
    cache.addDocument("", nullptr);
    reports();
    const auto documentOf = [&](const std::string& name) {
        VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
        CATDocument* found = nullptr;
        cache.getModifiedStatus(name.c_str(), flag, found);
        return found;
    };
    EXPECT_EQ(cache.setNewFullFileName("unknown", known.c_str()), S_OK);
    EXPECT_EQ(documentOf(known), document.get()) << "nobody takes the name";

    // Neither a status nor a document: the empty name cannot even be split.
    EXPECT_EQ(cache.setNewFullFileName("", known.c_str()), S_OK);
    EXPECT_EQ(documentOf(known), nullptr);
    EXPECT_EQ(statusIn(cache, known), 3);
    EXPECT_EQ(textFrom(cache, &VornCache::getItemRevUID, known), "");
    EXPECT_FALSE(cache.isInCache(""));

    CATDocument* const seed = documentOf("seed.CATPart");
    EXPECT_EQ(cache.setNewFullFileName(known.c_str(), "seed.CATPart"), S_OK);
    EXPECT_NE(seed, nullptr);
    EXPECT_EQ(documentOf("seed.CATPart"), nullptr);
}

TEST_F(VornCacheTest, DatesOfFiles) {
    const std::string name = writePart("");
    VornCache cache;
    EXPECT_EQ(textFrom(cache, &VornCache::getLocalLastModifiedDate, name), std::to_string(kDate));
    EXPECT_EQ(textFrom(cache, &VornCache::getLocalLastModifiedDate, path("none")), "-1");
    EXPECT_EQ(Access::date(cache, name), kDate);

    // The text, not its 8-bit form: that would end at the NUL and name the file.
    CATUnicodeString value("stale");
    cache.getLocalLastModifiedDate(CATUnicodeString(name.c_str()) + CATUnicodeString("\0x", 2), value);
    EXPECT_STREQ(value.ConvertToChar(), "-1");
}

TEST_F(VornCacheTest, DocumentsThatAnEncodingCannotTellApartAreTwo) {
    const std::string unchanged = writePart(tagged(std::to_string(kDate)), "\xC5\x81.CATPart");
    const std::string changed = writePart(tagged(std::to_string(kDate - 1)), "\xC4\x86.CATPart");
    VornCache cache;
    for (const std::string& name : {unchanged, changed})
        EXPECT_EQ(cache.addDocument(utf8(name), session().part(name).get()), S_OK);
    unsigned char isModified = 7;
    EXPECT_EQ(cache.isModified(utf8(unchanged), isModified), S_OK);
    EXPECT_EQ(isModified, 0);
    EXPECT_EQ(cache.isModified(utf8(changed), isModified), S_OK);
    EXPECT_EQ(isModified, 1);
    session().find(unchanged).saved(false);
    EXPECT_EQ(VornToolsCommon::isModifiedStatusInCATIA(utf8(unchanged), isModified), S_OK);
    EXPECT_EQ(isModified, 1);
    EXPECT_EQ(VornToolsCommon::isModifiedStatusInCATIA(utf8(changed), isModified), S_OK);
    EXPECT_EQ(isModified, 0);
    CATUnicodeString date;
    EXPECT_EQ(cache.getLocalLastModifiedDate(utf8(changed), date), S_OK);
    EXPECT_STREQ(date.ConvertToChar(), std::to_string(kDate).c_str());
}

/** File services need not know logical names; what is stored and answered keeps them. */
TEST_F(VornCacheTest, LogicalNamesAreLookedUpByTheirPathOnDisk) {
    environment().usesLogicalNames = true;
    environment().logicalNames["LIB"] = folder().u8string();
    writePart(tagged(std::to_string(kDate)) +
              "<LinkedDocs>\na.CATPart\nMML|b.CATPart\nMMLAssy|b.CATPart\nb.CATPart\n</LinkedDocs>\n"
              "<DT_Files>\nb.CATPart\n</DT_Files>\n");
    write("b.CATPart", "");
    const std::string library = "\x01\x02\\LIB";
    const std::string name = joined(library, "p.CATPart");
    const std::string beside = joined(library, "b.CATPart");
    const std::string dir = "/elsewhere";
    auto document = session().part(name);
    VornCache cache;
    cache.addDocument(name.c_str(), document.get());
    EXPECT_EQ(statusLines(), Texts{"Modified Status to Not Modified for " + name + " "});
    EXPECT_EQ(statusIn(cache, name), 0);
    EXPECT_FALSE(cache.isInCache(path("p.CATPart").c_str()));
    EXPECT_EQ(
        listFrom(cache, &VornCache::getLinkedDoc, name, dir),
        (Texts{joined(dir, "a.CATPart"), joined(dir, "MML|b.CATPart"), joined(dir, "MMLAssy|b.CATPart"), beside}));
    EXPECT_EQ(listFrom(cache, &VornCache::getLinkedMMLDoc, name, dir), Texts{beside});
    EXPECT_EQ(listFrom(cache, &VornCache::getLinkedMMLAssyDoc, name, dir), Texts{beside});
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableFiles, name, dir), Texts{beside});
    EXPECT_EQ(textFrom(cache, &VornCache::getLocalLastModifiedDate, name), std::to_string(kDate));

    touch("p.CATPart", kDate + 1);
    VornCache later;
    later.addDocument(name.c_str(), document.get());
    EXPECT_EQ(statusIn(later, name), 1);

    // A name that nobody makes physical is looked up as it stands.
    const std::string physical = path("p.CATPart");
    std::string date;
    EXPECT_TRUE(failAt(
        "UTILDLName::getPhysicalPathFromDLName", 1,
        [&] { date = textFrom(cache, &VornCache::getLocalLastModifiedDate, physical); },
        embedded::FaultFlavour::nullOutput));
    EXPECT_EQ(date, std::to_string(kDate + 1));
    environment().logicalNames.clear();
    EXPECT_EQ(listFrom(cache, &VornCache::getDesignTableFiles, name, dir), Texts{joined(dir, "b.CATPart")});
    EXPECT_EQ(textFrom(cache, &VornCache::getLocalLastModifiedDate, name), "-1");
}

TEST_F(VornCacheTest, Sweep) {
    const std::string name = writePart("<DatFileVersion>\n2\n<LocalLastModDate>\n" + std::to_string(kDate) +
                                       "\n<LinkedDocs>\na\nMML|b\nMMLAssy|c.CATProduct\n</LinkedDocs>\n"
                                       "<DT_Files>\nt\n</DT_Files>\n");
    environment().stagingDirectory = path("staging");
    write("staging/new.CATPart.dat", "item\n");
    auto document = session().part(name);
    auto fresh = session().part("new.CATPart");
    environment().usesLogicalNames = true;
    const auto adding = [](const std::string& file, CATDocument* doc) {
        return SweepCase{"VornCache::addDocument",
                         [=] {
                             VornCache cache;
                             const CATUnicodeString key(file.c_str());
                             const HRESULT code = cache.addDocument(key, doc);
                             embedded::Failures::get().disarm();
                             return SweepOutcome{code, true, 0, textOfCache(cache, key)};
                         },
                         {},
                         {}};
    };
    EXPECT_GT(sweepFailures(adding(name, document.get())), 5);
    EXPECT_GT(sweepFailures(adding("new.CATPart", fresh.get())), 5);

    VornCache cache;
    cache.addDocument(name.c_str(), document.get());
    using Links = HRESULT (VornCache::*)(CATUnicodeString, const CATUnicodeString&, CATListValCATUnicodeString&);
    const auto sweepLinks = [&](const char* method, Links getter) {
        sweepFailures({method,
                       [&, getter] {
                           CATListValCATUnicodeString list;
                           list.Append("stale");
                           const HRESULT code = (cache.*getter)(name.c_str(), "/elsewhere", list);
                           return outcomeOf(code, list);
                       },
                       {},
                       {}});
    };
    sweepLinks("VornCache::getLinkedDoc", &VornCache::getLinkedDoc);
    sweepLinks("VornCache::getLinkedMMLDoc", &VornCache::getLinkedMMLDoc);
    sweepLinks("VornCache::getLinkedMMLAssyDoc", &VornCache::getLinkedMMLAssyDoc);
    sweepLinks("VornCache::getDesignTableFiles", &VornCache::getDesignTableFiles);
    CATListValCATUnicodeString files;
    EXPECT_TRUE(failAt("UTILFile::splitPathAndFileName", 1,
                       [&] { cache.getDesignTableFiles(name.c_str(), "/elsewhere", files); }));
    EXPECT_EQ(toTexts(files), Texts{joined("/elsewhere", "t")});
    EXPECT_EQ(reports(), Texts{"VornCache::getDesignTableFiles 9003 UTILFile::splitPathAndFileName"});
    sweepFailures({"VornCache::getAttributeList",
                   [&] {
                       CATListValCATUnicodeString list;
                       const HRESULT code = cache.getAttributeList(name.c_str(), list);
                       return SweepOutcome{code, true, 0, textOfOutputs(list)};
                   },
                   {},
                   {}});
    sweepFailures({"VornCache::getLocalLastModifiedDate",
                   [&] {
                       CATUnicodeString value;
                       const HRESULT code = cache.getLocalLastModifiedDate(name.c_str(), value);
                       return SweepOutcome{code, true, 0, textOfOutputs(value)};
                   },
                   {},
                   {}});
}

} // namespace
