// The shape representations of a product.
#include "embedded/Profile.h"
#include "embedded/documents/SessionData.h"
#include "embedded/files/FileNames.h"
#include "embedded/structure/Products.h"

namespace embedded {

namespace {

/** Ends a call that gives a text which the object may lack. */
HRESULT optionalText(FaultFlavour flavour, const std::string& value, CATBSTR& output) {
    output = nullptr;
    if (flavour == FaultFlavour::none && value.empty()) return E_FAIL;
    return automationTextAnswer(flavour, value, output);
}

} // namespace

RepresentationObject::RepresentationObject(const ProductObject& product)
    : Implements("ShapeRepresentation"), m_product(product) {}

std::string RepresentationObject::objectName() const { return "representation of " + m_product.objectName(); }

const Object* RepresentationObject::home() const { return m_product.home(); }

HRESULT __stdcall RepresentationObject::get_Name(CATBSTR& oName) {
    constexpr const char* kCached = ".cgr";
    const Reference* const reference = m_product.reference();
    std::string name(reference ? fileNameOf(reference->masterShape) : std::string_view());
    if (m_product.isVisualised() && suffixOf(name) != "cgr") name += kCached;
    return automationTextAnswer(called("CATIABase::get_Name"), name, oName);
}

bool ProductObject::tellsShapes() const { return m_reference && (!isVisualised() || !switches().picturesAreSilent); }

HRESULT __stdcall ProductObject::HasAMasterShapeRepresentation(CAT_VARIANT_BOOL& oHas) {
    const FaultFlavour flavour = called("CATIAProduct::HasAMasterShapeRepresentation");
    if (flavour != FaultFlavour::none) return failedAnswer<CAT_VARIANT_BOOL>(flavour, oHas, 0, -1);
    oHas = m_reference && !m_reference->masterShape.empty() ? -1 : 0;
    return S_OK;
}

HRESULT __stdcall ProductObject::GetMasterShapeRepresentation(CAT_VARIANT_BOOL iLoadIfNecessary,
                                                              CATBaseDispatch*& oRep) {
    oRep = nullptr;
    const FaultFlavour flavour = called("CATIAProduct::GetMasterShapeRepresentation");
    if (!m_representation) m_representation = std::make_unique<RepresentationObject>(*this);
    if (flavour == FaultFlavour::codeWithOutput) oRep = m_representation.get();
    if (flavour != FaultFlavour::none) return Failures::get().codeOf(flavour);
    if (!m_reference || m_reference->masterShape.empty()) return E_FAIL;
    if (iLoadIfNecessary && isVisualised()) setWorkMode(1);
    oRep = Failures::get().givesOtherKind() ? handOut<CATBaseDispatch>(this)
                                            : handOut<CATBaseDispatch>(m_representation.get());
    return S_OK;
}

HRESULT __stdcall ProductObject::GetMasterShapeRepresentationPathName(CATBSTR& oPath) {
    const FaultFlavour flavour = called("CATIAProduct::GetMasterShapeRepresentationPathName");
    return optionalText(flavour, tellsShapes() ? m_reference->masterShape : std::string(), oPath);
}

HRESULT __stdcall ProductObject::GetDefaultShapeName(CATBSTR& oName) {
    const FaultFlavour flavour = called("CATIAProduct::GetDefaultShapeName");
    const bool any = tellsShapes() && !m_reference->shapes.empty();
    return optionalText(flavour, any ? m_reference->shapes.front().first : std::string(), oName);
}

HRESULT __stdcall ProductObject::GetShapePathName(const CATBSTR& iShapeName, CATBSTR& oPath) {
    const FaultFlavour flavour = called("CATIAProduct::GetShapePathName");
    const std::string name = fromAutomationText(iShapeName);
    std::string path;
    if (tellsShapes())
        for (const auto& shape : m_reference->shapes)
            if (shape.first == name && path.empty()) path = shape.second;
    return optionalText(flavour, path, oPath);
}

} // namespace embedded
