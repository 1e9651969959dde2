#ifndef TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_TREE_H
#define TOOLS_VORNTOOLS_CATALOGUE_CATALOGUE_TREE_H

#include "tools/vorntools/archive/Archive.h"
#include "tools/vorntools/catalogue/CatalogueFile.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace catalogue {

/**
 * Fills an archive with what is above or below one file, as if several catalogues were one. Goes level by level and
 * reads no document and no link but those that a DocumentTree of that depth shows, and whatever else it has to know:
 * whether there is more below, and what cannot be read.
 */
class TreeFiller {
public:
    /** @param depth levels from the file; 0: all */
    TreeFiller(Archive& archive, std::vector<Reader*> readers, unsigned int depth)
        : m_archive(archive), m_readers(std::move(readers)), m_depth(depth), m_met(m_readers.size()) {}

    /** What a file needs. @return false when no catalogue has it */
    bool addUses(const std::string& fullName);
    /** Who needs a file. @return false when no catalogue has it */
    bool addUsers(const std::string& fullName);

private:
    /** A list a catalogue. */
    using Files = std::vector<std::vector<FileId>>;
    /** Documents of one catalogue, and the positions of the links that are asked for. */
    using WantedLinks = std::unordered_map<FileId, std::vector<std::int64_t>>;

    Files begin(const std::string& fullName);
    void meet(std::size_t catalogue, FileId file, Files& level);
    bool isLast(unsigned int level) const { return m_depth > 0 && level == m_depth; }
    void addWanted(std::size_t catalogue, WantedLinks& wanted);
    void addPlainFile(const std::string& fullName);

    Archive& m_archive;
    const std::vector<Reader*> m_readers;
    const unsigned int m_depth;
    std::vector<std::unordered_set<FileId>> m_met;
};

} // namespace catalogue

#endif
