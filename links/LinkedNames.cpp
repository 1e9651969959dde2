#include "links/LinkedNames.h"

#include "CATUnicodeString.h"
#include "UTILFile.h"

#include <algorithm>

namespace vorntools {

namespace {

bool isSeparator(char i_byte) { return i_byte == '/' || i_byte == '\\'; }

std::string_view nameOf(std::string_view i_path) {
    const auto last = std::find_if(i_path.rbegin(), i_path.rend(), isSeparator);
    return i_path.substr(static_cast<std::size_t>(i_path.rend() - last));
}

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

/** Removes the path components at the end that both directories share. */
void removeCommonEnd(std::string& io_saved, std::string& io_current) {
    while (!io_saved.empty() && !io_current.empty() && nameOf(io_saved) == nameOf(io_current)) {
        io_saved.resize(io_saved.size() - (std::min)(io_saved.size(), nameOf(io_saved).size() + 1));
        io_current.resize(io_current.size() - (std::min)(io_current.size(), nameOf(io_current).size() + 1));
    }
}

} // namespace

bool isBareName(std::string_view i_name) { return std::none_of(i_name.begin(), i_name.end(), isSeparator); }

LinkedNames::LinkedNames(std::string_view i_own_path, std::string_view i_file_name, std::string_view i_directory,
                         KnownFolders& io_folders)
    : m_directory(i_directory), m_folders(io_folders) {
    const CATUnicodeString separator = UTILFile::getPathSeparator();
    if (!separator.IsNull()) m_separator = *separator.ConvertToChar();
    m_saved_directory = withOneSeparator(directoryOf(i_own_path), m_separator);
    m_current_directory =
        withOneSeparator(isBareName(i_file_name) ? i_directory : directoryOf(i_file_name), m_separator);
    if (m_current_directory.size() > 1 && isSeparator(m_current_directory.back())) m_current_directory.pop_back();
    if (!m_directory.empty() && !isSeparator(m_directory.back())) m_directory += m_separator;
}

const LinkedName& LinkedNames::find(const std::string& i_name) {
    auto known = m_known.find(i_name);
    if (known == m_known.end()) {
        LinkedName name;
        name.path = isBareName(i_name) ? firstFile({m_directory + i_name}) : findPath(i_name, name.entries);
        name.exists = !name.path.empty();
        if (!name.exists) name.path = i_name;
        known = m_known.emplace(i_name, std::move(name)).first;
        known->second.stored = known->first;
    }
    setEntriesRead(known->second.entries);
    return known->second;
}

std::string LinkedNames::findPath(const std::string& i_name, int& o_entries) {
    if (m_folders.isFile(i_name)) return i_name;
    const std::string path = withOneSeparator(i_name, m_separator);
    std::string looked_at;
    std::string found = isAbsolute(path) ? findMoved(path, looked_at) : findRelative(path);
    if (!found.empty() || m_current_directory.empty()) return found;
    const std::string name(nameOf(path));
    const bool is_known_missing = looked_at == m_current_directory + m_separator + name;
    return findByName(name, is_known_missing, o_entries);
}

/** The first of the names that is a file; empty when none is. */
std::string LinkedNames::firstFile(std::initializer_list<std::string> i_names) const {
    for (const std::string& name : i_names)
        if (!name.empty() && m_folders.isFile(name)) return name;
    return {};
}

/** A folder's own file. The platform takes a folder with this character for a list of several. */
std::string LinkedNames::fileIn(const std::string& i_folder, const std::string& i_name) const {
#if defined(_WIN32)
    constexpr char between_folders = ';';
#else
    constexpr char between_folders = ':';
#endif
    if (i_folder.find(between_folders) != std::string::npos) return firstFile({i_folder + m_separator + i_name});
    const char* const p_found = findIn(i_name.c_str(), i_folder.c_str());
    return p_found ? p_found : "";
}

/** Both ways often lead to the same place, which is looked at once. */
std::string LinkedNames::findMoved(const std::string& i_path, std::string& o_here) const {
    o_here = rerooted(i_path);
    std::string beside = besideRoot(i_path);
    if (beside == o_here) beside.clear();
    return firstFile({o_here, beside});
}

std::string LinkedNames::findByName(const std::string& i_name, bool i_not_here, int& o_entries) {
    std::string found = i_not_here ? std::string() : fileIn(m_current_directory, i_name);
    if (!found.empty()) return found;
    const FoldersBelow& below = m_folders.below(m_current_directory);
    for (const FoldersBelow::Folder& folder : below.folders) {
        o_entries = folder.entries;
        found = fileIn(folder.path, i_name);
        if (!found.empty()) return found;
    }
    o_entries = below.entries;
    return {};
}

std::string LinkedNames::findRelative(const std::string& i_path) const {
    const bool from_here = i_path.compare(0, 2, {'.', m_separator}) == 0;
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
