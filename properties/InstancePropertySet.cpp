#include "properties/InstancePropertySet.h"

#include "properties/ParameterNames.h"
#include "properties/ParameterSets.h"
#include "session/ProductHelpers.h"

#include "CATICkeRelationFactory.h"
#include "CATISpecAttrKey.h"
#include "CATISpecAttribute.h"

#include <utility>

namespace vorntools {

namespace {

constexpr const char* kAttribute = "_Maro";
constexpr const char* kSetName = "UserInstanceProperties";

CATIContainer_var containerOf(CATIProduct* ipi_product) {
    const auto sp_object = queryInterface<CATISpecObject>(ipi_product);
    return sp_object ? sp_object->GetFeatContainer() : CATIContainer_var();
}

/** Attribute access of an instance; empty, and reported, when it is missing. */
InterfacePtr<CATISpecAttrAccess> accessTo(const JournalFrame& i_frame, CATIProduct* ipi_instance) {
    auto sp_access = queryInterface<CATISpecAttrAccess>(ipi_instance);
    if (!sp_access) i_frame.missing("pi_spec_attr_access");
    return sp_access;
}

/** The key of the properties' list; made when it is missing. */
InterfacePtr<CATISpecAttrKey> keyForWriting(const JournalFrame& i_frame, CATIProduct* ipi_instance,
                                            CATISpecAttrAccess* ipi_access) {
    auto sp_key = keyOf(ipi_access, kAttribute);
    if (sp_key) return sp_key;
    const auto sp_object = queryInterface<CATISpecObject>(ipi_instance);
    if (!sp_object) {
        i_frame.missing("pi_spec_object");
        return {};
    }
    const auto sp_attribute =
        InterfacePtr<CATISpecAttribute>::adopt(sp_object->AddAttribute(kAttribute, tk_list, tk_component));
    if (sp_attribute) sp_key = keyOf(ipi_access, kAttribute);
    if (!sp_key) i_frame.callFailed("AddAttribute");
    return sp_key;
}

/** A new set at the end of the list; empty, and reported, when it cannot be put there. */
InterfacePtr<CATICkeParameterSet> addSet(const JournalFrame& i_frame, const CATIContainer_var& i_container,
                                         CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key) {
    const auto sp_factory = queryInterface<CATICkeRelationFactory>(static_cast<CATIContainer*>(i_container));
    if (!sp_factory) {
        i_frame.missing("pi_relation_factory");
        return {};
    }
    const CATIParmPublisher_var sp_publisher = sp_factory->CreateParameterSet(kSetName);
    const CATISpecObject_var sp_object(sp_publisher);
    auto sp_set = queryInterface<CATICkeParameterSet>(static_cast<CATIParmPublisher*>(sp_publisher));
    if (sp_object == nullptr || !sp_set) {
        i_frame.callFailed("CreateParameterSet");
        return {};
    }
    if (FAILED(ipi_access->SetSpecObject(ipi_key, sp_object))) {
        i_frame.callFailed("SetSpecObject");
        return {};
    }
    return sp_set;
}

/** The properties' set in a list; empty when there is none. @return E_FAIL, reported, when it cannot be read */
HRESULT setInList(const JournalFrame& i_frame, CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                  InterfacePtr<CATICkeParameterSet>& o_set) {
    return FAILED(findPropertySet(ipi_access, ipi_key, o_set)) ? i_frame.missing("pi_set") : S_OK;
}

/** What the set of an instance lists; nothing without a set. */
HRESULT listMembers(const JournalFrame& i_frame, CATIProduct* ipi_instance, InterfacePtr<CATICkeParameterSet>& o_set,
                    ParameterList& o_members) {
    const HRESULT code = existingPropertySet(i_frame, ipi_instance, o_set);
    if (FAILED(code)) return code;
    o_members.reset(o_set ? o_set->Parameters() : new CATListValCATBaseUnknown_var);
    for (int i = 1; o_members && i <= o_members->Size(); ++i)
        if (!queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>((*o_members)[i]))) o_members.reset();
    return o_members ? S_OK : i_frame.callFailed("Parameters");
}

/** Calls `take(parameter)` for the members of a set, in their order, until it answers true. @return false when a member
 * on the way or its name was not to be had */
template <class Take>
bool untilTaken(const CATListValCATBaseUnknown_var& i_members, CATICkeParameterSet* ipi_set, Take&& i_take) {
    const auto sp_publisher = queryInterface<CATIParmPublisher>(ipi_set);
    if (!sp_publisher) return i_members.Size() == 0;
    const CATIParmPublisher_var sp_set(sp_publisher.get());
    bool all = true;
    for (int i = 1; i <= i_members.Size(); ++i) {
        auto sp_parameter = queryInterface<CATICkeParm>(static_cast<CATBaseUnknown*>(i_members[i]));
        const CATUnicodeString name = sp_parameter ? nameInSet(sp_parameter.get(), sp_set) : CATUnicodeString();
        if (name.IsNull())
            all = false;
        else if (i_take(NamedParameter{name, std::move(sp_parameter)}))
            break;
    }
    return all;
}

} // namespace

CATIContainer_var sharedContainer(const JournalFrame& i_frame, CATIProduct* ipi_instance) {
    const auto sp_reference = referenceOf(ipi_instance);
    if (!sp_reference) {
        i_frame.missing("sp_reference_product");
        return CATIContainer_var();
    }
    const CATIContainer_var sp_container = containerOf(ipi_instance);
    if (sp_container == nullptr) {
        i_frame.missing("sp_container");
        return CATIContainer_var();
    }
    const CATIContainer_var sp_reference_container = containerOf(sp_reference.get());
    return sp_container == sp_reference_container ? sp_container : CATIContainer_var();
}

HRESULT findPropertySet(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                        InterfacePtr<CATICkeParameterSet>& o_set) {
    return findSet(
        ipi_access, ipi_key, [](const CATUnicodeString& i_name) { return i_name == kSetName; }, o_set);
}

HRESULT existingPropertySet(const JournalFrame& i_frame, CATIProduct* ipi_instance,
                            InterfacePtr<CATICkeParameterSet>& o_set) {
    o_set.reset();
    const auto sp_access = accessTo(i_frame, ipi_instance);
    if (!sp_access) return E_FAIL;
    const auto sp_key = keyOf(sp_access.get(), kAttribute);
    return sp_key ? setInList(i_frame, sp_access.get(), sp_key.get(), o_set) : S_OK;
}

HRESULT propertySetForWriting(const JournalFrame& i_frame, CATIProduct* ipi_instance,
                              const CATIContainer_var& i_container, bool i_may_create,
                              InterfacePtr<CATICkeParameterSet>& o_set) {
    const auto sp_access = accessTo(i_frame, ipi_instance);
    if (!sp_access) return E_FAIL;
    auto sp_key = keyOf(sp_access.get(), kAttribute);
    if (!sp_key && i_may_create) sp_key = keyForWriting(i_frame, ipi_instance, sp_access.get());
    if (!sp_key || FAILED(setInList(i_frame, sp_access.get(), sp_key.get(), o_set))) return E_FAIL;
    if (!o_set && i_may_create) o_set = addSet(i_frame, i_container, sp_access.get(), sp_key.get());
    return o_set ? S_OK : E_FAIL;
}

HRESULT listProperties(const JournalFrame& i_frame, CATIProduct* ipi_instance, ParameterList& o_properties) {
    InterfacePtr<CATICkeParameterSet> sp_set;
    return listMembers(i_frame, ipi_instance, sp_set, o_properties);
}

HRESULT listProperties(const JournalFrame& i_frame, CATIProduct* ipi_instance,
                       std::vector<NamedParameter>& o_properties) {
    InterfacePtr<CATICkeParameterSet> sp_set;
    ParameterList members;
    const HRESULT code = listMembers(i_frame, ipi_instance, sp_set, members);
    if (FAILED(code)) return code;
    const bool all = untilTaken(*members, sp_set.get(), [&](const NamedParameter& i_parameter) {
        o_properties.push_back(i_parameter);
        return false;
    });
    return all ? S_OK : i_frame.missing("pi_param");
}

HRESULT findProperty(CATICkeParameterSet* ipi_set, const CATUnicodeString& i_name,
                     InterfacePtr<CATICkeParm>& o_parameter) {
    o_parameter.reset();
    const ParameterList members(ipi_set->Parameters());
    const bool all = members && untilTaken(*members, ipi_set, [&](const NamedParameter& i_parameter) {
                         if (i_parameter.name != i_name) return false;
                         o_parameter = i_parameter.parameter;
                         return true;
                     });
    return all || o_parameter ? S_OK : E_FAIL;
}

} // namespace vorntools
