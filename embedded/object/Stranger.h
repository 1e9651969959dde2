// What calls hand out when they answer with an object of another kind.
#ifndef EMBEDDED_OBJECT_STRANGER_H
#define EMBEDDED_OBJECT_STRANGER_H

#include "embedded/Failures.h"
#include "embedded/object/CommonInterfaces.h"
#include "embedded/object/Implements.h"

namespace embedded {

/** An object that nobody expects. One for the process; it may be used without a reference. */
class StrangerObject final : public Implements<CATBaseUnknown, CATISpecObject> {
public:
    static StrangerObject& get();

    CATBoolean IsUpToDate(CATIDomain_var iDomain) const override;

private:
    StrangerObject();
};

/** Begins a list of handles with a null and a stranger, when the call that fills it answers with another kind. */
template <class Handle, class List>
void addStrangers(List& list) {
    if (!Failures::get().givesOtherKind()) return;
    list.Append(Handle());
    list.Append(handleOf<Handle>(static_cast<CATISpecObject*>(&StrangerObject::get())));
}

} // namespace embedded

#endif
