// User properties and parameter sets of a size that the largest assemblies have.
//
// Updating looks through the members for each property and writes one journal line a member on the way: BM_JournalLines
// writes those lines alone, BM_CreateUserProperties makes the properties on the way. BM_ReadSet, BM_ReadUserProperties,
// BM_ReadAttributes and BM_WriteAttributes report the time of one parameter as "per_item", which is to stay the same
// whatever the size.

#include "VornToolsCADDOCProperties.h"
#include "VornToolsCommon.h"

#include "CATDocument.h"
#include "CATICkeParameterSet.h"
#include "CATIProduct.h"
#include "JNLManager.h"
#include "embedded/Parameters.h"
#include "embedded/Records.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <vector>

namespace {

std::string nameOf(std::int64_t number) { return "Property_" + std::to_string(number); }

embedded::Product productWith(std::int64_t count) {
    embedded::Session& session = embedded::Session::current();
    session.reset();
    const embedded::Product product = session.part("/w/Part.CATPart").root();
    const embedded::Publisher properties = embedded::userProperties(product);
    for (std::int64_t i = 0; i < count; ++i) properties.add(nameOf(i), "value " + std::to_string(i));
    return product;
}

void report(benchmark::State& state) {
    const double total = static_cast<double>(state.iterations()) * static_cast<double>(state.range(0));
    state.counters["per_item"] = benchmark::Counter(total, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_JournalLines(benchmark::State& state) {
    JNLManager* const journal = JNLManager::getInstance();
    for (auto _ : state) {
        for (std::int64_t property = 0; property < state.range(0); ++property) {
            journal->writeMsg("looking for parameter name [%s]", nameOf(property).c_str());
            for (std::int64_t member = 0; member <= property; ++member)
                journal->writeMsg("--> parameter name from CATIA [%s]", "Part\\Properties\\Property_123");
            journal->writeMsg("found");
        }
        state.PauseTiming();
        embedded::Journal::get().clear();
        state.ResumeTiming();
    }
    report(state);
}

/** What is written: the same text to each of the first parameters. */
struct Entries {
    explicit Entries(std::int64_t count) {
        for (std::int64_t i = 0; i < count; ++i) {
            names.Append(nameOf(i).c_str());
            values.Append("new");
            types.Append("s");
        }
    }
    CATListValCATUnicodeString names, values, types;
};

void BM_UpdateUserProperties(benchmark::State& state) {
    const embedded::Product product = productWith(state.range(0));
    const Entries entries(state.range(0));
    for (auto _ : state) {
        if (FAILED(VornToolsCommon::setUserProperties(product.get(), entries.names, entries.values, entries.types)))
            return state.SkipWithError("the update failed");
        state.PauseTiming();
        embedded::Journal::get().clear();
        state.ResumeTiming();
    }
    report(state);
}

void BM_CreateUserProperties(benchmark::State& state) {
    const Entries entries(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const embedded::Product product = productWith(0);
        embedded::Session::current().environment().createsProperties = true;
        embedded::Journal::get().clear();
        state.ResumeTiming();
        if (FAILED(VornToolsCommon::setUserProperties(product.get(), entries.names, entries.values, entries.types)))
            return state.SkipWithError("a property was not made");
    }
    embedded::Journal::get().clear();
    report(state);
}

/** An analysis document with attributes, a third of them with several values. */
embedded::Document analysisWith(std::int64_t count) {
    embedded::Session& session = embedded::Session::current();
    session.reset();
    const embedded::Document document = session.document("/w/Beam.CATAnalysis");
    const embedded::Publisher set = embedded::parametersOf(document, "AnalysisManager", "A").addSet("Parameters.1");
    for (std::int64_t i = 0; i < count; ++i) {
        embedded::Parameter made = set.add(nameOf(i), "a");
        if (i % 3 == 0) made.list("ListOfValues", std::vector<std::string>{"a", "b"});
    }
    return document;
}

void BM_ReadAttributes(benchmark::State& state) {
    const embedded::Document document = analysisWith(state.range(0));
    for (auto _ : state) {
        CATListValCATUnicodeString pairs;
        VornToolsCADDOCProperties::retrieveAnalysisAttributes(document.get(), pairs);
        if (pairs.Size() != 2 * state.range(0) + 10) return state.SkipWithError("an attribute is missing");
        state.PauseTiming();
        embedded::Journal::get().clear();
        state.ResumeTiming();
    }
    report(state);
}

void BM_WriteAttributes(benchmark::State& state) {
    const embedded::Document document = analysisWith(state.range(0));
    const Entries entries(state.range(0));
    for (auto _ : state) {
        if (FAILED(VornToolsCADDOCProperties::setAnalysisParameters(document.get(), entries.names, entries.values,
                                                                    entries.types)))
            return state.SkipWithError("an attribute was not written");
        state.PauseTiming();
        embedded::Journal::get().clear();
        state.ResumeTiming();
    }
    report(state);
}

/** Each new parameter is looked for where it was put. */
void BM_CreateAttributes(benchmark::State& state) {
    const Entries entries(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        const embedded::Document document = analysisWith(0);
        embedded::Session::current().environment().createsProperties = true;
        embedded::Journal::get().clear();
        state.ResumeTiming();
        if (FAILED(VornToolsCADDOCProperties::setAnalysisParameters(document.get(), entries.names, entries.values,
                                                                    entries.types)))
            return state.SkipWithError("an attribute was not made");
    }
    embedded::Journal::get().clear();
    report(state);
}

void BM_ReadUserProperties(benchmark::State& state) {
    const embedded::Product product = productWith(state.range(0));
    for (auto _ : state) {
        CATListValCATUnicodeString names, values;
        VornToolsCommon::getUserProperties(product.get(), names, values);
        if (names.Size() != state.range(0)) return state.SkipWithError("a property is missing");
    }
    report(state);
}

void BM_ReadSet(benchmark::State& state) {
    embedded::Session::current().reset();
    const auto part =
        embedded::parametersOf(embedded::Session::current().part("/w/Part.CATPart"), "MechanicalPart", "P");
    const embedded::Publisher set = part.addSet("Parameters.1");
    for (std::int64_t i = 0; i < state.range(0); ++i) set.add("Length", nameOf(i), 0.25);
    VornToolsCADDOCProperties* const service = VornToolsCADDOCProperties::getInstance();
    for (auto _ : state) {
        CATListValCATUnicodeString names, values, types, flags;
        CATListValCATBaseUnknown_var* list = nullptr;
        service->getListOfParameters(set.set(), list, names, values, types, flags);
        const std::unique_ptr<CATListValCATBaseUnknown_var> owned(list);
        if (names.Size() != state.range(0)) return state.SkipWithError("a parameter is missing");
    }
    service->Release();
    report(state);
}

BENCHMARK(BM_JournalLines)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UpdateUserProperties)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CreateUserProperties)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CreateAttributes)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadUserProperties)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadSet)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadAttributes)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteAttributes)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
