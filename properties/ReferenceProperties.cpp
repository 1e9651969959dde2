#include "VornToolsCADDOCPropertiesDflt.h"
#include "VornToolsCADDOCPropertiesPX1.h"

#include "foundation/Guarded.h"
#include "foundation/JournalFrame.h"
#include "session/ProductHelpers.h"

#include "VornCATIxPDMItem.h"
#include "VornCATxPDMTools.h"

using namespace vorntools;

const CATUnicodeString VornToolsCADDOCPropertiesDflt::_CteCLASS_NAME("VornToolsCADDOCPropertiesDflt::");
const CATUnicodeString VornToolsCADDOCPropertiesPX1::_CteCLASS_NAME("VornToolsCADDOCPropertiesPX1::");

namespace {

using Names = CATListValCATUnicodeString;

/** How one property is written through the product. */
struct ProductProperty {
    const char* name;
    const char* setter;
    const char* words;
    HRESULT (CATIPrdProperties::*set)(const CATUnicodeString&);
};
constexpr ProductProperty kProductProperties[] = {
    {"definition", "SetDefinition", "SetDefinition to [%s]", &CATIPrdProperties::SetDefinition},
    {"revision", "SetRevision", "SetRevision to [%s]", &CATIPrdProperties::SetRevision},
    {"nomenclature", "SetNomenclature", "SetNomenclature to [%s]", &CATIPrdProperties::SetNomenclature},
    {"DescriptionRef", "SetDescriptionRef", "SetDescriptionRef to [%s]", &CATIPrdProperties::SetDescriptionRef}};

/** How one property is written through the item. */
struct ItemProperty {
    const char* name;
    const char* key;
    const char* words;
};
constexpr const char* kPartNumber = "partNumber";
constexpr ItemProperty kItemPartNumber = {kPartNumber, "CN_PART_NUMBER", "Set Part Number to [%s]"};
constexpr ItemProperty kItemProperties[] = {kItemPartNumber,
                                            {"definition", "CN_DEFINITION", "Set Definition to [%s]"},
                                            {"revision", "CN_REVISION", "Set Revision to [%s]"},
                                            {"nomenclature", "CN_NOMENCLATURE", "Set Nomenclature to [%s]"},
                                            {"source", "CN_SOURCE", "Set Source to [%s]"},
                                            {"DescriptionRef", "CN_DESCRIPTIONREF", "Set DescriptionRef to [%s]"}};

/** The platform refuses some part numbers and has no result code for it: whether it took is asked. */
HRESULT writePartNumber(const JournalFrame& i_frame, CATIProduct* ipi_reference, const CATUnicodeString& i_value) {
    i_frame.write("SetPartNumber to [%s]", i_value);
    ipi_reference->SetPartNumber(i_value);
    return ipi_reference->GetPartNumber() == i_value ? S_OK : i_frame.callFailed("SetPartNumber");
}

/** Writes one property through the product; a name that is none of them is passed over. */
HRESULT writeThroughProduct(const JournalFrame& i_frame, CATIPrdProperties* ipi_properties,
                            const CATUnicodeString& i_name, const CATUnicodeString& i_value) {
    if (i_name == "source") i_frame.write("SetSource");
    for (const ProductProperty& property : kProductProperties) {
        if (i_name != property.name) continue;
        i_frame.write(property.words, i_value);
        if (FAILED((ipi_properties->*property.set)(i_value))) return i_frame.callFailed(property.setter);
    }
    return S_OK;
}

HRESULT writeThroughProduct(const JournalFrame& i_frame, CATIProduct* ipi_product, const Names& i_names,
                            const Names& i_values, bool i_with_part_number) {
    if (!ipi_product) return i_frame.missing("ipi_product");
    if (i_names.Size() != i_values.Size()) return i_frame.badInput("i_values");
    const auto sp_reference = referenceOf(ipi_product);
    if (!sp_reference) return i_frame.missing("sp_reference_product");
    const auto sp_properties = sp_reference.query<CATIPrdProperties>();
    if (!sp_properties) return i_frame.missing("pi_prd_properties");
    HRESULT code = S_OK;
    for (int i = 1; i <= i_names.Size(); ++i) {
        const bool is_part_number = i_with_part_number && i_names[i] == kPartNumber;
        const HRESULT written = is_part_number
                                    ? writePartNumber(i_frame, sp_reference.get(), i_values[i])
                                    : writeThroughProduct(i_frame, sp_properties.get(), i_names[i], i_values[i]);
        if (FAILED(written)) code = E_FAIL;
    }
    return code;
}

InterfacePtr<VornCATIxPDMItem> itemOf(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    InterfacePtr<VornCATIxPDMItem> sp_item;
    if (!ipi_product)
        i_frame.missing("ipi_product");
    else if (FAILED(sp_item.receive(
                 [&](VornCATIxPDMItem*& o_item) { return VornCATxPDMTools::getPDMItem(ipi_product, o_item); })))
        i_frame.callFailed("getPDMItem");
    else if (!sp_item)
        i_frame.missing("pi_pdm_item");
    return sp_item;
}

HRESULT writeToItem(const JournalFrame& i_frame, VornCATIxPDMItem* ipi_item, const ItemProperty& i_property,
                    const CATUnicodeString& i_value) {
    i_frame.write(i_property.words, i_value);
    return FAILED(ipi_item->SetProperty(i_property.key, i_value)) ? i_frame.callFailed("SetProperty") : S_OK;
}

HRESULT writeListToItem(const JournalFrame& i_frame, VornCATIxPDMItem* ipi_item, const Names& i_names,
                        const Names& i_values, bool i_with_part_number) {
    HRESULT code = S_OK;
    for (int i = 1; i <= i_names.Size(); ++i)
        for (const ItemProperty& property : kItemProperties)
            if (i_names[i] == property.name && (i_with_part_number || i_names[i] != kPartNumber) &&
                FAILED(writeToItem(i_frame, ipi_item, property, i_values[i])))
                code = E_FAIL;
    return code;
}

HRESULT writeThroughItem(const JournalFrame& i_frame, CATIProduct* ipi_product, const Names& i_names,
                         const Names& i_values, bool i_with_part_number) {
    if (i_names.Size() != i_values.Size()) return i_frame.badInput("i_values");
    const auto sp_item = itemOf(i_frame, ipi_product);
    return sp_item ? writeListToItem(i_frame, sp_item.get(), i_names, i_values, i_with_part_number) : E_FAIL;
}

/** Runs the work of a method and closes its entry with the code. */
template <class Write>
HRESULT endGuarded(JournalFrame& io_frame, Write&& i_write) {
    return io_frame.endWith(guarded(i_write, E_FAIL));
}

} // namespace

HRESULT VornToolsCADDOCPropertiesDflt::setReferenceProperties(CATIProduct* ipi_product, const Names& i_names,
                                                              const Names& i_values) {
    JournalFrame frame(_CteCLASS_NAME, "setReferenceProperties");
    return frame.endWith(
        guarded([&] { return writeThroughProduct(frame, ipi_product, i_names, i_values, true); }, E_FAIL));
}

HRESULT VornToolsCADDOCPropertiesDflt::setReferencePropertiesForForeignFile(CATIProduct* ipi_product,
                                                                            const Names& i_names,
                                                                            const Names& i_values) {
    JournalFrame frame(_CteCLASS_NAME, "setReferencePropertiesForForeignFile");
    return frame.endWith(
        guarded([&] { return writeThroughProduct(frame, ipi_product, i_names, i_values, false); }, E_FAIL));
}

HRESULT VornToolsCADDOCPropertiesDflt::updatePartNumber(CATIProduct* ipi_product, CATUnicodeString i_part_number) {
    JournalFrame frame(_CteCLASS_NAME, "updatePartNumber");
    return endGuarded(frame, [&]() -> HRESULT {
        if (!ipi_product) return frame.missing("ipi_product");
        const auto sp_reference = referenceOf(ipi_product);
        if (!sp_reference) return frame.missing("sp_reference_product");
        return writePartNumber(frame, sp_reference.get(), i_part_number);
    });
}

HRESULT VornToolsCADDOCPropertiesPX1::setProductProperties(CATIProduct* ipi_product, CATUnicodeString i_part_number,
                                                           const Names& i_names, const Names& i_values) {
    JournalFrame frame(_CteCLASS_NAME, "setProductProperties");
    return endGuarded(frame, [&]() -> HRESULT {
        if (i_names.Size() != i_values.Size()) return frame.badInput("i_values");
        const auto sp_item = itemOf(frame, ipi_product);
        if (!sp_item) return E_FAIL;
        const HRESULT code = writeToItem(frame, sp_item.get(), kItemPartNumber, i_part_number);
        const HRESULT list_code = writeListToItem(frame, sp_item.get(), i_names, i_values, false);
        return FAILED(code) ? code : list_code;
    });
}

HRESULT VornToolsCADDOCPropertiesPX1::setProductProperties(CATIProduct* ipi_product, const Names& i_names,
                                                           const Names& i_values) {
    JournalFrame frame(_CteCLASS_NAME, "setProductProperties");
    return frame.endWith(
        guarded([&] { return writeThroughItem(frame, ipi_product, i_names, i_values, false); }, E_FAIL));
}

HRESULT VornToolsCADDOCPropertiesPX1::setReferenceProperties(CATIProduct* ipi_product, const Names& i_names,
                                                             const Names& i_values) {
    JournalFrame frame(_CteCLASS_NAME, "setReferenceProperties");
    return frame.endWith(
        guarded([&] { return writeThroughItem(frame, ipi_product, i_names, i_values, true); }, E_FAIL));
}

HRESULT VornToolsCADDOCPropertiesPX1::setReferencePropertiesForForeignFile(CATIProduct* ipi_product,
                                                                           const Names& i_names,
                                                                           const Names& i_values) {
    JournalFrame frame(_CteCLASS_NAME, "setReferencePropertiesForForeignFile");
    return frame.endWith(
        guarded([&] { return writeThroughItem(frame, ipi_product, i_names, i_values, false); }, E_FAIL));
}

HRESULT VornToolsCADDOCPropertiesPX1::updatePartNumber(CATIProduct* ipi_product, CATUnicodeString i_part_number) {
    JournalFrame frame(_CteCLASS_NAME, "updatePartNumber");
    return endGuarded(frame, [&]() -> HRESULT {
        const auto sp_item = itemOf(frame, ipi_product);
        return sp_item ? writeToItem(frame, sp_item.get(), kItemPartNumber, i_part_number) : E_FAIL;
    });
}
