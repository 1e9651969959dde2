#ifndef TOOLS_VORNTOOLS_COMMANDS_H
#define TOOLS_VORNTOOLS_COMMANDS_H

#include "tools/vorntools/CommandLine.h"
#include "tools/vorntools/Files.h"

#include <string>
#include <vector>

/** What many commands share. Names are UTF-8. */
struct CommonOptions {
    std::vector<std::string> names;      ///< files and folders
    std::vector<std::string> excluded;   ///< patterns of files and folders to leave out
    std::vector<std::string> catalogues; ///< that are asked instead of names
    bool namesFromInput = false;         ///< more names stand on standard input, each ended by a NUL
    bool json = false;
    std::string session; ///< session file, empty for none
    std::string journal; ///< file that receives the journal, empty for none
    int jobs = 0;        ///< as processesFor takes it

    /** Adds the names as an operand that takes any number of them, "--exclude" and "--null". */
    void addNamesTo(Command& command, const std::string& operand, const std::string& help);
    /** Adds "--catalogue". */
    Option& addCatalogueTo(Command& command);
    /** Adds "--json", "--session" and "--journal". */
    void addTo(Command& command);
    /** Adds "--json" and "--journal". */
    void addOutputTo(Command& command);
    /** Adds "--session" and "--journal". */
    void addSessionTo(Command& command);
    /** Adds "--jobs". */
    void addJobsTo(Command& command);
    /** Loads the session, if one is given. @return false, said on standard error, when it cannot be loaded */
    bool loadSession() const;
    /** Adds the names that stand on standard input. @return false, said on standard error, when none is given at all,
     * neither name nor catalogue, and when both are */
    bool completeNames();
    /** Searches the names. @return as DocumentSearch::search */
    bool search(DocumentSearch& documents) const;
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
void addCatalogueCommand(Command& program);
void addContentsCommand(Command& program);
void addPreviewCommand(Command& program);
void addExchangeCommand(Command& program);
void addRunCommand(Command& program);
void addImportOptionsCommand(Command& program);

#endif
