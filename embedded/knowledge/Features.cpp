#include "embedded/knowledge/Features.h"

#include "CATICkeParm.h"
#include "embedded/documents/Documents.h"
#include "embedded/object/Stranger.h"

#include <algorithm>
#include <iterator>
#include <memory>

EMBEDDED_INTERFACE(CATICkeNaming, CATBaseUnknown, 0x316);
EMBEDDED_INTERFACE(CATICkeParameterSet, CATICkeNaming, 0x317);
EMBEDDED_INTERFACE(CATIDrawing, CATBaseUnknown, 0x31D);

namespace embedded {

FeatureNode::FeatureNode(DocumentObject& document, const std::string& type, const std::string& name)
    : WithParameters(type), m_document(document), m_type(type), m_name(name) {}

const Object* FeatureNode::home() const { return &m_document; }

bool FeatureNode::answers(const IID& iid) const {
    if (iid == IID_CATICkeParameterSet || iid == IID_CATICkeNaming) return m_type == kSet;
    return iid != IID_CATIDrawing || m_type == kDrawing;
}

bool FeatureNode::responds(const IID& iid) {
    if (!answers(iid)) return false;
    const IID* const own[] = {&IID_CATISpecObject,  &IID_CATISpecAttrAccess, &IID_CATIParmPublisher,
                              &IID_CATIRedrawEvent, &IID_CATIAlias,          &IID_CATICkeParameterSet,
                              &IID_CATICkeNaming,   &IID_CATIDrawing};
    const bool found = std::any_of(std::begin(own), std::end(own), [&](const IID* one) { return *one == iid; });
    return found || bool(extensionFor(*this, iid));
}

CATUnicodeString FeatureNode::GetDisplayName() const {
    return failing("CATISpecObject::GetDisplayName") ? CATUnicodeString() : toText(m_name);
}

CATUnicodeString FeatureNode::GetType() const {
    return failing("CATISpecObject::GetType") ? CATUnicodeString() : toText(m_type);
}

CATIContainer_var FeatureNode::GetFeatContainer() const {
    return failing("CATISpecObject::GetFeatContainer") ? CATIContainer_var() : AttributeCalls::containerOf(*this);
}

CATISpecAttribute* FeatureNode::AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                             CATAttrInOut) {
    return failing("CATISpecObject::AddAttribute") ? nullptr : AttributeCalls::add(*this, iName, iKind, iListKind);
}

CATBoolean FeatureNode::IsUpToDate(CATIDomain_var) const {
    return !failing("CATISpecObject::IsUpToDate") && m_document.upToDate ? TRUE : FALSE;
}

CATUnicodeString FeatureNode::GetAlias() {
    return failing("CATIAlias::GetAlias") ? CATUnicodeString() : toText(m_name);
}

void FeatureNode::SetAlias(const CATUnicodeString& iAlias) {
    if (failing("CATIAlias::SetAlias")) return;
    m_name = toBytes(iAlias);
    m_document.written();
}

CATCkeListOfParm FeatureNode::Parameters() const {
    if (failing("CATICkeParameterSet::Parameters")) return nullptr;
    auto list = std::make_unique<CATListValCATBaseUnknown_var>();
    addStrangers<CATBaseUnknown_var>(*list);
    for (Node* const child : AttributeCalls::below(*this, IID_CATICkeParm, false))
        list->Append(handleOf<CATBaseUnknown_var>(child->specObject()));
    return list.release();
}

} // namespace embedded
