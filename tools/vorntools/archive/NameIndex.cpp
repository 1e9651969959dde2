#include "tools/vorntools/archive/NameIndex.h"

#include "tools/vorntools/archive/Paths.h"

#include <algorithm>
#include <utility>

namespace {

/** Candidates are looked for among so many files of one name. */
constexpr std::size_t kMostLookedAt = 64;

/** Folders to go up from one folder and down to the other. */
std::size_t distanceBetween(const PathParts& from, const PathParts& to) {
    const auto shared = std::mismatch(from.begin(), from.end(), to.begin(), to.end()).first - from.begin();
    return from.size() + to.size() - 2 * static_cast<std::size_t>(shared);
}

/** Folders that two paths have in common at their ends, letter case aside. */
std::size_t agreeingFolders(const PathParts& stored, const PathParts& folder) {
    const auto agrees = [](std::string_view a, std::string_view b) { return !a.empty() && folded(a) == folded(b); };
    const auto differs = std::mismatch(stored.rbegin(), stored.rend(), folder.rbegin(), folder.rend(), agrees).first;
    return static_cast<std::size_t>(differs - stored.rbegin());
}

} // namespace

void NameIndex::add(std::string_view fullName, Index number) {
    const auto group = m_groupOf.emplace(folded(lastName(fullName)), static_cast<Index>(m_groups.size()));
    if (group.second) m_groups.emplace_back();
    ++m_groups[group.first->second].count;
    m_files.push_back({fullName, number});
}

void NameIndex::sort() {
    Index next = 0;
    for (RowRange& group : m_groups) {
        group.first = next;
        next += group.count;
        group.count = 0;
    }
    std::vector<File> files(m_files.size());
    for (const File& file : m_files) {
        RowRange& group = m_groups[m_groupOf[folded(lastName(file.fullName))]];
        files[group.first + group.count++] = file;
    }
    m_files = std::move(files);
    m_numbers.reserve(m_files.size());
    for (const RowRange& group : m_groups) {
        const auto first = m_files.begin() + group.first;
        std::sort(first, first + group.count, [](const File& a, const File& b) { return a.fullName < b.fullName; });
    }
    for (const File& file : m_files) m_numbers.push_back(file.number);
}

Rows<Index> NameIndex::numbersOf(std::string_view path) const {
    const auto known = m_groupOf.find(folded(lastName(path)));
    if (known == m_groupOf.end()) return {};
    const RowRange group = m_groups[known->second];
    return {m_numbers.data() + group.first, group.count};
}

std::vector<Rows<Index>> NameIndex::groups() const {
    std::vector<Rows<Index>> groups;
    for (const RowRange& group : m_groups) groups.emplace_back(m_numbers.data() + group.first, group.count);
    return groups;
}

Candidates NameIndex::candidates(std::string_view stored, std::string_view document) const {
    Candidates result;
    const auto known = m_groupOf.find(folded(lastName(stored)));
    if (known == m_groupOf.end()) return result;
    const RowRange group = m_groups[known->second];
    const File* const files = m_files.data() + group.first;
    const File* const next =
        std::lower_bound(files, files + group.count, document,
                         [](const File& file, std::string_view name) { return file.fullName < name; });
    const std::size_t at = static_cast<std::size_t>(next - files),
                      looked = std::min<std::size_t>(group.count, kMostLookedAt);
    const std::size_t first = std::min(at - std::min(at, looked / 2), group.count - looked);
    const PathParts here = partsOfFolder(document), wanted = partsOfFolder(stored);
    result.count = group.count;
    for (std::size_t i = first; i < first + looked; ++i) {
        const PathParts folder = partsOfFolder(files[i].fullName);
        result.nearest.push_back({files[i].number, static_cast<unsigned int>(agreeingFolders(wanted, folder)),
                                  static_cast<unsigned int>(distanceBetween(here, folder))});
    }
    std::stable_sort(result.nearest.begin(), result.nearest.end(), [](const Candidate& a, const Candidate& b) {
        return a.distance != b.distance ? a.distance < b.distance : a.agreeing > b.agreeing;
    });
    result.nearest.resize(std::min(result.nearest.size(), kMostCandidates));
    return result;
}
