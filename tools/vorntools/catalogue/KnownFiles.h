#ifndef TOOLS_VORNTOOLS_CATALOGUE_KNOWN_FILES_H
#define TOOLS_VORNTOOLS_CATALOGUE_KNOWN_FILES_H

#include "tools/vorntools/catalogue/CatalogueFile.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace catalogue {

enum class Role { Document, Other, Elsewhere };

const char* roleName(Role role);

/** A file as the catalogue has it, and whether it was met. */
struct KnownFile {
    FileId id = 0;
    Role role = Role::Elsewhere;
    bool isThere = true, hasDat = false, isMet = false;
    bool isUnreadable = false; ///< it could not be read when it was tried
    Stamp stamp, dat;
};

/** The files of a catalogue by their names. They stay where they are, and so do those that are added. */
class KnownFiles {
public:
    /** Reads all of a catalogue. */
    void load(Database& database);
    /** Null for a name that is not known. Fast for one file after the other in the order of their names. */
    KnownFile* find(std::string_view fullName);
    /** Adds a name that is not known. */
    KnownFile& add(const std::string& fullName) { return m_added[fullName]; }
    /** Calls take(name, file) for each that was loaded and was not met. */
    template <class Take>
    void forEachUnmet(Take take) {
        for (const auto& [name, folder] : m_folders)
            for (std::size_t i = folder.first; i < folder.end; ++i)
                if (!m_files[i].isMet) take(name + std::string(m_files[i].name), m_files[i]);
    }

private:
    struct Loaded : KnownFile {
        std::string_view name; ///< in its folder
    };
    /** Its files, sorted by name. */
    struct Folder {
        std::size_t first = 0, end = 0;
    };
    KnownFile* findLoaded(std::string_view folder, std::string_view name);

    std::string m_names; ///< of all that was loaded, one behind the other
    std::vector<Loaded> m_files;
    std::unordered_map<std::string, Folder> m_folders; ///< by name, with a separator behind
    std::unordered_map<std::string, KnownFile> m_added;
    std::string m_lastFolder;
    Folder m_last;
    std::size_t m_next = 0; ///< behind the file that was found last
};

} // namespace catalogue

#endif
