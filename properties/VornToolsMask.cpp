#include "VornToolsMask.h"

#include "foundation/Environment.h"
#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "session/ProductHelpers.h"

#include "CATISpecObject.h"
#include "CATSession.h"
#include "MSKIMaskManager.h"
#include "VornToolsDummyPart.h"

using namespace vorntools;

const CATUnicodeString VornToolsMask::_CteCLASS_NAME("VornToolsMask::");

namespace {

constexpr unsigned kGreatestMask = 10;
constexpr int kDummyPartBit = 4;
/** What stays of a mask when a dummy part is marked. */
constexpr int kBitBesideDummyPart = 2;
constexpr unsigned char kUseRememberedDummyParts = 1;

/** What shows masks, and the object that it shows them on. */
struct MaskedObject {
    InterfacePtr<CATISpecObject> object;
    InterfacePtr<MSKIMaskManager> manager;
};

/** @return E_FAIL, reported, when something is missing */
HRESULT find(const JournalFrame& i_frame, CATIProduct* ipi_product, MaskedObject& o_masked) {
    CATSession* const p_session = CATSession::GetPtrSession();
    if (!p_session) return i_frame.missing("p_session");
    o_masked.object = queryInterface<CATISpecObject>(ipi_product);
    if (!o_masked.object) return i_frame.missing("pi_spec_object");
    o_masked.manager = queryInterface<MSKIMaskManager>(p_session);
    if (!o_masked.manager) return i_frame.missing("pi_mask_manager");
    return S_OK;
}

HRESULT removeMasks(const JournalFrame& i_frame, const MaskedObject& i_masked) {
    const HRESULT code = i_masked.manager->removeAllMasks(i_masked.object.get());
    if (FAILED(code)) i_frame.callFailed("MSKIMaskManager::removeAllMasks");
    return code;
}

/** The mask to show: that of a dummy part says so. */
int maskFor(CATIProduct* ipi_product, int i_mask_value, unsigned char i_mark_dummy_parts) {
    if ((i_mask_value & kDummyPartBit) != 0 || !i_mark_dummy_parts) return i_mask_value;
    VornToolsDummyPart* const p_dummy_parts = VornToolsDummyPart::getInstance();
    if (!p_dummy_parts || !p_dummy_parts->isADummyPart(ipi_product, kUseRememberedDummyParts)) return i_mask_value;
    return (i_mask_value & kBitBesideDummyPart) | kDummyPartBit;
}

} // namespace

HRESULT VornToolsMask::getMask(CATIProduct* ipi_product, int* op_mask) {
    const JournalFrame frame(_CteCLASS_NAME, "getMask");
    if (!op_mask) return frame.badInput("op_mask");
    *op_mask = 0;
    if (!ipi_product) return frame.badInput("ip_product");
    const auto work = [&]() -> HRESULT {
        MaskedObject masked;
        if (FAILED(find(frame, ipi_product, masked))) return E_FAIL;
        int mask = 0;
        const HRESULT code = masked.manager->getMask(masked.object.get(), mask);
        if (FAILED(code)) {
            frame.callFailed("MSKIMaskManager::getMask");
            return code;
        }
        frame.write("mask value = %d", mask);
        *op_mask = mask;
        return code;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsMask::setMask(CATIProduct* ipi_product, int i_mask_value, unsigned char i_mark_dummy_parts) {
    const JournalFrame frame(_CteCLASS_NAME, "setMask");
    const auto work = [&]() -> HRESULT {
        if (static_cast<unsigned>(i_mask_value) > kGreatestMask) {
            frame.write("invalid value for parameter i_mask_value");
            return E_INVALIDARG;
        }
        if (!ipi_product) return frame.badInput("ip_product");
        if (!environmentSays(&ENVManager::isManageCatiaStatusOnRoot) && !fatherOf(ipi_product)) {
            frame.write("Mask not managed on root product");
            return S_OK;
        }
        const int mask = maskFor(ipi_product, i_mask_value, i_mark_dummy_parts);
        MaskedObject masked;
        if (FAILED(find(frame, ipi_product, masked))) return E_FAIL;
        if (mask == 0) {
            frame.write("Call MSKIMaskManager::removeAllMasks");
            return removeMasks(frame, masked);
        }
        frame.write("Call MSKIMaskManager::setMask");
        const HRESULT code = masked.manager->setMask(masked.object.get(), mask);
        if (FAILED(code)) frame.callFailed("MSKIMaskManager::setMask");
        return code;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsMask::removeAllMasks(CATIProduct* ipi_product) {
    const JournalFrame frame(_CteCLASS_NAME, "removeAllMasks");
    if (!ipi_product) return frame.badInput("ip_product");
    const auto work = [&]() -> HRESULT {
        const auto sp_reference = referenceOf(ipi_product);
        if (!sp_reference) return frame.callFailed("GetReferenceProduct");
        MaskedObject masked;
        return FAILED(find(frame, sp_reference.get(), masked)) ? E_FAIL : removeMasks(frame, masked);
    };
    return guarded(work, E_FAIL);
}
