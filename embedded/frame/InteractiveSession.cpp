#include "CATIIniInteractiveSession.h"
#include "embedded/documents/SessionObject.h"
#include "embedded/files/FileNames.h"
#include "embedded/files/SystemFiles.h"
#include "embedded/frame/FrameData.h"

EMBEDDED_INTERFACE(CATIIniInteractiveSession, CATBaseUnknown, 0x103);

namespace embedded {

EMBEDDED_IDENTITY(CATIIniInteractiveSession);

namespace {

/** The document of a file: the loaded one, or a new one when there is such a file of a kind that can be opened. */
Document openedDocument(const std::string& name) {
    Session& session = Session::current();
    if (const Document loaded = session.find(name)) return loaded;
    FileFacts facts;
    const bool canBeOpened = !suffixOf(name).empty() && examineFile(name, facts) && facts.isFile;
    return canBeOpened ? session.document(name) : Document();
}

class InteractiveSession final : public Extends<SessionObject, CATIIniInteractiveSession> {
public:
    explicit InteractiveSession(SessionObject& session) : Extends(session) {}

    HRESULT Open(const CATUnicodeString& iCompleteName, const CATBoolean iReadOnly, CATIEditor** oEditor) override {
        if (!oEditor) return E_POINTER;
        *oEditor = nullptr;
        FrameData& data = FrameData::get();
        const FaultFlavour flavour = called("CATIIniInteractiveSession::Open");
        if (flavour != FaultFlavour::none)
            return failedAnswer<CATIEditor*>(flavour, *oEditor, nullptr, &data.editorOf(nullptr));
        const Document document = openedDocument(toBytes(iCompleteName));
        if (!document) return E_FAIL;
        if (iReadOnly) data.readOnly.insert(document.object());
        EditorObject& editor = data.editorOf(document.object());
        data.openWindow(WindowKind::graphic, &editor);
        *oEditor = handOut<CATIEditor>(&editor);
        return S_OK;
    }
};

const ExtensionOf<SessionObject, InteractiveSession> interactiveSessionKnown;

} // namespace

} // namespace embedded
