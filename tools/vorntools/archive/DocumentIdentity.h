#ifndef TOOLS_VORNTOOLS_ARCHIVE_DOCUMENT_IDENTITY_H
#define TOOLS_VORNTOOLS_ARCHIVE_DOCUMENT_IDENTITY_H

#include <string>

class VornToolsDocumentFile;

/** Where a document comes from, as its file tells: docs/document-file.md. Texts are empty when it does not. */
struct DocumentIdentity {
    std::string uuid;  ///< that the document has had since it was new, "d55320d9_c94_5c0eb0cc_85"; copies keep it
    std::string save;  ///< of the last save alone: another one each time
    std::string saved; ///< "2026-01-31 12:00:00", universal time of the last save
};

/** @param fullName of a file; one that cannot be read has no identity */
DocumentIdentity readIdentity(const std::string& fullName);
/** Of one that is open. */
DocumentIdentity readIdentity(VornToolsDocumentFile& file);

#endif
