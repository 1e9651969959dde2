#include "embedded/knowledge/LentParameters.h"

#include "embedded/Accounting.h"
#include "embedded/knowledge/ParameterObjects.h"

#include <utility>

namespace embedded {

LentParameters::LentParameters(std::vector<ParameterObject*> parameters, CATBaseUnknown* stranger)
    : m_parameters(std::move(parameters)), m_stranger(stranger),
      m_list(std::make_unique<CATListValCATBaseUnknown_var>()) {
    --Accounting::get().live().lists;
    if (m_stranger) {
        m_list->Append(CATBaseUnknown_var());
        m_list->Append(CATBaseUnknown_var(m_stranger));
        m_stranger->Release();
    }
    for (ParameterObject* const parameter : m_parameters) {
        CATICkeParm* const shown = parameter;
        parameter->pin(IID_CATICkeParm);
        m_list->Append(CATBaseUnknown_var(shown));
        shown->Release();
    }
}

LentParameters::~LentParameters() {
    for (ParameterObject* const parameter : m_parameters) handOut<CATICkeParm>(parameter);
    handOut(m_stranger);
    m_list.reset();
    ++Accounting::get().live().lists;
}

} // namespace embedded
