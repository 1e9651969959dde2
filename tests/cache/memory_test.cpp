#include "VornCache.h"
#include "VornToolsCommon.h"

#include "TYPVectorCATUnicodeString.h"
#include "UTILFile.h"
#include "tests/support/Fixture.h"
#include "tests/support/MemoryLimit.h"
#include "tests/support/Sweep.h"

#include <functional>

namespace {

constexpr std::uintmax_t kMega = std::uintmax_t{1} << 20;

/** Files that the memory does not suffice for: refused like any other that cannot be read, nothing is thrown. */
class MemoryTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        if (!kCanLimitMemory) GTEST_SKIP() << "memory cannot be limited here";
        environment().tempDirectory = path("") + UTILFile::getPathSeparator().ConvertToChar();
    }
    /** A file that begins with some bytes and goes on with so many NULs, which take no room on the disk. */
    std::string writeHuge(const std::string& name, const std::string& beginning, std::uintmax_t megabytes) {
        const std::string file = write(name, beginning);
        std::filesystem::resize_file(folder() / name, beginning.size() + megabytes * kMega);
        return file;
    }
};

TEST_F(MemoryTest, HugeLinesAreRefused) {
    const std::string name = write("p.CATPart", "x");
    writeHuge("p.CATPart.dat", "<DatFileVersion>\n2\n<ItemRevUID>\n", 96);
    writeHuge("results", ":ok\n", 96);
    writeHuge("highlight_v01.txt", "<selection>\n<partnumber>\nP\n</partnumber>\n</selection>\n<selection>\n", 96);
    const std::function<bool()> cases[] = {
        [&] {
            CATListValCATUnicodeString lines;
            return VornToolsCommon::readDatTools(name.c_str(), "", lines) == E_FAIL && lines.Size() == 0;
        },
        [&] {
            VornCache cache;
            VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagModified;
            return cache.addDocument(name.c_str(), nullptr) == S_OK &&
                   cache.getModifiedStatus(name.c_str(), flag) == S_OK && flag == VornCache::ModifiedFlagNew;
        },
        [&] {
            unsigned char exists = 7;
            return VornToolsCommon::itemRevUIDExistsInDatFile(name.c_str(), nullptr, exists) == E_FAIL && exists == 0;
        },
        [] {
            VornToolsCommon::EnumResultStatus status = VornToolsCommon::ResultStatusOk;
            TYPVectorCATUnicodeString lines;
            return VornToolsCommon::getResultInfo(status, lines) == E_FAIL && lines.size() == 0 &&
                   status == VornToolsCommon::ResultStatusFailed;
        },
        [] {
            unsigned char ok = 7, hosted = 7;
            return VornToolsCommon::readResultFileAndGetClient(ok, hosted) == E_FAIL && ok == 0 && hosted == 0;
        },
        [] { return VornToolsCommon::getResultStatus() == VornToolsCommon::ResultStatusOk; },
        [this] {
            writeHuge("results", "", 96);
            return VornToolsCommon::getResultStatus() == VornToolsCommon::ResultStatusFailed;
        },
        [] {
            CATListValCATUnicodeString contexts, parts, files;
            return VornToolsCommon::readHighlightFile(1, contexts, parts, files) == E_FAIL && parts.Size() == 1 &&
                   files.Size() == 1;
        },
    };
    for (const auto& holds : cases) EXPECT_TRUE(holdsWithMemory(24 * kMega, holds)) << "case " << &holds - cases;
}

/** What was read before memory ran short is not given out by halves. */
TEST_F(MemoryTest, AnswersThatDoNotFitAreEmpty) {
    const std::string name = write("p.CATPart", "x");
    const std::string line(2 * kMega, 'x');
    write("p.CATPart.dat", "<DatFileVersion>\n2\n<ItemRevUID>\n" + line + "\n<LinkedDocs>\nMMLAssy|" + line +
                               ".CATProduct\na\nUNRESOLVED|b\n</LinkedDocs>\n<Configuration>\nc\n" + line +
                               "\n</Configuration>\n<StructLastModDate>\n" + line + "\n</StructLastModDate>\n");
    VornCache cache;
    cache.addDocument(name.c_str(), nullptr);
    const auto empty = [](HRESULT code, const CATUnicodeString& text) { return code == E_FAIL && text.IsNull(); };
    const auto none = [](HRESULT code, const CATListValCATUnicodeString& list) {
        return code == E_FAIL && list.Size() == 0;
    };
    CATUnicodeString text("stale");
    CATListValCATUnicodeString list;
    list.Append("stale");
    unsigned char exists = 7;
    const CATUnicodeString key(name.c_str());
    const std::function<bool()> cases[] = {
        [&] { return empty(cache.getItemRevUID(key, text), text); },
        [&] { return empty(cache.getDataAtLine(key, "<ItemRevUID>", text), text); },
        [&] { return empty(cache.getBVRDate(key, text), text); },
        [&] { return empty(cache.getExistingMMLAssyContextDocName(key, text), text); },
        [&] { return none(cache.getConfiguration(key, list), list); },
        [&] { return none(cache.getLinkedDoc(key, "/elsewhere", list), list); },
        [&] { return none(cache.getLinkedMMLAssyDoc(key, "/elsewhere", list), list); },
        [&] { return cache.getLinkedUnresolvedDoc(key, list) == S_OK && list.Size() == 1; },
        [&] { return cache.getAttributeList(key, list) == E_FAIL; },
        [&] {
            CATUnicodeString dataset, named;
            const HRESULT code =
                VornToolsCommon::getOrvaneInformationsFromDatFile(key, &cache, text, dataset, named, exists);
            return empty(code, text) && exists == 1;
        },
        [&] {
            VornCache other;
            return other.addDocument(key, nullptr) == S_OK && !other.isDesignTable(key);
        },
        [&] { return cache.release() == S_OK; },
    };
    for (const auto& holds : cases) EXPECT_TRUE(holdsWithMemory(kMega, holds)) << "case " << &holds - cases;
    reports();
}

} // namespace
