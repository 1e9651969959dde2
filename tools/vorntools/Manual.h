#ifndef TOOLS_VORNTOOLS_MANUAL_H
#define TOOLS_VORNTOOLS_MANUAL_H

#include "tools/vorntools/CommandLine.h"

#include <string>

/**
 * Text made from the program's own table of commands and options.
 * @param kind "man" for a manual page, "bash", "zsh" and "fish" for completions
 */
std::string generateText(const Command& program, const std::string& kind);

#endif
