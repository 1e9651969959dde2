#ifndef TOOLS_VORNTOOLS_SYSTEM_H
#define TOOLS_VORNTOOLS_SYSTEM_H

#include "tools/vorntools/zip/ZipWriter.h"

#include <cstdint>
#include <string>
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
    std::int64_t modified = 0; ///< seconds since 1970
};
FileState stateOf(const std::string& file);

/** Writes ZIP files, in a library that is only loaded when it is wanted; null where it is not built in. */
WriteZip* zipWriter();

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
