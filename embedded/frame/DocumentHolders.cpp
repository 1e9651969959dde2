// What keeps a document open, and closing one that nothing keeps.
#include "embedded/documents/LoadedDocuments.h"
#include "embedded/files/FileNames.h"
#include "embedded/frame/FrameData.h"

#include <algorithm>

namespace embedded {

bool FrameData::isHeld(const DocumentObject& document) const {
    const auto lock = locks.find(&document);
    if (lock != locks.end() && lock->second > 0) return true;
    const auto holds = [&document](const auto& window) {
        return window->document() == &document && window->holdsDocument;
    };
    return std::any_of(windows.begin(), windows.end(), holds) || isUsedElsewhere(document);
}

bool FrameData::isUsedElsewhere(const DocumentObject& document) const {
    for (const auto& reference : session.references) {
        if (reference->document != &document) continue;
        for (const Reference* user : reference->usedIn)
            if (user->document != &document && user->document->inSession) return true;
    }
    return false;
}

void FrameData::reportHolders(const DocumentObject& document) const {
    const auto report = [&document](const Object& object) {
        if (object.references() == 0) return;
        Accounting::get().breach(document.objectName() + " is closed while somebody holds " + object.objectName());
    };
    report(document);
    for (const auto& product : session.products)
        if (product->reference() && product->reference()->document == &document) report(*product);
}

void FrameData::closeUnlessHeld(DocumentObject& document) {
    if (isHeld(document)) {
        LoadedDocuments(session).settle(document);
        return;
    }
    const auto isIt = [&document](const auto& entry) { return entry.get() == &document; };
    const auto found = std::find_if(session.documents.begin(), session.documents.end(), isIt);
    if (found == session.documents.end()) return;
    reportHolders(document);
    document.unpin();
    document.inSession = false;
    session.documentIndex.erase(foldedName(document.name()));
    m_closedDocuments.push_back(std::move(*found));
    session.documents.erase(found);
    locks.erase(&document);
    readOnly.erase(&document);
    for (const auto& editor : editors)
        if (editor->document == &document) editor->document = nullptr;
}

} // namespace embedded
