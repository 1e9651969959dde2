#ifndef VornToolsFolderMemory_H
#define VornToolsFolderMemory_H

#include "ExportedByVornTools.h"

namespace vorntools {
class KnownFolders;
}

/**
 * For going through many documents: handed to the operations that take one, it remembers which folders lie below the
 * folder of a document, and which of the files that documents name are there, so that the disk is asked once rather
 * than once for every document: parts that many documents use are looked for once. What is made or deleted meanwhile is
 * not noticed; whoever has to notice it takes another object. Each object remembers for itself, until it goes.
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
