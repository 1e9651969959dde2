#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATDocument.h"
#include "CATIDocId.h"

#include <algorithm>
#include <iterator>
#include <string_view>

using namespace vorntools;

namespace {

constexpr std::string_view kManagedTypes[] = {"CATPart",
                                              "CATProduct",
                                              "CATDrawing",
                                              "CATProcess",
                                              "CATAnalysis",
                                              "catalog",
                                              "wrl",
                                              "CATShape",
                                              "model",
                                              "cgr",
                                              "jt",
                                              "CATAnalysisResults",
                                              "CATAnalysisComputations"};

} // namespace

unsigned char VornToolsCommon::isDocumentInSessionManagedByMaro(CATDocument* ip_cat_document) {
    const JournalFrame frame(_CteCLASS_NAME, "isDocumentInSessionManagedByMaro");
    const auto work = [&]() -> unsigned char {
        if (!ip_cat_document) {
            frame.badInput("ip_cat_document");
            return 0;
        }
        InterfacePtr<CATIDocId> sp_doc_id;
        sp_doc_id.receive([&](CATIDocId*& o_doc_id) { return ip_cat_document->GetDocId(&o_doc_id); });
        CATUnicodeString type;
        if (!sp_doc_id || FAILED(sp_doc_id->GetType(type))) {
            frame.platformFailed(sp_doc_id ? "CATIDocId::GetType" : "CATDocument::GetDocId");
            return 0;
        }
        const std::string_view text(type.ConvertToChar(), static_cast<std::size_t>(type.GetLengthInByte()));
        const auto* const found = std::find(std::begin(kManagedTypes), std::end(kManagedTypes), text);
        return found != std::end(kManagedTypes) ? 1 : 0;
    };
    return guarded(work, static_cast<unsigned char>(0));
}
