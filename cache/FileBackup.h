#ifndef CACHE_FILE_BACKUP_H
#define CACHE_FILE_BACKUP_H

#include "foundation/JournalFrame.h"

#include "CATUnicodeString.h"

#include <optional>
#include <string>

namespace vorntools {

/**
 * A copy beside a file, from which the file is put back once others have worked with it. At no point is the copy given
 * up before the file holds the same bytes again: whatever fails, one of the two is complete, and the journal says
 * which. Where no copy can be made the file is remembered, so that a change is noticed.
 */
class FileBackup {
public:
    /** @param i_frame writes the journal lines. @param i_file physical name */
    FileBackup(const JournalFrame& i_frame, const CATUnicodeString& i_file);

    /** Where the copy stands: the file's name with "_tmp" in front of its last four characters. */
    const CATUnicodeString& name() const { return m_name; }

    /** Copies the file; without a file there is nothing to do. A copy that is there already serves; a different file of
     * that name may be all that an earlier call could save, and is not replaced. What keeps a copy from being made is
     * journalled. */
    void make();
    /** Puts the file back as it was, and deletes the copy. A file that still is what it was is not touched: it may be
     * open elsewhere, or read-only. @return false, journalled and reported, when the file is not as it was */
    bool restore();

private:
    bool isFileAsItWas() const;
    bool restoreFromCopy();
    bool dropCopy();

    const JournalFrame& m_frame;
    const CATUnicodeString m_file;
    const CATUnicodeString m_name;
    bool m_is_made = false;
    std::optional<std::string> m_bytes; ///< of the file, where there is no copy
};

} // namespace vorntools

#endif
