#include "embedded/knowledge/ParameterObjects.h"

#include "embedded/Profile.h"
#include "embedded/documents/Documents.h"
#include "embedded/text/Numbers.h"

EMBEDDED_INTERFACE(CATICkeInst, CATBaseUnknown, 0x318);
EMBEDDED_INTERFACE(CATICkeParm, CATBaseUnknown, 0x319);

const CATCke::Boolean CATCke::True(1);
const CATCke::Boolean CATCke::False(0);

namespace embedded {

namespace {

/** The node behind the root of a path; null for none. The platform asks nobody for what it knows itself. */
const Node* rootOf(const CATIParmPublisher_var& root) {
    return dynamic_cast<const Node*>(static_cast<CATIParmPublisher*>(root));
}

} // namespace

ValueObject::ValueObject(const ParameterObject& parameter) : Implements("ParameterValue"), m_parameter(parameter) {}

std::string ValueObject::objectName() const { return "value of " + m_parameter.objectName(); }

const Object* ValueObject::home() const { return m_parameter.home(); }

int ValueObject::AsInteger() const { return failing("CATICkeInst::AsInteger") ? 0 : m_parameter.integer; }

double ValueObject::AsReal() const { return failing("CATICkeInst::AsReal") ? 0.0 : m_parameter.real; }

CATCke::Boolean ValueObject::AsBoolean() const { return failing("CATICkeInst::AsBoolean") ? 0 : m_parameter.integer; }

CATUnicodeString ValueObject::AsString() const {
    return failing("CATICkeInst::AsString") ? CATUnicodeString() : toText(m_parameter.text);
}

ParameterObject::ParameterObject(DocumentObject& document, TypeObject& type, const std::string& creationRole)
    : WithAttributes("Parameter"), role(creationRole), m_document(document), m_type(type) {}

const Object* ParameterObject::home() const { return &m_document; }

bool ParameterObject::responds(const IID& iid) {
    return iid == IID_CATICkeParm || iid == IID_CATISpecObject || iid == IID_CATISpecAttrAccess;
}

std::string ParameterObject::shown(int decimals) const {
    if (!isSet) return std::string();
    if (m_type.isMagnitude()) return m_type.current().show(real, decimals);
    if (m_type.name() == "Real") return decimals > 0 ? shownText(real, decimals) : shortestText(real);
    if (m_type.name() == "Integer") return std::to_string(integer);
    if (m_type.name() == "Boolean") return integer != 0 ? "true" : "false";
    return text;
}

bool ParameterObject::changed() {
    isSet = true;
    return true;
}

bool ParameterObject::takes(double value) const { return !driven && value >= least && value <= most; }

template <class Set>
void ParameterObject::write(Set set) {
    const std::string before = shown();
    if (set() && shown() != before) AttributeCalls::written(*this);
}

bool ParameterObject::setText(const std::string& value) {
    if (driven || m_type.name() != "String") return false;
    text = value;
    return changed();
}

bool ParameterObject::setInteger(int value) {
    if (m_type.isReal()) return setReal(value);
    if (!takes(value) || m_type.name() != "Integer") return false;
    integer = value;
    return changed();
}

bool ParameterObject::setReal(double value) {
    if (!takes(value) || !m_type.isReal()) return false;
    real = value;
    return changed();
}

bool ParameterObject::setBoolean(bool value) {
    if (driven || m_type.name() != "Boolean") return false;
    integer = value ? 1 : 0;
    return changed();
}

CATUnicodeString ParameterObject::Name() const {
    return failing("CATICkeParm::Name") ? CATUnicodeString() : toText(userName.empty() ? path(nullptr) : userName);
}

CATUnicodeString ParameterObject::InternalRole() const {
    return failing("CATICkeParm::InternalRole") ? CATUnicodeString() : toText(role);
}

CATUnicodeString ParameterObject::RelativeName(const CATIParmPublisher_var& iRoot) const {
    if (failing("CATICkeParm::RelativeName")) return CATUnicodeString();
    return toText(userName.empty() ? path(rootOf(iRoot)) : userName);
}

CATUnicodeString ParameterObject::Pathname(const CATIParmPublisher_var& iRoot) const {
    return failing("CATICkeParm::Pathname") ? CATUnicodeString() : toText(path(rootOf(iRoot)));
}

CATCke::Boolean ParameterObject::IsNamed() const { return !failing("CATICkeParm::IsNamed") && !userName.empty(); }

void ParameterObject::Rename(const CATUnicodeString& iName) {
    if (failing("CATICkeParm::Rename")) return;
    userName = toBytes(iName);
    AttributeCalls::written(*this);
}

CATUnicodeString ParameterObject::Show() const {
    return failing("CATICkeParm::Show") ? CATUnicodeString() : toText(shown(switches().shownDecimals));
}

CATICkeInst_var ParameterObject::Value() const {
    if (failing("CATICkeParm::Value") || !isSet) return CATICkeInst_var();
    if (!m_value) m_value = std::make_unique<ValueObject>(*this);
    return handleOf<CATICkeInst_var>(static_cast<CATICkeInst*>(m_value.get()));
}

CATICkeType_var ParameterObject::Type() const {
    return failing("CATICkeParm::Type") ? CATICkeType_var()
                                        : handleOf<CATICkeType_var>(static_cast<CATICkeType*>(&m_type));
}

CATCke::Boolean ParameterObject::IsSet() const { return !failing("CATICkeParm::IsSet") && isSet; }

void ParameterObject::Valuate(const int iValue) {
    if (!failing("CATICkeParm::Valuate")) write([&] { return setInteger(iValue); });
}

void ParameterObject::Valuate(const double iValue) {
    if (!failing("CATICkeParm::Valuate")) write([&] { return setReal(iValue); });
}

void ParameterObject::Valuate(const CATCke::Boolean iValue) {
    if (!failing("CATICkeParm::Valuate")) write([&] { return setBoolean(iValue != 0); });
}

void ParameterObject::Valuate(const CATUnicodeString& iValue) {
    if (!failing("CATICkeParm::Valuate")) write([&] { return setText(toBytes(iValue)); });
}

void ParameterObject::ValuateReal(const CATUnicodeString& iValue) {
    double mks = 0.0;
    if (!failing("CATICkeParm::ValuateReal") && m_type.read(toBytes(iValue), mks)) write([&] { return setReal(mks); });
}

CATICkeParm::UserAccessMode ParameterObject::UserAccess() const {
    return failing("CATICkeParm::UserAccess") ? NotSeen : access;
}

void ParameterObject::SetUserAccess(const UserAccessMode iMode) {
    if (failing("CATICkeParm::SetUserAccess")) return;
    access = iMode;
    AttributeCalls::written(*this);
}

CATCke::Boolean ParameterObject::IsReadOnly() const {
    return !failing("CATICkeParm::IsReadOnly") && (access == ReadOnly || access == NotSeen || driven);
}

CATUnicodeString ParameterObject::GetDisplayName() const {
    return failing("CATISpecObject::GetDisplayName") ? CATUnicodeString() : toText(displayName());
}

CATUnicodeString ParameterObject::GetType() const {
    return failing("CATISpecObject::GetType") ? CATUnicodeString() : toText(m_type.name());
}

CATIContainer_var ParameterObject::GetFeatContainer() const {
    return failing("CATISpecObject::GetFeatContainer") ? CATIContainer_var() : AttributeCalls::containerOf(*this);
}

CATISpecAttribute* ParameterObject::AddAttribute(const CATUnicodeString& iName, CATAttrKind iKind,
                                                 CATAttrKind iListKind, CATAttrInOut) {
    return failing("CATISpecObject::AddAttribute") ? nullptr : AttributeCalls::add(*this, iName, iKind, iListKind);
}

CATBoolean ParameterObject::IsUpToDate(CATIDomain_var) const {
    return !failing("CATISpecObject::IsUpToDate") && m_document.upToDate ? TRUE : FALSE;
}

} // namespace embedded
