#ifndef CACHE_EXCHANGE_FILE_H
#define CACHE_EXCHANGE_FILE_H

#include "foundation/JournalFrame.h"
#include "foundation/OpenFile.h"

#include "CATUnicodeString.h"
#include "UTILFile.h"

namespace vorntools {

/** Full name of a file in the directory of the files exchanged with the PDM client; empty while that is not set.
 * @return E_FAIL, reported, without an environment */
HRESULT findExchangeFile(const JournalFrame& i_frame, const CATUnicodeString& i_name, CATUnicodeString& o_full_name);

/** Reads a file line by line and remembers how the last read ended. */
class LineReader {
public:
    bool open(const CATUnicodeString& i_name) { return SUCCEEDED(m_file.open(i_name, "r")); }
    /** Reads the next line. False at the end of the file and when the read fails; the line is then empty. */
    bool next();
    const CATUnicodeString& line() const { return m_line; }
    bool hasFailed() const { return FAILED(m_code); }
    /** Whether a read has met the end of the file; false behind a line that has its line end, even the last one. */
    bool isAtEnd() const { return m_file.isAtEnd() != 0; }

private:
    UTILFile m_file;
    CATUnicodeString m_line;
    HRESULT m_code = S_OK;
};

/** A text file that is written anew. One that is not finished is deleted. */
class NewTextFile {
public:
    NewTextFile() = default;
    ~NewTextFile();
    NewTextFile(const NewTextFile&) = delete;
    NewTextFile& operator=(const NewTextFile&) = delete;

    /** A folder or an empty name cannot be created; an existing file loses its content. */
    bool create(const CATUnicodeString& i_name);
    /** Adds a line. Its bytes are written as they are, the line end as the system has it. */
    void writeLine(const CATUnicodeString& i_line);
    /** @return whether everything is on its way to the disk; if not the file is gone */
    bool finish();

private:
    CATUnicodeString m_name;
    OpenFile m_file;
};

/** Deletes a file; a folder stays. @return whether no such file is left */
bool deleteFile(const CATUnicodeString& i_name);

} // namespace vorntools

#endif
