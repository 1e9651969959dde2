#include "links/SceneGroups.h"

#include "VornToolsCommon.h"
#include "VornToolsScenes.h"
#include "links/Obtain.h"
#include "links/SceneWalk.h"

#include "CATDocument.h"
#include "CATIAProduct.h"
#include "CATIAScene.h"
#include "CATIASceneProduct.h"
#include "CATIProduct.h"
#include "CATMathTransformation.h"

namespace vorntools {

/** A product in front of the scenes, with what is the same in all of them. */
struct SceneGroups::Child {
    InterfacePtr<CATIAProduct> automation;
    CATUnicodeString path;
};

namespace {

/** Whether a product is shown by a product document; components are, by that of their parent. One that is not loaded is
 * reported. */
bool isShownByProductDocument(CATIProduct* ipi_product) {
    CATDocument* p_document = nullptr;
    return SUCCEEDED(VornToolsCommon::getCATDocument(ipi_product, p_document)) &&
           VornToolsCommon::returnDocumentType(p_document->StorageName()) == VornToolsCommon::DocumentTypeProduct;
}

/** Whether a product is in a scene, and of which type the scene is.
 * @return E_FAIL, reported, when the scene does not answer */
HRESULT askScene(const JournalFrame& i_frame, CATIAScene* ipi_scene, CATIAProduct* ipi_child, CatSceneType& o_type,
                 CAT_VARIANT_BOOL& o_exists) {
    if (!ipi_scene) return i_frame.badInput("catia_scene_object");
    if (FAILED(ipi_scene->get_Type(o_type))) return i_frame.callFailed("get_Type");
    i_frame.write(o_type == CatSceneTypeFull ? "it is a full scene" : "it is a partial scene");
    if (!ipi_child) return i_frame.badInput("p_child_catiaproduct");
    if (FAILED(ipi_scene->ExistsInScene(ipi_child, o_exists))) return i_frame.callFailed("ExistsInScene");
    return S_OK;
}

/** Flag of a product that is in a scene; empty when the scene does not tell. */
const char* hiddenFlag(CATIASceneProduct* ipi_data) {
    CAT_VARIANT_BOOL hidden = 0;
    if (FAILED(ipi_data->get_Hidden(hidden))) return "";
    return hidden ? kTrueFlag : kFalseFlag;
}

} // namespace

HRESULT SceneGroups::append(CATIProduct* ipi_child) {
    Child child{queryInterface<CATIAProduct>(ipi_child), CATUnicodeString()};
    unsigned char has_component_parent = 0;
    VornToolsScenes::getParentsWithComponents(ipi_child, child.path, has_component_parent);
    std::vector<CATMathTransformation> positions;
    forEachScene(m_frame, m_scenes, m_count, [&](CATBaseDispatch* ipi_scene, long i_index) {
        positions.emplace_back().SetCoefficients(appendGroup(child, ipi_scene, i_index).data());
    });
    if (FAILED(m_scenes->Reset())) m_frame.callFailed("Reset");
    return isShownByProductDocument(ipi_child) ? appendBelow(ipi_child, positions) : S_OK;
}

/** Fails for want of memory alone: whatever else is missing below ends there and is reported. */
HRESULT SceneGroups::appendBelow(CATIProduct* ipi_child, std::vector<CATMathTransformation>& i_positions) {
    CATListPtrCATMathTransformation positions;
    for (CATMathTransformation& position : i_positions) positions.Append(&position);
    return VornToolsScenes::readScenesDataInAssy("", ipi_child, m_scenes, positions, m_count, m_data);
}

Position SceneGroups::appendGroup(const Child& i_child, CATBaseDispatch* ipi_scene, long i_index) {
    m_data.Append(i_child.path);
    CATUnicodeString name;
    if (FAILED(readSceneName(m_frame, ipi_scene, name))) return m_working;
    m_data.Append(name);

    const auto sp_scene = queryInterface<CATIAScene>(ipi_scene);
    CatSceneType type = CatSceneTypeDelta;
    CAT_VARIANT_BOOL exists = 0;
    if (FAILED(askScene(m_frame, sp_scene.get(), i_child.automation.get(), type, exists))) return m_working;
    if (exists) return appendPresent(i_child, sp_scene.get(), i_index);
    m_data.Append("");
    m_data.Append(type == CatSceneTypeFull ? kTrueFlag : "");
    return m_working;
}

Position SceneGroups::appendPresent(const Child& i_child, CATIAScene* ipi_scene, long i_index) {
    InterfacePtr<CATIASceneProduct> sp_data;
    const auto get_data = [&](CATIASceneProduct*& o_data) {
        return ipi_scene->GetSceneProductData(i_child.automation.get(), o_data);
    };
    if (FAILED(obtain(sp_data, get_data))) {
        m_frame.badInput("scene_product_data");
        return m_working;
    }
    takeParentPosition(i_index);
    Position absolute = m_working;
    Position position;
    if (readPosition(sp_data.get(), position)) {
        VornToolsScenes::multiplyPositionMatrix(m_working.data(), position.data(), absolute.data());
        m_data.Append(positionText(absolute));
    } else {
        m_data.Append("");
    }
    m_data.Append(hiddenFlag(sp_data.get()));
    return absolute;
}

/** Kept because the commands rely on it: a child that is not in a scene gets the position that was taken last, for
 * whatever child and scene, and the identity before any was. */
void SceneGroups::takeParentPosition(long i_index) {
    if (!m_parents)
        m_working = kIdentityPosition;
    else if (i_index <= m_parents->Size())
        if (const CATMathTransformation* const p_parent = (*m_parents)[static_cast<int>(i_index)])
            p_parent->GetCoefficients(m_working.data());
}

} // namespace vorntools
