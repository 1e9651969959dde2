#ifndef TOOLS_VORNTOOLS_JOURNAL_FILE_H
#define TOOLS_VORNTOOLS_JOURNAL_FILE_H

#include <fstream>
#include <string>

/** Hands the journal's lines to a file, if the caller wants one, and forgets them and the error reports. */
class JournalFile {
public:
    /** What reads the lines besides the file. */
    enum class Reader {
        program, ///< reasons of states are told by them
        nobody   ///< without a file none are written
    };

    /** @param name empty for none */
    explicit JournalFile(const std::string& name, Reader reader = Reader::program);
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

#endif
