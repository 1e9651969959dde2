#ifndef LINKS_LINKED_NAMES_H
#define LINKS_LINKED_NAMES_H

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vorntools {

/** Whether a name has no directory. */
bool isBareName(std::string_view i_name);

/** What the last search by name may still read; see findBelow. */
void restartSearch();

/**
 * Looks for a file in a directory and below it. Entries whose names begin with a dot are passed over. All searches
 * since restartSearch together read at most 260 entries.
 * @return the path, which the platform owns and which lasts until its next search; null when there is none
 */
const char* findBelow(const char* i_file_name, const char* i_directory);

/** The folders below a directory, in the order in which findBelow looks into them and with its bound on the entries. */
struct FoldersBelow {
    std::vector<std::string> folders;
    int entries = 0; ///< that the search for them has read
};

/** Begins a search and reads them, or has them from a VornToolsFolderMemory. */
std::shared_ptr<const FoldersBelow> foldersBelow(const std::string& i_directory);

/**
 * Where the documents that one document names are to be looked for, all names in the platform's 8-bit form: the first
 * of these that is a file, else the name as stored.
 *
 * - a bare name: in the given directory
 * - a path: as stored; a relative one in the given directory and in the document's own; the way from the place where
 *   the document was saved last to the other document, gone from where the document lies now; its last name, anywhere
 *   below the document's directory
 *
 * A name is looked for once, however many records hold it.
 */
class LinkedNames {
public:
    /** @param i_own_path of the document when it was saved last, may be empty. @param i_file_name where it lies now */
    LinkedNames(std::string_view i_own_path, std::string_view i_file_name, std::string_view i_directory);

    const std::string& resolve(const std::string& i_name);

private:
    std::string findPath(const std::string& i_name);
    /** As findBelow the document's directory, but reads the folders once for all names. */
    std::string findByName(const std::string& i_name);
    std::string findRelative(const std::string& i_path) const;
    /** The path with the part of the saved directory that differs from the current one exchanged for the latter. */
    std::string rerooted(const std::string& i_path) const;
    /** The path moved with the tree of folders that the saved and the current directory have in common. */
    std::string besideRoot(const std::string& i_path) const;

    char m_separator = '\\';
    std::string m_saved_directory;   ///< of the document at its last save, separators made one
    std::string m_current_directory; ///< of the document now, separators made one
    std::string m_directory;
    std::shared_ptr<const FoldersBelow> m_sp_below; ///< the current directory; null until a name is looked for there
    std::unordered_map<std::string, std::string> m_known;
};

} // namespace vorntools

#endif
