#ifndef PROPERTIES_INSTANCE_PROPERTY_SET_H
#define PROPERTIES_INSTANCE_PROPERTY_SET_H

// Where the properties of an instance are kept: its container, the list in it and the set in that.

#include "foundation/InterfacePtr.h"
#include "foundation/JournalFrame.h"

#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATIContainer.h"
#include "CATIProduct.h"
#include "CATISpecAttrAccess.h"
#include "CATLISTV_CATBaseUnknown.h"

#include <memory>
#include <vector>

namespace vorntools {

/** The container of an instance that is stored where its reference is. Null otherwise, which is reported when a step to
 * it failed. */
CATIContainer_var sharedContainer(const JournalFrame& i_frame, CATIProduct* ipi_instance);

/** The properties' set in a list; empty when there is none. @return E_FAIL when one that cannot be read may be it */
HRESULT findPropertySet(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key,
                        InterfacePtr<CATICkeParameterSet>& o_set);

/** The properties' set of an instance; empty when there is none. @return E_FAIL, reported, when it cannot be read */
HRESULT existingPropertySet(const JournalFrame& i_frame, CATIProduct* ipi_instance,
                            InterfacePtr<CATICkeParameterSet>& o_set);

/** The same, made when it is missing and may be. @return E_FAIL without a set; unreported when it may not be made */
HRESULT propertySetForWriting(const JournalFrame& i_frame, CATIProduct* ipi_instance,
                              const CATIContainer_var& i_container, bool i_may_create,
                              InterfacePtr<CATICkeParameterSet>& o_set);

using ParameterList = std::unique_ptr<CATListValCATBaseUnknown_var>;

/** The properties of an instance. @return E_FAIL, reported, when they cannot be read */
HRESULT listProperties(const JournalFrame& i_frame, CATIProduct* ipi_instance, ParameterList& o_properties);

struct NamedParameter {
    CATUnicodeString name;
    InterfacePtr<CATICkeParm> parameter;
};

/** The same with their names. */
HRESULT listProperties(const JournalFrame& i_frame, CATIProduct* ipi_instance,
                       std::vector<NamedParameter>& o_properties);

/** The first parameter of a name; empty when there is none. @return E_FAIL, unreported, when a member that does not
 * answer may be it */
HRESULT findProperty(CATICkeParameterSet* ipi_set, const CATUnicodeString& i_name,
                     InterfacePtr<CATICkeParm>& o_parameter);

} // namespace vorntools

#endif
