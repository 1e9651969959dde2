// The products and design-table files of an assembly whose parts each have a table of their own. "per_item" is the time
// of one child; it must stay the same however many there are.

#include "VornToolsCommon.h"

#include "embedded/DesignTables.h"
#include "embedded/Records.h"

#include "CATDocument.h"
#include "CATIProduct.h"
#include "CATListPtrCATIProduct.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

embedded::Document makeAssembly(int children) {
    embedded::Session& session = embedded::Session::current();
    session.reset();
    const embedded::Document top = session.product("/w/Top.CATProduct");
    embedded::Product root = top.root();
    for (int i = 1; i <= children; ++i) {
        const std::string number = std::to_string(i);
        const embedded::Document part = session.part("/w/P" + number + ".CATPart");
        root.add(part, "P." + number);
        embedded::addDesignTable(embedded::parametersOf(part, "MechanicalPart", "P" + number), "Sizes",
                                 "/w/" + number + ".txt");
    }
    return top;
}

void BM_ProductsAndDesignTables(benchmark::State& state) {
    const int children = static_cast<int>(state.range(0));
    const embedded::Document top = makeAssembly(children);
    for (auto pass : state) {
        (void)pass;
        CATListValCATUnicodeString names;
        CATListValCATUnicodeString files;
        CATListPtrCATIProduct products;
        VornToolsCommon::getAllProductsAndDesignTablesNames(top.get(), nullptr, 1, names, products, files);
        state.PauseTiming();
        if (names.Size() != children + 1 || files.Size() != children) state.SkipWithError("a wrong list");
        for (int i = 1; i <= products.Size(); ++i) products[i]->Release();
        embedded::Journal::get().clear();
        state.ResumeTiming();
    }
    using benchmark::Counter;
    state.counters["per_item"] =
        Counter(static_cast<double>(state.iterations()) * children, Counter::kIsRate | Counter::kInvert);
}
BENCHMARK(BM_ProductsAndDesignTables)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
