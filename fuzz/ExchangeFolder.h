#ifndef FUZZ_EXCHANGE_FOLDER_H
#define FUZZ_EXCHANGE_FOLDER_H

#include "CATUnicodeString.h"

#include "embedded/Accounting.h"
#include "embedded/Records.h"
#include "embedded/Session.h"

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

// What the targets that write files share.

inline void require(bool condition, const char* what) {
    if (condition) return;
    std::fprintf(stderr, "broken: %s\n", what);
    std::abort();
}

inline std::string bytesOf(const CATUnicodeString& text) {
    return std::string(text.ConvertToChar(), static_cast<std::size_t>(text.GetLengthInByte()));
}

/** A text's lines, read a second way: LF or CR LF ends a line. @param ended whether the last line has its end */
inline std::vector<std::string> linesOf(const std::string& bytes, bool& ended) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (std::size_t end = bytes.find('\n'); end != std::string::npos; end = bytes.find('\n', begin)) {
        const bool carriageReturn = end > begin && bytes[end - 1] == '\r';
        lines.push_back(bytes.substr(begin, end - begin - (carriageReturn ? 1 : 0)));
        begin = end + 1;
    }
    ended = begin == bytes.size();
    if (!ended) lines.push_back(bytes.substr(begin));
    return lines;
}

/** The exchange directory of this process, removed at the end. */
class ExchangeFolder {
public:
    ExchangeFolder() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        m_folder = std::filesystem::temp_directory_path() / ("vorntools_fuzz_" + std::to_string(now));
        std::filesystem::create_directories(m_folder);
        embedded::Session::current().environment().tempDirectory = (m_folder / "").u8string();
    }
    ~ExchangeFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    ExchangeFolder(const ExchangeFolder&) = delete;
    ExchangeFolder& operator=(const ExchangeFolder&) = delete;

    void write(const std::string& name, const std::string& bytes) const {
        std::ofstream(m_folder / name, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string nameOf(const std::string& name) const { return (m_folder / name).u8string(); }

private:
    std::filesystem::path m_folder;
};

/** What holds behind every call; what it reported and wrote to the journal is dropped. */
inline void requireTidiness() {
    require(embedded::Accounting::get().live().files == 0, "files left open");
    require(embedded::Accounting::get().takeBreaches().empty(), "a rule of the platform");
    require(embedded::Journal::get().open() == 0, "journal frames left open");
    embedded::Journal::get().clear();
    embedded::ErrorReports::get().take();
}

/** The same, behind calls that report no error whatever a file holds. */
inline void requireCleanliness() {
    require(embedded::ErrorReports::get().take().empty(), "a report where only the file's content is wrong");
    requireTidiness();
}

#endif
