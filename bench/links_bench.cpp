// The links of a part of 30 MB and of 512 MB, against the bare cost of reading as much memory.
//
// The part is noise with the streams of a part in the places where the platform puts them: names of containers in
// front, imports and documents behind. Ratios within one run count; bench/README.md says what to expect.

#include "VornToolsCommon.h"
#include "VornToolsLinks.h"

#include "DocumentNoise.h"
#include "embedded/Records.h"
#include "tests/support/DocumentImage.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

namespace {

using namespace std::string_literals;

constexpr std::size_t kMega = std::size_t{1} << 20;
const std::string kIdentity = "\0\0\0\0\0\0\x1A\x60\x60\xC7\x4B\xFE\0\0\0\x83"s;

DocumentImage frontOf() {
    DocumentImage front;
    front.raw("V5_CFV2\0\0"s).application().references({"..!..!SKELETON.1!Axis", "..!SKELETON.1!Plane"});
    return front.raw("CATPrdInputProxy").pointer(kIdentity, "\x09\x92\0\0\0"s);
}

DocumentImage backOf() {
    DocumentImage back;
    back.imports({{1, {4}}}, {"InputToDoc:Doc!Parameters:Depth!"});
    back.properties("C:\\work\\own.CATPart", {ImageRecord::whole("CATPart", "skeleton.CATPart"),
                                              ImageRecord::object("CATProduct", "assembly.CATProduct", kIdentity),
                                              ImageRecord::object("CATPart", "neighbour.CATPart", kIdentity)});
    return back.summary(5, 21, 0);
}

/** A part file of so many megabytes, removed at the end of the process. */
class PartFile {
public:
    static const PartFile& ofSize(std::int64_t megabytes) {
        static const PartFile small(30), large(512);
        return megabytes == 30 ? small : large;
    }
    CATUnicodeString name() const { return m_name.c_str(); }
    std::size_t size() const { return m_size; }
    std::unique_ptr<VornToolsString> bytes() const {
        return std::unique_ptr<VornToolsString>(VornToolsCommon::readBinaryFile(name()));
    }

private:
    explicit PartFile(std::size_t megabytes) {
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        m_name = (std::filesystem::temp_directory_path() / ("vorntools_bench_" + std::to_string(now) + ".CATPart"))
                     .u8string();
        std::string bytes(megabytes * kMega, '\0');
        DocumentNoise(bytes.data(), bytes.size());
        const DocumentImage front = frontOf(), back = backOf();
        bytes.replace(0, front.bytes().size(), front.bytes());
        bytes.replace(bytes.size() - back.bytes().size(), back.bytes().size(), back.bytes());
        std::ofstream(m_name, std::ios::binary) << bytes;
        m_size = bytes.size();
    }
    ~PartFile() {
        std::error_code ignored;
        std::filesystem::remove(m_name, ignored);
    }

    std::string m_name;
    std::size_t m_size = 0;
};

void report(benchmark::State& state, std::size_t size) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(size));
    embedded::Journal::get().clear();
}

void BM_ReadMemory(benchmark::State& state) {
    const auto bytes = PartFile::ofSize(state.range(0)).bytes();
    for (auto pass : state) {
        (void)pass;
        const void* found = std::memchr(bytes->bytes(), DocumentNoise::absentByte, bytes->size() - 4096);
        benchmark::DoNotOptimize(found);
    }
    report(state, bytes->size());
}

void BM_SearchLinks(benchmark::State& state) {
    const PartFile& file = PartFile::ofSize(state.range(0));
    for (auto pass : state) {
        (void)pass;
        double count = 0;
        CATListValCATUnicodeString names, types, references, sixth, seventh;
        VornToolsVector<unsigned char> flags;
        unsigned char missing = 0;
        VornToolsLinks::searchLinks(file.name(), "", "", count, names, types, references, sixth, seventh, flags,
                                    missing);
        if (count != 5) return state.SkipWithError("another number of links");
    }
    report(state, file.size());
}

void BM_GetLinks(benchmark::State& state) {
    const auto bytes = PartFile::ofSize(state.range(0)).bytes();
    for (auto pass : state) {
        (void)pass;
        unsigned char missing = 0;
        if (VornToolsLinks::getLinks(bytes.get(), "", nullptr, "", missing).size() != 5)
            return state.SkipWithError("another number of links");
    }
    report(state, bytes->size());
}

/** The multi-model links through the exported steps, each of which searches the image by itself. */
void BM_Steps(benchmark::State& state) {
    using Strings = VornToolsVector<VornToolsString>;
    const auto bytes = PartFile::ofSize(state.range(0)).bytes();
    for (auto pass : state) {
        (void)pass;
        const int application = bytes->indexOf(VornToolsString("AppliCont", 9), 0, 0xFFFFFFFFU, 0);
        const int property = bytes->indexOf(VornToolsString("CATDocumentProperty", 19), 0, 0xFFFFFFFFU, 0);
        int version = 0, release = 0, servicePack = 0;
        VornToolsLinks::getVersion(bytes.get(), version, release, servicePack);
        Strings tags, publications, documents;
        VornToolsVector<VornToolsLink> links;
        VornToolsLinks::getMMLTag(bytes.get(), release, application, property, tags);
        VornToolsLinks::getMmlPublication(bytes.get(), release, application, property, publications);
        VornToolsLinks::getMmlDocuments(bytes.get(), release, application, property, nullptr, "", documents);
        VornToolsLinks::updateMMLLink(tags, publications, documents, links);
        if (links.size() != 1) return state.SkipWithError("another number of links");
    }
    report(state, bytes->size());
}

/** With one marker of the part broken, or a word of its streams: no damage makes the scan search for long. */
void BM_Damaged(benchmark::State& state, const char* marker, int offset) {
    const PartFile& file = PartFile::ofSize(30);
    const auto whole = file.bytes();
    const std::string_view view(whole->bytes(), whole->size());
    const std::size_t at = view.rfind(marker);
    if (at == std::string_view::npos) return state.SkipWithError("no such marker");
    std::string copy(view);
    copy.replace(at + static_cast<std::size_t>(offset), 4, "\xFE\xFF\xFF\x7F");
    VornToolsString image(copy.data(), static_cast<int>(copy.size()));
    for (auto pass : state) {
        (void)pass;
        unsigned char missing = 0;
        benchmark::DoNotOptimize(VornToolsLinks::getLinks(&image, "", nullptr, "", missing).size());
    }
    report(state, image.size());
}

BENCHMARK(BM_ReadMemory)->Arg(30)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchLinks)->Arg(30)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetLinks)->Arg(30)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Steps)->Arg(30)->Arg(512)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, application, "AppliCont", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, property, "CATDocumentProperty", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, count, "CATDocumentProperty", 31)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, names, "_CntrName", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, catalogs, "CATCatalogManager", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, repository, "CATXDLRepository", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, proxy, "CATPrdInputProxy", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, objects, "OSMX", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, summary, "CATSummaryInformation", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Damaged, release, "<Release>", 0)->Unit(benchmark::kMillisecond);

} // namespace
