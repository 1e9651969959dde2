#include "tools/vorntools/JournalFile.h"

#include "tools/vorntools/Output.h"

#include "embedded/Records.h"

#include <filesystem>

JournalFile::JournalFile(const std::string& name) : m_name(name) {
    embedded::Journal::get().setWanted(!m_name.empty());
    if (!m_name.empty()) m_stream.open(std::filesystem::u8path(m_name), std::ios::binary);
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

JournalReading::JournalReading() : m_wasWanted(embedded::Journal::get().isWanted()) {
    embedded::Journal::get().setWanted(true);
}

JournalReading::~JournalReading() {
    embedded::Journal& journal = embedded::Journal::get();
    if (!m_wasWanted) journal.clear();
    journal.setWanted(m_wasWanted);
}
