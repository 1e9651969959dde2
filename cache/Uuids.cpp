// CATIA UUIDs: of a document and of the session.

#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATDocumentDescriptor.h"
#include "CATUuid.h"
#include "UTILString.h"

#include <cstddef>

using namespace vorntools;

namespace {

constexpr std::size_t kUuidTextSize = 256;

/** The one place that relies on the descriptor, which the platform does not publish: without it no document has an
 * identifier. */
const CATDocumentDescriptor* descriptorOf(const CATDocument& i_document) { return i_document.GetDocumentDescriptor(); }

} // namespace

HRESULT VornToolsCommon::getDocUUID(CATDocument* ip_document, CATUnicodeString& o_uuid) {
    const JournalFrame frame(_CteCLASS_NAME, "getDocUUID");
    o_uuid = "0_0_0_0";
    const auto work = [&]() -> HRESULT {
        if (!ip_document) return S_OK;

        frame.write("Extracting CATIA UUID from document %s", ip_document->StorageName());
        const CATDocumentDescriptor* const p_descriptor = descriptorOf(*ip_document);
        if (!p_descriptor) return frame.callFailed("GetDocumentDescriptor");

        CATUuid uuid = p_descriptor->GetUuid();
        char text[kUuidTextSize] = "";
        uuid.UUID_to_chaine(text);
        o_uuid = text;
        frame.write("The CATIA UUID is : %s ", o_uuid);
        return S_OK;
    };
    return guarded(work, E_FAIL);
}

CATUnicodeString VornToolsCommon::getCATIA_UUID() {
    static CATUnicodeString s_uuid;
    const JournalFrame frame(_CteCLASS_NAME, "getCATIA_UUID");
    const auto tell = [&] {
        if (s_uuid.IsNull()) s_uuid = UTILString::genUuid();
        frame.write("CATIA session UUID = [%s]", s_uuid);
        return s_uuid;
    };
    return guarded(tell, CATUnicodeString());
}
