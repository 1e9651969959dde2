#include "links/LinkedNames.h"

#include "CATLib.h"
#include "UTILFile.h"
#include "VornToolsFolderMemory.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <memory>

namespace vorntools {

namespace {

constexpr int kMostEntries = 260;
int entriesRead = 0;

/** A folder being read, closed at the end. On the heap: searches go as deep as folders do. */
class Folder {
public:
    explicit Folder(const char* i_path) : m_open(CATOpenDirectory(i_path, &m_directory) == CATLibSuccess) {}
    ~Folder() {
        if (m_open) CATCloseDirectory(&m_directory);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    bool isOpen() const { return m_open; }
    /** Name of the next entry; null at the end. */
    const char* next() {
        int at_end = 0;
        if (!m_open || CATReadDirectory(&m_directory, &m_entry, &at_end) != CATLibSuccess || at_end) return nullptr;
        return m_entry.name;
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
    bool m_open;
};

bool isSeparator(char i_byte) { return i_byte == '/' || i_byte == '\\'; }

std::string_view nameOf(std::string_view i_path) { return i_path.substr(i_path.find_last_of("/\\") + 1); }

/** Without its last separator; a root keeps it. */
std::string_view directoryOf(std::string_view i_path) {
    const std::size_t length = i_path.size() - nameOf(i_path).size();
    return i_path.substr(0, length > 1 ? length - 1 : length);
}

std::string withOneSeparator(std::string_view i_path, char i_separator) {
    std::string path(i_path);
    std::replace_if(path.begin(), path.end(), isSeparator, i_separator);
    return path;
}

bool isAbsolute(std::string_view i_path) {
    return isSeparator(i_path.front()) || (i_path.size() > 1 && i_path[1] == ':');
}

bool exists(const std::string& i_path) {
    return UTILFile::existingFile(CATUnicodeString(i_path.data(), i_path.size())) != 0;
}

/** Start of the first path component at which the two directories differ. */
std::size_t firstDifference(const std::string& i_saved, const std::string& i_current) {
    const auto differing = std::mismatch(i_saved.begin(), i_saved.end(), i_current.begin(), i_current.end());
    std::size_t index = static_cast<std::size_t>(differing.first - i_saved.begin());
    const auto ends = [](const std::string& i_path, std::size_t i_at) {
        return i_at == i_path.size() || isSeparator(i_path[i_at]);
    };
    if (ends(i_saved, index) && ends(i_current, index)) return index;
    while (index > 0 && !isSeparator(i_saved[index - 1])) --index;
    return index;
}

/** End of the components within a path; npos when they do not stand there as a whole. */
std::size_t endOfComponents(const std::string& i_path, std::string_view i_components) {
    for (std::size_t at = i_path.find(i_components); at != std::string::npos; at = i_path.find(i_components, at + 1)) {
        const std::size_t end = at + i_components.size();
        const bool begins = at == 0 || isSeparator(i_path[at - 1]) || isSeparator(i_path[at]);
        if (begins && end < i_path.size() && isSeparator(i_path[end])) return end;
    }
    return std::string::npos;
}

/** The path with one directory put in the place of another; empty when it does not lie below that one. */
std::string movedFrom(const std::string& i_old, const std::string& i_new, const std::string& i_path) {
    const bool below = !i_old.empty() && i_path.size() > i_old.size() && isSeparator(i_path[i_old.size()]) &&
                       i_path.compare(0, i_old.size(), i_old) == 0;
    return below ? i_new + i_path.substr(i_old.size()) : std::string();
}

/** The first of the names that is a file; empty when none is. */
std::string firstFile(std::initializer_list<std::string> i_names) {
    for (const std::string& name : i_names)
        if (!name.empty() && exists(name)) return name;
    return {};
}

void appendFoldersBelow(const std::string& i_directory, std::vector<std::string>& io_folders) {
    const auto sp_folder = std::make_unique<Folder>(i_directory.c_str());
    while (entriesRead < kMostEntries) {
        const char* const p_entry = sp_folder->next();
        if (!p_entry) break;
        ++entriesRead;
        const char* const p_path = *p_entry == '.' ? nullptr : sp_folder->pathOf(i_directory.c_str(), p_entry);
        if (!p_path || !Folder(p_path).isOpen()) continue;
        io_folders.emplace_back(p_path);
        appendFoldersBelow(p_path, io_folders);
    }
}

/** What is kept while a memory for it exists. */
std::unordered_map<std::string, std::shared_ptr<const FoldersBelow>>& keptFolders() {
    static std::unordered_map<std::string, std::shared_ptr<const FoldersBelow>> kept;
    return kept;
}
int memories = 0;

/** Removes the path components at the end that both directories share. */
void removeCommonEnd(std::string& io_saved, std::string& io_current) {
    while (!io_saved.empty() && !io_current.empty() && nameOf(io_saved) == nameOf(io_current)) {
        io_saved.resize(io_saved.size() - std::min(io_saved.size(), nameOf(io_saved).size() + 1));
        io_current.resize(io_current.size() - std::min(io_current.size(), nameOf(io_current).size() + 1));
    }
}

} // namespace

bool isBareName(std::string_view i_name) { return i_name.find_first_of("/\\") == std::string_view::npos; }

void restartSearch() { entriesRead = 0; }

const char* findBelow(const char* i_file_name, const char* i_directory) {
    const char* p_found = CATFindPath(i_file_name, i_directory);
    if (p_found || entriesRead >= kMostEntries) return p_found;
    const auto sp_folder = std::make_unique<Folder>(i_directory);
    while (!p_found && entriesRead < kMostEntries) {
        const char* const p_entry = sp_folder->next();
        if (!p_entry) break;
        ++entriesRead;
        const char* const p_path = *p_entry == '.' ? nullptr : sp_folder->pathOf(i_directory, p_entry);
        if (p_path) p_found = findBelow(i_file_name, p_path);
    }
    return p_found;
}

std::shared_ptr<const FoldersBelow> foldersBelow(const std::string& i_directory) {
    restartSearch();
    const auto kept = keptFolders().find(i_directory);
    if (kept != keptFolders().end()) {
        entriesRead = kept->second->entries;
        return kept->second;
    }
    const auto sp_below = std::make_shared<FoldersBelow>();
    appendFoldersBelow(i_directory, sp_below->folders);
    sp_below->entries = entriesRead;
    if (memories > 0) keptFolders().emplace(i_directory, sp_below);
    return sp_below;
}

LinkedNames::LinkedNames(std::string_view i_own_path, std::string_view i_file_name, std::string_view i_directory)
    : m_directory(i_directory) {
    const CATUnicodeString separator = UTILFile::getPathSeparator();
    if (!separator.IsNull()) m_separator = *separator.ConvertToChar();
    m_saved_directory = withOneSeparator(directoryOf(i_own_path), m_separator);
    m_current_directory =
        withOneSeparator(isBareName(i_file_name) ? i_directory : directoryOf(i_file_name), m_separator);
    if (m_current_directory.size() > 1 && isSeparator(m_current_directory.back())) m_current_directory.pop_back();
    if (!m_directory.empty() && !isSeparator(m_directory.back())) m_directory += m_separator;
}

const std::string& LinkedNames::resolve(const std::string& i_name) {
    const auto known = m_known.find(i_name);
    if (known != m_known.end()) return known->second;
    const std::string found = isBareName(i_name) ? firstFile({m_directory + i_name}) : findPath(i_name);
    return m_known.emplace(i_name, found.empty() ? i_name : found).first->second;
}

std::string LinkedNames::findPath(const std::string& i_name) {
    if (exists(i_name)) return i_name;
    const std::string path = withOneSeparator(i_name, m_separator);
    std::string found = isAbsolute(path) ? firstFile({rerooted(path), besideRoot(path)}) : findRelative(path);
    if (!found.empty() || m_current_directory.empty()) return found;
    return findByName(std::string(nameOf(path)));
}

std::string LinkedNames::findByName(const std::string& i_name) {
    if (const char* const p_found = CATFindPath(i_name.c_str(), m_current_directory.c_str())) return p_found;
    if (!m_sp_below) m_sp_below = foldersBelow(m_current_directory);
    for (const std::string& folder : m_sp_below->folders)
        if (const char* const p_found = CATFindPath(i_name.c_str(), folder.c_str())) return p_found;
    return {};
}

std::string LinkedNames::findRelative(const std::string& i_path) const {
    const bool from_here = i_path.size() > 1 && i_path[0] == '.' && i_path[1] == m_separator;
    const std::string below = from_here ? i_path.substr(2) : i_path;
    std::string found = m_directory.empty() ? std::string() : firstFile({m_directory + below});
    if (found.empty() && !m_current_directory.empty()) found = firstFile({m_current_directory + m_separator + below});
    return found;
}

std::string LinkedNames::rerooted(const std::string& i_path) const {
    if (m_saved_directory.empty() || m_saved_directory == m_current_directory) return {};
    const std::size_t differs = firstDifference(m_saved_directory, m_current_directory);
    const std::string_view tail = std::string_view(m_saved_directory).substr(differs);
    if (tail.empty()) return movedFrom(m_saved_directory, m_current_directory, i_path);
    const std::size_t end = endOfComponents(i_path, tail);
    return end == std::string::npos ? std::string() : m_current_directory + i_path.substr(end);
}

std::string LinkedNames::besideRoot(const std::string& i_path) const {
    std::string saved_root = m_saved_directory;
    std::string current_root = m_current_directory;
    removeCommonEnd(saved_root, current_root);
    return movedFrom(saved_root, current_root, i_path);
}

} // namespace vorntools

VornToolsFolderMemory::VornToolsFolderMemory() { ++vorntools::memories; }

VornToolsFolderMemory::~VornToolsFolderMemory() {
    if (--vorntools::memories == 0) vorntools::keptFolders().clear();
}
