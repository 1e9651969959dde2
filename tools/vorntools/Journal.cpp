#include "tools/vorntools/Commands.h"

#include "embedded/Records.h"
#include "embedded/SessionFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>

struct JournalFile::File {
    std::ofstream stream;
};

JournalFile::JournalFile(const std::string& name) : m_file(name.empty() ? nullptr : new File) {
    if (m_file) m_file->stream.open(std::filesystem::u8path(name), std::ios::binary);
}

JournalFile::~JournalFile() { delete m_file; }

bool JournalFile::take() {
    embedded::Journal& journal = embedded::Journal::get();
    for (std::size_t i = 0; m_file && i < journal.size(); ++i) m_file->stream << journal.line(i) << '\n';
    journal.clear();
    embedded::ErrorReports::get().take();
    return !m_file || m_file->stream.good();
}

bool loadSessionOf(const CommonOptions& options) {
    if (options.session.empty()) return true;
    const embedded::SessionFileResult result = embedded::loadSession(options.session);
    if (!result.ok) std::fprintf(stderr, "vorntools: %s\n", result.error.c_str());
    return result.ok;
}
