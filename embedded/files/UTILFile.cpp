#include "UTILFile.h"
#include "embedded/Session.h"
#include "embedded/files/FileNames.h"
#include "embedded/files/LogicalNames.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/object/Answers.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>
#include <vector>

using namespace embedded;

namespace {

constexpr std::size_t kBufferSize = 65536;

std::string_view bytesOf(const CATUnicodeString& text) { return TextBytes::of(text); }

unsigned char isType(const CATUnicodeString& extension, const char* type) {
    return extension.Compare(type) != 0 ? 1 : 0;
}

CATUnicodeString textOf(std::string_view bytes) { return toText(std::string(bytes)); }

} // namespace

/**
 * The file and what was read of it. One of these is kept between files: its buffer is the costly part of reading many
 * small files.
 */
struct UTILFile::OpenFile {
    OpenFile() : m_buffer(kBufferSize + 1) {}

    static OpenFile* obtain() {
        OpenFile* const kept = spare().exchange(nullptr);
        return kept ? kept : new OpenFile;
    }
    static void giveBack(OpenFile* file) {
        file->m_file.close();
        if (file->m_buffer.size() > kBufferSize + 1) {
            delete file;
            return;
        }
        delete spare().exchange(file);
    }

    /** The first read is part of opening: some systems open a folder and refuse only then. */
    bool open(std::string_view name) {
        m_begin = m_scanned = m_end = 0;
        m_atEnd = m_metEnd = false;
        return m_file.open(name) && fill();
    }

    HRESULT readLine(CATUnicodeString& line) {
        const char* found = findLineEnd();
        while (!found && !m_atEnd) {
            if (!fill()) return E_FAIL;
            found = findLineEnd();
        }
        m_metEnd = !found;
        if (!found && m_begin == m_end) return S_FALSE;
        std::size_t end = found ? static_cast<std::size_t>(found - m_buffer.data()) : m_end;
        const std::size_t next = found ? end + 1 : end;
        if (found && end > m_begin && m_buffer[end - 1] == '\r') --end;
        takeLine(end, line);
        m_begin = m_scanned = next;
        return S_OK;
    }

    void drop() {
        m_begin = m_scanned = m_end;
        m_atEnd = m_metEnd = true;
    }
    bool hasMetEnd() const { return m_metEnd; }

private:
    static std::atomic<OpenFile*>& spare() {
        static std::atomic<OpenFile*> file{nullptr};
        return file;
    }

    const char* findLineEnd() {
        const void* const found = std::memchr(m_buffer.data() + m_scanned, '\n', m_end - m_scanned);
        m_scanned = m_end;
        return static_cast<const char*>(found);
    }

    /** Assigns the bytes up to `end`; a line without NUL goes straight into the text's own memory. */
    void takeLine(std::size_t end, CATUnicodeString& line) {
        const char replaced = m_buffer[end];
        m_buffer[end] = '\0';
        line = m_buffer.data() + m_begin;
        m_buffer[end] = replaced;
        if (static_cast<std::size_t>(line.GetLengthInByte()) != end - m_begin)
            line = CATUnicodeString(m_buffer.data() + m_begin, end - m_begin);
    }

    /** Reads more behind what is unread; one byte stays free for a terminator. False when the read fails. */
    bool fill() {
        if (m_begin > 0) {
            std::memmove(m_buffer.data(), m_buffer.data() + m_begin, m_end - m_begin);
            m_end -= m_begin;
            m_scanned -= m_begin;
            m_begin = 0;
        }
        if (m_end + 1 == m_buffer.size()) m_buffer.resize(2 * m_buffer.size());
        const std::size_t room = m_buffer.size() - m_end - 1;
        const long count = m_file.read(m_buffer.data() + m_end, room);
        if (count < 0) return false;
        // A file gives less than asked for only at its end: most are done with one read.
        m_atEnd = static_cast<std::size_t>(count) < room;
        m_end += static_cast<std::size_t>(count);
        return true;
    }

    SystemFile m_file;
    std::vector<char> m_buffer;
    std::size_t m_begin = 0;
    std::size_t m_scanned = 0;
    std::size_t m_end = 0;
    bool m_atEnd = false;  ///< nothing is left to read from the system
    bool m_metEnd = false; ///< the last line asked for was not ended by a line end
};

UTILFile::~UTILFile() { close(); }

HRESULT UTILFile::open(const CATUnicodeString& iFileName, const char* iMode) {
    close();
    if (fails("UTILFile::open") || !iMode || std::strcmp(iMode, "r") != 0) return E_FAIL;
    m_file = OpenFile::obtain();
    if (m_file->open(diskName(iFileName))) return S_OK;
    close();
    return E_FAIL;
}

HRESULT UTILFile::readLine(CATUnicodeString& oLine) {
    const FaultFlavour flavour = Failures::get().ask("UTILFile::readLine");
    if (flavour == FaultFlavour::code || flavour == FaultFlavour::codeWithOutput)
        return textAnswer(flavour, std::string(), oLine);
    const HRESULT result = m_file ? m_file->readLine(oLine) : E_FAIL;
    if (result != S_OK) oLine = "";
    if (flavour == FaultFlavour::nullOutput) oLine = "";
    if (flavour == FaultFlavour::shortRead && result == S_OK) {
        oLine = oLine.SubString(0, oLine.GetLengthInChar() / 2);
        m_file->drop();
    }
    return result;
}

unsigned char UTILFile::isAtEnd() const { return !m_file || m_file->hasMetEnd() ? 1 : 0; }

void UTILFile::close() {
    if (m_file) OpenFile::giveBack(m_file);
    m_file = nullptr;
}

HRESULT UTILFile::splitPathAndFileName(const CATUnicodeString& iFullName, CATUnicodeString& oPath,
                                       CATUnicodeString& oFileName) {
    const FaultFlavour flavour = Failures::get().ask("UTILFile::splitPathAndFileName");
    if (flavour != FaultFlavour::none) {
        textAnswer(flavour, std::string(), oPath);
        return textAnswer(flavour, std::string(), oFileName);
    }
    const std::string_view fullName = bytesOf(iFullName);
    const std::string_view fileName = fileNameOf(fullName);
    const std::size_t directory = fullName.size() - fileName.size();
    const HRESULT code = fullName.empty() ? E_FAIL : S_OK;
    // The outputs may be the very text that is split.
    CATUnicodeString path = textOf(fullName.substr(0, directory > 1 ? directory - 1 : directory));
    oFileName = textOf(fileName);
    oPath = std::move(path);
    return code;
}

unsigned char UTILFile::existingFile(const CATUnicodeString& iFileName) {
    FileFacts facts;
    return !fails("UTILFile::existingFile") && examineFile(diskName(iFileName), facts) && facts.isFile ? 1 : 0;
}

CATUnicodeString UTILFile::getPathSeparator() {
    const std::string& separator = Session::current().environment().separator;
    return separator.empty() ? toText(systemSeparator()) : toText(separator);
}

CATUnicodeString UTILFile::getExtension(const CATUnicodeString& iFileName) {
    return toText(suffixOf(bytesOf(iFileName)));
}

unsigned char UTILFile::isACATProduct(const CATUnicodeString& iExtension) { return isType(iExtension, "CATProduct"); }

unsigned char UTILFile::isACATPart(const CATUnicodeString& iExtension) { return isType(iExtension, "CATPart"); }

unsigned char UTILFile::isACATDrawing(const CATUnicodeString& iExtension) { return isType(iExtension, "CATDrawing"); }

unsigned char UTILFile::isACATProcess(const CATUnicodeString& iExtension) { return isType(iExtension, "CATProcess"); }

unsigned char UTILFile::isACATAnalysis(const CATUnicodeString& iExtension) { return isType(iExtension, "CATAnalysis"); }

HRESULT UTILFile::getFileSize(const CATUnicodeString& iFileName, long long& oSize) {
    constexpr long long staleSize = 4711;
    oSize = 0;
    const FaultFlavour flavour = Failures::get().ask("UTILFile::getFileSize");
    if (flavour != FaultFlavour::none) return failedAnswer<long long>(flavour, oSize, 0, staleSize);
    FileFacts facts;
    if (!examineFile(diskName(iFileName), facts) || !facts.isFile) return E_FAIL;
    oSize = facts.size;
    return S_OK;
}

int UTILFile::getLastModificationDateOnFile(const CATUnicodeString& iFileName) {
    FileFacts facts;
    if (fails("UTILFile::getLastModificationDateOnFile") || !examineFile(diskName(iFileName), facts)) return -1;
    return static_cast<int>(static_cast<std::uint32_t>(facts.changed));
}

HRESULT UTILFile::copyFile(const CATUnicodeString& iSource, const CATUnicodeString& iTarget) {
    const FaultFlavour flavour = Failures::get().ask("UTILFile::copyFile");
    if (flavour == FaultFlavour::code) return E_FAIL;
    if (!copyFileOnDisk(diskName(iSource), diskName(iTarget))) return E_FAIL;
    if (flavour == FaultFlavour::none) return S_OK;
    // The disk got full half way; not every caller is told.
    FileFacts facts;
    examineFile(diskName(iTarget), facts);
    cutFileOnDisk(diskName(iTarget), facts.size / 2);
    return flavour == FaultFlavour::codeWithOutput ? E_FAIL : S_OK;
}

HRESULT UTILFile::renameFile(const CATUnicodeString& iFileName, const CATUnicodeString& iNewName) {
    if (fails("UTILFile::renameFile")) return E_FAIL;
    return renameFileOnDisk(diskName(iFileName), diskName(iNewName)) ? S_OK : E_FAIL;
}

HRESULT UTILFile::deleteFile(const CATUnicodeString& iFileName) {
    if (fails("UTILFile::deleteFile")) return E_FAIL;
    return deleteFileOnDisk(diskName(iFileName)) ? S_OK : E_FAIL;
}

unsigned char UTILFile::filesAreEqual(const CATUnicodeString& iFirst, const CATUnicodeString& iSecond) {
    if (fails("UTILFile::filesAreEqual") || iFirst.IsNull() || iSecond.IsNull()) return 0;
    std::string first = toBytes(iFirst);
    std::string second = toBytes(iSecond);
    for (std::string* const name : {&first, &second}) std::replace(name->begin(), name->end(), '\\', '/');
    const bool whole = first.find('/') != std::string::npos && second.find('/') != std::string::npos;
    const auto compared = [whole](const std::string& name) { return textOf(whole ? name : fileNameOf(name)); };
    return compared(first).Compare(compared(second)) != 0 ? 1 : 0;
}
