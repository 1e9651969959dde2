// The section of the documents: each with the structure below its root product.
#ifndef EMBEDDED_SESSION_FILE_DOCUMENT_SECTION_H
#define EMBEDDED_SESSION_FILE_DOCUMENT_SECTION_H

#include "embedded/session_file/SessionSections.h"

namespace embedded {

constexpr int kDeepestComponent = 320;
static_assert(3 * kDeepestComponent + 8 <= static_cast<int>(kDeepestJson), "what is written can be read");

void readDocuments(const JsonField& field, const SectionReader& reader);
/** What has its default is left out. */
Json writeDocuments(Session& session);

} // namespace embedded

#endif
