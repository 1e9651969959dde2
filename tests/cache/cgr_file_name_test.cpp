#include "VornCache.h"
#include "VornToolsCommon.h"

#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

namespace {

/** A cache below D:\cache and shared ones on E: and a server. */
class CgrFileNameTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        environment().separator = "\\";
        environment().localCacheDirectory = "D:\\cache\\";
        environment().releaseCacheDirectories = {"E:\\one\\", "\\\\srv\\two\\"};
    }
    std::string sourceOf(const std::string& name) {
        CATUnicodeString result("stale");
        EXPECT_EQ(VornToolsCommon::extractFileNameFromCacheFileName(CATUnicodeString(name.data(), name.size()), result),
                  S_OK);
        return std::string(result.ConvertToChar(), static_cast<std::size_t>(result.GetLengthInByte()));
    }
};

TEST_F(CgrFileNameTest, NamesOfCachedFilesLeadToTheirSource) {
    const struct {
        const char* name;
        const char* source;
    } cases[] = {
        {"D:\\cache\\cgr\\#2\\models\\Part1.CATPart.cgr", "C:\\models\\Part1.CATPart"},
        {"D:\\cache\\cgr\\#2\\Part1.CATPart.cgr", "C:\\Part1.CATPart"},
        {"D:\\cache\\cgr\\#1a\\m\\a.model.cgr", "[:\\m\\a.model"},
        {"D:\\cache\\cgr\\#0\\m\\a.model.cgr", "A:\\m\\a.model"},
        {"D:\\cache\\cgr\\#9\\m\\a.model.cgr", "J:\\m\\a.model"},
        {"D:\\cache\\cgr\\#A\\m\\a.model.cgr", "K:\\m\\a.model"},
        {"D:\\cache\\cgr\\#f\\m\\a.model.cgr", "P:\\m\\a.model"},
        {"D:\\cache\\cgr\\#F00000000000000000102\\m\\a.jt.CGR", "C:\\m\\a.jt"},
        {"D:\\cache\\cgr\\srv\\share\\Part1.CATPart.cgr", "\\\\srv\\share\\Part1.CATPart"},
        {"D:\\cache\\cgr\\CATDLNAMES\\LIB\\sub\\a.CATShape.cgr", "\x01\x02\\LIB\\sub\\a.CATShape"},
        {"D:\\cache\\cgr\\CATDLNAMES.x\\a.jt.cgr", "\\\\CATDLNAMES.x\\a.jt"},
        {"D:\\cache\\cgr\\#2\\m\\Part1.CATPart.2024-01-31-12.05.59.cgr", "C:\\m\\Part1.CATPart"},
        {"\\\\?\\D:\\cache\\cgr\\#2\\m\\a.CATPart.cgr", "C:\\m\\a.CATPart"},
        {"E:\\one\\cgr\\#3\\m\\a.CATPart.cgr", "D:\\m\\a.CATPart"},
        {"\\\\srv\\two\\cgr\\#3\\m\\a.CATPart.cgr", "D:\\m\\a.CATPart"},
        {"Part1.CATPart.cgr", "Part1.CATPart"},
        {"Part1.CATPart.2024-01-31-12.05.59.cgr", "Part1.CATPart"},
        {"D:\\cache\\cgr\\#2\\m\\\xC3\xA9.CATPart.cgr", "C:\\m\\\xC3\xA9.CATPart"},
    };
    for (const auto& c : cases) EXPECT_EQ(sourceOf(c.name), c.source);
}

TEST_F(CgrFileNameTest, EveryOtherNameComesBackUnchanged) {
    for (const char* name :
         {"", "cgr", ".cgr", "a.cgr", "D:\\cache\\cgr\\#2\\x\\Part1.CATProduct.cgr",
          "D:\\cache\\cgr\\#2\\x\\a.CATPART.cgr", "D:\\cache\\cgr\\#2\\x\\a.CATPart",
          "F:\\cache\\cgr\\#2\\x\\a.CATPart.cgr", "D:\\cache\\#2\\x\\a.CATPart.cgr", "D:\\cache\\cgr\\a.CATPart.cgr",
          "D:\\cache\\cgr\\#g\\x\\a.CATPart.cgr", "D:\\cache\\cgr\\#@\\x\\a.CATPart.cgr",
          "D:\\cache\\cgr\\#\\x\\a.CATPart.cgr", "D:\\cache\\cgr\\#2z\\x\\a.CATPart.cgr"})
        EXPECT_EQ(sourceOf(name), name);
    environment().localCacheDirectory = "";
    environment().releaseCacheDirectories = {""};
    EXPECT_EQ(sourceOf("cgr\\#2\\x\\a.CATPart.cgr"), "cgr\\#2\\x\\a.CATPart.cgr") << "no directory, no cache";
    environment().missingManagers = {"ENVManager"};
    EXPECT_EQ(sourceOf("D:\\cache\\cgr\\#2\\x\\a.CATPart.cgr"), "D:\\cache\\cgr\\#2\\x\\a.CATPart.cgr");
}

TEST_F(CgrFileNameTest, ADateMayStandBeforeTheSuffix) {
    struct Case {
        const char* name;
        int answer;
    };
    const Case cases[] = {{"Part1.2024-01-31-12.05.59.cgr", 1},  {"x.dddd-dd-dd-dd.dd.dd.cgr", 1},
                          {".2024-01-31-12.05.59.cgr", 0},       {"Part1.2024-01-31-12.05.59.CGR", 0},
                          {"Part1.2024-01-31-12.05.5a.cgr", 0},  {"Part1.2024-01-31-12-05.59.cgr", 0},
                          {"Part1.2024-01-31-12.05.59.cgr ", 0}, {"", 0}};
    for (const Case& test : cases)
        EXPECT_EQ(VornCache::cgrFileNameContainsLastModificationDateField(test.name), test.answer) << test.name;
}

TEST_F(CgrFileNameTest, NoFaultOfThePlatformLeavesAnythingBehind) {
    sweepFailures({"VornToolsCommon::extractFileNameFromCacheFileName", [&] {
                       CATUnicodeString result("stale");
                       const HRESULT code = VornToolsCommon::extractFileNameFromCacheFileName(
                           "E:\\one\\cgr\\#2\\m\\a.CATPart.cgr", result);
                       return outcomeOf(code, result);
                   }});
    CATUnicodeString result("stale");
    HRESULT code = S_OK;
    EXPECT_TRUE(failAt("ENVManager::getReleaseCacheDirectories", 1, [&] {
        code = VornToolsCommon::extractFileNameFromCacheFileName("E:\\one\\cgr\\#2\\m\\a.CATPart.cgr", result);
    }));
    EXPECT_EQ(code, E_FAIL);
    EXPECT_TRUE(result.IsNull());
    EXPECT_EQ(reports(), Texts()) << "the call's own result is handed on";
    embedded::Failures::get().arm(1, false, embedded::FaultFlavour::code);
    EXPECT_EQ(VornToolsCommon::extractFileNameFromCacheFileName("E:\\one\\cgr\\#2\\m\\a.CATPart.cgr", result), E_FAIL);
    embedded::Failures::get().disarm();
    EXPECT_EQ(reports(), Texts({"VornToolsCommon::extractFileNameFromCacheFileName 309 splitPathAndFileName"}));
}

} // namespace
