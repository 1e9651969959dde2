#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "foundation/Texts.h"
#include "session/DescriptionText.h"
#include "session/ProductHelpers.h"

#include "UTILString.h"

using namespace vorntools;

namespace {

constexpr const char* kReadCall = "CATIPrdProperties::GetDescriptionInst";
constexpr const char* kWriteCall = "CATIPrdProperties::SetDescriptionInst";

/** Properties of the instance that carries a product's description; empty when it cannot be reached. */
InterfacePtr<CATIPrdProperties> carrierProperties(CATIProduct* ipi_product) {
    InterfacePtr<CATIProduct> sp_carrier;
    sp_carrier.receive([ipi_product](CATIProduct*& o_carrier) {
        return VornToolsCommon::getInstanceInFirstProductParent(ipi_product, o_carrier);
    });
    return sp_carrier.query<CATIPrdProperties>();
}

/** What a failing read leaves in the text is dropped. */
HRESULT readDescription(CATIPrdProperties* ipi_properties, CATUnicodeString& o_description) {
    const HRESULT code = guarded([&] { return ipi_properties->GetDescriptionInst(o_description); }, E_FAIL);
    if (FAILED(code)) o_description = "";
    return code;
}

/** Reads the description of exactly the given product and says what failed.
 * @param o_properties the way to the description, for writing it */
HRESULT readOwnDescription(const JournalFrame& i_frame, CATIProduct* ipi_product,
                           InterfacePtr<CATIPrdProperties>& o_properties, CATUnicodeString& o_description) {
    if (!ipi_product) return i_frame.badInput("ipi_cati_product");
    o_properties = queryInterface<CATIPrdProperties>(ipi_product);
    if (!o_properties) return i_frame.missing("pi_cati_prd_properties");
    return FAILED(readDescription(o_properties.get(), o_description)) ? i_frame.callFailed(kReadCall) : S_OK;
}

/** Properties of the product's occurrence below its father's reference; empty, and reported, when they are missing. */
InterfacePtr<CATIPrdProperties> relativeProperties(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    const auto sp_parent = fatherOf(ipi_product);
    if (!sp_parent) {
        i_frame.missing("pi_parent_product");
        return {};
    }
    const auto sp_parent_reference = referenceOf(sp_parent.get());
    if (!sp_parent_reference) {
        i_frame.missing("sp_parent_reference_product");
        i_frame.write("Can't get reference product from parent");
        return {};
    }
    const auto sp_occurrence = occurrenceIn(ipi_product, sp_parent_reference.get());
    if (!sp_occurrence) {
        i_frame.missing("sp_product_relative_occurrence");
        return {};
    }
    auto sp_properties = sp_occurrence.query<CATIPrdProperties>();
    if (!sp_properties) i_frame.missing("pi_cati_prd_relative");
    return sp_properties;
}

/** Sets the identity and leaves markers alone; the journal tells the text before and after. */
void updateIdentity(const JournalFrame& i_frame, const CATUnicodeString& i_identifier,
                    CATUnicodeString& io_description) {
    const CATUnicodeString old_description = io_description;
    const bool changed = setIdentityLine(io_description, kIdentity + i_identifier);
    if (old_description.IsNull())
        i_frame.write("Old instance description was empty");
    else if (changed)
        i_frame.write("Old instance description = [%s]", old_description);
    i_frame.write("New instance description is = [%s]", io_description);
}

/** What processInstanceDescription makes of a description. */
void process(const JournalFrame& i_frame, const CATUnicodeString& i_value, bool i_clears_markers,
             CATUnicodeString& io_description) {
    UTILString::removeContextKeyWord(io_description);
    if (i_value == kBrokenIcon)
        markAsBroken(io_description);
    else if (i_value.IsNull())
        removeIdentity(io_description);
    else if (i_clears_markers)
        replaceIdentity(io_description, i_value);
    else
        updateIdentity(i_frame, i_value, io_description);
}

HRESULT cleanRelativeOccurrence(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    const auto sp_properties = relativeProperties(i_frame, ipi_product);
    if (!sp_properties) return E_FAIL;
    CATUnicodeString description;
    if (FAILED(readDescription(sp_properties.get(), description))) return i_frame.callFailed("GetDescriptionInst");
    if (description.IsNull()) return S_OK;
    if (FAILED(VornToolsCommon::cleanInstanceDescription(description)))
        return i_frame.callFailed("cleanInstanceDescription");
    if (FAILED(writeDescription(sp_properties.get(), description))) return i_frame.callFailed("SetDescriptionInst");
    return S_OK;
}

HRESULT addSecondaryMarker(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    InterfacePtr<CATIPrdProperties> sp_properties;
    CATUnicodeString description;
    const HRESULT code = readOwnDescription(i_frame, ipi_product, sp_properties, description);
    if (FAILED(code)) return code;
    if (contains(description, kIgnoreNode)) {
        i_frame.write("It is an ignore node, instance description will not be updated");
        return S_OK;
    }
    if (beginsWith(description, kSecondaryPart)) return S_OK;
    const CATUnicodeString marked = description.IsNull() ? kSecondaryPart : withFirstLine(kSecondaryPart, description);
    return FAILED(writeDescription(sp_properties.get(), marked)) ? i_frame.callFailed(kWriteCall) : S_OK;
}

/** Answers for a description that was read; the journal tells the reason. */
bool tellSecondaryPart(const JournalFrame& i_frame, const CATUnicodeString& i_description, bool i_dat_file_missing,
                       const CATUnicodeString& i_item_rev_uid) {
    if (!beginsWith(i_description, kSecondaryPart)) {
        i_frame.write("Product is not a secondary part: instance description does not contain %s", kSecondaryPart);
        return false;
    }
    if (i_dat_file_missing) {
        i_frame.write("Product is a secondary part: .dat file does not exist");
        return true;
    }
    if (i_item_rev_uid.IsNull()) {
        i_frame.write("Product is a secondary part: itemRevUID field is empty");
        return true;
    }
    i_frame.write("Product is not a secondary part: itemRevUID field is not empty");
    return false;
}

HRESULT askForSecondaryPart(const JournalFrame& i_frame, CATIProduct* ipi_product, bool i_dat_file_missing,
                            const CATUnicodeString& i_item_rev_uid, bool& o_is_secondary_part) {
    CATUnicodeString description;
    const HRESULT code = VornToolsCommon::getInstanceDescription(ipi_product, description);
    if (FAILED(code)) {
        i_frame.callFailed("VornToolsCommon::getInstanceDescription");
    } else {
        CATUnicodeString name;
        VornToolsCommon::getPrdInstanceNameWithoutNewLines(ipi_product, name); // for the journal only
        i_frame.write("instance name is %s", name);
        i_frame.write("instance description is %s", description);
        o_is_secondary_part = tellSecondaryPart(i_frame, description, i_dat_file_missing, i_item_rev_uid);
    }
    i_frame.write("%d", static_cast<int>(code));
    return code;
}

/** @return S_OK when line breaks were removed, S_FALSE when there were none */
HRESULT readInstanceName(CATIProduct* ipi_product, CATUnicodeString& o_name) {
    CATUnicodeString name;
    const HRESULT code = ipi_product->GetPrdInstanceName(name);
    if (FAILED(code)) return code;
    const bool has_pairs = contains(name, "\r\n");
    name.ReplaceAll("\r\n", "");
    o_name = name;
    return has_pairs ? S_OK : S_FALSE;
}

} // namespace

HRESULT VornToolsCommon::getInstanceDescription(CATIProduct* ipi_product, CATUnicodeString& o_description) {
    const JournalFrame frame(_CteCLASS_NAME, "getInstanceDescription");
    o_description = "";
    if (!ipi_product) return E_INVALIDARG;
    const auto work = [&]() -> HRESULT {
        const auto sp_properties = carrierProperties(ipi_product);
        return sp_properties ? readDescription(sp_properties.get(), o_description) : E_FAIL;
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::setInstanceDescription(CATIProduct* ipi_product, const CATUnicodeString& i_description) {
    const JournalFrame frame(_CteCLASS_NAME, "setInstanceDescription");
    if (!ipi_product) return E_INVALIDARG;
    const auto write = [&]() -> HRESULT {
        const auto sp_properties = carrierProperties(ipi_product);
        return sp_properties ? writeDescription(sp_properties.get(), i_description) : E_FAIL;
    };
    return guarded(write, E_FAIL);
}

HRESULT VornToolsCommon::getProductInstanceDescription(CATIProduct* ipi_cati_product, CATUnicodeString& o_description) {
    const JournalFrame frame(_CteCLASS_NAME, "getProductInstanceDescription");
    o_description = "";
    const auto work = [&]() -> HRESULT {
        InterfacePtr<CATIPrdProperties> sp_properties;
        return readOwnDescription(frame, ipi_cati_product, sp_properties, o_description);
    };
    return guarded(work, E_FAIL);
}

HRESULT VornToolsCommon::processInstanceDescription(CATUnicodeString i_value, CATUnicodeString& io_description,
                                                    unsigned char i_mode) {
    const JournalFrame frame(_CteCLASS_NAME, "processInstanceDescription");
    const auto work = [&] {
        CATUnicodeString description = io_description;
        process(frame, i_value, i_mode != 0, description);
        io_description = description;
    };
    return guarded(work) ? S_OK : E_FAIL;
}

HRESULT VornToolsCommon::cleanInstanceDescription(CATUnicodeString& io_description) {
    const JournalFrame frame(_CteCLASS_NAME, "cleanInstanceDescription");
    return guarded([&] { cleanDescription(io_description); }) ? S_OK : E_FAIL;
}

HRESULT VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent(CATIProduct* ipi_catiproduct) {
    const JournalFrame frame(_CteCLASS_NAME, "cleanDescriptionForRelativeOccUnderComponent");
    if (!ipi_catiproduct) return frame.badInput("ipi_catiproduct");
    return guarded([&] { return cleanRelativeOccurrence(frame, ipi_catiproduct); }, E_FAIL);
}

HRESULT VornToolsCommon::addSecondaryPartInInstanceDescription(CATIProduct* ipi_cati_product) {
    const JournalFrame frame(_CteCLASS_NAME, "addSecondaryPartInInstanceDescription");
    return guarded([&] { return addSecondaryMarker(frame, ipi_cati_product); }, E_FAIL);
}

HRESULT VornToolsCommon::isElementSecondaryPart(CATIProduct* ipi_product, unsigned char i_dat_file_missing,
                                                CATUnicodeString i_item_rev_uid, unsigned char& o_is_secondary_part) {
    const JournalFrame frame(_CteCLASS_NAME, "isElementSecondaryPart");
    o_is_secondary_part = 0;
    bool is_secondary = false;
    const auto ask = [&] {
        return askForSecondaryPart(frame, ipi_product, i_dat_file_missing != 0, i_item_rev_uid, is_secondary);
    };
    const HRESULT code = guarded(ask, E_FAIL);
    if (SUCCEEDED(code) && is_secondary) o_is_secondary_part = 1;
    return code;
}

HRESULT VornToolsCommon::getPrdInstanceNameWithoutNewLines(CATIProduct* ipi_product, CATUnicodeString& o_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getPrdInstanceNameWithoutNewLines");
    o_name = "";
    if (!ipi_product) return E_FAIL;
    return guarded([&] { return readInstanceName(ipi_product, o_name); }, E_FAIL);
}
