#include "embedded/knowledge/Magnitudes.h"

#include "embedded/Profile.h"
#include "embedded/object/Answers.h"
#include "embedded/text/Numbers.h"

#include <algorithm>

EMBEDDED_INTERFACE(CATICkeType, CATBaseUnknown, 0x300);
EMBEDDED_INTERFACE(CATICkeMagnitude, CATBaseUnknown, 0x301);
EMBEDDED_INTERFACE(CATICkeUnit, CATBaseUnknown, 0x302);

namespace embedded {

namespace {

CATICkeUnit_var handleOfUnit(UnitObject* unit) { return handleOf<CATICkeUnit_var>(static_cast<CATICkeUnit*>(unit)); }

} // namespace

UnitObject::UnitObject(const char* symbol, double perMks) : Implements("Unit"), m_symbol(symbol), m_perMks(perMks) {}

/** Fifteen digits, if not less: what a conversion adds behind them is noise. */
std::string UnitObject::show(double mks, int decimals) const {
    return (decimals > 0 ? shownText(fromMks(mks), decimals) : realText(fromMks(mks), "%.15g")) + m_symbol;
}

double UnitObject::Convert(const double iInThisUnit) const {
    return failing("CATICkeUnit::Convert") ? 0.0 : toMks(iInThisUnit);
}

double UnitObject::Value(const double iMKS) const { return failing("CATICkeUnit::Value") ? 0.0 : fromMks(iMKS); }

CATUnicodeString UnitObject::Show(const double iMKS, const int iNbDecimals) const {
    if (failing("CATICkeUnit::Show")) return CATUnicodeString();
    if (iNbDecimals <= 0) return toText(show(iMKS, switches().shownDecimals));
    const std::string format = "%." + std::to_string(iNbDecimals) + "f";
    return toText(realText(fromMks(iMKS), format.c_str()) + m_symbol);
}

CATUnicodeString UnitObject::Symbol() const {
    return failing("CATICkeUnit::Symbol") ? CATUnicodeString() : toText(m_symbol);
}

TypeObject::TypeObject(const char* name) : Implements("Type"), m_name(name) {}

void TypeObject::addUnit(const char* symbol, double perMks, bool current) {
    m_units.push_back(std::make_unique<UnitObject>(symbol, perMks));
    if (current) m_current = m_usual = m_units.back().get();
}

UnitObject* TypeObject::unit(const std::string& symbol) const {
    const auto found =
        std::find_if(m_units.begin(), m_units.end(), [&](const auto& unit) { return unit->symbol() == symbol; });
    return found == m_units.end() ? nullptr : found->get();
}

bool TypeObject::select(const std::string& symbol) {
    UnitObject* const selected = unit(symbol);
    if (selected) m_current = selected;
    return selected != nullptr;
}

bool TypeObject::read(const std::string& text, double& mks) const {
    const char mark = switches().oneDecimalMark ? sessionDecimalMark() : '.';
    std::string read = text;
    if (!switches().oneDecimalMark) std::replace(read.begin(), read.end(), ',', '.');
    double value = 0.0;
    std::size_t rest = 0;
    if (!isMagnitude() || !readReal(read, mark, value, rest)) return false;
    const std::size_t from = std::min(text.find_first_not_of(' ', rest), text.size());
    const std::size_t end = text.find_last_not_of(' ') + 1;
    const std::string symbol = from < end ? text.substr(from, end - from) : std::string();
    const UnitObject* const of = symbol.empty() ? m_current : unit(symbol);
    if (!of) return false;
    mks = of->toMks(value);
    return true;
}

CATUnicodeString TypeObject::Name() const { return failing("CATICkeType::Name") ? CATUnicodeString() : toText(m_name); }

CATICkeUnit_var TypeObject::CurrentUnit() const {
    return failing("CATICkeMagnitude::CurrentUnit") ? CATICkeUnit_var() : handleOfUnit(m_current);
}

CATICkeUnit_var TypeObject::MKSUnit() const {
    return failing("CATICkeMagnitude::MKSUnit") ? CATICkeUnit_var() : handleOfUnit(m_units.front().get());
}

CATCke::Boolean TypeObject::DecodeReal(const CATUnicodeString& iText, double& oMKS) const {
    return failing("CATICkeMagnitude::DecodeReal") ? CATCke::False : CATCke::Boolean(read(toBytes(iText), oMKS));
}

std::vector<std::unique_ptr<TypeObject>> makeTypes() {
    struct Unit {
        const char* symbol;
        double perMks;
        bool current;
    };
    constexpr double kDegrees = 57.295779513082320877;
    const std::pair<const char*, std::vector<Unit>> table[] = {
        {"String", {}},
        {"Integer", {}},
        {"Boolean", {}},
        {"Real", {}},
        {"Length",
         {{"m", 1, false}, {"mm", 1e3, true}, {"cm", 1e2, false}, {"km", 1e-3, false}, {"in", 1 / 0.0254, false}}},
        {"Angle", {{"rad", 1, false}, {"deg", kDegrees, true}}},
        {"Mass", {{"kg", 1, true}, {"g", 1e3, false}, {"t", 1e-3, false}}},
        {"Time", {{"s", 1, true}, {"min", 1 / 60.0, false}, {"h", 1 / 3600.0, false}}},
        {"Area", {{"m2", 1, true}, {"mm2", 1e6, false}, {"cm2", 1e4, false}}},
        {"Volume", {{"m3", 1, true}, {"mm3", 1e9, false}, {"cm3", 1e6, false}, {"L", 1e3, false}}}};
    std::vector<std::unique_ptr<TypeObject>> types;
    for (const auto& [name, units] : table) {
        types.push_back(std::make_unique<TypeObject>(name));
        for (const Unit& unit : units) types.back()->addUnit(unit.symbol, unit.perMks, unit.current);
    }
    return types;
}

} // namespace embedded
