#ifndef EMBEDDED_SESSION_FILE_H
#define EMBEDDED_SESSION_FILE_H

#include "ExportedByCatia.h"

#include <string>

namespace embedded {

/** Outcome of reading or writing a session file. */
struct SessionFileResult {
    bool ok = true;
    /** "FILE:LINE: FIELD: what is wrong", without what does not apply; empty when ok. */
    std::string error;
};

/** Replaces the current session by the one in a JSON file. On failure the session is empty.
 * Names with a relative directory are taken from the file's own folder. The format is described in
 * docs/session-file.md. */
ExportedByCatia SessionFileResult loadSession(const std::string& path);

/** As loadSession() with the text that a file of that name would hold; no file is read. */
ExportedByCatia SessionFileResult loadSessionText(const std::string& path, const std::string& text);

/** The text that saveSession() writes. Fails for a text of the session that is not UTF-8 and for components inside each
 * other more than 320 times; `text` is then empty. */
ExportedByCatia SessionFileResult sessionText(std::string& text);

/** Writes the current session. Fails also where sessionText() does. Written beside and renamed, so that a failure
 * leaves the old file whole. */
ExportedByCatia SessionFileResult saveSession(const std::string& path);

} // namespace embedded

#endif
