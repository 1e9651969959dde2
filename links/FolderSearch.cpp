#include "links/FolderSearch.h"

#include "foundation/PlatformErrors.h"

#include "CATLib.h"
#include "CATUnicodeString.h"
#include "UTILFile.h"

#include <cstring>
#include <memory>

namespace vorntools {

namespace {

constexpr int kMostEntries = 260;
int entriesRead = 0;

/** A folder being read, closed at the end. On the heap: searches go as deep as folders do. */
class Folder {
public:
    explicit Folder(const char* i_path)
        : m_open(onPlatform([&] { return CATOpenDirectory(i_path, &m_directory) == CATLibSuccess; }, false)) {}
    ~Folder() {
        if (m_open) CATCloseDirectory(&m_directory);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    bool isOpen() const { return m_open; }
    /** Name of the next entry, empty for one that cannot be told; null at the end. Some platforms give the last entry
     * together with the end. */
    const char* next() {
        if (!m_open || m_at_end) return nullptr;
        m_entry.name[0] = '\0';
        int at_end = 0;
        const auto read_one = [&] { return CATReadDirectory(&m_directory, &m_entry, &at_end) == CATLibSuccess; };
        const bool read = onPlatform(read_one, false);
        m_at_end = !read || at_end != 0;
        const bool has_last = at_end != 0 && *m_entry.name;
        return m_at_end && !has_last ? nullptr : m_entry.name;
    }
    /** Path of an entry; null when it is longer than the platform's paths. */
    const char* pathOf(const char* i_folder, const char* i_entry) {
        if (std::strlen(i_folder) + std::strlen(i_entry) + 2 > sizeof m_path) return nullptr;
        CATMakePath(i_folder, i_entry, m_path);
        return m_path;
    }

private:
    CATDirectory m_directory{};
    CATDirectoryEntry m_entry{};
    char m_path[CATMaxPathSize] = "";
    bool m_at_end = false;
    bool m_open;
};

bool isPassedOver(const char* i_entry) { return !*i_entry || *i_entry == '.'; }

void appendFoldersBelow(const std::string& i_directory, FoldersBelow& io_below) {
    const auto sp_folder = std::make_unique<Folder>(i_directory.c_str());
    while (io_below.entries < kMostEntries) {
        const char* const p_entry = sp_folder->next();
        if (!p_entry) break;
        ++io_below.entries;
        const char* const p_path = isPassedOver(p_entry) ? nullptr : sp_folder->pathOf(i_directory.c_str(), p_entry);
        if (!p_path || !Folder(p_path).isOpen()) continue;
        io_below.folders.push_back({p_path, io_below.entries});
        appendFoldersBelow(p_path, io_below);
    }
}

} // namespace

void setEntriesRead(int i_count) { entriesRead = i_count; }

const char* findIn(const char* i_file_name, const char* i_directory) {
    return onPlatform([&]() -> const char* { return CATFindPath(i_file_name, i_directory); }, nullptr);
}

const char* findBelow(const char* i_file_name, const char* i_directory) {
    const char* p_found = findIn(i_file_name, i_directory);
    if (p_found || entriesRead >= kMostEntries) return p_found;
    const auto sp_folder = std::make_unique<Folder>(i_directory);
    while (!p_found && entriesRead < kMostEntries) {
        const char* const p_entry = sp_folder->next();
        if (!p_entry) break;
        ++entriesRead;
        const char* const p_path = isPassedOver(p_entry) ? nullptr : sp_folder->pathOf(i_directory, p_entry);
        if (p_path) p_found = findBelow(i_file_name, p_path);
    }
    return p_found;
}

bool KnownFolders::isFile(const std::string& i_name) {
    const auto known = m_files.find(i_name);
    if (known != m_files.end()) return known->second;
    if (m_files.size() == kMostFiles) m_files.clear();
    const bool is_there = UTILFile::existingFile(CATUnicodeString(i_name.data(), i_name.size())) != 0;
    return m_files.emplace(i_name, is_there).first->second;
}

const FoldersBelow& KnownFolders::below(const std::string& i_directory) {
    const auto known = m_known.find(i_directory);
    if (known != m_known.end()) return known->second;
    FoldersBelow below;
    appendFoldersBelow(i_directory, below);
    return m_known.emplace(i_directory, std::move(below)).first->second;
}

} // namespace vorntools
