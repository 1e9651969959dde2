#include "properties/ParametersByShortName.h"

#include "foundation/InterfaceIds.h"
#include "foundation/Texts.h"
#include "properties/CreationRules.h"
#include "properties/ParameterNames.h"
#include "properties/ParameterSets.h"

#include "CATICkeParmFactory.h"
#include "CATIContainer.h"
#include "CATISpecAttrKey.h"
#include "CATLISTV_CATISpecObject.h"
#include "UTILFile.h"

#include <utility>

namespace vorntools {

namespace {

/** Splitting tells whether a name is fit for it, no more: a file name ends at a slash, too, which the name of a
 * parameter may hold ("km/h"). */
ParametersByShortName::Member readMember(const CATISpecObject_var& i_object, InterfacePtr<CATICkeParm> i_parameter) {
    ParametersByShortName::Member member{i_object, std::move(i_parameter), {}, {}, {}};
    CATUnicodeString path, file_name;
    if (member.parameter) member.full_name = member.parameter->Name();
    member.has_short_name =
        SUCCEEDED(UTILFile::splitPathAndFileName(member.full_name, path, file_name)) && !member.full_name.IsNull();
    if (member.has_short_name) member.short_name = lastSegment(member.full_name);
    return member;
}

/** A mode of callers. */
struct AccessMode {
    CATICkeParm::UserAccessMode mode;
    const char* word;
};
constexpr AccessMode kAccessModes[] = {
    {CATICkeParm::ReadOnly, "ReadOnly"}, {CATICkeParm::ReadWrite, "ReadWrite"}, {CATICkeParm::User, "User"}};

const AccessMode* accessOf(int i_mode) { return i_mode >= 0 && i_mode <= 2 ? &kAccessModes[i_mode] : nullptr; }

} // namespace

InterfacePtr<CATICkeParmFactory> factoryOf(const JournalFrame& i_frame, CATIParmPublisher* ipi_publisher,
                                           const char* i_container) {
    const CATIContainer_var sp_container = ipi_publisher->GetContainer();
    if (sp_container == nullptr) {
        i_frame.missing(i_container);
        return {};
    }
    auto sp_factory = queryInterface<CATICkeParmFactory>(static_cast<CATIContainer*>(sp_container));
    if (!sp_factory) i_frame.missing("pi_ckeparmfactory");
    return sp_factory;
}

ParametersByShortName::ParametersByShortName(InterfacePtr<CATIParmPublisher> i_publisher, Depth i_depth)
    : m_publisher(std::move(i_publisher)), m_depth(i_depth) {
    if (!m_publisher) return;
    CATListValCATISpecObject_var list;
    if (m_depth == Any)
        m_publisher->GetAllChildren(CATICkeParm::ClassName(), list);
    else
        m_publisher->GetDirectChildren(CATICkeParm::ClassName(), list);
    for (int i = 1; i <= list.Size(); ++i)
        m_members.push_back(readMember(list[i], queryInterface<CATICkeParm>(static_cast<CATISpecObject*>(list[i]))));
}

HRESULT ParametersByShortName::write(const JournalFrame& i_frame, const char* i_method, CATICkeParmFactory* ipi_factory,
                                     const AttributesToWrite& i_attributes) {
    CreationRules rules;
    if (FAILED(rules.read(i_frame))) return E_FAIL;
    const bool ignores_oem = processSays(&PROCManager::ignoreOEMProperties);
    HRESULT code = S_OK;
    for (int i = 1; i <= i_attributes.names.Size(); ++i) {
        const CATUnicodeString& name = i_attributes.names[i];
        if (const Member* const p_member = findWithJournal(i_frame, i_method, name)) {
            i_frame.write("found");
            code = i_attributes.update(p_member->parameter.get(), i);
        } else if (rules.creates && !(ignores_oem && beginsWith(name, "OEM"))) {
            code = create(i_frame, ipi_factory, i_attributes, i, rules.makesReadOnly(name));
        }
    }
    return code;
}

/** No name gets a second parameter: one that comes twice is known the second time, and none is made while one does not
 * tell its name. */
HRESULT ParametersByShortName::create(const JournalFrame& i_frame, CATICkeParmFactory* ipi_factory,
                                      const AttributesToWrite& i_attributes, int i_entry, bool i_read_only) {
    HRESULT code = checkNames(i_frame);
    if (FAILED(code)) return code;
    InterfacePtr<CATICkeParm> sp_made;
    code = i_attributes.create(ipi_factory, m_publisher.get(), i_entry, i_read_only, false, sp_made);
    if (sp_made) m_members.push_back(readMember(CATISpecObject_var(), std::move(sp_made)));
    return code;
}

HRESULT ParametersByShortName::remove(const JournalFrame& i_frame, const CATUnicodeString& i_name) const {
    const Member* const p_member = find(i_name);
    if (!p_member) {
        i_frame.write("parameter to remove not found [%s]", i_name);
        return FAILED(checkNames(i_frame)) ? E_FAIL : S_FALSE;
    }
    const HRESULT code = removeMember(i_frame, *p_member);
    if (SUCCEEDED(code)) i_frame.write("parameter removed [%s]", i_name);
    return code;
}

HRESULT ParametersByShortName::removeEach(const JournalFrame& i_frame,
                                          const std::function<bool(const CATUnicodeString&)>& i_wanted,
                                          const char* i_line) const {
    HRESULT code = checkNames(i_frame);
    for (const Member& member : m_members) {
        if (!member.has_short_name || !i_wanted(member.short_name)) continue;
        const HRESULT removed = removeMember(i_frame, member);
        if (FAILED(removed))
            code = removed;
        else
            i_frame.write(i_line, member.short_name);
    }
    return code;
}

HRESULT ParametersByShortName::changeAccess(const JournalFrame& i_frame, const CATUnicodeString& i_name,
                                            int i_mode) const {
    const Member* const p_member = find(i_name);
    if (!p_member) {
        i_frame.write(" propertie not found yet");
        return FAILED(checkNames(i_frame)) ? E_FAIL : S_FALSE;
    }
    i_frame.write("try to set access mode to %d for propertie = %s", i_mode, i_name);
    const AccessMode* const p_access = accessOf(i_mode);
    if (!p_access) return i_frame.platformFailed("user_access_mode is unknown");
    p_member->parameter->SetUserAccess(p_access->mode);
    if (p_member->parameter->UserAccess() != p_access->mode) return i_frame.platformFailed("SetUserAccess");
    i_frame.write("change user access mode to %s for parameter %s", p_access->word, i_name);
    return S_OK;
}

bool ParametersByShortName::isNamed(const Member& i_member, const CATUnicodeString& i_name) const {
    if (!i_member.parameter || !i_member.has_short_name) return false;
    if (!hasPath(i_name)) return i_member.short_name == i_name;
    return i_member.parameter->RelativeName(CATIParmPublisher_var(m_publisher.get())) == i_name;
}

const ParametersByShortName::Member* ParametersByShortName::find(const CATUnicodeString& i_name) const {
    for (const Member& member : m_members)
        if (isNamed(member, i_name)) return &member;
    return nullptr;
}

/** The same with every name on the way to it in the journal. */
const ParametersByShortName::Member* ParametersByShortName::findWithJournal(const JournalFrame& i_frame,
                                                                            const char* i_method,
                                                                            const CATUnicodeString& i_name) const {
    i_frame.write("looking for parameter name [%s]", i_name);
    for (const Member& member : m_members) {
        if (!member.parameter) continue;
        i_frame.write("--> parameter name from CATIA [%s]", member.full_name);
        if (!member.has_short_name)
            i_frame.write("%s : UTILFile::splitPathAndFileName is failed.", i_method);
        else if (isNamed(member, i_name))
            return &member;
    }
    return nullptr;
}

/** S_OK when every member tells its name; E_FAIL, reported, otherwise: one of them may be the one that is not found. */
HRESULT ParametersByShortName::checkNames(const JournalFrame& i_frame) const {
    for (const Member& member : m_members)
        if (!member.parameter || !member.has_short_name) return i_frame.missing("sp_cke_parm");
    return S_OK;
}

HRESULT ParametersByShortName::removeMember(const JournalFrame& i_frame, const Member& i_member) const {
    const auto sp_holder = holderOf(i_member);
    if (!sp_holder) return i_frame.missing("pi_parm_publisher");
    CATListValCATISpecObject_var before, after;
    listParameters(sp_holder.get(), before);
    sp_holder->RemoveChild(i_member.object);
    // A list that shows nothing more at all proves nothing.
    listParameters(sp_holder.get(), after);
    return after.Size() == before.Size() - 1 && !contains(after, i_member.object) ? S_OK
                                                                                  : i_frame.callFailed("RemoveChild");
}

/** The publisher that a member stands directly below: only that one can remove it. */
InterfacePtr<CATIParmPublisher> ParametersByShortName::holderOf(const Member& i_member) const {
    if (m_depth == Direct || hasChild(m_publisher.get(), CATICkeParm::ClassName(), i_member.object)) return m_publisher;
    CATListValCATISpecObject_var sets;
    m_publisher->GetAllChildren(CATICkeParameterSet::ClassName(), sets);
    for (int i = 1; i <= sets.Size(); ++i) {
        auto sp_set = queryInterface<CATIParmPublisher>(static_cast<CATISpecObject*>(sets[i]));
        if (sp_set && hasChild(sp_set.get(), CATICkeParm::ClassName(), i_member.object)) return sp_set;
    }
    return {};
}

} // namespace vorntools
