// The scenes data list of an assembly: groups of 50 parts, 20 scenes. Half of the scenes are full and know every part;
// the others are partial and know every tenth. "per_item" is the time of one group of the list, that is of one product
// in one scene; it must stay the same however large the assembly is. BM_BareList writes the same list from texts that
// are there already: what no reading can undercut.

#include "VornToolsScenes.h"

#include "CATIProduct.h"
#include "embedded/Records.h"
#include "embedded/Scenes.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kScenes = 20;
constexpr int kPartsInGroup = 50;

using Texts = std::vector<std::string>;

std::string sceneName(int scene) { return "Scene " + std::to_string(scene); }
bool isFull(int scene) { return scene % 2 == 0; }
double shiftOf(int part) { return 0.1 * part; }

/** An assembly with that many products: the groups and their parts. */
embedded::Product makeAssembly(int products) {
    embedded::Session& session = embedded::Session::current();
    session.reset();
    embedded::Product root = session.product("/w/Root.CATProduct").root();
    const embedded::Document part = session.part("/w/Part.CATPart");
    for (int group = 0; group < products / (kPartsInGroup + 1); ++group) {
        const std::string name = "Group" + std::to_string(group);
        const embedded::Document document = session.product("/w/" + name + ".CATProduct");
        for (int i = 0; i < kPartsInGroup; ++i) document.root().add(part, "Part." + std::to_string(i));
        root.add(document, name);
    }
    for (int scene = 0; scene < kScenes; ++scene) {
        embedded::Scene added =
            isFull(scene) ? scenes(root).addFull(sceneName(scene)) : scenes(root).addPartial(sceneName(scene));
        for (const embedded::Product& group : root.children()) {
            if (isFull(scene)) added.move(group, embedded::translation(0, 1, 0));
            const std::vector<embedded::Product> parts = group.children();
            for (int i = 0; i < kPartsInGroup; ++i)
                if (isFull(scene) || i % 10 == 0)
                    added.move(parts[static_cast<std::size_t>(i)], embedded::translation(shiftOf(i), 0, 0));
        }
    }
    return root;
}

std::string positionText(double x, double y) {
    char text[96];
    std::snprintf(text, sizeof text, "1 0 0 0 1 0 0 0 1 %.16G %.16G 0", x, y);
    return text;
}

/** The list that reading must give. */
Texts expectedList(const embedded::Product& root) {
    Texts list{"<CATProduct>", "Root"};
    const auto add = [&](const std::string& path, int scene, const std::string& position) {
        const std::string absent = isFull(scene) ? "TRUE" : "";
        list.insert(list.end(), {path, sceneName(scene), position, position.empty() ? absent : "FALSE"});
    };
    for (const embedded::Product& group : root.children()) {
        for (int scene = 0; scene < kScenes; ++scene)
            add(group.instanceName() + "!", scene, isFull(scene) ? positionText(0, 1) : "");
        // A partial scene does not know the group: the identity stands in for it at the root.
        for (int i = 0; i < kPartsInGroup; ++i)
            for (int scene = 0; scene < kScenes; ++scene)
                add("Part." + std::to_string(i) + "!" + group.instanceName() + "!", scene,
                    isFull(scene) || i % 10 == 0 ? positionText(shiftOf(i), isFull(scene) ? 1 : 0) : "");
    }
    list.push_back("</CATProduct>");
    return list;
}

bool isExact(const CATListValCATUnicodeString& list, const Texts& expected) {
    if (list.Size() != static_cast<int>(expected.size())) return false;
    for (int i = 0; i < list.Size(); ++i)
        if (list[i + 1] != CATUnicodeString(expected[static_cast<std::size_t>(i)].c_str())) return false;
    return true;
}

/** How many times the path of a product was built. */
std::size_t pathsBuilt() {
    const embedded::Journal& journal = embedded::Journal::get();
    std::size_t count = 0;
    for (std::size_t i = 0; i < journal.size(); ++i)
        if (journal.line(i) == "> VornToolsScenes::getParentsWithComponents") ++count;
    return count;
}

void report(benchmark::State& state, std::size_t items) {
    using benchmark::Counter;
    const double total = static_cast<double>(state.iterations()) * static_cast<double>(items);
    state.counters["per_item"] = Counter(total, Counter::kIsRate | Counter::kInvert);
}

void BM_ReadScenesData(benchmark::State& state) {
    const embedded::Product root = makeAssembly(static_cast<int>(state.range(0)));
    const Texts expected = expectedList(root);
    const std::size_t groups = (expected.size() - 3) / 4;
    CATListValCATUnicodeString list;
    for (auto _ : state) {
        VornToolsScenes::readScenesDataInAssy("/w/Root.CATProduct", root.get(), nullptr, {}, 0, list);
        state.PauseTiming();
        if (pathsBuilt() != groups / kScenes) state.SkipWithError("a path was built more than once");
        if (!isExact(list, expected)) state.SkipWithError("a wrong list");
        embedded::Journal::get().clear();
        state.ResumeTiming();
    }
    report(state, groups);
}

void BM_BareList(benchmark::State& state) {
    const Texts expected = expectedList(makeAssembly(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        CATListValCATUnicodeString list;
        for (const std::string& text : expected) list.Append(text.c_str());
        benchmark::DoNotOptimize(list.Size());
    }
    report(state, (expected.size() - 3) / 4);
}

/** Whether each part of a group is hidden by a parent; per_item is one entry of the scenes data for one part. */
void BM_HasParentHideInScene(benchmark::State& state) {
    const embedded::Product root = makeAssembly(static_cast<int>(state.range(0)));
    CATListValCATUnicodeString list;
    VornToolsScenes::readScenesDataInAssy("/w/Root.CATProduct", root.get(), nullptr, {}, 0, list);
    const std::vector<embedded::Product> parts = root.children().back().children();
    for (auto _ : state) {
        for (const embedded::Product& part : parts) {
            CATUnicodeString byParent;
            CATUnicodeString byComponent;
            VornToolsScenes::hasParentHideInScene(part.get(), list, "Scene 0", byParent, byComponent);
            if (byParent != CATUnicodeString("FALSE")) state.SkipWithError("a wrong answer");
        }
        embedded::Journal::get().clear();
    }
    report(state, parts.size() * static_cast<std::size_t>(list.Size()));
}

BENCHMARK(BM_BareList)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadScenesData)->Arg(500)->Arg(1250)->Arg(2500)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HasParentHideInScene)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

} // namespace
