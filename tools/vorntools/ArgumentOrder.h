#ifndef TOOLS_VORNTOOLS_ARGUMENT_ORDER_H
#define TOOLS_VORNTOOLS_ARGUMENT_ORDER_H

// What people write, brought into the one order that the parser takes.

#include "tools/vorntools/CommandLine.h"

#include <string>
#include <vector>

/**
 * The arguments with every option behind the command that knows it and those of the program in front:
 * "--json status X --color never" becomes "--color never status --json X". Behind "--" nothing is moved.
 */
std::vector<std::string> orderedArguments(const Command& program, const std::vector<std::string>& given);

/** The command of a name right below another one; null for none. */
const Command* commandBelow(const Command& command, const std::string& name);

/** The known word that somebody who typed a word most likely meant; empty when none is near. */
std::string nearestOf(const std::string& word, const std::vector<std::string>& known);

#endif
