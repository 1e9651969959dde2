#ifndef EMBEDDED_SESSION_FILE_H
#define EMBEDDED_SESSION_FILE_H

#include "ExportedByCatia.h"

#include <string>

namespace embedded {

/** Outcome of reading or writing a session file. */
struct SessionFileResult {
    bool ok = true;
    /** "FILE:LINE: FIELD: what is wrong", empty when ok. */
    std::string error;
};

/** Replaces the current session by the one in a JSON file. On failure the session is empty.
 * Names with a relative directory are taken from the file's own folder. The format is described in
 * docs/session-file.md. */
ExportedByCatia SessionFileResult loadSession(const std::string& path);

/** Writes the current session. Written beside and renamed, so that a failure leaves the old file whole. */
ExportedByCatia SessionFileResult saveSession(const std::string& path);

} // namespace embedded

#endif
