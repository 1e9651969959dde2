// The checksum of messages as long as a configuration's text and of long ones. "openssl speed -bytes SIZE md5" on the
// same machine is what the figures are measured against.

#include "foundation/Md5.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

void BM_Digest(benchmark::State& state) {
    const std::string message(static_cast<std::size_t>(state.range(0)), 'x');
    for (auto pass : state) {
        (void)pass;
        benchmark::DoNotOptimize(vorntools::md5Digest(message.data(), message.size()));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_Digest)->Arg(0)->Arg(64)->Arg(100)->Arg(400)->Arg(16384);

void BM_DigestAsText(benchmark::State& state) {
    const std::string message(static_cast<std::size_t>(state.range(0)), 'x');
    for (auto pass : state) {
        (void)pass;
        benchmark::DoNotOptimize(vorntools::md5Text(vorntools::md5Digest(message.data(), message.size())));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(BM_DigestAsText)->Arg(64)->Arg(100);

} // namespace
