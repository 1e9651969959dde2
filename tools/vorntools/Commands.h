#ifndef TOOLS_VORNTOOLS_COMMANDS_H
#define TOOLS_VORNTOOLS_COMMANDS_H

#include "tools/vorntools/CommandLine.h"

#include <string>
#include <vector>

/** What many commands share. Names are UTF-8. */
struct CommonOptions {
    std::vector<std::string> names; ///< files and folders
    bool json = false;
    std::string session; ///< session file, empty for none
    std::string journal; ///< file that receives the journal, empty for none

    /** Adds "--json", "--session" and "--journal". */
    void addTo(Command& command);
    /** Adds "--json" and "--journal". */
    void addOutputTo(Command& command);
    /** Adds "--session" and "--journal". */
    void addSessionTo(Command& command);
    /** Loads the session, if one is given. @return false, said on standard error, when it cannot be loaded */
    bool loadSession() const;
};

void addStatusCommand(Command& program);
void addDatCommand(Command& program);
void addLinksCommand(Command& program);
void addUsesCommand(Command& program);
void addUsedByCommand(Command& program);
void addDuplicatesCommand(Command& program);
void addOrphansCommand(Command& program);
void addPackCommand(Command& program);
void addReportCommand(Command& program);
void addContentsCommand(Command& program);
void addPreviewCommand(Command& program);
void addExchangeCommand(Command& program);
void addRunCommand(Command& program);
void addImportOptionsCommand(Command& program);

#endif
