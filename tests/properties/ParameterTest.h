#ifndef TESTS_PROPERTIES_PARAMETER_TEST_H
#define TESTS_PROPERTIES_PARAMETER_TEST_H

#include "VornToolsCADDOCProperties.h"

#include "CATICkeMagnitude.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATIParmPublisher.h"
#include "CATISpecAttrAccess.h"
#include "CATISpecObject.h"
#include "embedded/Parameters.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"

#include <functional>
#include <memory>

using embedded::Parameter;
using embedded::parametersOf;
using embedded::Publisher;
using Service = VornToolsCADDOCProperties;

using embedded::Publisher;
using Service = VornToolsCADDOCProperties;

struct VornToolsCADDOCPropertiesTestAccess {
    static HRESULT setByKey(CATISpecAttrKey* key, CATISpecAttrAccess* access, CATICkeParameterSet*& set) {
        return Service::getInstance()->getParameterSetByAttributKey(key, access, set);
    }
    static HRESULT current(CATICkeMagnitude* magnitude, double value, CATUnicodeString& text) {
        return Service::getParamValueInCurrentUnit(magnitude, value, text);
    }
    static HRESULT stored(CATICkeMagnitude* magnitude, double value, CATUnicodeString& text) {
        return Service::getParamValueInStorageUnit(magnitude, value, text);
    }
};
using Access = VornToolsCADDOCPropertiesTestAccess;

const std::string kClass = "VornToolsCADDOCProperties::";

/** A part with a parameter set, and shorter ways to write parameters below it. */
class ParameterTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        part = parametersOf(session().part("/w/Bolt.CATPart"), "MechanicalPart", "Bolt");
        set = part.addSet("Parameters.1");
        clearJournal();
    }
    void TearDown() override {
        if (service) service->Release();
        PlatformTest::TearDown();
    }
    Service& properties() {
        service = Service::getInstance();
        return *service;
    }
    HRESULT create(const std::string& name, const std::string& value, const char* type, int readOnly = 0, int user = 0,
                   int rename = 0) {
        const auto flag = [](int value01) { return static_cast<unsigned char>(value01); };
        return Service::createParameter(set.factory(), set.publisher(), name.c_str(), utf8(value), type, flag(readOnly),
                                        flag(user), flag(rename));
    }
    static HRESULT update(const Parameter& parameter, const std::string& value, const char* type) {
        return Service::updateParameter(parameter.get(), "P", utf8(value), type);
    }
    /** Type, value and list of the set's last parameter; empty when there is none. */
    std::string last() {
        const auto all = set.parameters();
        if (all.empty()) return "";
        const Parameter& parameter = all.back();
        return parameter.type() + " " + parameter.shown() + (parameter.list().empty() ? "" : " " + parameter.list());
    }
    static Texts texts(const CATListValCATUnicodeString& list) {
        Texts result;
        for (int i = 1; i <= list.Size(); ++i) result.emplace_back(list[i].ConvertToChar());
        return result;
    }
    std::string pairs(const Publisher& from, HRESULT expected = S_OK) {
        CATListValCATUnicodeString list;
        list.Append("kept");
        EXPECT_EQ(properties().appendAttributesWithParamsList(from.set(), "X", list), expected);
        std::string text;
        for (const std::string& one : texts(list)) text += one + "|";
        return text;
    }
    /** The set of a feature: its name, "none" without one. */
    std::string found(const Publisher& feature, HRESULT expected) {
        CATICkeParameterSet* result = set.set();
        EXPECT_EQ(properties().getParameterSet(feature.get(), result), expected);
        if (!result) return "none";
        const std::string name =
            CATISpecObject_var(static_cast<CATBaseUnknown*>(result))->GetDisplayName().ConvertToChar();
        result->Release();
        return name;
    }
    /** Takes away everything below a publisher. */
    static void empty(const Publisher& from) {
        for (const Parameter& parameter : from.parameters())
            from.publisher()->RemoveChild(CATISpecObject_var(parameter.specObject()));
        for (const Publisher& below : from.sets()) from.publisher()->RemoveChild(CATISpecObject_var(below.get()));
    }

    Publisher part, set;
    Service* service = nullptr;
};

#endif
