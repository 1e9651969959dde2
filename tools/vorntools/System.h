#ifndef TOOLS_VORNTOOLS_SYSTEM_H
#define TOOLS_VORNTOOLS_SYSTEM_H

#include <string>
#include <vector>

/** What the program needs of the operating system besides files. */
namespace host {

/** The program's name and its arguments, UTF-8 on every system. */
std::vector<std::string> arguments(int count, char** values);

/** Prepares standard output for UTF-8 text in large pieces. Before anything is written. */
void prepareOutput();

/** Whether a person watches: standard output and standard error both show on a terminal. */
bool isWatched();

} // namespace host

#endif
