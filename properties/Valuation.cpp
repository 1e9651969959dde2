#include "properties/Valuation.h"

#include "foundation/InterfaceIds.h"
#include "properties/ParameterTexts.h"
#include "properties/ParameterUnits.h"

#include "CATICkeInst.h"
#include "CATICkeUnit.h"
#include "VornLocaleEnv.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vorntools {

namespace {

constexpr const char* kValuate = "Valuate";
constexpr const char* kValuateReal = "ValuateReal";

bool isReal(ParameterKind i_kind) { return i_kind == ParameterKind::Real || i_kind == ParameterKind::Dimension; }

/** Whether several texts of a type letter are what a parameter holds; truth values are also a text. */
bool textsFit(const CATUnicodeString& i_type, ParameterKind i_kind) {
    return i_kind == ParameterKind::Text || (i_type == "b" && i_kind == ParameterKind::Truth);
}

/** A text with a number as it stands, as the session writes it, and with a point: which decimal mark the platform reads
 * in a dimension is not known. Each once. */
std::vector<CATUnicodeString> notationsOf(const CATUnicodeString& i_text) {
    const CATUnicodeString separator = VornLocaleEnv::getDecimalSeparatorSymbol();
    CATUnicodeString pointed(i_text);
    if (!separator.IsNull()) pointed.ReplaceAll(separator, ".");
    std::vector<CATUnicodeString> notations = {i_text};
    for (const CATUnicodeString& other : {inSessionNotation(i_text, separator), pointed})
        if (std::find(notations.begin(), notations.end(), other) == notations.end()) notations.push_back(other);
    return notations;
}

bool readSessionReal(const CATUnicodeString& i_text, double& o_number) {
    return readReal(inSessionNotation(i_text, VornLocaleEnv::getDecimalSeparatorSymbol()), o_number);
}

} // namespace

Valuation::Valuation(const JournalFrame& i_frame, CATICkeParm* ipi_parameter, const CATUnicodeString& i_name,
                     const CATUnicodeString& i_value)
    : m_frame(i_frame), m_parameter(ipi_parameter), m_name(i_name), m_value(i_value), m_type(ipi_parameter->Type()),
      m_type_name(typeNameOf(m_type)), m_kind(parameterKindOf(m_type_name)) {}

HRESULT Valuation::setSingle(const CATUnicodeString& i_value, const CATUnicodeString& i_type) const {
    if (i_type == "d") return setRealFrom(i_value);
    if (i_type == "b") return setTruth(truthOf(i_value));
    if (i_type != "i") return setText(i_value);
    int number = 0;
    return readInteger(i_value, number) ? setInteger(number) : E_FAIL;
}

HRESULT Valuation::setFirst(const ValueList& i_values, const CATUnicodeString* ip_type,
                            ToStorageUnit i_to_storage_unit) const {
    if (ip_type && i_values.isText() && !textsFit(*ip_type, m_kind)) return refused(kValuate);
    int integer = 0;
    double real = 0.0;
    switch (m_kind) {
    case ParameterKind::Text: return i_values.isText() ? setText(i_values.firstText()) : refused(kValuate);
    case ParameterKind::Truth: return i_values.isText() ? setTruth(truthOf(i_values.firstText())) : refused(kValuate);
    case ParameterKind::Integer: return i_values.readFirst(integer) ? setInteger(integer) : refused(kValuate);
    case ParameterKind::Real: return i_values.readFirst(real) ? setReal(real) : refused(kValuate);
    case ParameterKind::Dimension:
        return i_values.readFirst(real) ? setFirstDimension(real, i_to_storage_unit) : refused(kValuateReal);
    default: return refused(kValuate);
    }
}

HRESULT Valuation::setText(const CATUnicodeString& i_text) const {
    if (m_kind != ParameterKind::Text) return refused(kValuate);
    m_parameter->Valuate(i_text);
    return readBack(kValuate, [&](const CATICkeInst& i_kept) { return i_kept.AsString() == i_text; });
}

HRESULT Valuation::setInteger(int i_number) const {
    if (m_kind != ParameterKind::Integer && !isReal(m_kind)) return refused(kValuate);
    m_parameter->Valuate(i_number);
    return readBack(kValuate, [&](const CATICkeInst& i_kept) {
        return m_kind == ParameterKind::Integer ? i_kept.AsInteger() == i_number : areEqual(i_kept.AsReal(), i_number);
    });
}

HRESULT Valuation::setTruth(bool i_truth) const {
    if (m_kind != ParameterKind::Truth) return refused(kValuate);
    m_parameter->Valuate(i_truth ? CATCke::True : CATCke::False);
    return readBack(kValuate,
                    [&](const CATICkeInst& i_kept) { return (static_cast<int>(i_kept.AsBoolean()) != 0) == i_truth; });
}

HRESULT Valuation::setReal(double i_number) const {
    m_parameter->Valuate(i_number);
    return readBack(kValuate, [&](const CATICkeInst& i_kept) { return areEqual(i_kept.AsReal(), i_number); });
}

HRESULT Valuation::setRealFrom(const CATUnicodeString& i_value) const {
    m_frame.write("Updating the Double property %s (%s)", m_name, m_type_name);
    if (m_kind == ParameterKind::Dimension) return setDimensionFrom(i_value);
    if (m_kind != ParameterKind::Real) return setText(i_value);
    double number = 0.0;
    return readSessionReal(i_value, number) ? setReal(number) : E_FAIL;
}

/** A dimension is given as text. A number is one of the unit that users see; a text with a unit goes as it stands,
 * since a second symbol would make another value of it ("5m" and "mm"). */
HRESULT Valuation::setDimensionFrom(const CATUnicodeString& i_value) const {
    const NumberText form = numberTextOf(i_value, VornLocaleEnv::getDecimalSeparatorSymbol());
    double number = 0.0;
    if (form == NumberText::None || (form == NumberText::Number && !readSessionReal(i_value, number))) return E_FAIL;
    const auto sp_magnitude = magnitude();
    if (!sp_magnitude) {
        m_frame.missing("pi_magnitude");
        m_frame.write("    value applied : %s (MKS unit)", i_value);
        return setDimensionWithoutMagnitude(i_value);
    }
    if (form == NumberText::WithUnit) {
        m_frame.write("    value applied : %s", i_value);
        return setDimension(sp_magnitude.get(), i_value, nullptr);
    }
    const CATICkeUnit_var sp_unit = sp_magnitude->CurrentUnit();
    if (sp_unit == nullptr) return m_frame.missing("sp_current_unit");
    const CATUnicodeString text = i_value + sp_unit->Symbol();
    m_frame.write("    value applied : %s", text);
    const double mks = sp_unit->Convert(number);
    return setDimension(sp_magnitude.get(), text, &mks);
}

/** What the bare text means is the platform's to say: all that tells that it was taken is another value than before. */
HRESULT Valuation::setDimensionWithoutMagnitude(const CATUnicodeString& i_text) const {
    const CATICkeInst_var sp_before = m_parameter->Value();
    const bool had_value = sp_before != nullptr;
    if (!had_value && m_parameter->IsSet()) return refused(kValuateReal);
    const double before = had_value ? sp_before->AsReal() : 0.0;
    m_parameter->ValuateReal(i_text);
    return readBack(kValuateReal,
                    [&](const CATICkeInst& i_kept) { return !had_value || !areEqual(i_kept.AsReal(), before); });
}

HRESULT Valuation::setFirstDimension(double i_number, ToStorageUnit i_to_storage_unit) const {
    const auto sp_magnitude = magnitude();
    CATUnicodeString text;
    i_to_storage_unit(sp_magnitude.get(), i_number, text);
    if (!sp_magnitude) return setDimensionWithoutMagnitude(text);
    const CATICkeUnit_var sp_unit = sp_magnitude->CurrentUnit();
    if (text.IsNull() || sp_unit == nullptr) return m_frame.missing("sp_unit");
    const double mks = sp_unit->Convert(i_number);
    return setDimension(sp_magnitude.get(), text, &mks);
}

HRESULT Valuation::setDimension(CATICkeMagnitude* ipi_magnitude, const CATUnicodeString& i_text,
                                const double* ip_mks) const {
    for (const CATUnicodeString& text : notationsOf(i_text)) {
        double mks = 0.0;
        if (!ipi_magnitude->DecodeReal(text, mks) || (ip_mks && !areEqual(mks, *ip_mks))) continue;
        m_parameter->ValuateReal(text);
        return readBack(kValuateReal, [&](const CATICkeInst& i_kept) { return areEqual(i_kept.AsReal(), mks); });
    }
    return refused(kValuateReal);
}

CATUnicodeString Valuation::present() const {
    CATUnicodeString shown = m_parameter->Show();
    const auto sp_magnitude = m_kind == ParameterKind::Dimension ? magnitude() : InterfacePtr<CATICkeMagnitude>();
    const CATICkeUnit_var sp_unit = sp_magnitude ? sp_magnitude->CurrentUnit() : CATICkeUnit_var();
    const CATICkeInst_var sp_kept = m_parameter->Value();
    if (sp_unit == nullptr || sp_kept == nullptr) return shown;
    const double kept = sp_kept->AsReal();
    return sp_unit->Show(kept) == shown ? exactText(sp_unit, kept) : shown;
}

template <class IsTaken>
HRESULT Valuation::readBack(const char* i_setter, IsTaken&& i_is_taken) const {
    const CATICkeInst_var sp_kept = m_parameter->Value();
    const bool taken = sp_kept != nullptr && i_is_taken(*static_cast<CATICkeInst*>(sp_kept));
    return taken ? S_OK : refused(i_setter);
}

HRESULT Valuation::refused(const char* i_setter) const {
    m_frame.write("Unable to update parameter [%s] with value [%s]\n", m_name, m_value);
    return m_kind == ParameterKind::Unknown ? m_frame.missing("sp_type") : m_frame.callFailed(i_setter);
}

InterfacePtr<CATICkeMagnitude> Valuation::magnitude() const {
    return queryInterface<CATICkeMagnitude>(static_cast<CATICkeType*>(m_type));
}

} // namespace vorntools
