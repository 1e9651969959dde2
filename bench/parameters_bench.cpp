// User properties and parameter sets of a size that the largest assemblies have.
//
// Updating looks through the members for each property and writes one journal line a member on the way: BM_JournalLines
// writes those lines alone. BM_ReadSet and BM_ReadUserProperties report the time of one parameter as "per_item", which
// is to stay the same whatever the size.

#include "VornToolsCADDOCProperties.h"
#include "VornToolsCommon.h"

#include "CATICkeParameterSet.h"
#include "CATIProduct.h"
#include "JNLManager.h"
#include "embedded/Parameters.h"
#include "embedded/Records.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

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

void BM_UpdateUserProperties(benchmark::State& state) {
    const embedded::Product product = productWith(state.range(0));
    CATListValCATUnicodeString names, values, types;
    for (std::int64_t i = 0; i < state.range(0); ++i) {
        names.Append(nameOf(i).c_str());
        values.Append("new");
        types.Append("s");
    }
    for (auto _ : state) {
        if (FAILED(VornToolsCommon::setUserProperties(product.get(), names, values, types)))
            return state.SkipWithError("the update failed");
        state.PauseTiming();
        embedded::Journal::get().clear();
        state.ResumeTiming();
    }
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
BENCHMARK(BM_ReadUserProperties)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadSet)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
