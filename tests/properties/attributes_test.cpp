#include "tests/properties/AttributesTest.h"

namespace {

using DocumentAttributesTest = AttributesTest;

TEST_F(DocumentAttributesTest, AnAttributeNeedsAName) {
    const Entries entries = {{"", "x", "s"}, {"A", "1", "i"}, {"", "y", "s"}};
    for (const Kind& kind : kKinds) {
        const Publisher root = begin(kind);
        environment().createsProperties = true;
        EXPECT_EQ(set(kind, entries), S_OK) << "something was created and shown";
        EXPECT_EQ(set(kind, entries), E_FAIL);
        EXPECT_EQ(contents(root.sets().at(0)), (Texts{"A = 1"}));
        EXPECT_EQ(reports(), Texts(4, kClass + kind.setName + " 9001 i_names"));
    }
    const Publisher product = parametersOf(session().product("/w/Root.CATProduct").root());
    EXPECT_EQ(setProduct(product, entries), S_OK);
    EXPECT_EQ(setProduct(product, entries), E_FAIL);
    EXPECT_EQ(contents(product.sets().at(0)), (Texts{"A = 1"}));
    EXPECT_EQ(reports(), Texts(4, kClass + "setReferenceProductParameters 9001 i_names"));
    const auto names = column(entries, 0);
    EXPECT_EQ(service().setReferenceProductParameters("Root.CATProduct", product.get(), names, {}, names), E_FAIL);
    EXPECT_EQ(service().setReferenceProductParameters("Root.CATProduct", product.get(), names, names, {}), E_FAIL);
    EXPECT_EQ(reports(), (Texts{kClass + "setReferenceProductParameters 9001 i_values",
                                kClass + "setReferenceProductParameters 9001 i_types"}));
    // What holds values of another kind holds no set.
    Publisher odd = parametersOf(session().part("/w/Odd.CATPart"), "MechanicalPart", "Odd");
    odd.text("_AttrForLiterals", "t");
    unsigned char needUpdate = 0;
    EXPECT_EQ(setPart(odd, {{"A", "1", "i"}}, needUpdate), S_OK);
    EXPECT_EQ(contents(odd.sets().at(0)), (Texts{"A = 1"}));
}

TEST_F(DocumentAttributesTest, EveryFailureOfTheSettersIsMet) {
    for (const bool make : {false, true}) {
        const Entries entries = make ? Entries{{"New", "1", "i"}} : Entries{{"Old", "b", "s"}};
        for (const Kind& kind : kKinds) {
            const Publisher root = begin(kind);
            environment().createsProperties = make;
            const Publisher values = root.addSet("Values");
            values.add("Old", "a");
            sweepFailures({kClass + kind.setName,
                           [&] {
                               return SweepOutcome{set(kind, entries), true};
                           },
                           [&] { reset(values, "Old"); }});
        }
        session().reset();
        environment().createsProperties = make;
        unsigned char needUpdate = 0;
        const Publisher part = parametersOf(session().part("/w/Bolt.CATPart"), "MechanicalPart", "Bolt");
        const Publisher product = parametersOf(session().product("/w/Root.CATProduct").root());
        const Publisher partValues = part.addSet("Values");
        const Publisher productValues = product.addSet("Values");
        partValues.add("Old", "a");
        productValues.add("Old", "a");
        service();
        sweepFailures({kClass + "setMechanicalPartParameters",
                       [&] {
                           return SweepOutcome{setPart(part, entries, needUpdate), true, needUpdate};
                       },
                       [&] { reset(partValues, "Old"); }});
        sweepFailures({kClass + "setReferenceProductParameters",
                       [&] {
                           return SweepOutcome{setProduct(product, entries), true};
                       },
                       [&] { reset(productValues, "Old"); }});
    }
    session().reset();
    environment().createsProperties = true;
    const Publisher bare =
        parametersOf(session().part("/w/Bare.CATPart"), "MechanicalPart", "Bare").keepIn("UserParameters");
    unsigned char needUpdate = 0;
    sweepFailures({kClass + "setMechanicalPartParameters",
                   [&] {
                       return SweepOutcome{setPart(bare, {}, needUpdate), true, needUpdate};
                   },
                   [&] { reset(bare, ""); }});
    const Publisher root = begin(kKinds[0]).keepIn("UserParameters");
    environment().createsProperties = true;
    sweepFailures({kClass + "setAnalysisParameters",
                   [&] {
                       return SweepOutcome{set(kKinds[0], {}), true};
                   },
                   [&] { reset(root, ""); }});
}

TEST_F(DocumentAttributesTest, EveryFailureOfTheReadersIsMet) {
    const auto sweepReader = [&](const char* name, Retrieve retrieve) {
        sweepFailures({kClass + name, [&] {
                           CATListValCATUnicodeString list = column({{"left over", "", ""}}, 0);
                           const HRESULT code = retrieve(document.get(), list);
                           return outcomeOf(code, list);
                       }});
    };
    const auto fill = [](const Publisher& values) {
        values.add("ItemID", "A");
        values.add("Colours", "red").list("ListOfValues", Texts{"red", "blue"});
    };
    for (const Kind& kind : kKinds) {
        fill(begin(kind).addSet("Values"));
        sweepReader(kind.retrieveName, kind.retrieve);
    }
    session().reset();
    document = session().document("/w/Sheet.CATDrawing");
    fill(parametersOf(document, "Drawing", "Drawing"));
    sweepReader("retrieveDrawingAttributes", &Service::retrieveDrawingAttributes);
}

TEST_F(DocumentAttributesTest, DrawingAttributesGoByTheLastSegmentOfTheirName) {
    document = session().document("/w/Sheet.CATDrawing");
    const Publisher drawing = parametersOf(document, "Drawing", "Drawing");
    drawing.add("path", "7").userName("Sheet.1\\View\\ItemRevID");
    drawing.add("path", "nothing").userName("Sheet.1\\");
    drawing.add("Title", "own");
    drawing.addSet("Values").add("Title", "second");
    drawing.sets()[0].add("Scale", "1:2").list("ListOfValues", Texts{"1:2", "1:5"});
    EXPECT_EQ(pairs(&Service::retrieveDrawingAttributes),
              (Texts{"ItemRevID=7", "Revision=7", "Title=own", "Scale=1:2@=@1:5",
                     "Definition=", "EBS_ItemRevName=", "EBS_DatasetUid=", "EBS_DatasetLastVersion="}));
    clearJournal();
    failAt("CATIDftDocumentServices::GetDrawing", &Service::retrieveDrawingAttributes);
    EXPECT_EQ(reports(), report("retrieveDrawingAttributes", "9002 pi_drawing"));
    failAt("QueryInterface(CATIParmPublisher)", &Service::retrieveDrawingAttributes);
    EXPECT_EQ(reports(), (Texts{"VornToolsCommon::getDrawingParameters 9002 pi_parm_publisher",
                                kClass + "retrieveDrawingAttributes 9003 getDrawingParameters"}));
    failAt("QueryInterface(CATICkeParm)", &Service::retrieveDrawingAttributes);
    EXPECT_EQ(reports(), report("retrieveDrawingAttributes", "9002 pi_param"));
}

} // namespace
