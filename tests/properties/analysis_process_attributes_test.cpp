#include "tests/properties/AttributesTest.h"

#include <algorithm>
#include <iterator>

namespace {

using AnalysisProcessAttributesTest = AttributesTest;

TEST_F(AnalysisProcessAttributesTest, ExistingParametersAreUpdatedByName) {
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
        const Texts lines = embedded::Journal::get().lines();
        const auto told = std::find(lines.begin(), lines.end(), "\t------------- To Update");
        EXPECT_EQ(*std::next(told), "> VornToolsCADDOCProperties::updateParameter");
        EXPECT_EQ(values.redraws(), 0);

        EXPECT_EQ(set(kind, {{"Count", "many", "i"}, {"Other", "q", "s"}}), E_FAIL) << "Count comes last in the set";
        EXPECT_EQ(contents(values)[2], "Other = q");
        EXPECT_EQ(set(kind, {{"ItemID", "B@=@C", "s"}}), S_OK);
        EXPECT_EQ(contents(values)[0], "ItemID = B string: B, C");
    }
}

TEST_F(AnalysisProcessAttributesTest, MissingParametersAreCreatedWhereTheEnvironmentWantsThem) {
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

TEST_F(AnalysisProcessAttributesTest, StepsThatFailOnTheWayToTheSetAreReported) {
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

TEST_F(AnalysisProcessAttributesTest, EachNameIsReadOnceAndTheGuaranteedOnesAlways) {
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
        values.add("Sizes", "S").list("ListOfValues", Texts{"S", "M"});
        values.add("Lost", "here").list("ListOfValues", Texts{});
        values.add("Flag", true);
        values.addSet("Inner").add("Deep", "d");
        clearJournal();
        EXPECT_EQ(pairs(kind.retrieve),
                  (Texts{"ItemID=A", "Definition=A", "EBS_ItemRevName=first", "ItemRev_Name=Beam", "Title=Revision",
                         "Colours=red@=@blue", "Sizes=S@=@M", "Lost=", "Flag=true",
                         "Revision=", "EBS_DatasetUid=", "EBS_DatasetLastVersion="}));
        EXPECT_EQ(linesWith("Multiple value"), (Texts{"Multiple value but empty list\n"}));
    }
}

TEST_F(AnalysisProcessAttributesTest, WhatCannotBeReadIsNotTakenForAbsent) {
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
        for (const char* const call : {"QueryInterface(CATICkeParm)", "QueryInterface(CATISpecAttrAccess)"}) {
            failAt(call, kind.retrieve);
            EXPECT_EQ(reports(), report(kind.retrieveName, "9002 pi_param"));
        }
    }
}

TEST_F(AnalysisProcessAttributesTest, OnlyTheirOwnSetIsTaken) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.document);
        begin(kind);
        const Publisher others = parametersOf(document, "AnalysisCase", "Case").addSet("Others");
        others.add("A", "x");
        const Publisher root = parametersOf(document, kind.feature, "Root");
        const std::string digest = session().digest();
        EXPECT_EQ(set(kind, {{"A", "1", "s"}}), S_OK) << "there is none and none may be made";
        EXPECT_EQ(session().digest(), digest);
        EXPECT_EQ(pairs(kind.retrieve, E_FAIL), Texts());
        EXPECT_EQ(reports(), report(kind.retrieveName, "9002 pi_set"));

        environment().createsProperties = true;
        failAt(
            "CATIParmPublisher::Append",
            [&](CATDocument*, CATListValCATUnicodeString&) {
                return set(kind, {{"A", "1", "s"}});
            },
            [&] { reset(root, ""); });
        EXPECT_EQ(reports(), report(kind.setName, "9002 pi_set"));
        EXPECT_EQ(messages().back(), "Unable to create ParameterSet\n");
        EXPECT_EQ(root.sets().size(), 0U) << "a set that stands nowhere was made";
        EXPECT_EQ(set(kind, {{"A", "2", "s"}}), S_OK);
        ASSERT_EQ(root.sets().size(), 1U);
        EXPECT_EQ(contents(root.sets()[0]), (Texts{"A = 2"}));
        EXPECT_EQ(contents(others), (Texts{"A = x"}));
        root.addSet("Second").add("A", "y");
        EXPECT_EQ(set(kind, {{"A", "3", "s"}}), S_OK) << "the first one";
        EXPECT_EQ(contents(root.sets()[0]), (Texts{"A = 3"}));
        EXPECT_EQ(pairs(kind.retrieve)[0], "A=3");
    }
}

TEST_F(AnalysisProcessAttributesTest, ALookUpThatFailedMakesNoSecondSet) {
    for (const Kind& kind : kKinds) {
        const Publisher root = begin(kind);
        root.addSet("Values");
        environment().createsProperties = true;
        const auto operation = [&](CATDocument*, CATListValCATUnicodeString&) {
            return set(kind, {{"New", "x", "s"}});
        };
        const std::string digest = session().digest();
        for (const char* const call : {"CATIParmPublisher::GetDirectChildren", "CATISpecObject::GetType",
                                       "QueryInterface(CATICkeParameterSet)", "QueryInterface(CATIParmPublisher)"}) {
            SCOPED_TRACE(std::string(kind.document) + " " + call);
            failAt(call, operation);
            EXPECT_EQ(reports(), report(kind.setName, "9002 pi_set"));
            EXPECT_EQ(session().digest(), digest);
        }
    }
}

TEST_F(AnalysisProcessAttributesTest, NothingIsMadeTwice) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.document);
        const Publisher values = begin(kind).addSet("Values");
        values.add("Sub\\Nested", "n");
        environment().createsProperties = true;
        const Entries entries = {{"Sub\\Nested", "x", "s"}, {"a\\b", "1", "s"},  {"Twice", "many", "i"},
                                 {"Twice", "2", "i"},       {"Twice", "3", "i"}, {"Other", "o", "s"}};
        EXPECT_EQ(set(kind, entries), S_OK);
        const Texts made = {"Sub\\Nested = n", "a\\b = 1", "Twice = 2", "Other = o"};
        EXPECT_EQ(contents(values), made) << "the first value that fits counts";
        EXPECT_EQ(set(kind, {{"a\\b", "2", "s"}, {"Sub\\Nested", "y", "s"}}), S_OK);
        EXPECT_EQ(contents(values), made) << "what has a path belongs to a nested object";
        EXPECT_EQ(pairs(kind.retrieve)[0], "Twice=2");
    }
}

} // namespace
