#include "VornToolsWorkModeServices.h"

#include "foundation/AutomationText.h"
#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"
#include "foundation/PlatformErrors.h"
#include "foundation/Texts.h"
#include "foundation/WorkModes.h"

#include "CATIABase.h"
#include "CATIAProduct.h"
#include "CATIProduct.h"
#include "CATPrsWorkModeServices.h"

#include <cstring>
#include <limits>

using namespace vorntools;

const CATUnicodeString VornToolsWorkModeServices::_CteCLASS_NAME("VornToolsWorkModeServices::");
unsigned char VornToolsWorkModeServices::_is_catia_cache_activated = 0;

namespace {

using EnumWorkMode = VornToolsWorkModeServices::EnumWorkMode;
using PlatformMode = CATPrsWorkModeServices::WorkMode;

/** Our numbers are the platform's plus one. */
constexpr int kOffset = 1;

/** Pictures in the cache are named after the file that they show. */
constexpr const char* kPictureSuffix = ".cgr";

constexpr const char* kSwitchLines[] = {"PERFX real switch VISU", "PERFX real switch DEFAULT", "PERFX real switch BREP",
                                        "PERFX real switch DESIGN"};

bool isPlatformMode(int i_number) {
    return i_number >= CATPrsWorkModeServices::WM_VISUALIZATION && i_number <= CATPrsWorkModeServices::WM_DESIGN;
}

HRESULT reportOutOfRange(const JournalFrame& i_frame, int i_value) {
    CATUnicodeString text;
    text.BuildFromNum(i_value, "%d");
    return i_frame.report(ErrorOutOfRange, text);
}

/** The platform's answer. A success that leaves the number alone is none. Numbers are copied as bytes: what is no mode
 * of the platform's has no place in its enumeration. */
HRESULT askPlatform(CATIProduct* ipi_product, int& o_number) {
    constexpr int kUntouched = (std::numeric_limits<int>::min)();
    PlatformMode platform_mode;
    static_assert(sizeof platform_mode == sizeof kUntouched, "modes are numbers of the usual size");
    std::memcpy(&platform_mode, &kUntouched, sizeof platform_mode);
    const CATIProduct_var sp_product(ipi_product);
    const auto ask = [&] { return CATPrsWorkModeServices::GetWorkMode(sp_product, platform_mode); };
    const HRESULT code = onPlatform(ask, E_FAIL);
    std::memcpy(&o_number, &platform_mode, sizeof o_number);
    return SUCCEEDED(code) && o_number == kUntouched ? E_FAIL : code;
}

HRESULT readMode(const JournalFrame& i_frame, CATIProduct* ipi_catiproduct, EnumWorkMode& o_mode) {
    if (!ipi_catiproduct) return i_frame.badInput("ipi_catiproduct");
    int number = 0;
    if (FAILED(askPlatform(ipi_catiproduct, number))) return i_frame.platformFailed("GetWorkMode");
    if (!isPlatformMode(number)) return reportOutOfRange(i_frame, number);
    o_mode = static_cast<EnumWorkMode>(number + kOffset);
    return S_OK;
}

/** Name of the master shape representation, which is not loaded for that. */
HRESULT askForRepresentationName(CATIProduct* ipi_product, CATUnicodeString& o_name) {
    const auto sp_automation = queryInterface<CATIAProduct>(ipi_product);
    if (!sp_automation) return E_FAIL;
    constexpr CAT_VARIANT_BOOL kDoNotLoad = 0;
    InterfacePtr<CATBaseDispatch> sp_representation;
    sp_representation.receive([&](CATBaseDispatch*& o_representation) {
        return sp_automation->GetMasterShapeRepresentation(kDoNotLoad, o_representation);
    });
    const auto sp_named = sp_representation.query<CATIABase>();
    AutomationText name;
    if (!sp_named || FAILED(name.receive([&](CATBSTR& o_text) { return sp_named->get_Name(o_text); }))) return E_FAIL;
    o_name = name.text();
    return S_OK;
}

HRESULT readRepresentationName(CATIProduct* ipi_product, CATUnicodeString& o_name) {
    return onPlatform([&] { return askForRepresentationName(ipi_product, o_name); }, E_FAIL);
}

bool namesPart(CATUnicodeString i_representation_name) {
    i_representation_name.ToUpper();
    return i_representation_name.SearchSubString(".CATPART") >= 0;
}

bool namesPicture(const CATUnicodeString& i_representation_name) {
    return endsWith(i_representation_name, kPictureSuffix);
}

/** The platform may throw one of its own errors, which then is a failure. Handles are made outside the guarded block:
 * its way out of a call need not destroy them. */
HRESULT switchGuarded(CATIProduct* ipi_product, PlatformMode i_mode) {
    const CATIProduct_var sp_product(ipi_product);
    return onPlatform([&] { return CATPrsWorkModeServices::SetWorkMode(sp_product, i_mode); }, E_FAIL);
}

} // namespace

bool vorntools::isOnlySeen(CATIProduct& i_product) {
    int number = 0;
    if (SUCCEEDED(askPlatform(&i_product, number)) && isPlatformMode(number))
        return number == CATPrsWorkModeServices::WM_VISUALIZATION;
    CATUnicodeString name;
    return SUCCEEDED(readRepresentationName(&i_product, name)) && namesPart(name) && namesPicture(name);
}

CATUnicodeString vorntools::fileNameOfPicture(CATIProduct& i_product) {
    CATUnicodeString name;
    if (FAILED(readRepresentationName(&i_product, name)) || !namesPicture(name)) return CATUnicodeString();
    return name.SubString(0, name.GetLengthInChar() - CATUnicodeString(kPictureSuffix).GetLengthInChar());
}

HRESULT VornToolsWorkModeServices::getWorkModeCAA(CATIProduct* product, EnumWorkMode& mode) {
    JournalFrame frame(_CteCLASS_NAME, "getWorkModeCAA");
    mode = WorkModeUnknown;
    return frame.endWith(readMode(frame, product, mode));
}

HRESULT VornToolsWorkModeServices::getWorkMode(CATIProduct* product, EnumWorkMode& mode) {
    JournalFrame frame(_CteCLASS_NAME, "getWorkMode");
    mode = WorkModeUnknown;
    EnumWorkMode found = WorkModeUnknown;
    if (SUCCEEDED(getWorkModeCAA(product, found))) {
        mode = found;
        return frame.endWith(S_OK);
    }
    unsigned char visual = 0;
    if (FAILED(isVisualWorkMode(product, visual))) return frame.endWith(frame.platformFailed("isVisualWorkMode"));
    if (visual) mode = WorkModeVisu;
    return frame.endWith(visual ? S_OK : E_FAIL);
}

HRESULT VornToolsWorkModeServices::isVisualWorkMode(CATIProduct* product, unsigned char& visual) {
    const JournalFrame frame(_CteCLASS_NAME, "isVisualWorkMode");
    visual = 0;
    const auto ask = [&]() -> HRESULT {
        CATUnicodeString name;
        if (FAILED(readRepresentationName(product, name))) return frame.platformFailed("isVisualWorkMode");
        if (!namesPart(name)) return E_FAIL;
        visual = namesPicture(name) ? 1 : 0;
        return S_OK;
    };
    return guarded(ask, E_FAIL);
}

HRESULT VornToolsWorkModeServices::setCatiaCacheActivated(unsigned char activated) {
    const JournalFrame frame(_CteCLASS_NAME, "setCatiaCacheActivated");
    _is_catia_cache_activated = activated;
    return S_OK;
}

HRESULT VornToolsWorkModeServices::setWorkMode(CATIProduct* product, EnumWorkMode mode) {
    const JournalFrame frame(_CteCLASS_NAME, "setWorkMode");
    if (!_is_catia_cache_activated) {
        frame.write("CATIA cache is not activated, switch is not allowed");
        return S_FALSE;
    }
    if (!product) return frame.badInput("ipi_catiproduct");
    if (mode < WorkModeVisu || mode > WorkModeDesign) return reportOutOfRange(frame, mode);

    const int platform_mode = mode - kOffset;
    frame.write(kSwitchLines[platform_mode]);
    if (FAILED(switchGuarded(product, static_cast<PlatformMode>(platform_mode))))
        return frame.platformFailed("SetWorkMode");
    EnumWorkMode reached = WorkModeUnknown;
    const HRESULT code = getWorkMode(product, reached);
    if (FAILED(code)) return S_OK;
    if (reached != mode) return E_FAIL;
    frame.write("PERFX real switch");
    return code;
}
