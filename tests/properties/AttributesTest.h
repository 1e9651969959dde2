#ifndef TESTS_PROPERTIES_ATTRIBUTES_TEST_H
#define TESTS_PROPERTIES_ATTRIBUTES_TEST_H

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
#include <functional>

using embedded::Document;
using embedded::Parameter;
using embedded::parametersOf;
using embedded::Publisher;
using Service = VornToolsCADDOCProperties;

const std::string kClass = "VornToolsCADDOCProperties::";
using Set = HRESULT (*)(CATDocument*, CATListValCATUnicodeString, CATListValCATUnicodeString,
                        CATListValCATUnicodeString);
using Retrieve = HRESULT (*)(CATDocument*, CATListValCATUnicodeString&);

/** An attribute to write: name, value, type. */
using Entry = std::array<const char*, 3>;
using Entries = std::vector<Entry>;

inline CATListValCATUnicodeString column(const Entries& entries, std::size_t index) {
    CATListValCATUnicodeString list;
    for (const Entry& entry : entries) list.Append(entry[index]);
    return list;
}

/** Names, values and access of a set's parameters, with a kept list behind the value. */
inline Texts contents(const Publisher& set) {
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
    /** Runs the operation with its first call of a name failing; it must fail and leave no output. @param restore puts
     * back what earlier runs changed */
    template <class Operation>
    void failAt(const std::string& call, Operation operation, const std::function<void()>& restore = {}) {
        auto& failures = embedded::Failures::get();
        std::string met = call;
        for (int nth = 1; !met.empty(); ++nth) {
            reports();
            if (restore) restore();
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

#endif
