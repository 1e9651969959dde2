#include "CATDocument.h"
#include "CATICkeParm.h"
#include "CATIDrawing.h"
#include "CATIParmPublisher.h"
#include "CATISpecObject.h"
#include "CATLISTV_CATISpecObject.h"
#include "VornToolsCommon.h"
#include "embedded/Parameters.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include <functional>

namespace {

const std::string kCommon = "VornToolsCommon::";

class DrawingParametersTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        document = session().document("/w/Sheet.CATDrawing");
        drawing = embedded::parametersOf(document, "Drawing", "Drawing");
        inner = drawing.addSet("Values");
        held = CATIDrawing_var(drawing.get());
        clearJournal();
    }
    void TearDown() override {
        held = CATIDrawing_var();
        PlatformTest::TearDown();
    }
    CATIDrawing* pointer() { return held; }
    static CATListValCATUnicodeString list(const Texts& texts) {
        CATListValCATUnicodeString result;
        for (const std::string& text : texts) result.Append(text.c_str());
        return result;
    }
    static HRESULT set(const embedded::Document& in, const Texts& names, const Texts& values, const Texts& types) {
        return VornToolsCommon::setDrawingParameters(in.get(), list(names), list(values), list(types));
    }
    HRESULT remove(const char* name) { return VornToolsCommon::removeDrawingParameter(document.get(), name); }
    HRESULT changeAccess(const char* name, int mode) {
        return VornToolsCommon::changeDrawingParameterAccess(document.get(), name, mode);
    }
    static Texts names(const CATListValCATISpecObject_var& objects) {
        Texts result;
        for (int i = 1; i <= objects.Size(); ++i) result.emplace_back(objects[i]->GetDisplayName().ConvertToChar());
        return result;
    }
    static Texts contents(const embedded::Publisher& publisher) {
        Texts result;
        for (const embedded::Parameter& parameter : publisher.parameters())
            result.push_back(parameter.role() + "=" + parameter.shown());
        return result;
    }

    embedded::Document document;
    embedded::Publisher drawing, inner;
    CATIDrawing_var held;
};

TEST_F(DrawingParametersTest, ParametersAndSetsAreListedAtAnyDepth) {
    drawing.add("A", 1);
    inner.add("B", 2);
    inner.addSet("Deep").add("C", 3);
    CATListValCATISpecObject_var parameters, sets;
    EXPECT_EQ(VornToolsCommon::getDrawingParameters(document.get(), pointer(), parameters), S_OK);
    EXPECT_EQ(names(parameters), (Texts{"B", "C", "A"}));
    EXPECT_EQ(VornToolsCommon::getDrawingParametersAndParameterSets(document.get(), pointer(), parameters, sets), S_OK);
    EXPECT_EQ(names(parameters), (Texts{"B", "C", "A"}));
    EXPECT_EQ(names(sets), (Texts{"Values", "Deep"}));

    EXPECT_EQ(VornToolsCommon::getDrawingParameters(document.get(), nullptr, parameters), E_FAIL);
    EXPECT_EQ(VornToolsCommon::getDrawingParametersAndParameterSets(nullptr, pointer(), parameters, sets), E_FAIL);
    EXPECT_EQ(parameters.Size() + sets.Size(), 0);
    EXPECT_EQ(reports(), (Texts{kCommon + "getDrawingParameters 9001 ipi_drawing",
                                kCommon + "getDrawingParametersAndParameterSets 9001 ip_document"}));
}

TEST_F(DrawingParametersTest, ParametersAreUpdatedWhereTheyStandAndMadeBelowTheDrawing) {
    drawing.add("Title", "old");
    inner.add("Scale", 2);
    inner.add("Title", "inner");
    EXPECT_EQ(set(document, {"Scale", "New"}, {"5", "x"}, {"i", "s"}), S_OK);
    EXPECT_EQ(
        messages(),
        (Texts{"looking for parameter name [Scale]", "--> parameter name from CATIA [Drawing\\Values\\Scale]", "found",
               "looking for parameter name [New]", "--> parameter name from CATIA [Drawing\\Values\\Scale]",
               "--> parameter name from CATIA [Drawing\\Values\\Title]",
               "--> parameter name from CATIA [Drawing\\Title]"}));
    environment().createsProperties = true;
    environment().ignoresOemProperties = true;
    environment().propertiesReadOnlyOnCreate = {"New"};
    EXPECT_EQ(set(document, {"OEM_x", "New", "New", "Title", "Values\\Title"}, {"x", "many", "3", "first", "whole"},
                  {"s", "i", "i", "s", "s"}),
              S_OK);
    EXPECT_EQ(contents(drawing), (Texts{"Title=old", "New=3"}));
    EXPECT_EQ(contents(inner), (Texts{"Scale=5", "Title=whole"}));
    EXPECT_EQ(drawing.parameter("New").access(), 1);
    EXPECT_EQ(set(document, {"Title", "Scale"}, {"x", "many"}, {"s", "i"}), E_FAIL) << "the last one counts";

    const embedded::Document part = session().part("/w/Bolt.CATPart");
    EXPECT_EQ(set(embedded::Document(), {}, {}, {}), E_FAIL);
    EXPECT_EQ(set(document, {"A"}, {}, {"s"}), E_FAIL);
    EXPECT_EQ(set(document, {"A"}, {"x"}, {}), E_FAIL);
    EXPECT_EQ(set(part, {"A"}, {"x"}, {"s"}), E_FAIL);
    EXPECT_EQ(VornToolsCommon::removeDrawingParameter(nullptr, "A"), E_FAIL);
    EXPECT_EQ(VornToolsCommon::changeDrawingParameterAccess(part.get(), "A", 0), E_FAIL);
    EXPECT_EQ(
        reports(),
        (Texts{kCommon + "setDrawingParameters 9001 ip_document", kCommon + "setDrawingParameters 9001 i_values",
               kCommon + "setDrawingParameters 9001 i_types", kCommon + "setDrawingParameters 9002 pi_dft_doc_services",
               kCommon + "removeDrawingParameter 9001 ip_document",
               kCommon + "changeDrawingParameterAccess 9002 pi_dft_doc_services"}));
}

TEST_F(DrawingParametersTest, ParametersAreRemovedFromWhereTheyStand) {
    for (const embedded::Publisher& publisher : {drawing, inner.addSet("Deep")}) {
        publisher.add("A", "x");
        publisher.add("B", "x");
    }
    EXPECT_EQ(remove("A"), S_OK);
    EXPECT_EQ(contents(inner.sets()[0]), (Texts{"B=x"}));
    EXPECT_EQ(contents(drawing), (Texts{"A=x", "B=x"}));
    EXPECT_EQ(remove("A"), S_OK);
    EXPECT_EQ(remove("A"), S_FALSE);
    EXPECT_EQ(contents(drawing), (Texts{"B=x"}));
    EXPECT_EQ(messages(),
              (Texts{"parameter removed [A]", "parameter removed [A]", "parameter to remove not found [A]"}));
}

TEST_F(DrawingParametersTest, AccessHasThreeModes) {
    const embedded::Parameter parameter = inner.add("A", "x");
    for (const auto& [mode, access] : {std::pair(0, 1), std::pair(1, 3), std::pair(2, 4)}) {
        EXPECT_EQ(changeAccess("A", mode), S_OK);
        EXPECT_EQ(parameter.access(), access);
    }
    clearJournal();
    EXPECT_EQ(changeAccess("A", 3), E_FAIL);
    EXPECT_EQ(parameter.access(), 4);
    EXPECT_EQ(changeAccess("B", 0), S_FALSE);
    EXPECT_EQ(changeAccess("A", 0), S_OK);
    EXPECT_EQ(messages(), (Texts{"try to set access mode to 3 for propertie = A", " propertie not found yet",
                                 "try to set access mode to 0 for propertie = A",
                                 "change user access mode to ReadOnly for parameter A"}));
    EXPECT_EQ(reports(), (Texts{kCommon + "changeDrawingParameterAccess 9004 user_access_mode is unknown"}));
}

TEST_F(DrawingParametersTest, FaultsOfThePlatformAreMet) {
    drawing.add("Kept", "x");
    const embedded::Parameter one = inner.add("A", "x"), other = inner.add("B", "x");
    const auto restore = [&] {
        for (const embedded::Parameter& parameter : drawing.parameters())
            if (parameter.role() != "Kept")
                drawing.publisher()->RemoveChild(CATISpecObject_var(parameter.specObject()));
        for (const embedded::Parameter& parameter : inner.parameters())
            inner.publisher()->RemoveChild(CATISpecObject_var(parameter.specObject()));
        for (embedded::Parameter parameter : {one, other}) {
            inner.publisher()->Append(CATISpecObject_var(parameter.specObject()));
            parameter.access(3).get()->Valuate(CATUnicodeString("x"));
        }
    };
    const auto sweep = [&](const char* method, const std::function<HRESULT()>& call) {
        sweepFailures({kCommon + method, [&] { return SweepOutcome{call(), true}; }, restore});
    };
    sweepFailures({kCommon + "getDrawingParameters", [&] {
                       CATListValCATISpecObject_var parameters;
                       const HRESULT code =
                           VornToolsCommon::getDrawingParameters(document.get(), pointer(), parameters);
                       return outcomeOf(code, parameters);
                   }});
    sweepFailures({kCommon + "getDrawingParametersAndParameterSets", [&] {
                       CATListValCATISpecObject_var parameters, sets;
                       const HRESULT code = VornToolsCommon::getDrawingParametersAndParameterSets(
                           document.get(), pointer(), parameters, sets);
                       return outcomeOf(code, parameters, sets);
                   }});
    sweep("setDrawingParameters", [&] { return set(document, {"A"}, {"y"}, {"s"}); });
    sweep("removeDrawingParameter", [&] { return remove("A"); });
    sweep("changeDrawingParameterAccess", [&] { return changeAccess("A", 0); });
    environment().createsProperties = true;
    sweep("setDrawingParameters", [&] { return set(document, {"new"}, {"y"}, {"s"}); });
    reports();
}

} // namespace
