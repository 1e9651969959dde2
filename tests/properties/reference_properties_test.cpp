#include "tests/properties/ParameterTest.h"

#include "VornToolsCADDOCPropertiesPX1.h"
#include "tests/support/FaultAt.h"

namespace {

using ReferencePropertiesTest = ParameterTest;

TEST_F(ReferencePropertiesTest, ReferencePropertiesGoThroughTheProduct) {
    auto root = session().product("/w/Root.CATProduct").root();
    auto bolt = root.add(session().part("/w/Bolt.CATPart"), "Bolt.1");
    CATListValCATUnicodeString names, values;
    for (const char* const name :
         {"partNumber", "definition", "revision", "nomenclature", "source", "DescriptionRef", "other", "Revision"}) {
        names.Append(name);
        values.Append(CATUnicodeString("v ") + name);
    }
    EXPECT_EQ(properties().setReferenceProperties(bolt.get(), names, values), S_OK);
    const auto kept = embedded::referenceProperties(bolt);
    EXPECT_EQ(kept.definition + "|" + kept.revision + "|" + kept.nomenclature,
              "v definition|v revision|v nomenclature");
    EXPECT_EQ(bolt.partNumber() + "|" + bolt.referenceDescription(), "v partNumber|v DescriptionRef");
    EXPECT_EQ(messages(), (Texts{"SetPartNumber to [v partNumber]", "SetDefinition to [v definition]",
                                 "SetRevision to [v revision]", "SetNomenclature to [v nomenclature]", "SetSource",
                                 "SetDescriptionRef to [v DescriptionRef]"}));
    values[1] = "not this";
    EXPECT_EQ(properties().setReferencePropertiesForForeignFile(bolt.get(), names, values), S_OK);
    EXPECT_EQ(bolt.partNumber(), "v partNumber");
    EXPECT_EQ(properties().updatePartNumber(bolt.get(), "B-7"), S_OK);
    EXPECT_EQ(bolt.partNumber(), "B-7");
    const std::string name = "VornToolsCADDOCPropertiesDflt::";
    values.RemovePosition(1);
    EXPECT_EQ(properties().setReferenceProperties(bolt.get(), names, values), E_FAIL);
    EXPECT_EQ(properties().setReferenceProperties(nullptr, names, names), E_FAIL);
    const auto unresolved = root.addUnresolved("x.1");
    EXPECT_EQ(properties().updatePartNumber(nullptr, "x"), E_FAIL);
    EXPECT_EQ(properties().updatePartNumber(unresolved.get(), "x"), E_FAIL);
    EXPECT_EQ(properties().setReferenceProperties(unresolved.get(), names, names), E_FAIL);
    EXPECT_EQ(reports(),
              (Texts{name + "setReferenceProperties 9001 i_values", name + "setReferenceProperties 9002 ipi_product",
                     name + "updatePartNumber 9002 ipi_product", name + "updatePartNumber 9002 sp_reference_product",
                     name + "setReferenceProperties 9002 sp_reference_product"}));
    CATListValCATUnicodeString refused;
    refused.Append("partNumber");
    EXPECT_TRUE(failAt("CATIProduct::SetPartNumber", 1, [&] {
        EXPECT_EQ(properties().setReferenceProperties(bolt.get(), refused, refused), E_FAIL) << "a call without a code";
    }));
    EXPECT_EQ(bolt.partNumber(), "B-7");
    EXPECT_EQ(reports(), (Texts{name + "setReferenceProperties 9003 SetPartNumber"}));
    for (const auto& [property, setter] :
         {std::pair("definition", "SetDefinition"), std::pair("revision", "SetRevision"),
          std::pair("nomenclature", "SetNomenclature"), std::pair("DescriptionRef", "SetDescriptionRef")}) {
        refused[1] = property;
        EXPECT_TRUE(failAt(std::string("CATIPrdProperties::") + setter, 1, [&] {
            EXPECT_EQ(properties().setReferenceProperties(bolt.get(), refused, refused), E_FAIL);
        }));
        EXPECT_EQ(reports(), (Texts{name + "setReferenceProperties 9003 " + setter}));
    }
    CATListValCATUnicodeString one, value;
    one.Append("revision");
    value.Append("C");
    const auto restore = [&] { properties().setReferenceProperties(bolt.get(), one, one); };
    sweepFailures({name + "setReferenceProperties",
                   [&] {
                       return SweepOutcome{properties().setReferenceProperties(bolt.get(), one, value), true};
                   },
                   restore});
    sweepFailures(
        {name + "setReferencePropertiesForForeignFile",
         [&] {
             return SweepOutcome{properties().setReferencePropertiesForForeignFile(bolt.get(), one, value), true};
         },
         restore});
    sweepFailures({name + "updatePartNumber",
                   [&] {
                       return SweepOutcome{properties().updatePartNumber(bolt.get(), "N"), true};
                   },
                   [&] { bolt.partNumber("B-7"); }});
    reports();
}

TEST_F(ReferencePropertiesTest, ReferencePropertiesGoThroughThePdmItem) {
    environment().platformPdmConnection = true;
    auto root = session().product("/w/Root.CATProduct").root();
    auto& px1 = dynamic_cast<VornToolsCADDOCPropertiesPX1&>(properties());
    CATListValCATUnicodeString names, values;
    for (const char* const name : {"partNumber", "source", "DescriptionRef", "none"}) {
        names.Append(name);
        values.Append(CATUnicodeString("v ") + name);
    }
    using Map = std::map<std::string, std::string>;
    EXPECT_EQ(px1.setReferencePropertiesForForeignFile(root.get(), names, values), S_OK);
    EXPECT_EQ(embedded::pdmProperties(root),
              (Map{{"CN_SOURCE", "v source"}, {"CN_DESCRIPTIONREF", "v DescriptionRef"}}));
    for (const char* const name : {"definition", "revision", "nomenclature"}) {
        names.Append(name);
        values.Append(CATUnicodeString("v ") + name);
    }
    clearJournal();
    EXPECT_EQ(px1.setReferenceProperties(root.get(), names, values), S_OK);
    EXPECT_EQ(embedded::pdmProperties(root), (Map{{"CN_PART_NUMBER", "v partNumber"},
                                                  {"CN_SOURCE", "v source"},
                                                  {"CN_DESCRIPTIONREF", "v DescriptionRef"},
                                                  {"CN_DEFINITION", "v definition"},
                                                  {"CN_REVISION", "v revision"},
                                                  {"CN_NOMENCLATURE", "v nomenclature"}}));
    EXPECT_EQ(messages(), (Texts{"Set Part Number to [v partNumber]", "Set Source to [v source]",
                                 "Set DescriptionRef to [v DescriptionRef]", "Set Definition to [v definition]",
                                 "Set Revision to [v revision]", "Set Nomenclature to [v nomenclature]"}));
    names.Size(4);
    values.Size(4);
    clearJournal();
    EXPECT_EQ(px1.setProductProperties(root.get(), "N-1", names, values), S_OK);
    EXPECT_EQ(px1.setProductProperties(root.get(), names, values), S_OK);
    EXPECT_EQ(px1.updatePartNumber(root.get(), "N-2"), S_OK);
    EXPECT_EQ(messages(), (Texts{"Set Part Number to [N-1]", "Set Source to [v source]",
                                 "Set DescriptionRef to [v DescriptionRef]", "Set Source to [v source]",
                                 "Set DescriptionRef to [v DescriptionRef]", "Set Part Number to [N-2]"}));
    EXPECT_EQ(root.partNumber(), "Root");
    const std::string name = "VornToolsCADDOCPropertiesPX1::";
    using Write = std::function<HRESULT(CATIProduct*, const CATListValCATUnicodeString&)>;
    const std::pair<const char*, Write> methods[] = {
        {"setReferenceProperties",
         [&](CATIProduct* product, const auto& texts) { return px1.setReferenceProperties(product, names, texts); }},
        {"setReferencePropertiesForForeignFile",
         [&](CATIProduct* product, const auto& texts) {
             return px1.setReferencePropertiesForForeignFile(product, names, texts);
         }},
        {"setProductProperties",
         [&](CATIProduct* product, const auto& texts) { return px1.setProductProperties(product, names, texts); }},
        {"setProductProperties",
         [&](CATIProduct* product, const auto& texts) {
             return px1.setProductProperties(product, "N-1", names, texts);
         }},
        {"updatePartNumber",
         [&](CATIProduct* product, const auto& texts) { return px1.updatePartNumber(product, texts[1]); }},
    };
    const CATListValCATUnicodeString fewer = names;
    names.Append("other");
    values.Append("x");
    for (const auto& of_method : methods) {
        const char* const method = of_method.first;
        const auto& write = of_method.second;
        SCOPED_TRACE(method);
        Texts expected = {"9002 ipi_product", "9003 getPDMItem"};
        EXPECT_EQ(write(nullptr, values), E_FAIL);
        environment().platformPdmConnection = false;
        EXPECT_EQ(write(root.get(), values), E_FAIL);
        environment().platformPdmConnection = true;
        if (method != std::string("updatePartNumber")) {
            EXPECT_EQ(write(root.get(), fewer), E_FAIL);
            expected.push_back("9001 i_values");
        }
        for (std::string& report : expected) report = name + method + " " + report;
        EXPECT_EQ(reports(), expected);
        EXPECT_TRUE(failAt("VornCATIxPDMItem::SetProperty", 1, [&] { EXPECT_EQ(write(root.get(), values), E_FAIL); }));
        EXPECT_EQ(reports(), Texts{name + method + " 9003 SetProperty"});
    }
    CATListValCATUnicodeString one, value;
    one.Append("source");
    value.Append("s");
    const auto restore = [&] {
        px1.updatePartNumber(root.get(), "N-2");
        px1.setProductProperties(root.get(), one, one);
    };
    const auto sweep = [&](const char* method, const std::function<HRESULT()>& call) {
        sweepFailures({name + method, [&] { return SweepOutcome{call(), true}; }, restore});
    };
    sweep("setReferenceProperties", [&] { return px1.setReferenceProperties(root.get(), one, value); });
    sweep("setReferencePropertiesForForeignFile",
          [&] { return px1.setReferencePropertiesForForeignFile(root.get(), one, value); });
    sweep("setProductProperties", [&] { return px1.setProductProperties(root.get(), one, value); });
    sweep("setProductProperties", [&] { return px1.setProductProperties(root.get(), "N-2", one, value); });
    sweep("updatePartNumber", [&] { return px1.updatePartNumber(root.get(), "N-3"); });
    reports();
}

} // namespace
