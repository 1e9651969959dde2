#ifndef EMBEDDED_FRAME_APPLICATION_H
#define EMBEDDED_FRAME_APPLICATION_H

#include "CATApplicationFrame.h"
#include "CATIAApplication.h"
#include "embedded/object/Implements.h"

#include <map>
#include <string>
#include <utility>

namespace embedded {

EMBEDDED_AUTOMATION_IDENTITY(CATIAApplication);

struct FrameData;

/** The application's main window. */
class ApplicationFrameObject final : public Implements<CATApplicationFrame, CATIAApplication> {
public:
    explicit ApplicationFrameObject(FrameData& data) : Implements("CATApplicationFrame"), m_data(data) { pin(); }

    HRESULT __stdcall get_Name(CATBSTR& oName) override;
    HRESULT __stdcall StartCommand(const CATBSTR& iCommandId) override;

private:
    FrameData& m_data;
};

/** Texts of the message catalogue by catalogue and key. */
using CatalogueTexts = std::map<std::pair<std::string, std::string>, std::string>;

/** What the catalogue holds in a new session. */
const CatalogueTexts& usualMessages();

} // namespace embedded

#endif
