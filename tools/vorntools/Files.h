#ifndef TOOLS_VORNTOOLS_FILES_H
#define TOOLS_VORNTOOLS_FILES_H

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

/** What a folder has of one document. Names are UTF-8. */
struct FoundDocument {
    std::string name;     ///< as the command line leads to it, whether the document is there or not
    std::string fullName; ///< of the same file; the library is asked by it
    bool exists = true;
    bool hasDat = false; ///< a DAT file stands beside it
};

/** Whether the library knows a file's suffix as that of a CATIA document. */
bool isCatiaDocument(const std::string& name);
/** The same of the type that the library takes the suffix for, as VornToolsCommon::returnDocumentType tells it. */
bool isCatiaType(int type);

/** Whether a pattern of a shell means a text: "*" any letters, "?" one, "[a-z]" one of these, "[!a-z]" none of them. A
 * backslash takes the next letter for itself. */
bool matches(const std::string& pattern, const std::string& text);

/** The absolute name of a file, without "." and ".."; the same for every way to write it but through links. */
std::string fullNameOf(const std::string& name);

/**
 * The documents among files and below folders: CATIA documents by their suffix, and whatever else has a DAT file beside
 * it, even when the document itself is not there. Folder by folder, each sorted by name; links to folders are not
 * followed. A file that is named is always one of them. Each document is found once.
 */
class DocumentSearch {
public:
    /** @param keepsOthers whether others() is wanted */
    explicit DocumentSearch(bool keepsOthers = false) : m_keepsOthers(keepsOthers) {}

    /** @return false, said on standard error, when a name means nothing or a folder cannot be read; the search goes on
     * with the others */
    bool search(const std::vector<std::string>& names);
    /** Leaves out the documents and folders, with all below them, that a pattern names; never a name that is given.
     * @param patterns as matches() takes them: with a slash for the path as it would be found, else for the last name
     */
    void exclude(const std::vector<std::string>& patterns) { m_excluded = patterns; }
    const std::vector<FoundDocument>& found() const { return m_found; }
    /** Full names of all other files in the folders. */
    const std::vector<std::string>& others() const { return m_others; }
    /** A full name in the way in which the command line writes names: as it was found, else below the nearest folder
     * that was given or that holds a file that was given. Any other name stays. */
    std::string asGiven(const std::string& name) const;

private:
    bool searchFolder(const std::string& folder);
    void addFolder(const std::string& prefix, std::vector<std::string>& files);
    /** @param prefix how names below the folder begin */
    void addGiven(const std::string& folder, const std::string& prefix);
    void add(FoundDocument document);
    bool isExcluded(const std::string& prefix, const std::string& name) const;

    std::vector<std::string> m_excluded;
    const bool m_keepsOthers;
    std::vector<FoundDocument> m_found;
    std::vector<std::string> m_others;
    std::unordered_map<std::string, std::size_t> m_indices; ///< of the found ones, by their full names
    /** Of folders: full name and name as given, each with a separator behind. */
    std::unordered_map<std::string, std::string> m_folders;
    std::set<std::size_t, std::greater<>> m_folderLengths; ///< of the full ones, so that the nearest is tried first
};

/** Full names of the documents to read: of a folder those with a suffix of CATIA; one that is named is taken whatever
 * it is called. @param names that were searched */
std::vector<std::string> documentsOf(const DocumentSearch& search, const std::vector<std::string>& names);

#endif
