#ifndef LINKS_FOLDER_SEARCH_H
#define LINKS_FOLDER_SEARCH_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace vorntools {

// Searches for a file by its name alone, in a folder and below. Entries whose names begin with a dot are passed over.
// The process counts the entries that searches have read, and no search goes on beyond 260 of them.

/** The count, for the searches that follow; resolving a name leaves there what it has read. */
void setEntriesRead(int i_count);

/** Path of a file in a directory, as the platform finds it, which owns it and keeps it until its next search; null for
 * none, also when it throws an error. */
const char* findIn(const char* i_file_name, const char* i_directory);

/**
 * Looks for a file in a directory and below it, and goes on with the count.
 * @return the path, which the platform owns and which lasts until its next search; null when there is none
 */
const char* findBelow(const char* i_file_name, const char* i_directory);

/** The folders below a directory, in the order in which findBelow looks into them and with its bound on the entries. */
struct FoldersBelow {
    struct Folder {
        std::string path;
        int entries; ///< that findBelow has read when it comes to this one
    };
    std::vector<Folder> folders;
    int entries = 0; ///< read for all of them
};

/** Reads the folders below each directory once, when they are first asked for, and looks for a file once. */
class KnownFolders {
public:
    /** Whether a name is that of a file. */
    bool isFile(const std::string& i_name);
    /** Good for as long as this object. Leaves the count alone. */
    const FoldersBelow& below(const std::string& i_directory);

private:
    static constexpr std::size_t kMostFiles = 1 << 16; ///< that are remembered: documents of one folder name the same

    std::unordered_map<std::string, FoldersBelow> m_known;
    std::unordered_map<std::string, bool> m_files; ///< whether they are there
};

/** The folders that somebody remembers, made when they are first needed. */
inline KnownFolders& made(KnownFolders*& iop_folders) {
    if (!iop_folders) iop_folders = new KnownFolders;
    return *iop_folders;
}

} // namespace vorntools

#endif
