#include "cache/FileBackup.h"

#include "foundation/OpenFile.h"
#include "foundation/Texts.h"

#include "UTILFile.h"

#include <cstdio>
#include <cstring>
#include <vector>

namespace vorntools {

namespace {

constexpr const char* kCopy = "UTILFile::copyFile";

/** Large blocks: most of the time goes into the calls. */
constexpr std::size_t kBlock = 65536;

/** A file counts as absent when nobody sees it: one that is there would stay unprotected or be lost. */
bool isThere(const CATUnicodeString& i_name) { return UTILFile::existingFile(i_name) || openFile(i_name, "rb"); }

/** False as well when one of them cannot be read to its end. */
bool haveSameBytes(const CATUnicodeString& i_first, const CATUnicodeString& i_second) {
    const OpenFile sp_first = openFile(i_first, "rb");
    const OpenFile sp_second = openFile(i_second, "rb");
    if (!sp_first || !sp_second) return false;
    std::vector<char> first(kBlock);
    std::vector<char> second(kBlock);
    for (;;) {
        const std::size_t count = std::fread(first.data(), 1, first.size(), sp_first.get());
        if (count != std::fread(second.data(), 1, second.size(), sp_second.get())) return false;
        if (std::memcmp(first.data(), second.data(), count) != 0) return false;
        if (count == first.size()) continue;
        return std::ferror(sp_first.get()) == 0 && std::ferror(sp_second.get()) == 0;
    }
}

/** None when the file cannot be read to its end. */
std::optional<std::string> contentOf(const CATUnicodeString& i_file) {
    const OpenFile sp_file = openFile(i_file, "rb");
    if (!sp_file) return std::nullopt;
    std::string bytes;
    std::vector<char> block(kBlock);
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), sp_file.get()))
        bytes.append(block.data(), count);
    if (std::ferror(sp_file.get()) != 0) return std::nullopt;
    return bytes;
}

/** Kept because earlier versions left copies under such names: four characters are the dot and the suffix "xls" or
 * "txt", not those of "xlsx", whose copy is called "name._tmpxlsx". */
CATUnicodeString copyNameOf(const CATUnicodeString& i_file) {
    constexpr int end = 4;
    const int length = i_file.GetLengthInChar();
    const int front = length > end ? length - end : 0;
    return i_file.SubString(0, front) + "_tmp" + behind(i_file, front);
}

} // namespace

FileBackup::FileBackup(const JournalFrame& i_frame, const CATUnicodeString& i_file)
    : m_frame(i_frame), m_file(i_file), m_name(copyNameOf(i_file)) {}

bool FileBackup::isFileAsItWas() const { return haveSameBytes(m_file, m_name); }

void FileBackup::make() {
    m_is_made = isFileAsItWas();
    if (m_is_made) return;
    if (isThere(m_name)) {
        m_frame.write("%s : %s is not replaced, it may be the only copy of %s", m_frame.name(), m_name, m_file);
    } else {
        m_is_made = SUCCEEDED(UTILFile::copyFile(m_file, m_name)) && isFileAsItWas();
        if (m_is_made || !isThere(m_file)) return;
        m_frame.write("%s : %s cannot be copied to %s", m_frame.name(), m_file, m_name);
        UTILFile::deleteFile(m_name);
    }
    m_bytes = contentOf(m_file);
}

bool FileBackup::restore() {
    if (m_is_made) return restoreFromCopy();
    if (!m_bytes || contentOf(m_file) == m_bytes) return true;
    m_bytes.reset();
    m_frame.write("%s : %s was changed and cannot be restored", m_frame.name(), m_file);
    m_frame.callFailed(kCopy);
    return false;
}

bool FileBackup::restoreFromCopy() {
    m_is_made = false;
    if (isFileAsItWas()) return dropCopy();
    UTILFile::deleteFile(m_file);
    if (SUCCEEDED(UTILFile::copyFile(m_name, m_file)) && isFileAsItWas()) return dropCopy();
    // A disk without room for a second copy still lets the first one take the file's place.
    if (SUCCEEDED(UTILFile::renameFile(m_name, m_file))) return true;
    m_frame.write("%s : %s cannot be restored, its content is in %s", m_frame.name(), m_file, m_name);
    m_frame.callFailed(kCopy);
    return false;
}

bool FileBackup::dropCopy() {
    if (FAILED(UTILFile::deleteFile(m_name))) m_frame.write("%s : %s cannot be deleted", m_frame.name(), m_name);
    return true;
}

} // namespace vorntools
