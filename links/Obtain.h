#ifndef LINKS_OBTAIN_H
#define LINKS_OBTAIN_H

#include "foundation/InterfaceIds.h"
#include "foundation/InterfacePtr.h"

#include "CATErrorDef.h"

// Objects that have to be there, with the code of the call that did not give them.

namespace vorntools {

/** Calls `call(T*& out)`; a success that gives no object counts as failure. */
template <class T, class Call>
HRESULT obtain(InterfacePtr<T>& o_object, Call&& i_call) {
    const HRESULT code = o_object.receive(i_call);
    return SUCCEEDED(code) && !o_object ? E_FAIL : code;
}

/** Another interface of an object. */
template <class U, class T>
HRESULT obtainInterface(T* ipi_object, InterfacePtr<U>& o_interface) {
    return obtain(o_interface, [=](U*& o_found) {
        void* p_found = nullptr;
        const HRESULT code = ipi_object->QueryInterface(InterfaceId<U>::value(), &p_found);
        o_found = static_cast<U*>(p_found);
        return code;
    });
}

} // namespace vorntools

#endif
