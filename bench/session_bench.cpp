// Finding documents by name among those of a session, and files through the windows of assemblies.
//
// "per_item" is the time of one document, or of one instance. BM_PlainLoop does over the same storage names what no
// search can do without: ask for the name and compare it. The journal is kept, and cleared outside the measured time.
// "allocations" are those of one document; the platform's own are among them, such as that of a name handed out.

#include "VornToolsCommon.h"
#include "VornToolsSwitchMgt.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "CATSessionServices.h"
#include "embedded/Records.h"
#include "embedded/Session.h"
#include "embedded/Windows.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <new>
#include <string>

namespace {

std::size_t allocations = 0;

} // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using embedded::Session;
using embedded::Windows;

/** @param before number of allocations when the first of the measured calls began */
void report(benchmark::State& state, std::size_t items, std::size_t before) {
    const double total = static_cast<double>(state.iterations()) * static_cast<double>(items);
    state.counters["per_item"] = benchmark::Counter(total, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.counters["allocations"] = static_cast<double>(allocations - before) / total;
}

void clearJournal(benchmark::State& state) {
    state.PauseTiming();
    embedded::Journal::get().clear();
    state.ResumeTiming();
}

std::size_t loadDocuments(const benchmark::State& state) {
    Session& session = Session::current();
    session.reset();
    const auto count = static_cast<std::size_t>(state.range(0));
    for (std::size_t i = 0; i < count; ++i)
        session.document("/projects/pump/components/Component_" + std::to_string(i) + ".CATPart");
    return count;
}

void BM_PlainLoop(benchmark::State& state) {
    const std::size_t count = loadDocuments(state);
    const CATUnicodeString sought("Missing.CATPart");
    const std::size_t before = allocations;
    for (auto _ : state) {
        const CATListPtrCATDocument* const documents = ListDocuments();
        int matches = 0;
        for (int i = 1; i <= documents->Size(); ++i) matches += (*documents)[i]->StorageName().Compare(sought) != 0;
        benchmark::DoNotOptimize(matches);
    }
    report(state, count, before);
}

void findMissing(benchmark::State& state, const char* name) {
    const std::size_t count = loadDocuments(state);
    const std::size_t before = allocations;
    for (auto _ : state) {
        CATDocument* document = nullptr;
        unsigned char found = 1;
        VornToolsCommon::getDocumentInSession(name, document, found);
        if (found) return state.SkipWithError("a wrong answer");
        clearJournal(state);
    }
    report(state, count, before);
}

void BM_FindByFileName(benchmark::State& state) { findMissing(state, "Missing.CATPart"); }

void BM_FindByFullName(benchmark::State& state) { findMissing(state, "/projects/pump/components/Missing.CATPart"); }

/** Windows of assemblies of their own, each of so many instances of different parts. */
std::size_t openAssemblies(std::size_t windows, std::size_t instances) {
    Session& session = Session::current();
    session.reset();
    for (std::size_t w = 0; w < windows; ++w) {
        const std::string folder = "/projects/" + std::to_string(w) + "/";
        const auto assembly = session.product(folder + "Assembly.CATProduct");
        for (std::size_t i = 0; i < instances; ++i)
            assembly.root().add(session.part(folder + "Part_" + std::to_string(i) + ".CATPart"),
                                "Part." + std::to_string(i));
        Windows::current().open(assembly);
    }
    return windows * instances;
}

void BM_AnalyzeWindows(benchmark::State& state) {
    const std::size_t instances =
        openAssemblies(static_cast<std::size_t>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    VornToolsSwitchMgt switcher(1);
    const std::size_t before = allocations;
    for (auto _ : state) {
        CATDocument* document = nullptr;
        CATDocument* root = nullptr;
        CATIProduct* product = nullptr;
        unsigned char found = 1;
        VornToolsCommon::analyzeWindowsInSession("Missing.CATPart", "", &switcher, document, found, root, product);
        if (found) return state.SkipWithError("a wrong answer");
        clearJournal(state);
    }
    report(state, instances, before);
}

BENCHMARK(BM_PlainLoop)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FindByFileName)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FindByFullName)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AnalyzeWindows)
    ->Args({1, 5000})
    ->Args({20, 500})
    ->Args({20, 5000})
    ->Args({20, 20000})
    ->Unit(benchmark::kMillisecond);

} // namespace
