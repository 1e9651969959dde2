#ifndef EMBEDDED_KNOWLEDGE_MAGNITUDES_H
#define EMBEDDED_KNOWLEDGE_MAGNITUDES_H

#include "CATICkeMagnitude.h"
#include "CATICkeType.h"
#include "embedded/object/Implements.h"

#include <memory>
#include <string>
#include <vector>

namespace embedded {

EMBEDDED_IDENTITY(CATICkeMagnitude);
EMBEDDED_IDENTITY(CATICkeType);
EMBEDDED_IDENTITY(CATICkeUnit);

class UnitObject final : public Implements<CATBaseUnknown, CATICkeUnit> {
public:
    /** @param perMks how many of this unit make one MKS unit */
    UnitObject(const char* symbol, double perMks);

    std::string objectName() const override { return "unit " + m_symbol; }
    const std::string& symbol() const { return m_symbol; }
    double fromMks(double value) const { return value * m_perMks; }
    double toMks(double value) const { return value / m_perMks; }
    /** @param decimals 0: as many as it takes */
    std::string show(double mks, int decimals) const;

    double Convert(const double iInThisUnit) const override;
    double Value(const double iMKS) const override;
    CATUnicodeString Show(const double iMKS, const int iNbDecimals) const override;
    CATUnicodeString Symbol() const override;

private:
    const std::string m_symbol;
    const double m_perMks;
};

/** A type of parameters, with units when it is a magnitude. Lives as long as the session. */
class TypeObject final : public Implements<CATBaseUnknown, CATICkeType, CATICkeMagnitude> {
public:
    explicit TypeObject(const char* name);

    std::string objectName() const override { return "type " + m_name; }
    const std::string& name() const { return m_name; }
    bool isMagnitude() const { return !m_units.empty(); }
    bool isReal() const { return isMagnitude() || m_name == "Real"; }
    /** The first unit is the MKS unit; the one with `current` is what users see at first. */
    void addUnit(const char* symbol, double perMks, bool current);
    UnitObject* unit(const std::string& symbol) const;
    UnitObject& current() const { return *m_current; }
    bool isUsual() const { return m_current == m_usual; }
    bool select(const std::string& symbol);
    /** Reads a number with a unit of this magnitude, the current one when it has none. */
    bool read(const std::string& text, double& mks) const;

    CATUnicodeString Name() const override;
    CATICkeUnit_var CurrentUnit() const override;
    CATICkeUnit_var MKSUnit() const override;
    CATCke::Boolean DecodeReal(const CATUnicodeString& iText, double& oMKS) const override;

private:
    bool answers(const IID& iid) const override { return iid != IID_CATICkeMagnitude || isMagnitude(); }

    const std::string m_name;
    std::vector<std::unique_ptr<UnitObject>> m_units;
    UnitObject* m_current = nullptr;
    UnitObject* m_usual = nullptr;
};

/** The types of the session, plain ones first. */
std::vector<std::unique_ptr<TypeObject>> makeTypes();

} // namespace embedded

#endif
