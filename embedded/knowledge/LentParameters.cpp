#include "embedded/knowledge/LentParameters.h"

#include "embedded/Accounting.h"
#include "embedded/knowledge/ParameterObjects.h"

#include <utility>

namespace embedded {

LentParameters::LentParameters(std::vector<ParameterObject*> parameters)
    : m_parameters(std::move(parameters)), m_list(std::make_unique<CATListValCATBaseUnknown_var>()) {
    --Accounting::get().live().lists;
    for (ParameterObject* const parameter : m_parameters) {
        CATICkeParm* const shown = parameter;
        parameter->pin(IID_CATICkeParm);
        m_list->Append(CATBaseUnknown_var(shown));
        shown->Release();
    }
}

LentParameters::~LentParameters() {
    for (ParameterObject* const parameter : m_parameters) handOut<CATICkeParm>(parameter);
    m_list.reset();
    ++Accounting::get().live().lists;
}

} // namespace embedded
