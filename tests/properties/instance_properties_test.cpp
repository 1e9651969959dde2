#include "CATIAlias.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATIProduct.h"
#include "CATISpecAttrAccess.h"
#include "CATISpecObject.h"
#include "VornToolsAssyConfig.h"
#include "VornToolsCommon.h"
#include "VornToolsInstanceProperty.h"
#include "embedded/Parameters.h"
#include "embedded/SessionFile.h"
#include "tests/support/FaultAt.h"
#include "tests/support/Fixture.h"
#include "tests/support/Sweep.h"
#include "tests/support/Utf8.h"

#include <memory>
#include <utility>

struct VornToolsInstancePropertyTestAccess {
    static CATUnicodeString letter(int type) {
        return VornToolsInstanceProperty::propertyTypeToString(
            static_cast<VornToolsInstanceProperty::EnumPropertyType>(type));
    }
    static bool nothingForNull() {
        return !VornToolsInstanceProperty::getParameter(nullptr, "A") &&
               !VornToolsInstanceProperty::getUserInstancePropertiesParameterSet(nullptr, nullptr);
    }
};

namespace {

using Service = VornToolsInstanceProperty;
using Type = Service::EnumPropertyType;
using embedded::FaultFlavour;

class InstancePropertiesTest : public PlatformTest {
protected:
    void SetUp() override {
        PlatformTest::SetUp();
        root = session().product("/w/Root.CATProduct").root();
        frame = root.addComponent("Frame", "Frame.1");
        bolt = root.add(session().part("/w/Bolt.CATPart"), "Bolt.1");
    }
    static HRESULT create(const embedded::Product& product, Type type, const std::string& name,
                          const std::string& value, bool evenEmpty, int expectedCreated) {
        unsigned char created = 7;
        const HRESULT code = Service::createMaroInstanceProperty(product.get(), type, utf8(name), utf8(value),
                                                                 evenEmpty ? 1 : 0, created);
        EXPECT_EQ(created, expectedCreated) << name;
        return code;
    }
    /** "name=value" of every property. */
    static Texts all(const embedded::Product& product, HRESULT expected = S_OK) {
        CATListValCATUnicodeString names, values;
        names.Append("before");
        values.Append("before");
        EXPECT_EQ(Service::getAllMaroInstancePropertiesNamesAndValues(product.get(), names, values), expected);
        EXPECT_EQ(names.Size(), values.Size());
        Texts result;
        for (int i = 1; i <= names.Size(); ++i) result.push_back(toUtf8(names[i]) + "=" + toUtf8(values[i]));
        return result;
    }
    /** "type value", or "none". */
    static std::string one(const embedded::Product& product, const char* name, HRESULT expected = S_OK) {
        unsigned char found = 7;
        Type type = Service::PropertyBoolean;
        CATUnicodeString value("before");
        EXPECT_EQ(Service::getAttribute(product.get(), name, found, type, value), expected) << name;
        EXPECT_TRUE(found || (type == Service::PropertyString && value.IsNull()));
        return found ? std::to_string(static_cast<int>(type)) + " " + value.ConvertToChar() : "none";
    }
    static HRESULT set(const embedded::Product& product, const char* name, Type type, const char* value) {
        return Service::setAttribute(product.get(), name, type, value);
    }
    static std::string mapped(embedded::Product product, const char* description, const char* mapping) {
        product.description(description);
        EXPECT_EQ(Service::updateDescriptionInstMapping(product.get(), mapping), S_OK);
        return product.description();
    }
    static CATListValCATUnicodeString list(const Texts& texts) {
        CATListValCATUnicodeString result;
        for (const std::string& text : texts) result.Append(text.c_str());
        return result;
    }
    static HRESULT setProperties(const embedded::Product& product, const Texts& names, const Texts& values) {
        return VornToolsCommon::setInstanceProperties(product.get(), list(names), list(values));
    }

    embedded::Product root, frame, bolt;
};

TEST_F(InstancePropertiesTest, TypesHaveLetters) {
    const Texts letters = {"s", "d", "i", "s", "b", "s", "s"};
    const int types[] = {0, 1, 2, 3, 4, 5, 7};
    for (std::size_t i = 0; i < letters.size(); ++i)
        EXPECT_STREQ(VornToolsInstancePropertyTestAccess::letter(types[i]).ConvertToChar(), letters[i].c_str());
    EXPECT_TRUE(VornToolsInstancePropertyTestAccess::nothingForNull());
}

TEST_F(InstancePropertiesTest, PropertiesAreMadeUpdatedAndRead) {
    const std::string untouched = session().digest();
    EXPECT_EQ(create(frame, Service::PropertyString, "A", "", false, 1), E_FAIL);
    EXPECT_EQ(session().digest(), untouched);
    EXPECT_EQ(all(frame), Texts());
    EXPECT_EQ(one(frame, "A"), "none");

    EXPECT_EQ(create(frame, Service::PropertyText, "Text", "x", false, 1), S_OK);
    EXPECT_EQ(create(frame, Service::PropertyReal, "Real", "0.1234567890123456", false, 1), S_OK);
    EXPECT_EQ(create(frame, Service::PropertyInteger, "Count", "-3", false, 1), S_OK);
    EXPECT_EQ(create(frame, Service::PropertyBoolean, "Flag", "TRUE", false, 1), S_OK);
    EXPECT_EQ(create(frame, Service::PropertyString, "Empty", "", false, 1), E_FAIL);
    EXPECT_EQ(create(frame, Service::PropertyString, "Empty", "", true, 1), S_OK);
    EXPECT_EQ(create(frame, Service::PropertyInteger, "Bad", "x", true, 1), E_FAIL);
    EXPECT_EQ(create(frame, Service::PropertyString, "Text", "y", false, 0), S_OK);
    EXPECT_EQ(all(frame), (Texts{"Text=y", "Real=0.1234567890123456", "Count=-3", "Flag=1", "Empty="}));
    EXPECT_EQ(one(frame, "Text"), "0 y");
    EXPECT_EQ(one(frame, "Real"), "1 0.123457");
    EXPECT_EQ(one(frame, "Count"), "2 -3");
    EXPECT_EQ(one(frame, "Flag"), "4 1");
    EXPECT_EQ(one(frame, "text"), "none");

    EXPECT_EQ(Service::updateMaroInstanceProperty(frame.get(), Service::PropertyInteger, "Count", "12"), S_OK);
    EXPECT_EQ(Service::updateMaroInstanceProperty(frame.get(), Service::PropertyInteger, "Count", "x"), E_FAIL);
    EXPECT_EQ(Service::updateMaroInstanceProperty(frame.get(), Service::PropertyInteger, "New", "1"), E_FAIL);
    EXPECT_EQ(Service::updateMaroInstanceProperty(root.get(), Service::PropertyInteger, "Count", "1"), E_FAIL);
    EXPECT_EQ(one(frame, "Count"), "2 12");
    EXPECT_EQ(one(frame, "New"), "none");
    EXPECT_EQ(all(root), Texts()) << "each place has its own";
}

TEST_F(InstancePropertiesTest, TheSetIsPutBehindWhatElseTheListHolds) {
    ASSERT_EQ(create(frame, Service::PropertyString, "A", "x", false, 1), S_OK);
    const CATISpecAttrAccess_var access(static_cast<CATBaseUnknown*>(frame.get()));
    CATISpecAttrKey* const key = access->GetAttrKey("_Maro");
    CATISpecObject* const set = access->GetSpecObject(key, 1);
    CATIAlias_var(static_cast<CATBaseUnknown*>(set))->SetAlias("SomebodyElses");
    set->Release();
    EXPECT_EQ(all(frame), Texts());
    EXPECT_EQ(create(frame, Service::PropertyString, "A", "", false, 1), E_FAIL);
    EXPECT_EQ(access->GetListSize(key), 1);
    EXPECT_EQ(create(frame, Service::PropertyString, "A", "y", false, 1), S_OK);
    EXPECT_EQ(access->GetListSize(key), 2);
    EXPECT_EQ(all(frame), (Texts{"A=y"}));
    key->Release();
}

TEST_F(InstancePropertiesTest, APropertyNeedsAName) {
    EXPECT_EQ(create(frame, Service::PropertyString, "", "x", true, 1), E_FAIL);
    EXPECT_EQ(set(frame, "", Service::PropertyString, "x"), E_FAIL);
    EXPECT_EQ(reports(), Texts(2, "VornToolsInstanceProperty::createMaroInstanceProperty 9001 i_name"));
    EXPECT_EQ(create(frame, Service::PropertyString, "A", "x", false, 1), S_OK);
    EXPECT_EQ(all(frame), (Texts{"A=x"}));
}

TEST_F(InstancePropertiesTest, APropertyThatCannotBeReadIsNotTakenForAbsent) {
    ASSERT_EQ(create(frame, Service::PropertyString, "A", "x", false, 1), S_OK);
    auto& failures = embedded::Failures::get();
    const std::pair<std::string, std::string> cases[] = {{"CATICkeParameterSet::Parameters", "pi_param"},
                                                         {"QueryInterface(CATICkeParm)", "pi_param"},
                                                         {"CATISpecAttrAccess::GetListSize", "pi_set"},
                                                         {"CATISpecAttrAccess::GetSpecObject", "pi_set"},
                                                         {"CATISpecObject::GetType", "pi_set"},
                                                         {"CATISpecObject::GetDisplayName", "pi_set"},
                                                         {"QueryInterface(CATICkeParameterSet)", "pi_set"}};
    for (const auto& [call, missing] : cases) {
        std::string met = "none yet";
        for (int nth = 1; met != call && !met.empty(); ++nth) {
            reports();
            unsigned char found = 7;
            Type type = Service::PropertyBoolean;
            CATUnicodeString value("before");
            failures.arm(nth, false, FaultFlavour::code);
            const HRESULT code = Service::getAttribute(frame.get(), "A", found, type, value);
            met = failures.firedAt();
            failures.disarm();
            if (met != call) continue;
            EXPECT_EQ(code, E_FAIL) << call;
            EXPECT_EQ(found, 0);
        }
        EXPECT_EQ(reports(), (Texts{"VornToolsInstanceProperty::getAttribute 9002 " + missing})) << call;
    }
}

TEST_F(InstancePropertiesTest, WhatTheFirstPropertyCannotBeMadeWithoutIsReported) {
    int components = 1;
    const struct {
        const char* call;
        int nth;
        std::string report;
    } cases[] = {{"QueryInterface(CATICkeParmFactory)", 1, "9002 pi_param_factory"},
                 {"QueryInterface(CATISpecAttrAccess)", 1, "9002 pi_spec_attr_access"},
                 {"QueryInterface(CATISpecObject)", 3, "9002 pi_spec_object"},
                 {"CATISpecObject::AddAttribute", 1, "9003 AddAttribute"},
                 {"QueryInterface(CATICkeRelationFactory)", 1, "9002 pi_relation_factory"},
                 {"CATICkeRelationFactory::CreateParameterSet", 1, "9003 CreateParameterSet"},
                 {"CATISpecAttrAccess::SetSpecObject", 1, "9003 SetSpecObject"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.call);
        HRESULT code = S_OK;
        EXPECT_TRUE(failAt(c.call, c.nth, [&] {
            const auto component = root.addComponent("Frame", "Frame." + std::to_string(++components));
            code = create(component, Service::PropertyString, "A", "x", false, 1);
        }));
        EXPECT_EQ(code, E_FAIL);
        EXPECT_EQ(reports(), Texts{"VornToolsInstanceProperty::createMaroInstanceProperty " + c.report});
    }
}

TEST_F(InstancePropertiesTest, AttributesAreSetInTheirOwnType) {
    environment().decimalSeparator = ",";
    EXPECT_EQ(set(frame, "R", Service::PropertyReal, "x"), E_FAIL);
    EXPECT_EQ(set(frame, "R", Service::PropertyReal, "1.5"), S_OK);
    EXPECT_EQ(set(frame, "R", Service::PropertyReal, "2.5e3"), S_OK);
    EXPECT_EQ(one(frame, "R"), "1 2500");
    EXPECT_EQ(set(frame, "R", Service::PropertyString, "x"), E_FAIL);
    EXPECT_EQ(set(frame, "R", Service::PropertyInteger, "1"), E_FAIL);
    EXPECT_EQ(set(frame, "R", Service::PropertyBoolean, "1"), E_FAIL);
    EXPECT_EQ(set(frame, "R", Service::PropertyReal, ""), E_FAIL);
    EXPECT_EQ(one(frame, "R"), "1 2500");
    EXPECT_EQ(set(frame, "R", Service::PropertyReal, "0.5@=@1234567,5"), S_OK);
    EXPECT_EQ(one(frame, "R"), "1 0,5@=@1,23457e+06");
    EXPECT_EQ(all(frame), (Texts{"R=0,5@=@1234567,5"}));
    for (const char* const none : {"1,5,", "1.234,5", "nan", "1e999", "@=@", "0,5@=@"})
        EXPECT_EQ(set(frame, "R", Service::PropertyReal, none), E_FAIL) << none;
    EXPECT_EQ(all(frame), (Texts{"R=0,5@=@1234567,5"}));
    EXPECT_EQ(set(frame, "S", Service::PropertyString, ""), S_OK);
    EXPECT_EQ(set(frame, "B", Service::PropertyBoolean, "no"), S_OK);
    EXPECT_EQ(one(frame, "S"), "0 ");
    EXPECT_EQ(one(frame, "B"), "4 0");
    for (const char* const name : {"S", "B"})
        EXPECT_EQ(set(frame, name, Service::PropertyBoolean, "1@=@0"), S_OK) << "kept as texts";
    EXPECT_EQ(one(frame, "S"), "0 1@=@0");
    EXPECT_EQ(one(frame, "B"), "4 1@=@0");
    EXPECT_EQ(set(frame, "B", Service::PropertyBoolean, "no"), S_OK);
    EXPECT_EQ(set(frame, "S", Service::PropertyBoolean, "1"), E_FAIL);
    EXPECT_EQ(all(frame), (Texts{"R=0,5@=@1234567,5", "S=1@=@0", "B=no@=@1@=@0"}));
}

TEST_F(InstancePropertiesTest, SeveralValuesAreKeptInTheirOrderOnceEach) {
    const struct {
        Type type;
        const char* given;
        const char* read;
    } cases[] = {{Service::PropertyString, "a@=@b@=@a", "0 a@=@b"},   {Service::PropertyString, "@=@", "0 "},
                 {Service::PropertyString, "@=@a", "0 @=@a"},         {Service::PropertyString, "a@=@", "0 a@=@"},
                 {Service::PropertyString, "a@=@@=@b", "0 a@=@@=@b"}, {Service::PropertyInteger, "3@=@1", "2 3@=@1"},
                 {Service::PropertyReal, "0.5@=@2", "1 0.5@=@2"},     {Service::PropertyBoolean, "1@=@0", "0 1@=@0"}};
    int number = 0;
    for (const auto& each : cases) {
        const std::string name = "P" + std::to_string(++number);
        EXPECT_EQ(create(frame, each.type, name.c_str(), each.given, false, 1), S_OK) << each.given;
        EXPECT_EQ(one(frame, name.c_str()), each.read) << each.given;
    }
    EXPECT_EQ(create(frame, Service::PropertyInteger, "Bad", "3@=@x", false, 1), E_FAIL);
    std::string many = "0";
    for (int i = 1; i < 10000; ++i) many += "@=@" + std::to_string(i);
    EXPECT_EQ(create(frame, Service::PropertyInteger, "Many", many, false, 1), S_OK);
    EXPECT_EQ(one(frame, "Many"), "2 " + many);
}

TEST_F(InstancePropertiesTest, PropertiesAreListedAndSortedByName) {
    for (const char* const name : {"b",
                                   "\xC5\x81"
                                   "a",
                                   "B", "a10",
                                   "\xC4\x86"
                                   "b",
                                   "a", "a1"})
        create(frame, Service::PropertyString, name, "x", false, 1);
    CATListValCATBaseUnknown_var* p_list = nullptr;
    ASSERT_EQ(Service::getAllMaroInstancePropertiesOrderedByName(frame.get(), p_list), S_OK);
    const std::unique_ptr<CATListValCATBaseUnknown_var> sorted(p_list);
    Texts names;
    for (int i = 1; i <= sorted->Size(); ++i) names.push_back(toUtf8(CATICkeParm_var((*sorted)[i])->Name()));
    EXPECT_EQ(names, (Texts{"B", "a", "a1", "a10", "b",
                            "\xC4\x86"
                            "b",
                            "\xC5\x81"
                            "a"}));
    EXPECT_EQ(all(frame), (Texts{"b=x",
                                 "\xC5\x81"
                                 "a=x",
                                 "B=x", "a10=x",
                                 "\xC4\x86"
                                 "b=x",
                                 "a=x", "a1=x"}));
    // Equal names keep their order.
    CATICkeParm_var((*sorted)[2])->Rename("B");
    ASSERT_EQ(Service::getAllMaroInstancePropertiesOrderedByName(frame.get(), p_list), S_OK);
    const std::unique_ptr<CATListValCATBaseUnknown_var> again(p_list);
    EXPECT_TRUE((*again)[1] == (*sorted)[1] && (*again)[2] == (*sorted)[2]);
}

TEST_F(InstancePropertiesTest, OnlyInstancesStoredBesideTheirReferenceTakeProperties) {
    const std::string digest = session().digest();
    EXPECT_EQ(create(bolt, Service::PropertyString, "A", "x", false, 1), E_FAIL);
    EXPECT_EQ(set(bolt, "A", Service::PropertyString, "x"), E_FAIL);
    EXPECT_EQ(Service::updateDescriptionInstMapping(bolt.get(), "x"), E_FAIL);
    EXPECT_EQ(session().digest(), digest);
    EXPECT_EQ(reports(), Texts());
    EXPECT_EQ(create(root.addUnresolved("x.1"), Service::PropertyString, "A", "x", false, 1), E_FAIL);
    EXPECT_EQ(reports(), (Texts{"VornToolsInstanceProperty::createMaroInstanceProperty 9002 sp_reference_product"}));

    const embedded::Product none;
    EXPECT_EQ(create(none, Service::PropertyString, "A", "x", false, 1), E_INVALIDARG);
    EXPECT_EQ(set(none, "A", Service::PropertyString, "x"), E_INVALIDARG);
    EXPECT_EQ(Service::updateMaroInstanceProperty(nullptr, Service::PropertyString, "A", "x"), E_INVALIDARG);
    EXPECT_EQ(Service::updateDescriptionInstMapping(nullptr, "x"), E_INVALIDARG);
    EXPECT_EQ(one(none, "A", E_INVALIDARG), "none");
    EXPECT_EQ(all(none, E_INVALIDARG), Texts());
    CATListValCATBaseUnknown_var* p_list = nullptr;
    EXPECT_EQ(Service::getAllMaroInstancePropertiesOrderedByName(nullptr, p_list), E_INVALIDARG);
    EXPECT_EQ(p_list, nullptr);
}

TEST_F(InstancePropertiesTest, MappingLinesStayAtTheHeadOfTheDescription) {
    EXPECT_EQ(mapped(frame, "KETO_ID_7\r\nBBPC_ID_3\r\nuser\nmore", "m"), "KETO_ID_7\nBBPC_ID_3\nm");
    EXPECT_EQ(mapped(frame, "KETO_ID_7\nBBPC_ID_3", "m"), "KETO_ID_7\nBBPC_ID_3\nm");
    EXPECT_EQ(mapped(frame, "KETO_ID_7\nuser\nBBPC_ID_3", "m"), "KETO_ID_7\nm");
    EXPECT_EQ(mapped(frame, "BBPC_ID_3\nBBPC_ID_4", ""), "BBPC_ID_3");
    EXPECT_EQ(mapped(frame, "BrokenIcon\nBBPC_ID_4", "m\nn"), "BrokenIcon\nm\nn");
    EXPECT_EQ(mapped(frame, "IgnoreNode", "m"), "IgnoreNode\nm");
    EXPECT_EQ(mapped(frame, "IgnoreNode.2\nKETO_ID_7", "m"), "m");
    EXPECT_EQ(mapped(frame, "SecondaryPart\nuser", "m"), "m");
    EXPECT_EQ(mapped(frame, "user\nKETO_ID_7", ""), "");
    EXPECT_EQ(mapped(frame, "", "m"), "m");
}

TEST_F(InstancePropertiesTest, AssemblyConfigurationsAreRecognised) {
    CATUnicodeString item("before"), dataset("before"), ref("before"), file("before");
    EXPECT_EQ(VornToolsAssyConfig::hasMaroAssyConfigProperty(bolt.get(), item, dataset, ref, file), 0);
    EXPECT_TRUE(item.IsNull() && dataset.IsNull() && ref.IsNull() && file.IsNull());
    EXPECT_EQ(VornToolsAssyConfig::hasMaroAssyConfigProperty(nullptr, item, dataset, ref, file), 0);
    EXPECT_EQ(VornToolsAssyConfig::isAssyConfigRootProduct(nullptr), 0);
    embedded::Publisher properties = embedded::userProperties(bolt);
    properties.add("MaroAssyConfigFileName", "f.CATProduct");
    clearJournal();
    EXPECT_EQ(VornToolsAssyConfig::hasMaroAssyConfigProperty(bolt.get(), item, dataset, ref, file), 1);
    EXPECT_EQ(file, "f.CATProduct");
    EXPECT_EQ(VornToolsAssyConfig::isAssyConfigRootProduct(bolt.get()), 0);
    EXPECT_EQ(messages(), (Texts{"Function isAssyConfigRootProduct returns 0"}));
    properties.add("MaroAssyConfigItemRevUID", "i");
    properties.add("MaroAssyConfigDatasetUID", "d");
    properties.add("MaroAssyConfigNamedRefUID", "n");
    environment().debugMode = true;
    clearJournal();
    EXPECT_EQ(VornToolsAssyConfig::hasMaroAssyConfigProperty(bolt.get(), item, dataset, ref, file), 1);
    EXPECT_EQ(VornToolsAssyConfig::isAssyConfigRootProduct(bolt.get()), 1);
    EXPECT_EQ(messages(), (Texts{"Function hasMaroAssyConfigProperty returns 1, o_itemrev_uid=[i], o_dataset_uid=[d], "
                                 "o_named_ref_uid=[n], o_file_name=[f.CATProduct]",
                                 "Function isAssyConfigRootProduct returns 1"}));
}

TEST_F(InstancePropertiesTest, NameAndDescriptionOfAnInstanceAreSet) {
    clearJournal();
    EXPECT_EQ(setProperties(bolt, {"Other", "InstanceName", "DescriptionInst"}, {"x", "Screw.1", "text"}), S_OK);
    EXPECT_EQ(bolt.instanceName(), "Screw.1");
    EXPECT_EQ(bolt.description(), "text");
    EXPECT_EQ(messages(), (Texts{"Set InstanceName", "Set DescriptionInst"}));
    EXPECT_EQ(setProperties(bolt, {"InstanceName", "DescriptionInst"}, {"Frame.1", "later"}), E_FAIL);
    EXPECT_EQ(bolt.instanceName(), "Screw.1") << "a brother has the name";
    EXPECT_EQ(bolt.description(), "later");
    EXPECT_EQ(setProperties(embedded::Product(), {"InstanceName"}, {"x"}), E_FAIL);
    EXPECT_EQ(setProperties(bolt, {"InstanceName"}, {}), E_FAIL);
    EXPECT_EQ(setProperties(bolt, {}, {}), S_OK);
    EXPECT_EQ(reports(), (Texts{"VornToolsCommon::setInstanceProperties 9003 SetPrdInstanceName",
                                "VornToolsCommon::setInstanceProperties 9001 ipi_catiproduct",
                                "VornToolsCommon::setInstanceProperties 9001 i_values"}));
    bolt.withoutProperties();
    EXPECT_EQ(setProperties(bolt, {"InstanceName"}, {"x"}), E_FAIL);
    EXPECT_EQ(reports(), (Texts{"VornToolsCommon::setInstanceProperties 9002 pi_cati_prd_properties"}));
}

TEST_F(InstancePropertiesTest, TheDescriptionBelowAComponentIsCleanedFirst) {
    embedded::Product inner = frame.add(session().part("/w/Nut.CATPart"), "Nut.1");
    embedded::Product relative = frame.reference().at({"Nut.1"});
    relative.description("KETO_ID_7\nuser");
    EXPECT_EQ(setProperties(inner, {"DescriptionInst"}, {"text"}), S_OK);
    EXPECT_EQ(inner.description(), "text");
    EXPECT_EQ(relative.description(), "user");
}

TEST_F(InstancePropertiesTest, TheDescriptionBelowASubAssemblyIsNotCleaned) {
    const auto sub = session().product("/w/Sub.CATProduct");
    embedded::Product inner = sub.root().add(session().part("/w/Nut.CATPart"), "Nut.1");
    inner.description("KETO_ID_7\nuser");
    root.add(sub, "Sub.1");
    EXPECT_EQ(setProperties(root.at({"Sub.1", "Nut.1"}), {"DescriptionInst"}, {"text"}), S_OK);
    EXPECT_EQ(messages(), (Texts{"Set DescriptionInst"}));
    EXPECT_EQ(inner.description(), "KETO_ID_7\nuser");
}

TEST_F(InstancePropertiesTest, ADescriptionIsWrittenEvenWhenCleaningFailed) {
    const embedded::Product inner = frame.add(session().part("/w/Nut.CATPart"), "Nut.1");
    const std::string line = "Impossible to update instance description for relative occurrence";
    const struct {
        const char* call;
        HRESULT code;
        Texts messages, reports;
    } cases[] = {
        {"CATIProduct::FindInstance",
         S_OK,
         {"Set DescriptionInst", line},
         {"VornToolsCommon::cleanDescriptionForRelativeOccUnderComponent 9002 sp_product_relative_occurrence"}},
        {"CATIProduct::GetFatherProduct",
         E_FAIL,
         {"Set DescriptionInst"},
         {"VornToolsCommon::setInstanceProperties 9002 pi_parent_product"}}};
    auto& failures = embedded::Failures::get();
    for (const auto& c : cases) {
        std::string met = "none yet";
        for (int nth = 1; met != c.call && !met.empty(); ++nth) {
            reports();
            clearJournal();
            embedded::Product(inner).description("old");
            failures.arm(nth, false, FaultFlavour::code);
            const HRESULT code = setProperties(inner, {"DescriptionInst"}, {"new"});
            met = failures.firedAt();
            failures.disarm();
            if (met != c.call) continue;
            EXPECT_EQ(code, c.code);
            EXPECT_EQ(inner.description(), "new");
        }
        EXPECT_EQ(met, c.call);
        EXPECT_EQ(messages(), c.messages);
        EXPECT_EQ(reports(), c.reports);
    }
}

TEST_F(InstancePropertiesTest, PropertiesComeBackFromASessionFile) {
    create(frame, Service::PropertyString, "A", "a@=@b", false, 1);
    create(frame, Service::PropertyReal, "R", "0.5", false, 1);
    std::string text, again;
    ASSERT_TRUE(embedded::sessionText(text).ok);
    const auto loaded = embedded::loadSessionText(path("s.json"), text);
    ASSERT_TRUE(loaded.ok) << loaded.error;
    ASSERT_TRUE(embedded::sessionText(again).ok);
    EXPECT_EQ(text, again);
    EXPECT_EQ(text.find("\"access\""), std::string::npos) << "everybody may change them";
    const auto readAgain = [&] { return session().product("/w/Root.CATProduct").root().at({"Frame.1"}); };
    EXPECT_EQ(all(readAgain()), (Texts{"A=a@=@b", "R=0.5"}));
    const std::size_t value = text.find("0.5\""), from = text.rfind(',', value);
    ASSERT_TRUE(embedded::loadSessionText(path("s.json"), text.erase(from, value + 4 - from)).ok) << text;
    EXPECT_EQ(all(readAgain()), (Texts{"A=a@=@b", "R="})) << "a property without a value";
    EXPECT_EQ(one(readAgain(), "R"), "1 ");
    const std::size_t texts = text.find("\"texts\""), first = text.find("\"a\"", texts);
    ASSERT_TRUE(embedded::loadSessionText(path("s.json"), text.erase(first, text.find("\"b\"", first) - first)).ok);
    EXPECT_EQ(all(readAgain()), (Texts{"A=b", "R="})) << "a list of one";
    ASSERT_TRUE(embedded::loadSessionText(path("s.json"), text.erase(first, 3)).ok) << text;
    EXPECT_EQ(all(readAgain()), (Texts{"A=a", "R="})) << "an empty list says no more than none";
}

TEST_F(InstancePropertiesTest, AFirstPropertyThatFailedIsMadeByTheNextCall) {
    auto& failures = embedded::Failures::get();
    for (const FaultFlavour flavour : {FaultFlavour::code, FaultFlavour::codeWithOutput, FaultFlavour::nullOutput}) {
        bool fired = true;
        for (int nth = 1; fired && nth < 500; ++nth) {
            const std::string name = "F" + std::to_string(static_cast<int>(flavour)) + "." + std::to_string(nth);
            const embedded::Product fresh = root.addComponent(name, name);
            unsigned char created = 0;
            failures.arm(nth, false, flavour);
            Service::createMaroInstanceProperty(fresh.get(), Service::PropertyString, "A", "x", 0, created);
            fired = failures.fired();
            const std::string site = failures.firedAt();
            failures.disarm();
            reports();
            EXPECT_EQ(Service::createMaroInstanceProperty(fresh.get(), Service::PropertyString, "A", "y", 0, created),
                      S_OK)
                << site;
            EXPECT_EQ(all(fresh).back(), "A=y") << site;
        }
        EXPECT_FALSE(fired);
    }
}

TEST_F(InstancePropertiesTest, EveryPlatformCallMayFail) {
    ASSERT_EQ(create(frame, Service::PropertyString, "A", "x", false, 1), S_OK);
    ASSERT_EQ(create(frame, Service::PropertyReal, "R", "0.5@=@2", false, 1), S_OK);
    const auto reset = [this] {
        reports();
        frame.description("user").instanceName("Frame.1");
        Service::updateMaroInstanceProperty(frame.get(), Service::PropertyString, "A", "x");
    };
    sweepFailures({"VornToolsInstanceProperty::createMaroInstanceProperty",
                   [this] {
                       unsigned char created = 7;
                       const HRESULT code = Service::createMaroInstanceProperty(frame.get(), Service::PropertyString,
                                                                                "A", "y", 0, created);
                       return SweepOutcome{code, true, created};
                   },
                   reset});
    sweepFailures({"VornToolsInstanceProperty::updateMaroInstanceProperty",
                   [this] {
                       return SweepOutcome{
                           Service::updateMaroInstanceProperty(frame.get(), Service::PropertyString, "A", "y")};
                   },
                   reset});
    sweepFailures({"VornToolsInstanceProperty::setAttribute",
                   [this] { return SweepOutcome{set(frame, "A", Service::PropertyString, "y")}; }, reset});
    sweepFailures({"VornToolsInstanceProperty::getAttribute", [this] {
                       unsigned char found = 7;
                       Type type = Service::PropertyBoolean;
                       CATUnicodeString value("before");
                       const HRESULT code = Service::getAttribute(frame.get(), "R", found, type, value);
                       return outcomeOf(code, found, type, value);
                   }});
    sweepFailures({"VornToolsInstanceProperty::getAllMaroInstancePropertiesNamesAndValues", [this] {
                       CATListValCATUnicodeString names = list({"before"}), values = list({"before"});
                       const HRESULT code =
                           Service::getAllMaroInstancePropertiesNamesAndValues(frame.get(), names, values);
                       return outcomeOf(code, names, values);
                   }});
    for (const auto& [name, method] :
         {std::pair("VornToolsInstanceProperty::getAllMaroInstanceProperties", &Service::getAllMaroInstanceProperties),
          std::pair("VornToolsInstanceProperty::getAllMaroInstancePropertiesOrderedByName",
                    &Service::getAllMaroInstancePropertiesOrderedByName)}) {
        const auto call = method;
        sweepFailures({name, [this, call] {
                           CATListValCATBaseUnknown_var* p_list = nullptr;
                           const HRESULT code = call(frame.get(), p_list);
                           const std::unique_ptr<CATListValCATBaseUnknown_var> owned(p_list);
                           return outcomeOf(code, p_list);
                       }});
    }
    sweepFailures({"VornToolsInstanceProperty::updateDescriptionInstMapping",
                   [this] { return SweepOutcome{Service::updateDescriptionInstMapping(frame.get(), "m")}; }, reset});
    sweepFailures({"VornToolsCommon::setInstanceProperties",
                   [this] { return SweepOutcome{setProperties(frame, {"InstanceName"}, {"Frame.2"})}; }, reset});
    sweepFailures({"VornToolsCommon::setInstanceProperties",
                   [this] { return SweepOutcome{setProperties(frame, {"DescriptionInst"}, {"text"})}; }, reset});
    embedded::userProperties(bolt).add("MaroAssyConfigDatasetUID", "d");
    sweepFailures({"VornToolsAssyConfig::hasMaroAssyConfigProperty", [this] {
                       CATUnicodeString texts[4];
                       const int has = VornToolsAssyConfig::hasMaroAssyConfigProperty(bolt.get(), texts[0], texts[1],
                                                                                      texts[2], texts[3]);
                       return SweepOutcome{S_OK, true, has, textOfOutputs(texts[0], texts[1], texts[2], texts[3])};
                   }});
    sweepFailures({"VornToolsAssyConfig::isAssyConfigRootProduct", [this] {
                       return SweepOutcome{S_OK, true, VornToolsAssyConfig::isAssyConfigRootProduct(bolt.get())};
                   }});
}

} // namespace
