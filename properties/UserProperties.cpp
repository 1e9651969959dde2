#include "VornToolsCommon.h"

#include "foundation/Guarded.h"
#include "foundation/InterfaceIds.h"
#include "foundation/JournalFrame.h"
#include "properties/ParameterKinds.h"
#include "properties/ParameterNames.h"
#include "properties/ParametersByShortName.h"
#include "session/ProductHelpers.h"

#include "CATICkeParmFactory.h"
#include "UTILString.h"

using namespace vorntools;

namespace {

using Publisher = InterfacePtr<CATIParmPublisher>;
using Member = ParametersByShortName::Member;

/** The publisher of a product's user properties; empty when the product has none. @return E_FAIL for a product whose
 * reference, which has them, is not loaded */
HRESULT findPublisher(CATIProduct* ipi_product, CATIPrdProperties* ipi_properties, Publisher& o_publisher) {
    o_publisher.receive([&](CATIParmPublisher*& o_found) { return ipi_properties->GetUserProperties(o_found, FALSE); });
    return o_publisher || referenceOf(ipi_product) ? S_OK : E_FAIL;
}

/** The properties of a product; empty, and reported, when they are missing. */
InterfacePtr<CATIPrdProperties> propertiesOf(const JournalFrame& i_frame, CATIProduct* ipi_product) {
    if (!ipi_product) {
        i_frame.badInput("ipi_catiproduct");
        return {};
    }
    auto sp_properties = queryInterface<CATIPrdProperties>(ipi_product);
    if (!sp_properties) i_frame.missing("pi_cati_prd_properties");
    return sp_properties;
}

/** The publisher for removing; empty when there is nothing to remove. @return E_FAIL, reported, when a step to it or to
 * its factory failed */
HRESULT publisherForRemoving(const JournalFrame& i_frame, CATIProduct* ipi_product, Publisher& o_publisher) {
    const auto sp_properties = propertiesOf(i_frame, ipi_product);
    if (!sp_properties) return E_FAIL;
    if (FAILED(findPublisher(ipi_product, sp_properties.get(), o_publisher)))
        return i_frame.missing("pi_catiparmpublisher");
    return !o_publisher || factoryOf(i_frame, o_publisher.get(), "spi_container") ? S_OK : E_FAIL;
}

/** Whether a property belongs to the integration. */
bool isOwn(const CATUnicodeString& i_name) {
    return i_name == "EBS_DatasetUid" || i_name == "EBS_DatasetLastVersion" || i_name == "EBS_ItemRevName";
}

CATUnicodeString valueOf(CATICkeParm* ipi_parameter) {
    CATUnicodeString value = ipi_parameter->Show();
    if (parameterKindOf(ipi_parameter) == ParameterKind::Truth) return value == "true" ? "1" : "0";
    UTILString::replaceNewLineForMappings(value);
    value.ReplaceAll("\x1A", "_");
    return value;
}

ParametersByShortName below(const Publisher& i_publisher) {
    return ParametersByShortName(i_publisher, ParametersByShortName::Direct);
}

HRESULT readProperties(const JournalFrame& i_frame, const Publisher& i_publisher, CATListValCATUnicodeString& o_names,
                       CATListValCATUnicodeString& o_values) {
    const ParametersByShortName properties = below(i_publisher);
    for (const Member& member : properties.members()) {
        if (!member.parameter) {
            i_frame.write("sp_cke_parm is NULL_var");
        } else if (!member.has_short_name) {
            i_frame.write("UTILFile::splitPathAndFileName is failed");
        } else if (!member.parameter->IsSet()) {
            i_frame.write("This param is not set");
        } else {
            o_names.Append(member.short_name);
            o_values.Append(valueOf(member.parameter.get()));
        }
    }
    return S_OK;
}

} // namespace

HRESULT VornToolsCommon::getUserProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString& o_names,
                                           CATListValCATUnicodeString& o_values) {
    const JournalFrame frame(_CteCLASS_NAME, "getUserProperties");
    o_names.RemoveAll();
    o_values.RemoveAll();
    const auto read = [&]() -> HRESULT {
        const auto sp_properties = queryInterface<CATIPrdProperties>(ipi_catiproduct);
        if (!sp_properties) return E_FAIL;
        Publisher sp_publisher;
        const HRESULT found = findPublisher(ipi_catiproduct, sp_properties.get(), sp_publisher);
        return sp_publisher ? readProperties(frame, sp_publisher, o_names, o_values) : found;
    };
    const HRESULT code = guarded(read, E_FAIL);
    if (FAILED(code)) {
        o_names.RemoveAll();
        o_values.RemoveAll();
    }
    return code;
}

HRESULT VornToolsCommon::setUserProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString i_names,
                                           CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types) {
    constexpr const char* kMethod = "setUserProperties";
    const JournalFrame frame(_CteCLASS_NAME, kMethod);
    if (!ipi_catiproduct) return frame.badInput("ipi_catiproduct");
    const AttributesToWrite properties{i_names, i_values, i_types};
    if (!properties.areParallel(frame)) return E_FAIL;
    const auto write = [&]() -> HRESULT {
        const auto sp_properties = propertiesOf(frame, ipi_catiproduct);
        if (!sp_properties) return E_FAIL;
        Publisher sp_publisher;
        sp_publisher.receive(
            [&](CATIParmPublisher*& o_publisher) { return sp_properties->GetUserProperties(o_publisher, TRUE); });
        if (!sp_publisher) return frame.missing("pi_catiparmpublisher");
        const auto sp_factory = factoryOf(frame, sp_publisher.get(), "sp_container");
        return sp_factory ? below(sp_publisher).write(frame, kMethod, sp_factory.get(), properties) : E_FAIL;
    };
    return guarded(write, E_FAIL);
}

HRESULT VornToolsCommon::RemoveProperty(CATIProduct* ipi_catiproduct, CATUnicodeString i_name) {
    const JournalFrame frame(_CteCLASS_NAME, "RemoveProperty");
    const auto remove = [&]() -> HRESULT {
        Publisher sp_publisher;
        if (FAILED(publisherForRemoving(frame, ipi_catiproduct, sp_publisher))) return E_FAIL;
        return below(sp_publisher).remove(frame, i_name);
    };
    return guarded(remove, E_FAIL);
}

HRESULT VornToolsCommon::removeEBSProperties(CATIProduct* ipi_catiproduct) {
    const JournalFrame frame(_CteCLASS_NAME, "removeEBSProperties");
    const auto remove = [&]() -> HRESULT {
        Publisher sp_publisher;
        if (FAILED(publisherForRemoving(frame, ipi_catiproduct, sp_publisher))) return E_FAIL;
        return below(sp_publisher).removeEach(frame, &isOwn, "EBS parameter removed [%s]");
    };
    return guarded(remove, E_FAIL);
}

HRESULT VornToolsCommon::changePropertyAccess(CATIProduct* ipi_catiproduct, CATUnicodeString i_name,
                                              int i_user_access_mode) {
    const JournalFrame frame(_CteCLASS_NAME, "changePropertyAccess");
    const auto change = [&]() -> HRESULT {
        const auto sp_properties = propertiesOf(frame, ipi_catiproduct);
        if (!sp_properties) return E_FAIL;
        Publisher sp_publisher;
        findPublisher(ipi_catiproduct, sp_properties.get(), sp_publisher);
        if (sp_publisher) return below(sp_publisher).changeAccess(frame, i_name, i_user_access_mode);
        frame.write("pi_catia_parameters = null");
        return E_FAIL;
    };
    return guarded(change, E_FAIL);
}

HRESULT VornToolsCommon::getNameProperty(CATICkeParm_var i_parameter, CATUnicodeString& o_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getNameProperty");
    o_name = "";
    if (i_parameter == nullptr) return frame.badInput("i_parameter");
    const auto read = [&]() -> HRESULT {
        const CATUnicodeString full_name = i_parameter->Name();
        if (full_name.IsNull()) return frame.platformFailed("Name");
        const CATUnicodeString name = lastSegment(full_name);
        frame.write("Property name of [%s] is [%s]", full_name, name);
        o_name = name;
        return S_OK;
    };
    return guarded(read, E_FAIL);
}
