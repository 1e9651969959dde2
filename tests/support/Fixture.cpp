#include "tests/support/Fixture.h"

#include "embedded/Profile.h"
#include "tests/support/KnownWords.h"

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>

namespace fs = std::filesystem;

namespace {

/** Where nobody chose another profile, the platform is as unkind as it can be. */
void chooseProfile() {
    static const char* const given = std::getenv("VORNTOOLS_PROFILE");
    static const bool isChosen = (given && *given) || embedded::chooseProfile("unkind");
    ASSERT_TRUE(isChosen);
}

} // namespace

void PlatformTest::clearJournal() {
    checkJournalNames(embedded::Journal::get().lines());
    embedded::Journal::get().clear();
}

void PlatformTest::SetUp() {
    chooseProfile();
    session().reset();
    embedded::Failures::get().disarm();
    embedded::Accounting::get().takeBreaches();
    m_before = embedded::Accounting::get().live();
}

void PlatformTest::TearDown() {
    EXPECT_EQ(embedded::Accounting::get().holders(), Texts()) << "somebody still holds a reference";
    EXPECT_EQ(embedded::Journal::get().open(), 0) << "journal frames left open";
    EXPECT_EQ(embedded::Journal::get().mismatches(), 0) << "journal frames closed out of order";
    EXPECT_EQ(reports(), Texts()) << "error reports that the test did not read";
    checkJournalNames(embedded::Journal::get().lines());
    checkExpectedReports();
    session().reset();
    EXPECT_TRUE(m_before == embedded::Accounting::get().live())
        << "left alive: references " << embedded::Accounting::get().live().references - m_before.references
        << ", objects " << embedded::Accounting::get().live().objects - m_before.objects << ", lists "
        << embedded::Accounting::get().live().lists - m_before.lists << ", texts "
        << embedded::Accounting::get().live().texts - m_before.texts << ", files "
        << embedded::Accounting::get().live().files - m_before.files;
    EXPECT_EQ(embedded::Accounting::get().takeBreaches(), Texts());
    std::error_code ignored;
    if (!m_folder.empty()) fs::remove_all(m_folder, ignored);
}

const fs::path& PlatformTest::folder() {
    if (!m_folder.empty()) return m_folder;
    static std::atomic<unsigned> count{0};
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    m_folder = fs::temp_directory_path() / ("vorntools_test_" + std::to_string(now) + "_" + std::to_string(++count));
    fs::create_directories(m_folder);
    return m_folder;
}

std::string PlatformTest::path(const std::string& name) {
    return (folder() / fs::u8path(name)).make_preferred().u8string();
}

std::string PlatformTest::write(const std::string& name, const std::string& bytes) {
    const fs::path file = folder() / fs::u8path(name);
    fs::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return fs::path(file).make_preferred().u8string();
}

void PlatformTest::touch(const std::string& name, long long seconds) {
    // file_clock has no portable epoch before C++20: both clocks are asked for the same moment.
    const auto fileNow = fs::file_time_type::clock::now();
    const auto systemNow = std::chrono::system_clock::now();
    const auto target = std::chrono::system_clock::time_point(std::chrono::seconds(seconds));
    const auto difference =
        std::chrono::duration_cast<fs::file_time_type::duration>(target - systemNow) + std::chrono::milliseconds(300);
    fs::last_write_time(folder() / fs::u8path(name), fileNow + difference);
}
