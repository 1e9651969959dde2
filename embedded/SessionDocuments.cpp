#include "CATSessionServices.h"
#include "embedded/Accounting.h"
#include "embedded/Answers.h"
#include "embedded/Session.h"

using namespace embedded;

namespace {

/** Lives as long as the process: not one of the lists that somebody must give back. */
struct DocumentList {
    DocumentList() { --Accounting::get().live().lists; }
    ~DocumentList() { ++Accounting::get().live().lists; }
    DocumentList(const DocumentList&) = delete;
    DocumentList& operator=(const DocumentList&) = delete;

    CATLISTP(CATDocument) documents;
};

} // namespace

const CATLISTP(CATDocument) * ListDocuments() {
    static DocumentList list;
    if (fails("ListDocuments")) return nullptr;
    list.documents.RemoveAll(CATCollec::KeepAllocation);
    const Session& session = Session::current();
    for (std::size_t i = 0; i < session.documentCount(); ++i) list.documents.Append(session.documentAt(i).get());
    return &list.documents;
}
