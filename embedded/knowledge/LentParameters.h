#ifndef EMBEDDED_KNOWLEDGE_LENT_PARAMETERS_H
#define EMBEDDED_KNOWLEDGE_LENT_PARAMETERS_H

#include "CATBaseUnknown.h"
#include "CATICkeRelationForwards.h"

#include <memory>
#include <vector>

namespace embedded {

class ParameterObject;

/** Parameters in a list that stays the platform's own: whoever is shown it holds none of them. */
class LentParameters {
public:
    /** @param stranger the list begins with a null and this object; null for parameters only */
    explicit LentParameters(std::vector<ParameterObject*> parameters, CATBaseUnknown* stranger = nullptr);
    ~LentParameters();
    LentParameters(const LentParameters&) = delete;
    LentParameters& operator=(const LentParameters&) = delete;

    CATCkeListOfParm list() { return m_list.get(); }

private:
    const std::vector<ParameterObject*> m_parameters;
    CATBaseUnknown* const m_stranger;
    std::unique_ptr<CATListValCATBaseUnknown_var> m_list;
};

} // namespace embedded

#endif
