#include "VornToolsCADDOCProperties.h"

#include "CATDocument.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATIParmPublisher.h"
#include "CATISpecObject.h"
#include "embedded/Parameters.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"

#include <array>

using embedded::Document;
using embedded::Parameter;
using embedded::parametersOf;
using embedded::Publisher;
using Service = VornToolsCADDOCProperties;

namespace {

const std::string kClass = "VornToolsCADDOCProperties::";
using Set = HRESULT (*)(CATDocument*, CATListValCATUnicodeString, CATListValCATUnicodeString,
                        CATListValCATUnicodeString);
using Retrieve = HRESULT (*)(CATDocument*, CATListValCATUnicodeString&);

/** An attribute to write: name, value, type. */
using Entry = std::array<const char*, 3>;
using Entries = std::vector<Entry>;

CATListValCATUnicodeString column(const Entries& entries, std::size_t index) {
    CATListValCATUnicodeString list;
    for (const Entry& entry : entries) list.Append(entry[index]);
    return list;
}

/** Names, values and access of a set's parameters, with a kept list behind the value. */
Texts contents(const Publisher& set) {
    Texts result;
    for (const Parameter& parameter : set.parameters())
        result.push_back((parameter.userName().empty() ? parameter.role() : parameter.userName()) + " = " +
                         parameter.shown() + (parameter.access() == 1 ? " (read-only)" : "") +
                         (parameter.list().empty() ? "" : " " + parameter.list()));
    return result;
}

/** One of the two kinds of document that are written and read in the same way. */
struct Kind {
    const char* document;
    const char* feature;
    const char* container;
    Set set;
    Retrieve retrieve;
    const char* setName;
    const char* retrieveName;
};
const Kind kKinds[] = {{"/w/Beam.CATAnalysis", "AnalysisManager", "CATAnalysisCont", &Service::setAnalysisParameters,
                        &Service::retrieveAnalysisAttributes, "setAnalysisParameters", "retrieveAnalysisAttributes"},
                       {"/w/Line.CATProcess", "Process", "CATProcessCont", &Service::setProcessParameters,
                        &Service::retrieveProcessAttributes, "setProcessParameters", "retrieveProcessAttributes"}};

class AttributesTest : public PlatformTest {
protected:
    void TearDown() override {
        if (m_service) m_service->Release();
        PlatformTest::TearDown();
    }
    Service& service() { return *(m_service = Service::getInstance()); }
    /** Begins anew with the document of a kind; its feature. */
    Publisher begin(const Kind& kind) {
        session().reset();
        document = session().document(kind.document);
        return parametersOf(document, kind.feature, "Root");
    }
    HRESULT set(const Kind& kind, const Entries& entries) {
        clearJournal();
        return kind.set(document.get(), column(entries, 0), column(entries, 1), column(entries, 2));
    }
    HRESULT setPart(const Publisher& part, const Entries& entries, unsigned char& needUpdate) {
        return service().setMechanicalPartParameters("Bolt.CATPart", part.get(), column(entries, 0), column(entries, 1),
                                                     column(entries, 2), needUpdate);
    }
    HRESULT setProduct(const Publisher& product, const Entries& entries) {
        return service().setReferenceProductParameters("Root.CATProduct", product.get(), column(entries, 0),
                                                       column(entries, 1), column(entries, 2));
    }
    /** What is read, as "name=value" texts. */
    Texts pairs(Retrieve retrieve, HRESULT expected = S_OK) {
        CATListValCATUnicodeString list;
        list.Append("left over");
        EXPECT_EQ(retrieve(document.get(), list), expected);
        EXPECT_EQ(list.Size() % 2, 0);
        Texts result;
        for (int i = 1; i < list.Size(); i += 2)
            result.push_back(std::string(list[i].ConvertToChar()) + "=" + list[i + 1].ConvertToChar());
        return result;
    }
    /** Runs the operation with its first call of a name failing; it must fail and leave no output. */
    template <class Operation>
    void failAt(const std::string& call, Operation operation) {
        auto& failures = embedded::Failures::get();
        std::string met = call;
        for (int nth = 1; !met.empty(); ++nth) {
            reports();
            CATListValCATUnicodeString list;
            failures.arm(nth, false, embedded::FaultFlavour::code);
            const HRESULT code = operation(document.get(), list);
            met = failures.firedAt();
            failures.disarm();
            if (met != call) continue;
            EXPECT_EQ(code, E_FAIL) << call;
            EXPECT_EQ(list.Size(), 0) << call;
            return;
        }
        ADD_FAILURE() << "never called: " << call;
    }
    /** Takes away what stands below a publisher but one parameter, which gets its first value. */
    static void reset(const Publisher& publisher, const std::string& kept) {
        for (const Publisher& set : publisher.sets()) publisher.publisher()->RemoveChild(CATISpecObject_var(set.get()));
        for (const Parameter& parameter : publisher.parameters())
            if (parameter.role() != kept)
                publisher.publisher()->RemoveChild(CATISpecObject_var(parameter.specObject()));
            else
                parameter.get()->Valuate(CATUnicodeString("a"));
    }
    Texts report(const std::string& method, const std::string& rest) { return {kClass + method + " " + rest}; }
    Texts linesWith(const std::string& part) {
        Texts found;
        for (const std::string& line : messages())
            if (line.find(part) != std::string::npos) found.push_back(line);
        return found;
    }

    Document document;

private:
    Service* m_service = nullptr;
};

TEST_F(AttributesTest, ExistingParametersAreUpdatedByName) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.document);
        auto values = begin(kind).addSet("Values");
        values.add("ItemID", "A");
        values.add("Sub\\Nested", "n");
        values.addSet("Inner").add("Deep", "d");
        values.add("role", "o").userName("Other");
        values.add("Count", 3);
        EXPECT_EQ(set(kind, {{"Other", "p", "s"},
                             {"Sub\\Nested", "x", "s"},
                             {"Deep", "x", "s"},
                             {"Missing", "x", "s"},
                             {"Count", "4", "i"},
                             {"Count", "5", "i"}}),
                  S_OK);
        EXPECT_EQ(contents(values), (Texts{"ItemID = A", "Sub\\Nested = n", "Other = p", "Count = 4"}));
        EXPECT_EQ(contents(values.sets()[0]), (Texts{"Deep = d"}));
        EXPECT_EQ(messages(), (Texts{"\t 1 = ItemID", "------ 1 = ItemID", "\t 2 = Sub\\Nested", "\t 3 = Other",
                                     "------ 3 = Other", "\t------------- To Update", "\t 4 = Count",
                                     "------ 4 = Count", "\t------------- To Update"}));
        EXPECT_EQ(values.redraws(), 0);

        EXPECT_EQ(set(kind, {{"Count", "many", "i"}, {"Other", "q", "s"}}), E_FAIL) << "Count comes last in the set";
        EXPECT_EQ(contents(values)[2], "Other = q");
        EXPECT_EQ(set(kind, {{"ItemID", "B@=@C", "s"}}), S_OK);
        EXPECT_EQ(contents(values)[0], "ItemID = B string: B, C");
    }
}

TEST_F(AttributesTest, MissingParametersAreCreatedWhereTheEnvironmentWantsThem) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.document);
        const Publisher root = begin(kind);
        const Entries entries = {{"ItemID", "A", "s"}, {"Count", "many", "i"}, {"Mass", "2.5", "d"}};
        const std::string before = session().digest();
        EXPECT_EQ(set(kind, entries), S_OK);
        EXPECT_EQ(session().digest(), before);
        EXPECT_EQ(messages(), Texts());

        environment().createsProperties = true;
        environment().propertiesReadOnlyOnCreate = {"Mass", "Other"};
        EXPECT_EQ(set(kind, entries), S_OK);
        ASSERT_EQ(root.sets().size(), 1U);
        const Publisher made = root.sets()[0];
        EXPECT_EQ(made.name(), "Parameters.1");
        EXPECT_EQ(contents(made), (Texts{"ItemID = A", "Mass = 2.5 (read-only)"}));
        EXPECT_EQ(made.parameters()[0].userName(), "ItemID");
        EXPECT_EQ(made.redraws(), 2) << "once for the set, once for its parameters";
        EXPECT_EQ(messages(), (Texts{"Create ParameterSet \"Parameters.1\" append to feature Root in container " +
                                         std::string(kind.container) + "\n",
                                     "Unable to create parameter [Count] with type [i]\n"}));

        EXPECT_EQ(set(kind, {{"ItemID", "B", "s"}, {"Count", "some", "i"}}), E_FAIL);
        EXPECT_EQ(contents(made)[0], "ItemID = B");
        EXPECT_EQ(made.redraws(), 2);
        EXPECT_EQ(root.sets().size(), 1U);
    }
}

TEST_F(AttributesTest, AnAttributeNeedsAName) {
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
}

TEST_F(AttributesTest, StepsThatFailOnTheWayToTheSetAreReported) {
    CATListValCATUnicodeString none;
    EXPECT_EQ(Service::setAnalysisParameters(nullptr, none, none, none), E_FAIL);
    EXPECT_EQ(messages(), (Texts{"setAnalysisParameters :: ip_catdocument is NULL."}));
    EXPECT_EQ(reports(), report("setAnalysisParameters", "9001 ip_catdocument"));
    clearJournal();
    EXPECT_EQ(Service::setProcessParameters(nullptr, none, none, none), E_FAIL);
    EXPECT_EQ(messages(), (Texts{"setProcessParameters :: ip_document est null."}));
    EXPECT_EQ(reports(), report("setProcessParameters", "9001 ip_catdocument"));

    const struct {
        const char* document; ///< null: none
        const char* analysis;
        const char* process;
    } cases[] = {{nullptr, "sp_analysis_manager", "pi_init_on_doc"},
                 {"/w/Bolt.CATPart", "sp_analysis_manager", "pi_process_cont"},
                 {"/w/Empty.CATProcess", "sp_analysis_manager", "p_process_list"},
                 {"/w/Empty.CATAnalysis", "pi_set", "pi_process_cont"}};
    for (const auto& test : cases) {
        SCOPED_TRACE(test.document ? test.document : "no document");
        document = test.document ? session().document(test.document) : Document();
        EXPECT_EQ(pairs(&Service::retrieveAnalysisAttributes, E_FAIL), Texts());
        EXPECT_EQ(reports(), report("retrieveAnalysisAttributes", "9002 " + std::string(test.analysis)));
        EXPECT_EQ(pairs(&Service::retrieveProcessAttributes, E_FAIL), Texts());
        EXPECT_EQ(reports(), report("retrieveProcessAttributes", "9002 " + std::string(test.process)));
        EXPECT_EQ(pairs(&Service::retrieveDrawingAttributes, E_FAIL), Texts());
        EXPECT_EQ(reports(), report("retrieveDrawingAttributes", "9002 pi_dft_doc_services"));
    }
    begin(kKinds[0]).addSet("Values");
    CATListValCATUnicodeString one = column({{"A", "", ""}}, 0);
    EXPECT_EQ(Service::setAnalysisParameters(document.get(), one, one, none), E_FAIL);
    EXPECT_EQ(reports(), report("setAnalysisParameters", "9001 i_types"));
}

TEST_F(AttributesTest, PartsAndProductsNameWhatTheyCouldNotSetInTheLog) {
    document = session().part("/w/Bolt.CATPart");
    const Publisher features[] = {parametersOf(document, "MechanicalPart", "Bolt"),
                                  parametersOf(session().product("/w/Root.CATProduct").root())};
    const Entries entries = {
        {"Free", "b", "s"}, {"Fixed", "b", "s"}, {"Driven", "2", "i"}, {"Count", "x", "i"}, {"New", "n@=@m", "s"}};
    for (const bool isPart : {true, false}) {
        SCOPED_TRACE(isPart ? "part" : "product");
        auto values = features[isPart ? 0 : 1].addSet("Values");
        values.add("Free", "a");
        values.add("Fixed", "a").access(1);
        values.add("Driven", 1).driven();
        values.add("Count", 1);
        unsigned char needUpdate = 0;
        const auto run = [&] {
            clearJournal();
            return isPart ? setPart(features[0], entries, needUpdate) : setProduct(features[1], entries);
        };
        environment().createsProperties = false;
        EXPECT_EQ(run(), E_FAIL) << "the last call is the update of Count";
        const std::string name = isPart ? "Bolt.CATPart" : "Root.CATProduct";
        EXPECT_EQ(embedded::logFile(), (Texts{"Error:\nunable to set the value to the Fixed parameter of " + name +
                                              "\nunable to set the value to the Driven parameter of " + name +
                                              "\nunable to set the value to the Count parameter of " + name + "\n"}));
        EXPECT_EQ(contents(values), (Texts{"Free = b", "Fixed = a (read-only)", "Driven = 1", "Count = 1"}));
        EXPECT_EQ(linesWith("parameter_set collection"),
                  (Texts{std::string("getParameterSet returns a parameter_set collection") +
                         (isPart ? " for object MechanicalPart" : "")}));
        EXPECT_EQ(values.redraws(), 0);
        failAt("UTILLog::writeInLogFile", [&](CATDocument*, CATListValCATUnicodeString&) { return run(); });
        EXPECT_EQ(reports(), report(isPart ? "setMechanicalPartParameters" : "setReferenceProductParameters",
                                    "9003 writeInLogFile"));

        environment().createsProperties = true;
        EXPECT_EQ(run(), S_OK);
        EXPECT_EQ(contents(values)[4], "New = n string: n, m");
        EXPECT_EQ(values.parameters()[4].userName(), "");
        EXPECT_EQ(values.redraws(), 1);
        EXPECT_EQ(needUpdate, 0);
        embedded::logFile().clear();
    }
}

TEST_F(AttributesTest, PartsAndProductsGetTheirFirstSet) {
    document = session().part("/w/Bolt.CATPart").upToDate(false);
    const Publisher part = parametersOf(document, "MechanicalPart", "Bolt");
    const Publisher product = parametersOf(session().product("/w/Root.CATProduct").root());
    part.addSet("ExternalParameterSet");
    unsigned char needUpdate = 0;
    EXPECT_EQ(setPart(part, {{"A", "1", "i"}}, needUpdate), S_OK);
    EXPECT_EQ(setProduct(product, {{"A", "1", "i"}}), S_OK);
    EXPECT_EQ(part.sets().size() + product.sets().size(), 1U);
    EXPECT_EQ(needUpdate, 1);
    EXPECT_EQ(linesWith("o_need_update"), (Texts{"o_need_update is set to TRUE"}));

    environment().createsProperties = true;
    document.upToDate(true);
    EXPECT_EQ(setPart(part, {{"A", "1", "i"}}, needUpdate), S_OK);
    EXPECT_EQ(needUpdate, 1) << "the caller's";
    EXPECT_EQ(setProduct(product, {}), S_OK);
    ASSERT_EQ(part.sets().size(), 2U);
    EXPECT_EQ(contents(part.sets()[0]), Texts());
    EXPECT_EQ(contents(part.sets()[1]), (Texts{"A = 1"}));
    EXPECT_EQ(part.sets()[1].redraws(), 1);
    ASSERT_EQ(product.sets().size(), 1U);
    EXPECT_EQ(product.sets()[0].redraws(), 1);
    EXPECT_EQ(embedded::logFile(), Texts());

    EXPECT_EQ(setPart(Publisher(), {}, needUpdate), E_FAIL);
    EXPECT_EQ(reports(), report("setMechanicalPartParameters", "9002 ipi_spec_obj_ref"));
    EXPECT_EQ(setProduct(Publisher(), {}), E_FAIL);
    EXPECT_EQ(reports(), report("setReferenceProductParameters", "9002 ipi_spec_obj_ref"));
}

TEST_F(AttributesTest, EachNameIsReadOnceAndTheGuaranteedOnesAlways) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.document);
        const Publisher values = begin(kind).addSet("Values");
        EXPECT_EQ(
            pairs(kind.retrieve),
            (Texts{"Definition=", "Revision=", "EBS_ItemRevName=", "EBS_DatasetUid=", "EBS_DatasetLastVersion="}));
        values.add("ItemID", "A");
        values.add("Definition", "later");
        values.add("Sub\\Nested", "n");
        values.add("EBS_ItemRevName", "first");
        values.add("ItemRev_Name", "Beam");
        values.add("Title", "Revision");
        values.add("Colours", "red").list("ListOfValues", Texts{"red", "blue"});
        values.add("Lost", "here").list("ListOfValues", Texts{});
        values.add("Flag", true);
        values.addSet("Inner").add("Deep", "d");
        clearJournal();
        EXPECT_EQ(pairs(kind.retrieve), (Texts{"ItemID=A", "Definition=A", "EBS_ItemRevName=first", "ItemRev_Name=Beam",
                                               "Title=Revision", "Colours=red@=@blue", "Lost=", "Flag=true",
                                               "Revision=", "EBS_DatasetUid=", "EBS_DatasetLastVersion="}));
        EXPECT_EQ(linesWith("Multiple value"), (Texts{"Multiple value but empty list\n"}));
    }
}

TEST_F(AttributesTest, DrawingAttributesGoByTheLastSegmentOfTheirName) {
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

TEST_F(AttributesTest, WhatCannotBeReadIsNotTakenForAbsent) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.document);
        const Publisher root = begin(kind);
        environment().createsProperties = true;
        const Publisher values = root.addSet("Values");
        values.add("A", "1");
        const auto operation = [&](CATDocument*, CATListValCATUnicodeString&) {
            values.parameter("A").get()->Valuate(CATUnicodeString("1"));
            return set(kind, {{"A", "2", "s"}});
        };
        const std::pair<const char*, const char*> cases[] = {{"QueryInterface(CATICkeParm)", "pi_param"},
                                                             {"CATICkeParm::RelativeName", "pi_param"},
                                                             {"CATIParmPublisher::GetDirectChildren", "pi_set"},
                                                             {"QueryInterface(CATICkeParmFactory)", "p_param_factory"}};
        for (const auto& test : cases) {
            failAt(test.first, operation);
            EXPECT_EQ(reports(), report(kind.setName, "9002 " + std::string(test.second)));
        }
        EXPECT_EQ(contents(values), (Texts{"A = 1"}));
        failAt("QueryInterface(CATICkeParm)", kind.retrieve);
        EXPECT_EQ(reports(), report(kind.retrieveName, "9002 pi_param"));
    }
}

TEST_F(AttributesTest, EveryFailureOfTheSettersIsMet) {
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
                           return SweepOutcome{setPart(part, entries, needUpdate), true};
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
                       return SweepOutcome{setPart(bare, {}, needUpdate), true};
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

TEST_F(AttributesTest, EveryFailureOfTheReadersIsMet) {
    const auto sweepReader = [&](const char* name, Retrieve retrieve) {
        sweepFailures({kClass + name, [&] {
                           CATListValCATUnicodeString list = column({{"left over", "", ""}}, 0);
                           const HRESULT code = retrieve(document.get(), list);
                           return SweepOutcome{code, list.Size() == 0};
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

} // namespace
