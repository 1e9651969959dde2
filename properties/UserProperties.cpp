#include "VornToolsCommon.h"

#include "foundation/JournalFrame.h"
#include "foundation/Texts.h"
#include "properties/AttributesToWrite.h"
#include "properties/CreationRules.h"
#include "properties/ParameterKinds.h"
#include "properties/ParameterNames.h"
#include "properties/ParameterSets.h"

#include "CATDocument.h"
#include "CATICkeParmFactory.h"
#include "CATIDrawing.h"
#include "CATIPrdProperties.h"
#include "CATIProduct.h"
#include "CATLISTV_CATISpecObject.h"
#include "UTILFile.h"
#include "UTILString.h"
#include "VornToolsCADDOCProperties.h"

#include <utility>
#include <vector>

using namespace vorntools;

namespace {

/** Properties that belong to the integration. */
constexpr const char* kOwnProperties[] = {"EBS_DatasetUid", "EBS_DatasetLastVersion", "EBS_ItemRevName"};

/** One user property with the names that it is found by. */
struct Member {
    CATISpecObject_var object;
    InterfacePtr<CATICkeParm> parameter;
    CATUnicodeString full_name;
    CATUnicodeString short_name;
    bool has_short_name;
};

/** The publisher of a product's user properties; empty when the product has none. */
InterfacePtr<CATIParmPublisher> publisherOf(CATIPrdProperties* ipi_properties, bool i_create) {
    InterfacePtr<CATIParmPublisher> sp_publisher;
    sp_publisher.receive([&](CATIParmPublisher*& o_publisher) {
        return ipi_properties->GetUserProperties(o_publisher, i_create ? TRUE : FALSE);
    });
    return sp_publisher;
}

/** The publisher with every step on the way to it reported. */
InterfacePtr<CATIParmPublisher> reachPublisher(const JournalFrame& i_frame, CATIProduct* ipi_product, bool i_create) {
    if (!ipi_product) {
        i_frame.badInput("ipi_catiproduct");
        return {};
    }
    const auto sp_properties = queryInterface<CATIPrdProperties>(ipi_product);
    if (!sp_properties) {
        i_frame.missing("pi_cati_prd_properties");
        return {};
    }
    auto sp_publisher = publisherOf(sp_properties.get(), i_create);
    if (!sp_publisher) i_frame.missing("pi_catiparmpublisher");
    return sp_publisher;
}

/** The factory of a publisher's container; every step is reported. @param i_container_name as the report names it */
InterfacePtr<CATICkeParmFactory> factoryOf(const JournalFrame& i_frame, CATIParmPublisher* ipi_publisher,
                                           const char* i_container_name) {
    const CATIContainer_var sp_container = ipi_publisher->GetContainer();
    if (sp_container == nullptr) {
        i_frame.missing(i_container_name);
        return {};
    }
    auto sp_factory = queryInterface<CATICkeParmFactory>(static_cast<CATIContainer*>(sp_container));
    if (!sp_factory) i_frame.missing("pi_ckeparmfactory");
    return sp_factory;
}

/** Appends the members from a position on; those before it are known already. Splitting tells whether a name is fit
 * for it, no more: a file name ends at a slash, too, which the name of a property may hold ("km/h"). */
void readMembers(CATIParmPublisher* ipi_publisher, std::vector<Member>& io_members, int i_from = 1) {
    CATListValCATISpecObject_var list;
    listParameters(ipi_publisher, list);
    for (int i = i_from; i <= list.Size(); ++i) {
        Member member{list[i], queryInterface<CATICkeParm>(static_cast<CATISpecObject*>(list[i])), {}, {}, false};
        CATUnicodeString path, file_name;
        if (member.parameter) member.full_name = member.parameter->Name();
        member.has_short_name =
            SUCCEEDED(UTILFile::splitPathAndFileName(member.full_name, path, file_name)) && !member.full_name.IsNull();
        if (member.has_short_name) member.short_name = lastSegment(member.full_name);
        io_members.push_back(std::move(member));
    }
}

std::vector<Member> membersOf(CATIParmPublisher* ipi_publisher) {
    std::vector<Member> members;
    readMembers(ipi_publisher, members);
    return members;
}

/** S_OK when every member tells its name; E_FAIL, reported, otherwise: one of them may be the one that is not found. */
HRESULT checkNames(const JournalFrame& i_frame, const std::vector<Member>& i_members) {
    for (const Member& member : i_members)
        if (!member.parameter || !member.has_short_name) return i_frame.missing("sp_cke_parm");
    return S_OK;
}

const Member* memberNamed(const std::vector<Member>& i_members, const CATUnicodeString& i_name) {
    for (const Member& member : i_members)
        if (member.parameter && member.has_short_name && member.short_name == i_name) return &member;
    return nullptr;
}

CATUnicodeString valueOf(CATICkeParm* ipi_parameter) {
    CATUnicodeString value = ipi_parameter->Show();
    if (parameterKindOf(ipi_parameter) == ParameterKind::Truth) return value == "true" ? "1" : "0";
    UTILString::replaceNewLineForMappings(value);
    value.ReplaceAll("\x1A", "_");
    return value;
}

/** The member of a name, with every name on the way to it in the journal; null when there is none. */
const Member* lookFor(const JournalFrame& i_frame, const std::vector<Member>& i_members,
                      const CATUnicodeString& i_name) {
    i_frame.write("looking for parameter name [%s]", i_name);
    for (const Member& member : i_members) {
        if (!member.parameter) continue;
        i_frame.write("--> parameter name from CATIA [%s]", member.full_name);
        if (!member.has_short_name)
            i_frame.write("setUserProperties : UTILFile::splitPathAndFileName is failed.");
        else if (member.short_name == i_name)
            return &member;
    }
    return nullptr;
}

/** The platform's mode and its word for a caller's; false for none of them. */
bool accessOf(int i_mode, CATICkeParm::UserAccessMode& o_access, const char*& o_word) {
    switch (i_mode) {
    case 0:
        o_access = CATICkeParm::ReadOnly;
        o_word = "ReadOnly";
        return true;
    case 1:
        o_access = CATICkeParm::ReadWrite;
        o_word = "ReadWrite";
        return true;
    case 2:
        o_access = CATICkeParm::User;
        o_word = "User";
        return true;
    default: return false;
    }
}

} // namespace

HRESULT VornToolsCommon::getUserProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString& o_names,
                                           CATListValCATUnicodeString& o_values) {
    const JournalFrame frame(_CteCLASS_NAME, "getUserProperties");
    o_names.RemoveAll();
    o_values.RemoveAll();
    const auto sp_properties = queryInterface<CATIPrdProperties>(ipi_catiproduct);
    if (!sp_properties) return E_FAIL;
    const auto sp_publisher = publisherOf(sp_properties.get(), false);
    if (!sp_publisher) return E_FAIL;
    for (const Member& member : membersOf(sp_publisher.get())) {
        if (!member.parameter) {
            frame.write("sp_cke_parm is NULL_var");
        } else if (!member.has_short_name) {
            frame.write("UTILFile::splitPathAndFileName is failed");
        } else if (!member.parameter->IsSet()) {
            frame.write("This param is not set");
        } else {
            o_names.Append(member.short_name);
            o_values.Append(valueOf(member.parameter.get()));
        }
    }
    return S_OK;
}

HRESULT VornToolsCommon::setUserProperties(CATIProduct* ipi_catiproduct, CATListValCATUnicodeString i_names,
                                           CATListValCATUnicodeString i_values, CATListValCATUnicodeString i_types) {
    const JournalFrame frame(_CteCLASS_NAME, "setUserProperties");
    if (!ipi_catiproduct) return frame.badInput("ipi_catiproduct");
    const AttributesToWrite properties{i_names, i_values, i_types};
    if (!properties.areParallel(frame)) return E_FAIL;
    const auto sp_publisher = reachPublisher(frame, ipi_catiproduct, true);
    if (!sp_publisher) return E_FAIL;
    const auto sp_factory = factoryOf(frame, sp_publisher.get(), "sp_container");
    if (!sp_factory) return E_FAIL;
    CreationRules rules;
    if (FAILED(rules.read(frame))) return E_FAIL;
    const bool ignores_oem = processSays(&PROCManager::ignoreOEMProperties);
    std::vector<Member> members = membersOf(sp_publisher.get());
    HRESULT code = S_OK;
    for (int i = 1; i <= i_names.Size(); ++i) {
        if (const Member* const p_member = lookFor(frame, members, i_names[i])) {
            frame.write("found");
            code = properties.update(p_member->parameter.get(), i);
        } else if (rules.creates && !(ignores_oem && beginsWith(i_names[i], "OEM"))) {
            code = checkNames(frame, members); // no second property of a name
            if (FAILED(code)) continue;
            InterfacePtr<CATICkeParm> sp_made;
            code = properties.create(sp_factory.get(), sp_publisher.get(), i, rules.makesReadOnly(i_names[i]), false,
                                     sp_made);
            // A name that comes twice is updated the second time.
            readMembers(sp_publisher.get(), members, static_cast<int>(members.size()) + 1);
        }
    }
    return code;
}

HRESULT VornToolsCommon::RemoveProperty(CATIProduct* ipi_catiproduct, CATUnicodeString i_name) {
    const JournalFrame frame(_CteCLASS_NAME, "RemoveProperty");
    const auto sp_publisher = reachPublisher(frame, ipi_catiproduct, false);
    if (!sp_publisher || !factoryOf(frame, sp_publisher.get(), "spi_container")) return E_FAIL;
    const std::vector<Member> members = membersOf(sp_publisher.get());
    const Member* const p_member = memberNamed(members, i_name);
    if (!p_member) {
        frame.write("parameter to remove not found [%s]", i_name);
        return FAILED(checkNames(frame, members)) ? E_FAIL : S_FALSE;
    }
    sp_publisher->RemoveChild(p_member->object);
    frame.write("parameter removed [%s]", i_name);
    return S_OK;
}

HRESULT VornToolsCommon::removeEBSProperties(CATIProduct* ipi_catiproduct) {
    const JournalFrame frame(_CteCLASS_NAME, "removeEBSProperties");
    const auto sp_publisher = reachPublisher(frame, ipi_catiproduct, false);
    if (!sp_publisher || !factoryOf(frame, sp_publisher.get(), "spi_container")) return E_FAIL;
    const std::vector<Member> members = membersOf(sp_publisher.get());
    for (const Member& member : members) {
        bool own = false;
        for (const char* const p_name : kOwnProperties) own = own || member.short_name == p_name;
        if (!own || !member.parameter) continue;
        sp_publisher->RemoveChild(member.object);
        frame.write("EBS parameter removed [%s]", member.short_name);
    }
    return checkNames(frame, members);
}

HRESULT VornToolsCommon::changePropertyAccess(CATIProduct* ipi_catiproduct, CATUnicodeString i_name,
                                              int i_user_access_mode) {
    const JournalFrame frame(_CteCLASS_NAME, "changePropertyAccess");
    if (!ipi_catiproduct) return frame.badInput("ipi_catiproduct");
    const auto sp_properties = queryInterface<CATIPrdProperties>(ipi_catiproduct);
    if (!sp_properties) return frame.missing("pi_cati_prd_properties");
    const auto sp_publisher = publisherOf(sp_properties.get(), false);
    if (!sp_publisher) {
        frame.write("pi_catia_parameters = null");
        return E_FAIL;
    }
    const std::vector<Member> members = membersOf(sp_publisher.get());
    const Member* const p_member = memberNamed(members, i_name);
    if (!p_member) {
        frame.write(" propertie not found yet");
        return FAILED(checkNames(frame, members)) ? E_FAIL : S_FALSE;
    }
    frame.write("try to set access mode to %d for propertie = %s", i_user_access_mode, i_name);
    CATICkeParm::UserAccessMode access = CATICkeParm::NotSeen;
    const char* p_word = nullptr;
    if (!accessOf(i_user_access_mode, access, p_word)) return frame.platformFailed("user_access_mode is unknown");
    p_member->parameter->SetUserAccess(access);
    if (p_member->parameter->UserAccess() != access) return frame.platformFailed("SetUserAccess");
    frame.write("change user access mode to %s for parameter %s", p_word, i_name);
    return S_OK;
}

HRESULT VornToolsCommon::getNameProperty(CATICkeParm_var i_parameter, CATUnicodeString& o_name) {
    const JournalFrame frame(_CteCLASS_NAME, "getNameProperty");
    o_name = "";
    if (i_parameter == nullptr) return frame.badInput("i_parameter");
    const CATUnicodeString full_name = i_parameter->Name();
    if (full_name.IsNull()) return frame.platformFailed("Name");
    o_name = lastSegment(full_name);
    frame.write("Property name of [%s] is [%s]", full_name, o_name);
    return S_OK;
}

HRESULT VornToolsCommon::getDrawingParameters(CATDocument* ip_document, CATIDrawing* ipi_drawing,
                                              CATListValCATISpecObject_var& o_parameters) {
    const JournalFrame frame(_CteCLASS_NAME, "getDrawingParameters");
    o_parameters.RemoveAll();
    if (!ip_document) return frame.badInput("ip_document");
    if (!ipi_drawing) return frame.badInput("ipi_drawing");
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_drawing);
    if (!sp_publisher) return frame.missing("pi_parm_publisher");
    sp_publisher->GetAllChildren(CATICkeParm::ClassName(), o_parameters);
    return S_OK;
}
