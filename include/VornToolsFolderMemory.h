#ifndef VornToolsFolderMemory_H
#define VornToolsFolderMemory_H

#include "ExportedByVornTools.h"

/**
 * For going through many documents: while one exists, VornToolsLinks remembers which folders lie below the folder of a
 * document, and reads each of them once rather than once for every document that names something which is not there.
 * Folders made or deleted meanwhile are not noticed; files are. Several may exist at a time; the last one forgets.
 */
class ExportedByVornTools VornToolsFolderMemory {
public:
    VornToolsFolderMemory();
    ~VornToolsFolderMemory();
    VornToolsFolderMemory(const VornToolsFolderMemory&) = delete;
    VornToolsFolderMemory& operator=(const VornToolsFolderMemory&) = delete;
};

#endif
