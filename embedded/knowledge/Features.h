#ifndef EMBEDDED_KNOWLEDGE_FEATURES_H
#define EMBEDDED_KNOWLEDGE_FEATURES_H

#include "CATICkeParameterSet.h"
#include "CATIDrawing.h"
#include "embedded/knowledge/NodeCalls.h"
#include "embedded/object/Extensions.h"

#include <string>

namespace embedded {

EMBEDDED_IDENTITY(CATIDrawing);
template <>
struct Identity<CATICkeParameterSet> {
    static bool has(const IID& iid) { return iid == IID_CATICkeParameterSet || iid == IID_CATICkeNaming; }
};

using FeatureBase = Implements<CATBaseUnknown, CATISpecObject, CATISpecAttrAccess, CATIParmPublisher, CATIRedrawEvent,
                               CATIAlias, CATICkeParameterSet, CATIDrawing>;

/** A feature with parameters below it: a parameter set, the part of a part document, a drawing. */
class FeatureNode final : public WithParameters<FeatureBase> {
public:
    static constexpr const char* kSet = "ParameterSet";
    static constexpr const char* kDrawing = "Drawing";

    FeatureNode(DocumentObject& document, const std::string& type, const std::string& name);

    std::string objectName() const override { return m_type + " " + m_name; }
    const Object* home() const override;
    CATISpecObject* specObject() override { return this; }
    Object& asObject() override { return *this; }
    std::string displayName() const override { return m_name; }
    bool responds(const IID& iid) override;
    DocumentObject* document() const override { return &m_document; }
    const std::string& type() const { return m_type; }
    void rename(const std::string& name) { m_name = name; }

    CATUnicodeString GetDisplayName() const override;
    CATUnicodeString GetType() const override;
    CATIContainer_var GetFeatContainer() const override;
    CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                    CATAttrInOut iInOut) override;
    CATBoolean IsUpToDate(CATIDomain_var iDomain) const override;
    CATUnicodeString GetAlias() override;
    void SetAlias(const CATUnicodeString& iAlias) override;
    CATCkeListOfParm Parameters() const override;

    /** Every document of the kind has the feature: nothing to keep until somebody names it or puts something below. */
    bool implied = false;

protected:
    bool answers(const IID& iid) const override;
    Found extended(const IID& iid) override { return extensionFor(*this, iid); }
    const char* childrenKey() const override { return m_type == kSet ? "Parameters" : "UserParameters"; }

private:
    DocumentObject& m_document;
    const std::string m_type;
    std::string m_name;
};

} // namespace embedded

#endif
