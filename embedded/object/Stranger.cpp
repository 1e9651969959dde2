#include "embedded/object/Stranger.h"

namespace embedded {

StrangerObject& StrangerObject::get() {
    static StrangerObject& stranger = *new StrangerObject;
    return stranger;
}

StrangerObject::StrangerObject() : Implements("Stranger") {
    pin();
    pin(IID_CATISpecObject);
}

CATBoolean StrangerObject::IsUpToDate(CATIDomain_var) const {
    return !failing("CATISpecObject::IsUpToDate") ? TRUE : FALSE;
}

} // namespace embedded
