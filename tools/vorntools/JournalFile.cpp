#include "tools/vorntools/JournalFile.h"

#include "tools/vorntools/Output.h"

#include "embedded/Records.h"
#include "embedded/Session.h"

#include <filesystem>

JournalFile::JournalFile(const std::string& name, Reader reader) : m_name(name) {
    if (!m_name.empty())
        m_stream.open(std::filesystem::u8path(m_name), std::ios::binary);
    else if (reader == Reader::nobody)
        embedded::Session::current().environment().missingManagers.emplace_back("JNLManager");
}

std::string JournalFile::takeLines() {
    embedded::Journal& journal = embedded::Journal::get();
    std::string lines;
    for (std::size_t i = 0; !m_name.empty() && i < journal.size(); ++i) lines.append(journal.line(i)) += '\n';
    journal.clear();
    embedded::ErrorReports::get().take();
    return lines;
}

bool JournalFile::finish() {
    take();
    if (m_name.empty()) return true;
    m_stream.close();
    if (!m_stream.fail()) return true;
    complain("cannot write " + m_name);
    return false;
}
