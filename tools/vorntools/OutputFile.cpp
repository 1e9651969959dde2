#include "tools/vorntools/OutputFile.h"

#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

/** A name beside a file that nothing has. */
fs::path freeNameBeside(const fs::path& file) {
    fs::path name = file;
    do name += ".part";
    while (isThere(name));
    return name;
}

} // namespace

bool isThere(const fs::path& file) {
    std::error_code error;
    return fs::symlink_status(file, error).type() != fs::file_type::not_found;
}

OutputFile::OutputFile(fs::path target)
    : m_target(std::move(target)), m_part(freeNameBeside(m_target)), m_stream(m_part, std::ios::binary),
      m_isMine(m_stream.is_open()) {}

OutputFile::~OutputFile() {
    m_stream.close();
    std::error_code error;
    if (m_isMine) fs::remove(m_part, error);
}

bool OutputFile::commit() {
    m_stream.close();
    if (!m_stream) return false;
    std::error_code error;
    fs::rename(m_part, m_target, error);
    m_isMine = static_cast<bool>(error);
    return !error;
}
