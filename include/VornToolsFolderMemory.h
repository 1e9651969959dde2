#ifndef VornToolsFolderMemory_H
#define VornToolsFolderMemory_H

#include "ExportedByVornTools.h"

namespace vorntools {
class KnownFolders;
}

/**
 * For going through many documents: handed to the operations that take one, it remembers which folders lie below the
 * folder of a document, so that each of them is read once rather than once for every document that names something
 * which is not there. Folders made or deleted meanwhile are not noticed; files are. Each object remembers for itself,
 * until it goes.
 *
 * @par Example
 * @snippet links.cpp VornToolsFolderMemory
 */
class ExportedByVornTools VornToolsFolderMemory {
public:
    /** Nothing is remembered. */
    VornToolsFolderMemory();
    /** Forgets everything. */
    ~VornToolsFolderMemory();
    VornToolsFolderMemory(const VornToolsFolderMemory&) = delete;
    VornToolsFolderMemory& operator=(const VornToolsFolderMemory&) = delete;

private:
    friend class VornToolsDocumentLinks;
    friend class VornToolsLinks;
    vorntools::KnownFolders* m_folders;
};

#endif
