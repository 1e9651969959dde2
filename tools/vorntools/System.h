#ifndef TOOLS_VORNTOOLS_SYSTEM_H
#define TOOLS_VORNTOOLS_SYSTEM_H

#include <string>
#include <vector>

/** What the program needs of the operating system besides files. */
namespace host {

/** The program's arguments behind its name, UTF-8 on every system. */
std::vector<std::string> arguments(int count, char** values);

/** Prepares standard output for UTF-8 text in large pieces. Before anything is written. */
void prepareOutput();

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
