#ifndef EMBEDDED_FILES_SYSTEM_FILES_H
#define EMBEDDED_FILES_SYSTEM_FILES_H

#include <cstddef>
#include <string>
#include <string_view>

namespace embedded {

// The system's own file calls. Names are UTF-8 and NUL terminated behind the view; a name that holds a NUL or, where
// the system wants characters, is not UTF-8 names no file.

struct FileFacts {
    bool isFile = false; ///< exists and is no folder
    long long size = 0;
    long long changed = 0; ///< seconds since 1970
};

/** False when nothing of that name exists. */
bool examineFile(std::string_view name, FileFacts& facts);

/** A file open for reading, closed by its destructor. Open files are counted. */
class SystemFile {
public:
    SystemFile() = default;
    ~SystemFile() { close(); }
    SystemFile(const SystemFile&) = delete;
    SystemFile& operator=(const SystemFile&) = delete;

    bool open(std::string_view name);
    /** Bytes read, 0 at the end, -1 on failure (reading a folder is one). */
    long read(char* bytes, std::size_t size);
    void close();

private:
#if defined(_WIN32)
    void* m_handle = nullptr;
#else
    int m_handle = -1;
#endif
};

/** Copies a file with its date, replacing a file of the target's name. A copy that fails may leave a part. */
bool copyFileOnDisk(std::string_view source, std::string_view target);
/** Shortens a file. */
bool cutFileOnDisk(std::string_view name, long long size);
/** Renames a file, replacing a file of the new name in one step. */
bool renameFileOnDisk(std::string_view name, std::string_view newName);
/** Deletes a file, read-only or not; a folder stays. */
bool deleteFileOnDisk(std::string_view name);

/** A name as seen from the current folder. */
std::string absoluteName(const std::string& name);
/** The system's separator, and that of its lists of folders. */
const char* systemSeparator();
char systemListSeparator();

} // namespace embedded

#endif
