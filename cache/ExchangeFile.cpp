#include "cache/ExchangeFile.h"

#include "foundation/Guarded.h"

#include "ENVManager.h"
#include "UTILFile.h"

namespace vorntools {

HRESULT findExchangeFile(const JournalFrame& i_frame, const CATUnicodeString& i_name, CATUnicodeString& o_full_name) {
    o_full_name = "";
    ENVManager* const p_environment = ENVManager::getInstance();
    if (!p_environment) return i_frame.missing("p_env");
    const CATUnicodeString directory = p_environment->getTempDirectory();
    if (!directory.IsNull()) o_full_name = directory + i_name;
    return S_OK;
}

bool LineReader::next() {
    m_code = m_file.readLine(m_line);
    if (m_code == S_OK) return true;
    m_line = "";
    return false;
}

NewTextFile::~NewTextFile() {
    if (!m_file) return;
    m_file.reset();
    guarded([this] { deleteFile(m_name); });
}

bool NewTextFile::create(const CATUnicodeString& i_name) {
    m_name = i_name;
    m_file = openFile(i_name, "w");
    return m_file != nullptr;
}

void NewTextFile::writeLine(const CATUnicodeString& i_line) {
    std::fwrite(i_line.ConvertToChar(), 1, static_cast<std::size_t>(i_line.GetLengthInByte()), m_file.get());
    std::fputc('\n', m_file.get());
}

bool NewTextFile::finish() {
    const bool written = std::ferror(m_file.get()) == 0;
    const bool closed = std::fclose(m_file.release()) == 0;
    if (written && closed) return true;
    deleteFile(m_name);
    return false;
}

bool deleteFile(const CATUnicodeString& i_name) { return !UTILFile::existingFile(i_name) || removeFile(i_name); }

} // namespace vorntools
