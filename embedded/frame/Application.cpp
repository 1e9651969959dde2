#include "embedded/frame/Application.h"

#include "CATMsgCatalog.h"
#include "embedded/frame/FrameData.h"

#include <algorithm>

EMBEDDED_INTERFACE(CATIAApplication, CATIABase, 0x102);

namespace embedded {

HRESULT __stdcall ApplicationFrameObject::get_Name(CATBSTR& oName) {
    return automationTextAnswer(called("CATIAApplication::get_Name"), "CNEXT", oName);
}

HRESULT __stdcall ApplicationFrameObject::StartCommand(const CATBSTR& iCommandId) {
    const FaultFlavour flavour = called("CATIAApplication::StartCommand");
    if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
    const std::string command = fromAutomationText(iCommandId);
    const auto isTitle = [&command](const auto& message) { return message.second == command; };
    if (std::none_of(m_data.messages.begin(), m_data.messages.end(), isTitle)) return E_FAIL;
    m_data.startedCommands.push_back(command);
    return S_OK;
}

const CatalogueTexts& usualMessages() {
    static const CatalogueTexts& usual =
        *new CatalogueTexts{{{"CATFrmCmdHeader", "CATFrmCmdHeader.ReframeOnHSO.Title"}, "Reframe On"}};
    return usual;
}

} // namespace embedded

CATApplicationFrame* CATApplicationFrame::GetFrame() {
    return embedded::fails("CATApplicationFrame::GetFrame") ? nullptr : &embedded::FrameData::get().frame;
}

// NOLINTNEXTLINE(readability-const-return-type): published so
const CATUnicodeString CATMsgCatalog::BuildMessage(const CATString& iCatalogName, const CATString& iMessageKey,
                                                   CATUnicodeString* iMsgParameters, int iParamNb,
                                                   const CATUnicodeString& iDefaultMsg) {
    using namespace embedded;
    if (fails("CATMsgCatalog::BuildMessage")) return iDefaultMsg;
    const auto& messages = FrameData::get().messages;
    const auto found = messages.find({iCatalogName.ConvertToChar(), iMessageKey.ConvertToChar()});
    if (found == messages.end()) return iDefaultMsg;
    CATUnicodeString text = toText(found->second);
    for (int i = 0; iMsgParameters && i < iParamNb; ++i)
        text.ReplaceAll(toText("/P" + std::to_string(i + 1)), iMsgParameters[i]);
    return text;
}
