#ifndef LINKS_LINKED_NAMES_H
#define LINKS_LINKED_NAMES_H

#include "links/FolderSearch.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vorntools {

/** Whether a name has no directory. */
bool isBareName(std::string_view i_name);

/** Where one document that another one names was looked for. */
struct LinkedName {
    std::string_view stored;
    std::string path;    ///< of the file; as stored when there is none
    bool exists = false; ///< whether the path is that of a file
    int entries = 0;     ///< read by the search for it
};

/**
 * Where the documents that one document names are to be looked for, all names in the platform's 8-bit form: the first
 * of these that is a file, else the name as stored.
 *
 * - a bare name: in the given directory
 * - a path: as stored; a relative one in the given directory and in the document's own; the way from the place where
 *   the document was saved last to the other document, gone from where the document lies now; its last name, anywhere
 *   below the document's directory
 *
 * A name is looked for once, however many records hold it; the answers last as long as this object.
 */
class LinkedNames {
public:
    /** @param i_own_path of the document when it was saved last, may be empty. @param i_file_name where it lies now */
    LinkedNames(std::string_view i_own_path, std::string_view i_file_name, std::string_view i_directory,
                KnownFolders& io_folders);

    const LinkedName& find(const std::string& i_name);
    const std::string& resolve(const std::string& i_name) { return find(i_name).path; }

private:
    std::string firstFile(std::initializer_list<std::string> i_names) const;
    std::string fileIn(const std::string& i_folder, const std::string& i_name) const;
    std::string findPath(const std::string& i_name, int& o_entries);
    /** As findBelow the document's directory, but reads the folders once for all names.
     * @param i_not_here whether it is known not to stand in the directory itself */
    std::string findByName(const std::string& i_name, bool i_not_here, int& o_entries);
    std::string findMoved(const std::string& i_path, std::string& o_here) const;
    std::string findRelative(const std::string& i_path) const;
    /** The path with the part of the saved directory that differs from the current one exchanged for the latter. */
    std::string rerooted(const std::string& i_path) const;
    /** The path moved with the tree of folders that the saved and the current directory have in common. */
    std::string besideRoot(const std::string& i_path) const;

    char m_separator = '\\';
    std::string m_saved_directory;   ///< of the document at its last save, separators made one
    std::string m_current_directory; ///< of the document now, separators made one
    std::string m_directory;
    KnownFolders& m_folders;
    std::unordered_map<std::string, LinkedName> m_known; ///< by the stored name
};

} // namespace vorntools

#endif
