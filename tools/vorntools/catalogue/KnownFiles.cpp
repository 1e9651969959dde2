#include "tools/vorntools/catalogue/KnownFiles.h"

#include <algorithm>

namespace catalogue {

namespace {

Role roleOf(const std::string& text) {
    if (text == "document") return Role::Document;
    return text == "other" ? Role::Other : Role::Elsewhere;
}

std::unordered_map<FileId, std::string> folderNames(Database& database) {
    std::unordered_map<FileId, std::string> names;
    Statement row(database, "SELECT id, name FROM folders");
    while (row.next()) names[row.number(0)] = row.text(1);
    return names;
}

} // namespace

const char* roleName(Role role) {
    if (role == Role::Document) return "document";
    return role == Role::Other ? "other" : "elsewhere";
}

void KnownFiles::load(Database& database) {
    std::unordered_map<FileId, std::string> folders = folderNames(database);
    std::vector<std::size_t> ends; // of the names, which move until all of them are there
    // In this order the file's own index is read from its beginning to its end.
    Statement row(database, "SELECT folder, name, files.id, role, coalesce(is_there, 1), coalesce(has_dat, 0), "
                            "coalesce(is_read, 1), size, modified, file_identity, dat_size, dat_modified, "
                            "dat_identity FROM files LEFT JOIN documents ON documents.id = files.id "
                            "ORDER BY folder, name");
    Folder* folder = nullptr;
    for (FileId last = 0; row.next();) {
        const FileId id = row.number(0);
        if (!folder || id != last) {
            folder = &m_folders[folders[id]];
            folder->first = m_files.size();
        }
        last = id;
        Loaded file;
        m_names += row.text(1);
        ends.push_back(m_names.size());
        file.id = row.number(2);
        file.role = roleOf(row.text(3));
        file.isThere = row.flag(4);
        file.hasDat = row.flag(5);
        file.isUnreadable = !row.flag(6);
        file.stamp = {row.number(7), row.number(8), row.number(9)};
        file.dat = {row.number(10), row.number(11), row.number(12)};
        m_files.push_back(file);
        folder->end = m_files.size();
    }
    for (std::size_t i = 0, at = 0; i < m_files.size(); at = ends[i++])
        m_files[i].name = std::string_view(m_names).substr(at, ends[i] - at);
    // SQLite has sorted what is stored of a name, which is longer where it holds bytes that are no text.
    const auto byName = [](const Loaded& a, const Loaded& b) { return a.name < b.name; };
    for (const auto& [name, known] : m_folders) {
        const auto first = m_files.begin() + static_cast<std::ptrdiff_t>(known.first),
                   end = m_files.begin() + static_cast<std::ptrdiff_t>(known.end);
        if (!std::is_sorted(first, end, byName)) std::sort(first, end, byName);
    }
}

KnownFile* KnownFiles::find(std::string_view fullName) {
    const std::size_t split = lengthOfFolder(fullName);
    if (KnownFile* const file = findLoaded(fullName.substr(0, split), fullName.substr(split))) return file;
    if (m_added.empty()) return nullptr;
    const auto added = m_added.find(std::string(fullName));
    return added == m_added.end() ? nullptr : &added->second;
}

KnownFile* KnownFiles::findLoaded(std::string_view folder, std::string_view name) {
    if (folder != m_lastFolder) {
        m_lastFolder = folder;
        const auto known = m_folders.find(m_lastFolder);
        m_last = known == m_folders.end() ? Folder() : known->second;
        m_next = m_last.first;
    }
    if (m_next < m_last.end && m_files[m_next].name == name) return &m_files[m_next++];
    const auto end = m_files.begin() + static_cast<std::ptrdiff_t>(m_last.end);
    const auto found = std::lower_bound(m_files.begin() + static_cast<std::ptrdiff_t>(m_last.first), end, name,
                                        [](const Loaded& file, std::string_view wanted) { return file.name < wanted; });
    if (found == end || found->name != name) return nullptr;
    m_next = static_cast<std::size_t>(found - m_files.begin()) + 1;
    return &*found;
}

} // namespace catalogue
