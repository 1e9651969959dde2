#ifndef EMBEDDED_KNOWLEDGE_PARAMETER_OBJECTS_H
#define EMBEDDED_KNOWLEDGE_PARAMETER_OBJECTS_H

#include "CATICkeInst.h"
#include "CATICkeParm.h"
#include "embedded/knowledge/Magnitudes.h"
#include "embedded/knowledge/NodeCalls.h"

#include <limits>
#include <memory>
#include <string>

namespace embedded {

EMBEDDED_IDENTITY(CATICkeInst);
EMBEDDED_IDENTITY(CATICkeParm);

class ParameterObject;

/** What a parameter's value shows; always that of the moment. */
class ValueObject final : public Implements<CATBaseUnknown, CATICkeInst> {
public:
    explicit ValueObject(const ParameterObject& parameter);

    std::string objectName() const override;
    const Object* home() const override;
    int AsInteger() const override;
    double AsReal() const override;
    CATCke::Boolean AsBoolean() const override;
    CATUnicodeString AsString() const override;

private:
    const ParameterObject& m_parameter;
};

class ParameterObject final
    : public WithAttributes<Implements<CATBaseUnknown, CATICkeParm, CATISpecObject, CATISpecAttrAccess>> {
public:
    ParameterObject(DocumentObject& document, TypeObject& type, const std::string& role);

    std::string objectName() const override { return "parameter " + displayName(); }
    const Object* home() const override;
    CATISpecObject* specObject() override { return this; }
    Object& asObject() override { return *this; }
    std::string displayName() const override { return userName.empty() ? role : userName; }
    bool responds(const IID& iid) override;
    DocumentObject* document() const override { return &m_document; }

    TypeObject& type() const { return m_type; }
    /** The value as text; a dimension has its unit. @param decimals of real numbers, 0: as many as it takes */
    std::string shown(int decimals = 0) const;
    bool setText(const std::string& value);
    bool setInteger(int value);
    bool setReal(double value);
    bool setBoolean(bool value);

    const std::string role;
    std::string userName;
    bool isSet = true;
    bool driven = false;                                     ///< by a relation
    double least = -std::numeric_limits<double>::infinity(); ///< number that is taken
    double most = std::numeric_limits<double>::infinity();
    CATICkeParm::UserAccessMode access = CATICkeParm::ReadWrite;
    std::string text;
    int integer = 0; ///< 0 or 1 for a truth value
    double real = 0.0;

    CATUnicodeString Name() const override;
    CATUnicodeString InternalRole() const override;
    CATUnicodeString RelativeName(const CATIParmPublisher_var& iRoot) const override;
    CATUnicodeString Pathname(const CATIParmPublisher_var& iRoot) const override;
    CATCke::Boolean IsNamed() const override;
    void Rename(const CATUnicodeString& iName) override;
    CATUnicodeString Show() const override;
    CATICkeInst_var Value() const override;
    CATICkeType_var Type() const override;
    CATCke::Boolean IsSet() const override;
    void Valuate(const int iValue) override;
    void Valuate(const double iValue) override;
    void Valuate(const CATCke::Boolean iValue) override;
    void Valuate(const CATUnicodeString& iValue) override;
    void ValuateReal(const CATUnicodeString& iValue) override;
    UserAccessMode UserAccess() const override;
    void SetUserAccess(const UserAccessMode iMode) override;
    CATCke::Boolean IsReadOnly() const override;

    CATUnicodeString GetDisplayName() const override;
    CATUnicodeString GetType() const override;
    CATIContainer_var GetFeatContainer() const override;
    CATISpecAttribute* AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind, CATAttrKind iListKind,
                                    CATAttrInOut iInOut) override;
    CATBoolean IsUpToDate(CATIDomain_var iDomain) const override;

private:
    bool changed();
    bool takes(double value) const;
    /** For a call of the platform, not of the builder: another value than before is a change of the document. */
    template <class Set>
    void write(Set set);

    DocumentObject& m_document;
    TypeObject& m_type;
    mutable std::unique_ptr<ValueObject> m_value;
};

} // namespace embedded

#endif
