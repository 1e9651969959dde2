#ifndef TOOLS_VORNTOOLS_SYSTEM_H
#define TOOLS_VORNTOOLS_SYSTEM_H

#include "tools/vorntools/sqlite/Sqlite.h"
#include "tools/vorntools/zip/ZipWriter.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

/** What the program needs of the operating system besides files. */
namespace host {

/** The program's arguments behind its name, UTF-8 on every system. */
std::vector<std::string> arguments(int count, char** values);

/** Prepares standard output for UTF-8 text in large pieces. Before anything is written. */
void prepareOutput();

/** Of a file, by its UTF-8 name. */
struct FileState {
    bool isThere = false;
    std::uint64_t size = 0;
    std::int64_t modified = 0;    ///< seconds since 1970
    std::int64_t nanoseconds = 0; ///< since that second
    std::uint64_t identity = 0;   ///< another one for a file that took the other's place; 0 where the system has none
};
FileState stateOf(const std::string& file);

/** Asks about one file after the other without looking for their folder each time. */
class NeighbourStates {
public:
    NeighbourStates() = default;
    ~NeighbourStates();
    NeighbourStates(const NeighbourStates&) = delete;
    NeighbourStates& operator=(const NeighbourStates&) = delete;

    /** As host::stateOf. */
    FileState stateOf(const std::string& file);

private:
    std::string m_name; ///< of the folder, its separator included
    int m_folder = -1;  ///< a descriptor
};

/** A name in a folder. */
struct FolderEntry {
    std::string name;
    bool isFolder = false; ///< or a link to one
    bool isLink = false;
};
/** Adds the files, folders and links that stand in a folder, in any order; pipes, devices and sockets are none. @return
 * what kept it from reading on */
std::error_code listFolder(const std::string& folder, std::vector<FolderEntry>& entries);

/** Writes ZIP files, in a library that is only loaded when it is wanted; null where it is not built in. */
WriteZip* zipWriter();
/** SQLite, in the same way. */
GetSqlite* sqlite();

/**
 * Processes that are this one over again, each with a pipe to it. They end with their work, and when this object goes.
 */
class Helpers {
public:
    /** Whether the system has such processes; where it has not none ever begins. */
    static bool areThere();

    using Send = std::function<void(const std::string& bytes)>;
    /** @param work of each, by its number from 0; what it sends can be received here. Nothing else that it does is
     * seen */
    Helpers(std::size_t count, const std::function<void(std::size_t, const Send&)>& work);
    ~Helpers();
    Helpers(const Helpers&) = delete;
    Helpers& operator=(const Helpers&) = delete;

    /** Whether as many as were wanted have begun. */
    bool haveBegun() const { return m_processes.size() == m_wanted; }
    /** Waits for bytes of one of them, and appends them. @return false when it has ended before it sent as many */
    bool receive(std::size_t helper, std::size_t count, std::string& bytes);

private:
    struct Process {
        int process = 0, pipe = -1;
        std::string buffer = {};
        std::size_t taken = 0, received = 0; ///< bytes of the buffer
    };
    static bool refill(Process& process);

    const std::size_t m_wanted;
    std::vector<Process> m_processes;
};

/** How many processes of this program can work at once: at least 1. */
std::size_t processors();

bool outputIsTerminal();
bool errorIsTerminal();
/** Columns of the terminal that shows standard output; 0 when none does. */
int terminalWidth();
/** Lets standard output take colours. @return false: it would show the codes themselves */
bool enableColors();
/** Everything on standard input. */
std::string readInput();

} // namespace host

#endif
