#ifndef TOOLS_VORNTOOLS_JOURNAL_FILE_H
#define TOOLS_VORNTOOLS_JOURNAL_FILE_H

#include <fstream>
#include <string>

/** Hands the journal's lines to a file, if the caller wants one, and forgets them and the error reports. Without a file
 * the library writes none. */
class JournalFile {
public:
    /** @param name empty for none */
    explicit JournalFile(const std::string& name);
    /** Takes what was written since the last call. */
    void take() { add(takeLines()); }
    /** The same as text for whoever adds it later; empty when no file is wanted. */
    std::string takeLines();
    void add(const std::string& lines) { m_stream << lines; }
    /** False, and said on standard error, when the file could not be written. */
    bool finish();

private:
    const std::string m_name;
    std::ofstream m_stream;
};

/** Lets the library write its journal as long as this lives, whether a file takes the lines or not. */
class JournalReading {
public:
    JournalReading();
    ~JournalReading();
    JournalReading(const JournalReading&) = delete;
    JournalReading& operator=(const JournalReading&) = delete;

private:
    const bool m_wasWanted;
};

#endif
