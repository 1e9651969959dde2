#ifndef CATLib_H
#define CATLib_H

#include "ExportedByCatia.h"

// Folders of the file system.

enum CATLibStatus { CATLibSuccess, CATLibError };

/** Bytes of the longest path that the calls below write, NUL included. Proposed: the number. */
#define CATMaxPathSize 1024

/** An open folder. The caller provides the memory and closes it with CATCloseDirectory; the contents are the
 * platform's. Proposed: its size. */
struct CATDirectory {
    void* handle;
};

struct CATDirectoryEntry {
    char name[CATMaxPathSize];
};

/** Opens a folder for reading its entries. Only an opened one is closed. */
ExportedByCatia CATLibStatus CATOpenDirectory(const char* iPath, CATDirectory* oDir);
/** Reads the next entry, "." and ".." among them. @param oEndOfDir set to 1 behind the last entry, together with no
 * entry (Proposed: that); the caller sets it to 0 before the first call */
ExportedByCatia CATLibStatus CATReadDirectory(CATDirectory* iDir, CATDirectoryEntry* oEntry, int* oEndOfDir);
ExportedByCatia CATLibStatus CATCloseDirectory(CATDirectory* iDir);

/** Path of a file directly in a folder; null when it is not there. The platform owns the text, which lasts until the
 * next call (Proposed: that). */
ExportedByCatia const char* CATFindPath(const char* iFilename, const char* iPaths);
/** Joins folder and name. @param oFullpath CATMaxPathSize bytes; a path that does not fit is cut */
ExportedByCatia void CATMakePath(const char* iDir, const char* iFileName, char* oFullpath);

#endif
