#ifndef TOOLS_VORNTOOLS_FILES_H
#define TOOLS_VORNTOOLS_FILES_H

#include <string>
#include <vector>

/** What a folder has of one document. */
struct FoundDocument {
    std::string name; ///< of the document, UTF-8, whether it is there or not
    bool exists = true;
    bool hasDat = false; ///< a DAT file stands beside it
};

/** Whether the library knows a file's suffix as that of a CATIA document. */
bool isCatiaDocument(const std::string& name);

/**
 * The documents among files and below folders: CATIA documents by their suffix, and whatever else has a DAT file beside
 * it, even when the document itself is not there. Folder by folder, each sorted by name; links to folders are not
 * followed. A file that is named is always one of them.
 */
class DocumentSearch {
public:
    /** @return false, said on standard error, when a name means nothing or a folder cannot be read; the search goes on
     * with the others */
    bool search(const std::vector<std::string>& names);
    const std::vector<FoundDocument>& found() const { return m_found; }

private:
    bool searchFolder(const std::string& folder);
    void addFolder(const std::string& prefix, std::vector<std::string>& files);

    std::vector<FoundDocument> m_found;
};

#endif
