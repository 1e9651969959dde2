// Searches through a 256 MB document image for a marker that is not there, against the bare cost of reading the image.
//
// Ratios within one run count, the figures of two machines do not compare: bench/README.md says what to expect.

#include "VornToolsString.h"

#include "DocumentNoise.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr std::size_t kSize = std::size_t{256} << 20;
constexpr unsigned int kEnd = 0xFFFFFFFFU;

/** The image, made on first use: every page of it has been written. */
const VornToolsString& image() {
    static const VornToolsString string(static_cast<int>(kSize), [] {
        char* const buffer = static_cast<char*>(std::malloc(kSize + 1));
        if (!buffer) std::abort();
        DocumentNoise(buffer, kSize);
        buffer[kSize] = '\0';
        return buffer;
    }());
    return string;
}

std::string wide(std::string_view text) {
    std::string result;
    for (const char c : text) result.append(1, c).append(1, '\0');
    return result;
}

template <class Search>
void run(benchmark::State& state, const Search& search) {
    image();
    for (auto pass : state) {
        (void)pass;
        if (search() != -1) state.SkipWithError("found what is not there");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(kSize));
}

void BM_ReadMemory(benchmark::State& state) {
    run(state, [] { return std::memchr(image().bytes(), DocumentNoise::absentByte, kSize) ? 0 : -1; });
}

void BM_Marker(benchmark::State& state, const std::string& bytes, unsigned int gap) {
    const VornToolsString marker(bytes.data(), static_cast<int>(bytes.size()));
    run(state, [&] { return image().indexOf(marker, 0, kEnd, gap); });
}

void BM_LastMarker(benchmark::State& state) {
    const VornToolsString marker(DocumentNoise::marker.data(), static_cast<int>(DocumentNoise::marker.size()));
    run(state, [&] { return image().lastIndexOf(marker, kEnd); });
}

BENCHMARK(BM_ReadMemory)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Marker, plain, std::string(DocumentNoise::marker), 0U)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Marker, wide, wide(DocumentNoise::marker), 0U)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Marker, stride2, std::string(DocumentNoise::marker), 1U)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Marker, stride3, std::string(DocumentNoise::marker), 2U)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_LastMarker)->Unit(benchmark::kMillisecond);

} // namespace
