#ifndef PROPERTIES_DOCUMENT_ATTRIBUTES_H
#define PROPERTIES_DOCUMENT_ATTRIBUTES_H

// What the kinds of documents have in common.

#include "foundation/Guarded.h"
#include "foundation/TextKeys.h"
#include "properties/AttributePairs.h"
#include "properties/AttributesToWrite.h"

namespace vorntools {

/** Joins the values that a parameter keeps. */
using JoinValues = HRESULT (*)(CATISpecAttrAccess*, CATISpecAttrKey*, const CATUnicodeString&, const CATICkeType_var&,
                               const CATUnicodeString&, CATUnicodeString&);

/** Position of the first entry of each name. */
TextMap<int> positionsOf(const CATListValCATUnicodeString& i_names);

/** Creates an attribute; one without a name is refused: nobody could read a set with such a parameter again. */
HRESULT createAttribute(const JournalFrame& i_frame, const AttributesToWrite& i_attributes, int i_entry,
                        CATICkeParmFactory* ipi_factory, CATIParmPublisher* ipi_set, bool i_read_only, bool i_rename,
                        InterfacePtr<CATICkeParm>& o_made);

/** Adds a parameter with the values that it keeps, else the one that it shows. E_FAIL, reported, when the parameter
 * does not let its values be seen. */
HRESULT addParameter(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name,
                     JoinValues i_join, AttributePairs& io_pairs);

/** Runs what reads pairs, guarded; they are empty when it failed. */
template <class Read>
HRESULT readGuarded(Read&& i_read, CATListValCATUnicodeString& o_pairs) {
    const HRESULT code = guarded(i_read, E_FAIL);
    if (FAILED(code)) o_pairs.RemoveAll();
    return code;
}

} // namespace vorntools

#endif
