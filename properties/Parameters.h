#ifndef PROPERTIES_PARAMETERS_H
#define PROPERTIES_PARAMETERS_H

#include "foundation/InterfacePtr.h"

#include "CATICkeParm.h"
#include "CATIParmPublisher.h"

class CATICkeParmFactory;

namespace vorntools {

/** What a new parameter is to be. */
struct NewParameter {
    const CATUnicodeString& name;
    const CATUnicodeString& value;
    const CATUnicodeString& type;
    bool read_only;
    bool user_access;
    bool rename_to_name;
};

/** What VornToolsCADDOCProperties::createParameter does, with the parameter that was made. */
HRESULT makeParameter(CATICkeParmFactory* ipi_factory, CATIParmPublisher* ipi_publisher, const NewParameter& i_new,
                      InterfacePtr<CATICkeParm>& o_made);

} // namespace vorntools

#endif
