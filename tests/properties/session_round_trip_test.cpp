#include "CATDocument.h"
#include "CATICkeParameterSet.h"
#include "CATICkeParm.h"
#include "CATICkeParmFactory.h"
#include "CATIParmPublisher.h"
#include "CATIProduct.h"
#include "CATISpecObject.h"
#include "VornToolsAssyConfig.h"
#include "VornToolsCADDOCProperties.h"
#include "VornToolsCommon.h"
#include "VornToolsInstanceProperty.h"
#include "embedded/Parameters.h"
#include "embedded/SessionFile.h"
#include "tests/support/Fixture.h"

#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <random>

using embedded::Parameter;
using embedded::parametersOf;
using embedded::Publisher;
using Property = VornToolsInstanceProperty;
using Service = VornToolsCADDOCProperties;

namespace {

const Texts kNames = {"A",
                      "Mass",
                      "km/h",
                      "St\xC3\xBC"
                      "ck",
                      "two\nlines",
                      "a \"name\"",
                      "ItemID",
                      "EBS_DatasetUid",
                      "OEM_x",
                      "MaroAssyConfigDatasetUID",
                      "\xE6\x97\xA5",
                      "{}[],:"};
const Texts kPieces = {"",
                       "x",
                       "\n",
                       "\r\n",
                       "\r",
                       "\t",
                       "\x1A",
                       "\\",
                       "\"",
                       "'",
                       "/",
                       "\x7F",
                       "\x01",
                       " ",
                       "\xC3\xA4",
                       "\xE6\x97\xA5",
                       "\xF0\x9F\x94\xA9",
                       "@=",
                       "=@",
                       "null",
                       "\\u0000",
                       "</set>",
                       "KETO_ID_7"};
const Texts kNumbers = {"0",        "-0",
                        "1e308",    "-1.7976931348623157e308",
                        "4.9e-324", "2.2250738585072011e-308",
                        "0.1",      "1,5",
                        "1e999",    "",
                        " 7 ",      "0x1F",
                        "5mm",      "1e",
                        "x",        "9007199254740993"};
const Texts kIntegers = {"0", "-1", "2147483647", "-2147483648", "2147483648", "1.5", "", "7x", "x"};
const Texts kTruths = {"1", "0", "true", "TRUE", "", "no"};
const double kReals[] = {0.0, -0.0, 1e308, -1e308, 4.9406564584124654e-324, 2.2250738585072014e-308, 1.0 / 3, 1e-7};
const char* const kMagnitudes[] = {"Length", "Angle", "Mass", "Time", "Area", "Volume"};

/** The same numbers in every run and with every runtime library. */
class Random {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}
    unsigned below(unsigned limit) { return static_cast<unsigned>(m_engine() % limit); }
    bool chance(unsigned percent) { return below(100) < percent; }
    template <class List>
    const auto& of(const List& list) {
        return list[below(static_cast<unsigned>(std::size(list)))];
    }
    std::string text() {
        std::string result;
        for (unsigned pieces = below(6); pieces > 0; --pieces) result += of(kPieces);
        return result;
    }
    double real() {
        if (chance(50)) return of(kReals);
        const unsigned long long bits = m_engine();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return std::isfinite(value) ? value : 1.0;
    }
    std::string number() {
        if (chance(60)) return of(kNumbers);
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", real());
        return text;
    }
    /** A value of a type, or several. */
    std::string value(char type) {
        std::string result;
        for (unsigned count = chance(30) ? below(4) : 0;; --count) {
            result += type == 'i' ? of(kIntegers) : type == 'd' ? number() : type == 'b' ? of(kTruths) : text();
            if (count == 0) return result;
            result += "@=@";
        }
    }

private:
    std::mt19937_64 m_engine;
};

class SessionRoundTripTest : public PlatformTest {
protected:
    void TearDown() override {
        if (m_service) m_service->Release();
        PlatformTest::TearDown();
    }
    Service& service() { return *(m_service = m_service ? m_service : Service::getInstance()); }

    embedded::Product root() { return session().find("/w/Root.CATProduct").root(); }
    embedded::Product frame() { return root().at({"Frame.1"}); }
    embedded::Product bolt() { return root().at({"Bolt.1"}); }
    embedded::Document document(const char* extension) { return session().find(std::string("/w/D.") + extension); }
    std::vector<Publisher> features() {
        return {parametersOf(document("CATPart"), "MechanicalPart", "P"), parametersOf(root()),
                parametersOf(document("CATAnalysis"), "AnalysisManager", "A"),
                parametersOf(document("CATProcess"), "Process", "R"),
                parametersOf(document("CATDrawing"), "Drawing", "D")};
    }

    static void addParameter(Random& random, const Publisher& publisher) {
        const std::string name = random.of(kNames);
        Parameter made;
        switch (random.below(5)) {
        case 0: made = publisher.add(name, random.text()); break;
        case 1: made = publisher.add(name, static_cast<int>(random.below(0xFFFFFFFF))); break;
        case 2: made = publisher.add(name, random.chance(50)); break;
        case 3: made = publisher.add(name, random.real()); break;
        default: made = publisher.add(random.of(kMagnitudes), name, random.real()); break;
        }
        if (random.chance(20)) made.userName(random.of(kNames) + (random.chance(30) ? "\\" + random.text() : ""));
        if (random.chance(30)) made.access(static_cast<int>(random.below(5)));
        if (random.chance(10)) made.withoutValue();
        if (random.chance(10)) made.driven();
        if (!random.chance(30)) return;
        if (made.type() == "String") made.list("ListOfValues", Texts{random.text(), random.text(), random.text()});
        if (made.type() == "Integer") made.list("ListOfValues", std::vector<int>{1, -2147483647});
        if (made.type() != "String" && made.type() != "Integer")
            made.list("ListOfValues", std::vector<double>{random.real(), random.real()});
    }

    void build(Random& random) {
        session().reset();
        environment().decimalSeparator = random.chance(50) ? "," : ".";
        environment().createsProperties = true;
        environment().propertiesReadOnlyOnCreate = {"Mass", random.of(kNames)};
        embedded::selectUnit("Length", random.of(Texts{"mm", "m", "in"}));
        embedded::Product top = session().product("/w/Root.CATProduct").root();
        top.addComponent("Frame", "Frame.1");
        top.add(session().part("/w/Bolt.CATPart"), "Bolt.1");
        session().part("/w/D.CATPart");
        for (const char* const name : {"/w/D.CATAnalysis", "/w/D.CATProcess", "/w/D.CATDrawing"})
            session().document(name);
        for (const Publisher& feature : features()) {
            const Publisher set = random.chance(70) ? feature.addSet(random.of(kNames)) : feature;
            for (unsigned count = random.below(5); count > 0; --count) addParameter(random, set);
            if (random.chance(20)) addParameter(random, set.addSet("Inner"));
        }
        if (!random.chance(80)) return;
        for (unsigned count = random.below(5); count > 0; --count)
            addParameter(random, embedded::userProperties(bolt()));
    }

    /** Changes the session through the library. What refuses its value is part of the game. */
    void write(Random& random) {
        CATListValCATUnicodeString names, values, types;
        for (unsigned count = random.below(6); count > 0; --count) {
            const char type = "sibd"[random.below(4)];
            names.Append(random.of(kNames).c_str());
            values.Append(random.value(type).c_str());
            types.Append(CATUnicodeString(&type, 1));
            unsigned char created = 0;
            const auto property = static_cast<Property::EnumPropertyType>(random.below(5));
            Property::createMaroInstanceProperty(frame().get(), property, names[names.Size()], values[names.Size()],
                                                 random.chance(50) ? 1 : 0, created);
        }
        unsigned char needUpdate = 0;
        const std::vector<Publisher> all = features();
        service().setMechanicalPartParameters("D", all[0].get(), names, values, types, needUpdate);
        service().setReferenceProductParameters("Root", all[1].get(), names, values, types);
        Service::setAnalysisParameters(document("CATAnalysis").get(), names, values, types);
        Service::setProcessParameters(document("CATProcess").get(), names, values, types);
        VornToolsCommon::setUserProperties(bolt().get(), names, values, types);
        for (const Publisher& set : all[0].sets()) {
            EXPECT_EQ(Service::createParameter(set.factory(), set.publisher(), "N", "nan", "d", 0, 0, 0), E_FAIL);
            Service::createParameter(set.factory(), set.publisher(), "C", random.text().c_str(), "s",
                                     random.chance(50) ? 1 : 0, random.chance(50) ? 1 : 0, 0);
        }
        CATListValCATUnicodeString properties, texts;
        for (const char* const name : {"partNumber", "definition", "revision", "DescriptionRef", "DescriptionInst"}) {
            properties.Append(name);
            texts.Append(random.text().c_str());
        }
        service().setReferenceProperties(bolt().get(), properties, texts);
        VornToolsCommon::setInstanceProperties(frame().get(), properties, texts);
        Property::updateDescriptionInstMapping(frame().get(), random.text().c_str());
        reports();
        clearJournal();
    }

    static std::string shown(HRESULT code, const std::vector<const CATListValCATUnicodeString*>& lists) {
        std::string text = std::to_string(code);
        for (const CATListValCATUnicodeString* const list : lists)
            for (int i = 1; i <= list->Size(); ++i) text += std::string("\n") + (*list)[i].ConvertToChar();
        return text;
    }
    std::string setAnswers(CATICkeParameterSet* set) {
        CATListValCATUnicodeString names, values, types, flags, pairs;
        CATListValCATBaseUnknown_var* list = nullptr;
        const HRESULT code = service().getListOfParameters(set, list, names, values, types, flags);
        const std::unique_ptr<CATListValCATBaseUnknown_var> owned(list);
        service().appendAttributesWithParamsList(set, "X", pairs);
        return shown(code, {&names, &values, &types, &flags, &pairs});
    }
    std::string featureAnswers(const Publisher& feature) {
        CATICkeParameterSet* found = nullptr;
        std::string text = std::to_string(service().getParameterSet(feature.get(), found));
        if (!found) return text;
        text += setAnswers(found);
        found->Release();
        for (const Publisher& set : feature.sets()) text += setAnswers(set.set());
        return text;
    }
    std::string instanceAnswers() {
        CATListValCATUnicodeString names, values;
        std::string text = shown(Property::getAllMaroInstancePropertiesNamesAndValues(frame().get(), names, values),
                                 {&names, &values});
        for (const std::string& name : kNames) {
            unsigned char found = 0;
            Property::EnumPropertyType type = Property::PropertyString;
            CATUnicodeString value;
            text += std::to_string(Property::getAttribute(frame().get(), name.c_str(), found, type, value));
            text += std::to_string(found) + std::to_string(type) + value.ConvertToChar();
        }
        return text + frame().description();
    }
    /** Everything that the library reads. */
    std::string answers() {
        std::string text;
        for (const Publisher& feature : features()) text += featureAnswers(feature);
        CATListValCATUnicodeString analysis, process, drawing, names, values;
        text += shown(Service::retrieveAnalysisAttributes(document("CATAnalysis").get(), analysis), {&analysis});
        text += shown(Service::retrieveProcessAttributes(document("CATProcess").get(), process), {&process});
        text += shown(Service::retrieveDrawingAttributes(document("CATDrawing").get(), drawing), {&drawing});
        text += shown(VornToolsCommon::getUserProperties(bolt().get(), names, values), {&names, &values});
        CATUnicodeString uids[4];
        VornToolsAssyConfig::hasMaroAssyConfigProperty(bolt().get(), uids[0], uids[1], uids[2], uids[3]);
        for (const CATUnicodeString& uid : uids) text += uid.ConvertToChar();
        text += instanceAnswers() + bolt().referenceDescription() + bolt().partNumber();
        const embedded::ReferenceProperties kept = embedded::referenceProperties(bolt());
        text += kept.definition + kept.revision;
        reports();
        return text;
    }

private:
    Service* m_service = nullptr;
};

TEST_F(SessionRoundTripTest, NothingIsLostByWritingAndReadingASession) {
    for (unsigned seed = 1; seed <= 150 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Random random(seed);
        build(random);
        std::string first, second;
        for (int round = 0; round < 2; ++round) {
            write(random);
            const std::string before = answers();
            const std::string digest = session().digest();
            ASSERT_EQ(embedded::sessionText(first).error, "");
            ASSERT_EQ(embedded::loadSessionText(path("s.json"), first).error, "");
            EXPECT_EQ(answers(), before);
            EXPECT_EQ(session().digest(), digest);
            ASSERT_EQ(embedded::sessionText(second).error, "");
            EXPECT_EQ(second, first);
        }
        clearJournal();
    }
}

} // namespace
