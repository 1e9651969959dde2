#ifndef LINKS_SCENE_GROUPS_H
#define LINKS_SCENE_GROUPS_H

#include "foundation/JournalFrame.h"
#include "links/ScenePosition.h"

#include "CATLISTP_CATMathTransformation.h"
#include "CATListOfCATUnicodeString.h"
#include "IEnumVARIANT.h"

#include <vector>

class CATBaseDispatch;
class CATIAScene;
class CATIProduct;

namespace vorntools {

constexpr const char* kTrueFlag = "TRUE";
constexpr const char* kFalseFlag = "FALSE";

/** Appends the groups of the children of one parent to the scenes data. */
class SceneGroups {
public:
    /** @param ip_parents absolute positions of the parent, one a scene; null at the root */
    SceneGroups(const JournalFrame& i_frame, IEnumVARIANT* ipi_scenes, long i_count,
                const CATListPtrCATMathTransformation* ip_parents, CATListValCATUnicodeString& io_data)
        : m_frame(i_frame), m_scenes(ipi_scenes), m_count(i_count), m_parents(ip_parents), m_data(io_data) {}

    /** The groups of a child and of everything below it. @return E_FAIL when there is no memory for them */
    HRESULT append(CATIProduct* ipi_child);

private:
    struct Child;

    HRESULT appendBelow(CATIProduct* ipi_child, std::vector<CATMathTransformation>& i_positions);
    /** @return what the child's own children take as its position in this scene */
    Position appendGroup(const Child& i_child, CATBaseDispatch* ipi_scene, long i_index);
    Position appendPresent(const Child& i_child, CATIAScene* ipi_scene, long i_index);
    void takeParentPosition(long i_index);

    const JournalFrame& m_frame;
    IEnumVARIANT* const m_scenes;
    const long m_count;
    const CATListPtrCATMathTransformation* const m_parents;
    CATListValCATUnicodeString& m_data;
    Position m_working = kIdentityPosition;
};

} // namespace vorntools

#endif
