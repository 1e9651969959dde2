#include "VornCache.h"
#include "VornToolsCommon.h"

#include "TYPVectorCATUnicodeString.h"
#include "UTILFile.h"
#include "embedded/Profile.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/Allocations.h"
#include "tests/support/Fixture.h"

#include <set>

namespace {

const std::string kLine(2 * kLargeAllocation, 'x');

/** The 8-bit form of a text that holds it is one of its own. */
constexpr const char* kNotAscii = "\xE4";

/** What memory does not suffice for cannot be read: nothing is thrown, and nothing is given out by halves. */
class MemoryTest : public PlatformTest {
protected:
    static void useCodePage() {
        embedded::Switches switches = embedded::switches();
        switches.codePage = embedded::CodePage::windows1252;
        embedded::setSwitches(switches);
    }
    /** Writes a document with a DAT file of long lines; its name. */
    CATUnicodeString writeDocument() {
        write("p.CATPart.dat", "<DatFileVersion>\n2\n<ItemRevUID>\n" + kLine + "\n<LinkedDocs>\nMMLAssy|a\nMMLAssy|" +
                                   kLine + ".CATProduct\na\n</LinkedDocs>\n<Configuration>\nc\n" + kLine +
                                   "\n</Configuration>\n<StructLastModDate>\n" + kLine +
                                   "\n</StructLastModDate>\n<DT_Maps>\n<DT_Map>\n" + kLine +
                                   "\n</DT_Map>\n</DT_Maps>\n");
        return write("p.CATPart", "x").c_str();
    }
};

TEST_F(MemoryTest, DatFiles) {
    const CATUnicodeString name = writeDocument();
    sweepAllocations("readDatTools", [&] {
        CATListValCATUnicodeString lines;
        lines.Append("stale");
        const HRESULT code = VornToolsCommon::readDatTools(name, "", lines);
        return outcomeOf(code, lines);
    });
    const CATUnicodeString large(kLine.c_str());
    sweepAllocations("readDatTools", [&] {
        CATListValCATUnicodeString lines;
        lines.Append("stale");
        const HRESULT code = VornToolsCommon::readDatTools(name, large, lines);
        return outcomeOf(code, lines);
    });
    sweepAllocations("getOrvaneInformationsFromDatFile", [&] {
        CATUnicodeString revision("stale"), dataset("stale"), reference("stale");
        unsigned char exists = 7;
        const HRESULT code =
            VornToolsCommon::getOrvaneInformationsFromDatFile(large, nullptr, revision, dataset, reference, exists);
        reports();
        return outcomeOf(code, revision, dataset, reference, exists);
    });
    sweepAllocations("isModifiedStatusInCATIA", [&] {
        unsigned char modified = 7;
        return outcomeOf(VornToolsCommon::isModifiedStatusInCATIA(large, modified), modified);
    });
    sweepAllocations("isLoadedForLFCOrConsultOrAsCGR", [&] {
        VornToolsCommon::EnumLoadedFor loaded = VornToolsCommon::LoadedAsCgr;
        const bool told = VornToolsCommon::isLoadedForLFCOrConsultOrAsCGR(large, nullptr, loaded) != 0;
        return SweepOutcome{told ? S_OK : E_FAIL, loaded == VornToolsCommon::LoadedForNothing};
    });
    sweepAllocations("itemRevUIDExistsInDatFile", [&] {
        unsigned char exists = 7;
        const HRESULT code = VornToolsCommon::itemRevUIDExistsInDatFile(name, nullptr, exists);
        return outcomeOf(code, exists);
    });
    sweepAllocations("addDocument", [&] {
        VornCache cache;
        const HRESULT code = cache.addDocument(name, nullptr);
        return SweepOutcome{code, !cache.isInCache(name)};
    });
    std::set<std::string> told;
    sweepAllocations("getOrvaneInformationsFromDatFile", [&] {
        VornCache cache;
        CATUnicodeString revision("stale"), dataset, reference;
        unsigned char exists = 7;
        const HRESULT code =
            VornToolsCommon::getOrvaneInformationsFromDatFile(name, &cache, revision, dataset, reference, exists);
        for (const std::string& report : reports()) told.insert(report);
        return SweepOutcome{code, revision.IsNull() && exists == 1};
    });
    environment().referencePrefix = "x";
    sweepAllocations("getDatFileFullFileName", [&] {
        CATUnicodeString dat_name("stale");
        const HRESULT code = VornToolsCommon::getDatFileFullFileName(kLine.c_str(), dat_name);
        for (const std::string& report : reports()) told.insert(report);
        return outcomeOf(code, dat_name);
    });
    if constexpr (allocations::areAllSeen) {
        const std::string method = "VornToolsCommon::";
        EXPECT_EQ(told.count(method + "getOrvaneInformationsFromDatFile 9003 VornCache::getDataAtLine"), 1U);
        EXPECT_EQ(told.count(method + "getDatFileFullFileName 9003 VornToolsExportAsReference::isAnExportAsReference"),
                  1U);
    }
}

TEST_F(MemoryTest, AnswersOfTheCache) {
    const CATUnicodeString name = writeDocument();
    session().part("/w/P.CATPart");
    VornCache cache;
    cache.addDocument(name, nullptr);
    using Text = HRESULT (VornCache::*)(CATUnicodeString, CATUnicodeString&);
    for (const Text getter :
         {&VornCache::getItemRevUID, &VornCache::getBVRDate, &VornCache::getExistingMMLAssyContextDocName}) {
        sweepAllocations("text", [&] {
            CATUnicodeString text("stale");
            const HRESULT code = (cache.*getter)(name, text);
            return outcomeOf(code, text);
        });
    }
    using List = HRESULT (VornCache::*)(CATUnicodeString, CATListValCATUnicodeString&);
    for (const List getter : {&VornCache::getConfiguration, &VornCache::getDesignTableMaps}) {
        sweepAllocations("lines", [&] {
            CATListValCATUnicodeString list;
            const HRESULT code = (cache.*getter)(name, list);
            return outcomeOf(code, list);
        });
    }
    const CATUnicodeString large(kLine.c_str());
    using Links = HRESULT (VornCache::*)(CATUnicodeString, const CATUnicodeString&, CATListValCATUnicodeString&);
    for (const Links getter : {&VornCache::getLinkedDoc, &VornCache::getLinkedMMLAssyDoc}) {
        sweepAllocations("links", [&] {
            CATListValCATUnicodeString list;
            const HRESULT code = (cache.*getter)(name, large, list);
            return outcomeOf(code, list);
        });
    }
    sweepAllocations("getLocalLastModifiedDate", [&] {
        CATUnicodeString date("stale");
        return outcomeOf(cache.getLocalLastModifiedDate(large, date), date);
    });
    sweepAllocations("setNewFullFileName", [&] {
        const HRESULT code = cache.setNewFullFileName(name, large);
        const bool isAsBefore = cache.isInCache(name) && !cache.isInCache(large);
        cache.setNewFullFileName(large, name);
        return SweepOutcome{code, isAsBefore};
    });
    sweepAllocations("addDocument", [&] {
        VornCache other;
        const CATUnicodeString copy(large);
        CATDocument* document = nullptr;
        VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagModified;
        const HRESULT code = other.addDocument(copy, session().find("/w/P.CATPart").get());
        other.getModifiedStatus(copy, flag, document);
        return SweepOutcome{code, !document && !other.isInCache(copy)};
    });
    sweepAllocations("getDataAtLine", [&] {
        CATUnicodeString text("stale");
        const HRESULT code = cache.getDataAtLine(name, "<ItemRevUID>", text);
        return outcomeOf(code, text);
    });
    sweepAllocations("getAttributeList", [&] {
        CATListValCATUnicodeString list;
        return SweepOutcome{cache.getAttributeList(name, list), true};
    });
}

TEST_F(MemoryTest, NamesOfFiles) {
    environment().separator = "\\";
    environment().localCacheDirectory = "D:\\cache\\";
    const CATUnicodeString cached = ("D:\\cache\\cgr\\#2\\" + kLine + "\\a.CATPart.cgr").c_str();
    sweepAllocations("extractFileNameFromCacheFileName", [&] {
        CATUnicodeString source("stale");
        const HRESULT code = VornToolsCommon::extractFileNameFromCacheFileName(cached, source);
        return outcomeOf(code, source);
    });
    useCodePage();
    sweepAllocations("cgrFileNameContainsLastModificationDateField", [&] {
        const CATUnicodeString dated = (kLine + kNotAscii + ".2026-11-22-11.30.00.cgr").c_str();
        return SweepOutcome{VornCache().cgrFileNameContainsLastModificationDateField(dated) ? S_OK : E_FAIL};
    });
    const CATUnicodeString named = ("a." + kLine).c_str();
    sweepAllocations("returnDocumentType", [&] {
        EXPECT_EQ(VornToolsCommon::returnDocumentType(named), VornToolsCommon::DocumentTypeUnknown);
        return SweepOutcome{E_FAIL};
    });
}

TEST_F(MemoryTest, ExchangeFiles) {
    environment().tempDirectory = path("") + UTILFile::getPathSeparator().ConvertToChar();
    useCodePage(); // in which the text is made only when it is written
    const CATUnicodeString text((kLine + kNotAscii).c_str());
    sweepAllocations("createResultFile", [&] {
        write("results", "before");
        const CATUnicodeString copy(text);
        return SweepOutcome{VornToolsCommon::createResultFile(copy), !UTILFile::existingFile(path("results").c_str())};
    });
    write("results", kLine + "\n" + kLine);
    sweepAllocations("getResultInfo", [] {
        VornToolsCommon::EnumResultStatus status = VornToolsCommon::ResultStatusOk;
        TYPVectorCATUnicodeString lines;
        const HRESULT code = VornToolsCommon::getResultInfo(status, lines);
        return SweepOutcome{code, lines.size() == 0 && status == VornToolsCommon::ResultStatusFailed};
    });
    write("results", ":ok\n" + kLine);
    sweepAllocations("readResultFileAndGetClient", [] {
        unsigned char ok = 7, hosted = 7;
        const HRESULT code = VornToolsCommon::readResultFileAndGetClient(ok, hosted);
        return outcomeOf(code, ok, hosted);
    });
    write("results", kLine);
    sweepAllocations("getResultStatus",
                     [] { return SweepOutcome{VornToolsCommon::getResultStatus() < 0 ? E_FAIL : S_OK}; });
    const Texts values = {"<partnumber>", kLine, "</partnumber>", "<filename>", kLine, "</filename>"};
    std::string selection = "<selection>\n";
    TYPVectorCATUnicodeString block;
    for (const std::string& line : values) {
        selection += line + "\n";
        block.push_back(line.c_str());
    }
    write("highlight_v01.txt", selection + "</selection>\n" + selection + "</selection>\n");
    sweepAllocations("readHighlightFile", [] {
        CATListValCATUnicodeString contexts, parts, files;
        const HRESULT code = VornToolsCommon::readHighlightFile(1, contexts, parts, files);
        return SweepOutcome{code, parts.Size() == files.Size() && parts.Size() < 2};
    });
    environment().tempDirectory = kLine;
    sweepAllocations("readHighlightFile", [] {
        CATListValCATUnicodeString contexts, parts, files;
        return outcomeOf(VornToolsCommon::readHighlightFile(1, contexts, parts, files), contexts, parts, files);
    });
    sweepAllocations("readSelectionBalise", [&] {
        TYPVectorCATUnicodeString parts, files;
        const HRESULT code = VornToolsCommon::readSelectionBalise(&block, &parts, &files);
        return SweepOutcome{code, parts.size() == 0 && files.size() == 0};
    });
}

} // namespace
