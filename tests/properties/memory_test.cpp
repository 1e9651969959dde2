// What the operations on parameters and properties answer when memory for what they are given or read runs out.

#include "CATDocument.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATIDrawing.h"
#include "CATIParmPublisher.h"
#include "CATIProduct.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATISpecObject.h"
#include "TYPMapCATUnicodeStringPVoid.h"
#include "VornToolsAssyConfig.h"
#include "VornToolsCADDOCProperties.h"
#include "VornToolsCommon.h"
#include "VornToolsInstanceProperty.h"
#include "VornToolsSpreadsheet.h"
#include "embedded/Parameters.h"
#include "tests/support/AllocationSweep.h"
#include "tests/support/Fixture.h"

#include <memory>

using embedded::Document;
using embedded::parametersOf;
using embedded::Publisher;
using List = CATListValCATUnicodeString;
using Service = VornToolsCADDOCProperties;

namespace {

/** Everything is large: names, values and lists of values. */
class PropertiesMemoryTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        environment().createsProperties = true;
        for (const char* const text : {"A", "B"}) names.Append((large + text).c_str());
        values.Append((large + "v").c_str());
        values.Append((large + "@=@" + large + "x").c_str());
        for (int i = 0; i < 2; ++i) types.Append("s");
    }
    void TearDown() override {
        if (m_service) m_service->Release();
        PlatformTest::TearDown();
    }
    Service& service() { return *(m_service = Service::getInstance()); }
    static void fill(const Publisher& publisher) {
        publisher.add(large + "P", large).list("ListOfValues", Texts{large, large + "y"});
        publisher.add(large + "Q", "q");
    }
    void sweep(const char* name, const std::function<HRESULT()>& call) {
        sweepAllocations(name, [&] { return SweepOutcome{call()}; });
    }

    inline static const std::string large = std::string(kLargeAllocation, 'n');
    List names, values, types;

private:
    Service* m_service = nullptr;
};

TEST_F(PropertiesMemoryTest, ParametersAndSets) {
    const Publisher part = parametersOf(session().part("/w/P.CATPart"), "MechanicalPart", "P");
    const Publisher set = part.addSet("Values");
    fill(set);
    const embedded::Parameter text = set.parameters()[0];
    sweep("createParameter",
          [&] { return Service::createParameter(set.factory(), set.publisher(), names[1], values[2], "s", 0, 0, 1); });
    sweep("updateParameter", [&] { return Service::updateParameter(text.get(), names[1], values[1], "s"); });
    sweepAllocations("getListOfParameters", [&] {
        List lists[4];
        CATListValCATBaseUnknown_var* p_members = nullptr;
        const HRESULT code =
            service().getListOfParameters(set.set(), p_members, lists[0], lists[1], lists[2], lists[3]);
        const std::unique_ptr<CATListValCATBaseUnknown_var> members(p_members);
        return outcomeOf(code, p_members, lists[0], lists[1], lists[2], lists[3]);
    });
    sweepAllocations("appendAttributesWithParamsList", [&] {
        List pairs;
        const HRESULT code = service().appendAttributesWithParamsList(set.set(), "X", pairs);
        return outcomeOf(code, pairs);
    });
}

TEST_F(PropertiesMemoryTest, AttributesOfDocuments) {
    const Document analysis = session().document("/w/A.CATAnalysis"), process = session().document("/w/P.CATProcess");
    const Document drawing = session().document("/w/D.CATDrawing");
    const Publisher sheet = parametersOf(drawing, "Drawing", "Drawing");
    const Publisher part = parametersOf(session().part("/w/P.CATPart"), "MechanicalPart", "P");
    const Publisher product = parametersOf(session().product("/w/R.CATProduct").root());
    for (const Publisher& feature :
         {parametersOf(analysis, "AnalysisManager", "M"), parametersOf(process, "Process", "P"), part, product})
        fill(feature.addSet("Values"));
    fill(sheet);
    unsigned char needUpdate = 0;
    sweep("setAnalysisParameters",
          [&] { return Service::setAnalysisParameters(analysis.get(), names, values, types); });
    sweep("setProcessParameters", [&] { return Service::setProcessParameters(process.get(), names, values, types); });
    sweep("setMechanicalPartParameters",
          [&] { return service().setMechanicalPartParameters("P", part.get(), names, values, types, needUpdate); });
    sweep("setReferenceProductParameters",
          [&] { return service().setReferenceProductParameters("R", product.get(), names, values, types); });
    for (const auto& [retrieve, document] : {std::pair(&Service::retrieveAnalysisAttributes, analysis),
                                             std::pair(&Service::retrieveProcessAttributes, process),
                                             std::pair(&Service::retrieveDrawingAttributes, drawing)})
        sweepAllocations("retrieve", [read = retrieve, in = document] {
            List pairs;
            const HRESULT code = read(in.get(), pairs);
            return outcomeOf(code, pairs);
        });
    sweep("setDrawingParameters",
          [&] { return VornToolsCommon::setDrawingParameters(drawing.get(), names, values, types); });
    sweep("changeDrawingParameterAccess",
          [&] { return VornToolsCommon::changeDrawingParameterAccess(drawing.get(), names[1], 0); });
    sweep("removeDrawingParameter", [&] { return VornToolsCommon::removeDrawingParameter(drawing.get(), names[2]); });
}

TEST_F(PropertiesMemoryTest, UserProperties) {
    const embedded::Product product = session().part("/w/P.CATPart").root();
    const Publisher properties = embedded::userProperties(product);
    fill(properties);
    properties.add("MaroAssyConfigItemRevUID", "r");
    properties.add("MaroAssyConfigFileName", large);
    sweepAllocations("getUserProperties", [&] {
        List found, texts;
        const HRESULT code = VornToolsCommon::getUserProperties(product.get(), found, texts);
        return outcomeOf(code, found, texts);
    });
    sweepAllocations("hasMaroAssyConfigProperty", [&] {
        CATUnicodeString texts[4];
        const unsigned char has =
            VornToolsAssyConfig::hasMaroAssyConfigProperty(product.get(), texts[0], texts[1], texts[2], texts[3]);
        return outcomeOf(has ? S_OK : E_FAIL, texts[0], texts[1], texts[2], texts[3]);
    });
    sweepAllocations("getNameProperty", [&] {
        CATUnicodeString name("before");
        const HRESULT code = VornToolsCommon::getNameProperty(CATICkeParm_var(properties.parameters()[0].get()), name);
        return outcomeOf(code, name);
    });
    sweep("setUserProperties", [&] { return VornToolsCommon::setUserProperties(product.get(), names, values, types); });
    sweep("changePropertyAccess", [&] { return VornToolsCommon::changePropertyAccess(product.get(), names[1], 0); });
    sweep("RemoveProperty", [&] { return VornToolsCommon::RemoveProperty(product.get(), names[2]); });
    sweep("removeEBSProperties", [&] { return VornToolsCommon::removeEBSProperties(product.get()); });
    List one, value;
    one.Append("definition");
    value.Append(large.c_str());
    sweep("setReferenceProperties", [&] { return service().setReferenceProperties(product.get(), one, value); });
}

TEST_F(PropertiesMemoryTest, InstanceProperties) {
    using Property = VornToolsInstanceProperty;
    const embedded::Product instance = session().product("/w/R.CATProduct").root().addComponent("Frame", "Frame.1");
    unsigned char created = 0;
    ASSERT_EQ(
        Property::createMaroInstanceProperty(instance.get(), Property::PropertyString, names[1], values[2], 0, created),
        S_OK);
    sweep("createMaroInstanceProperty", [&] {
        return Property::createMaroInstanceProperty(instance.get(), Property::PropertyString, names[2], values[2], 0,
                                                    created);
    });
    sweep("updateMaroInstanceProperty", [&] {
        return Property::updateMaroInstanceProperty(instance.get(), Property::PropertyString, names[1], values[1]);
    });
    sweep("setAttribute",
          [&] { return Property::setAttribute(instance.get(), names[1], Property::PropertyString, values[2]); });
    sweepAllocations("getAttribute", [&] {
        unsigned char found = 7;
        Property::EnumPropertyType type = Property::PropertyReal;
        CATUnicodeString value("before");
        const HRESULT code = Property::getAttribute(instance.get(), names[1], found, type, value);
        return outcomeOf(code, found, type, value);
    });
    sweepAllocations("getAllMaroInstancePropertiesNamesAndValues", [&] {
        List found, texts;
        const HRESULT code = Property::getAllMaroInstancePropertiesNamesAndValues(instance.get(), found, texts);
        return outcomeOf(code, found, texts);
    });
    sweepAllocations("getAllMaroInstancePropertiesOrderedByName", [&] {
        CATListValCATBaseUnknown_var* p_list = nullptr;
        const HRESULT code = Property::getAllMaroInstancePropertiesOrderedByName(instance.get(), p_list);
        const std::unique_ptr<CATListValCATBaseUnknown_var> owned(p_list);
        return outcomeOf(code, p_list);
    });
    const CATUnicodeString text((large + "\n" + large).c_str());
    sweep("updateDescriptionInstMapping", [&] { return Property::updateDescriptionInstMapping(instance.get(), text); });
    List name, description;
    name.Append("DescriptionInst");
    description.Append(text);
    sweep("setInstanceProperties",
          [&] { return VornToolsCommon::setInstanceProperties(instance.get(), name, description); });
}

TEST_F(PropertiesMemoryTest, ImportOptions) {
    environment().spreadsheetPath =
        write("s.txt", "<menu>\n" + large + "\n</menu>\n<doc>\n" + large + ".CATPart\n<opts>\n<main_body_only>\n" +
                           large + "\n</main_body_only>\n<doc>\nb" + large +
                           ".CATPart\n<opts>\n<main_body_only>\n</main_body_only>\n");
    sweepAllocations("getOptionValueFromImportSprdSht", [] {
        CATUnicodeString value("before");
        const HRESULT code = VornToolsSpreadsheet::getOptionValueFromImportSprdSht(1, value);
        return outcomeOf(code, value);
    });
    sweepAllocations("getCATPartMainBodyOption", [] {
        TYPMapCATUnicodeStringPVoid map;
        const HRESULT code = VornToolsSpreadsheet::getCATPartMainBodyOption(map);
        const bool empty = map.size() == 0;
        for (int i = 0; i < map.size(); ++i) delete static_cast<CATUnicodeString*>(map.valueAt(i));
        return SweepOutcome{code, empty};
    });
}

} // namespace
