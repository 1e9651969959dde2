#ifndef PROPERTIES_PARAMETER_SETS_H
#define PROPERTIES_PARAMETER_SETS_H

#include "properties/SpecAttributes.h"

#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATIParmPublisher.h"
#include "CATISpecAttrKey.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATISpecObject.h"

#include <utility>

namespace vorntools {

/** An object as a parameter set. @return S_FALSE for one of another type; E_FAIL when it does not tell its type, or is
 * one that does not answer */
inline HRESULT asParameterSet(CATISpecObject* ipi_object, InterfacePtr<CATICkeParameterSet>& o_set) {
    o_set.reset();
    const CATUnicodeString type = ipi_object ? ipi_object->GetType() : CATUnicodeString();
    if (type.IsNull()) return E_FAIL;
    if (type != "ParameterSet") return S_FALSE;
    o_set = queryInterface<CATICkeParameterSet>(ipi_object);
    return o_set ? S_OK : E_FAIL;
}

/** Calls `take(object)` for each component of a list, null for one that is not to be had, until it answers true.
 * @return the number of components */
template <class Take>
int forEachComponent(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, Take&& i_take) {
    const int count = ipi_access->GetListSize(ipi_key);
    for (int i = 1; i <= count; ++i) {
        const auto sp_object = InterfacePtr<CATISpecObject>::adopt(ipi_access->GetSpecObject(ipi_key, i));
        if (i_take(sp_object.get())) break;
    }
    return count;
}

/** The first set of a list whose name is wanted; empty when there is none. @return E_FAIL, and no set, when one that
 * cannot be read may be it */
template <class Wanted>
HRESULT findSet(CATISpecAttrAccess* ipi_access, CATISpecAttrKey* ipi_key, Wanted&& i_wanted,
                InterfacePtr<CATICkeParameterSet>& o_set) {
    o_set.reset();
    HRESULT code = S_OK;
    const int count = forEachComponent(ipi_access, ipi_key, [&](CATISpecObject* ipi_object) {
        InterfacePtr<CATICkeParameterSet> sp_set;
        const HRESULT kind = asParameterSet(ipi_object, sp_set);
        if (kind == S_FALSE) return false;
        const CATUnicodeString name = sp_set ? ipi_object->GetDisplayName() : CATUnicodeString();
        if (name.IsNull()) code = E_FAIL;
        if (name.IsNull() || !i_wanted(name)) return false;
        o_set = std::move(sp_set);
        return true;
    });
    if (o_set) return S_OK;
    return count == 0 && ipi_access->TestAttributeValue(ipi_key) ? E_FAIL : code;
}

/** The parameters below a publisher. */
inline void listParameters(CATIParmPublisher* ipi_publisher, CATListValCATISpecObject_var& o_members) {
    o_members.RemoveAll();
    ipi_publisher->GetDirectChildren(CATICkeParm::ClassName(), o_members);
}

/** Takes the nulls out of a list that the platform filled. */
void dropNulls(CATListValCATISpecObject_var& io_objects);

/** Whether an object is in a list, whatever interface of it. */
bool contains(const CATListValCATISpecObject_var& i_objects, CATISpecObject* ipi_object);

/** Whether an object stands directly below a publisher. Appending has no result code: this tells whether it was done.
 * @param i_class one that lists the object */
bool hasChild(CATIParmPublisher* ipi_publisher, CATClassId i_class, CATISpecObject* ipi_object);

/** The first set directly below a publisher; empty when there is none. @return E_FAIL, and no set, when one that cannot
 * be read may be it */
HRESULT findSetBelow(CATIParmPublisher* ipi_publisher, InterfacePtr<CATICkeParameterSet>& o_set);

/** Whether a feature tells that it has no set but the excluded one. Asked when the look-up by its attributes found
 * none: one that failed must not give the feature a second set. */
bool hasNoSet(CATISpecObject* ipi_feature);

/** A new set below a feature; empty when it cannot be made. */
InterfacePtr<CATICkeParameterSet> makeSet(CATISpecObject* ipi_feature);

} // namespace vorntools

#endif
