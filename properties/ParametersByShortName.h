#ifndef PROPERTIES_PARAMETERS_BY_SHORT_NAME_H
#define PROPERTIES_PARAMETERS_BY_SHORT_NAME_H

#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"
#include "properties/AttributesToWrite.h"

#include "CATICkeParm.h"
#include "CATIParmPublisher.h"
#include "CATISpecObject.h"

#include <functional>
#include <vector>

namespace vorntools {

/** The factory of a publisher's container; empty when a step failed, which is reported. @param i_container the
 * container as its report names it */
InterfacePtr<CATICkeParmFactory> factoryOf(const JournalFrame& i_frame, CATIParmPublisher* ipi_publisher,
                                           const char* i_container);

/**
 * The parameters below a publisher, which callers know by the last segment of their names: the user properties of a
 * product, the parameters of a drawing. A name that is a path itself is compared with the whole name below the
 * publisher.
 */
class ParametersByShortName {
public:
    enum Depth { Direct, Any };

    struct Member {
        CATISpecObject_var object;           ///< null for one that was just made
        InterfacePtr<CATICkeParm> parameter; ///< empty for what is none
        CATUnicodeString full_name;
        CATUnicodeString short_name;
        bool has_short_name;
    };

    /** @param i_publisher empty: there are none */
    ParametersByShortName(InterfacePtr<CATIParmPublisher> i_publisher, Depth i_depth);

    const std::vector<Member>& members() const& { return m_members; }
    void members() const&& = delete; // they would be gone with the object

    /** Updates the attributes that are there and, when the environment wants it so, creates the others.
     * @param i_method the frame's
     * @return the code of the last one; E_FAIL, reported, for one that may be a parameter which does not tell its name
     */
    HRESULT write(const JournalFrame& i_frame, const char* i_method, CATICkeParmFactory* ipi_factory,
                  const AttributesToWrite& i_attributes);
    /** Removes the first parameter of a name. @return S_FALSE when there is none, E_FAIL, reported, when it may be one
     * that does not tell its name or stays where it is */
    HRESULT remove(const JournalFrame& i_frame, const CATUnicodeString& i_name) const;
    /** Removes every parameter with a short name that is `wanted`, and journals it. The others go even if one stays. */
    HRESULT removeEach(const JournalFrame& i_frame, const std::function<bool(const CATUnicodeString&)>& i_wanted,
                       const char* i_line) const;
    /** @param i_mode 0 read-only, 1 read and write, 2 the users' own. @return as remove; E_FAIL, reported, for another
     * mode */
    HRESULT changeAccess(const JournalFrame& i_frame, const CATUnicodeString& i_name, int i_mode) const;

private:
    bool isNamed(const Member& i_member, const CATUnicodeString& i_name) const;
    const Member* find(const CATUnicodeString& i_name) const;
    const Member* findWithJournal(const JournalFrame& i_frame, const char* i_method,
                                  const CATUnicodeString& i_name) const;
    HRESULT create(const JournalFrame& i_frame, CATICkeParmFactory* ipi_factory, const AttributesToWrite& i_attributes,
                   int i_entry, bool i_read_only);
    HRESULT checkNames(const JournalFrame& i_frame) const;
    HRESULT removeMember(const JournalFrame& i_frame, const Member& i_member) const;
    InterfacePtr<CATIParmPublisher> holderOf(const Member& i_member) const;

    const InterfacePtr<CATIParmPublisher> m_publisher;
    const Depth m_depth;
    std::vector<Member> m_members;
};

} // namespace vorntools

#endif
