#ifndef TOOLS_VORNTOOLS_COMMANDS_H
#define TOOLS_VORNTOOLS_COMMANDS_H

#include <string>
#include <vector>

/** Exit codes of the program. */
enum ExitCode { ExitFine = 0, ExitFindings = 1, ExitUnusable = 2 };

/** What the commands share. Names are UTF-8. */
struct CommonOptions {
    std::vector<std::string> names; ///< files and folders
    bool json = false;
    std::string session; ///< session file, empty for none
    std::string journal; ///< file that receives the journal, empty for none
};

/** The state of every managed document in files and folders, one row a document. */
int runStatus(const CommonOptions& options);

/** Every field of one DAT file, named by itself or by its document. */
int runDat(const CommonOptions& options);

/** Loads the session of the options. @return false, said on standard error, when it cannot be loaded */
bool loadSessionOf(const CommonOptions& options);

/** Hands the lines written to the journal since the last call to the options' file, and forgets them. */
class JournalFile {
public:
    explicit JournalFile(const std::string& name);
    ~JournalFile();
    JournalFile(const JournalFile&) = delete;
    JournalFile& operator=(const JournalFile&) = delete;
    /** @return false when the file cannot be written */
    bool take();

private:
    struct File;
    File* m_file;
};

#endif
