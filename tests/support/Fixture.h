#ifndef TESTS_SUPPORT_FIXTURE_H
#define TESTS_SUPPORT_FIXTURE_H

#include "embedded/Accounting.h"
#include "embedded/Failures.h"
#include "embedded/Records.h"
#include "embedded/Session.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

/**
 * A fresh session and a fresh folder for every test. At its end a test fails when it left a reference, list, text or
 * file alive, a journal frame open, an error report unread or broke a rule of the platform.
 */
class PlatformTest : public testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    embedded::Session& session() { return embedded::Session::current(); }
    embedded::Environment& environment() { return session().environment(); }

    /** The test's own empty folder, made on first use. */
    const std::filesystem::path& folder();
    /** Name of a file in the folder, UTF-8, with the system's separator. */
    std::string path(const std::string& name);
    /** Writes a file in the folder, byte for byte; its name. */
    std::string write(const std::string& name, const std::string& bytes);
    /** Sets the time of a file's last change, seconds since 1970. */
    void touch(const std::string& name, long long seconds);

    /** The error reports since the last call, "function number argument". */
    std::vector<std::string> reports() { return embedded::ErrorReports::get().take(); }
    /** The journal's message lines since clearJournal(). */
    std::vector<std::string> messages() { return embedded::Journal::get().messages(); }
    void clearJournal();

private:
    embedded::LiveCounts m_before;
    std::filesystem::path m_folder;
};

using Texts = std::vector<std::string>;

#endif
