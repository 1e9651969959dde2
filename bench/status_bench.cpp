// Status of managed documents against the bare cost of reading their DAT files, and answers from a filled cache.
//
// Files are 2 KB, in one temporary folder, warm. The reading benchmarks report the time of one document as "per_item";
// the ratio of BM_AddDocument to BM_BareRead at the same size is what the cache costs over the file system.

#include "VornCache.h"

#include "embedded/Records.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#if defined(_WIN32)
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

constexpr std::size_t kDatFileSize = 2048;

std::string datFileText(int number) {
    const std::string id = std::to_string(100000 + number);
    std::string text = "<DatFileVersion>\n2\n</DatFileVersion>\n<ItemRevUID>\nQ7yAAR" + id +
                       "z4kdDAA\n</ItemRevUID>\n<DatasetUID>\nR3xBBS" + id +
                       "y5leEBB\n</DatasetUID>\n<NamedRefUID>\nT1wCCU" + id +
                       "x6mfFCC\n</NamedRefUID>\n<LoadType>\nStandard\n</LoadType>\n<LocalLastModDate>\n1700000000\n"
                       "</LocalLastModDate>\n<CatiaUUID>\na1b2_c3d4_e5f6_" +
                       id +
                       "\n</CatiaUUID>\n<StructLastModDate>\n1700000000\n</StructLastModDate>\n"
                       "<Configuration>\nLatest Working\n</Configuration>\n<LinkedDocs>\n";
    while (text.size() < kDatFileSize - 64)
        text += "Component_" + std::to_string(text.size()) + "_of_assembly_" + id + ".CATPart\n";
    return text + "</LinkedDocs>\n";
}

/** A folder of documents with their DAT files, removed at the end of the process. */
class Documents {
public:
    static const std::vector<std::string>& first(std::size_t count) {
        static Documents documents;
        documents.growTo(count);
        documents.m_chosen.assign(documents.m_names.begin(),
                                  documents.m_names.begin() + static_cast<std::ptrdiff_t>(count));
        return documents.m_chosen;
    }

private:
    Documents() {
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        m_folder = std::filesystem::temp_directory_path() / ("vorntools_bench_" + std::to_string(now));
        std::filesystem::create_directories(m_folder);
    }
    ~Documents() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    void growTo(std::size_t count) {
        while (m_names.size() < count) {
            const int number = static_cast<int>(m_names.size());
            m_names.push_back((m_folder / ("Part_" + std::to_string(number) + ".CATPart")).u8string());
            std::ofstream(m_names.back(), std::ios::binary).put('x');
            std::ofstream(m_names.back() + ".dat", std::ios::binary) << datFileText(number);
        }
    }

    std::filesystem::path m_folder;
    std::vector<std::string> m_names;
    std::vector<std::string> m_chosen;
};

#if defined(_WIN32)
long readBare(const std::string& name, char* bytes, unsigned size) {
    const HANDLE file = CreateFileA(name.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    DWORD count = 0;
    if (file == INVALID_HANDLE_VALUE || !ReadFile(file, bytes, size, &count, nullptr)) return -1;
    CloseHandle(file);
    return static_cast<long>(count);
}
#else
long readBare(const std::string& name, char* bytes, unsigned size) {
    const int file = ::open(name.c_str(), O_RDONLY);
    const auto count = ::read(file, bytes, size);
    ::close(file);
    return static_cast<long>(count);
}
#endif

void report(benchmark::State& state, std::size_t items) {
    using benchmark::Counter;
    const double total = static_cast<double>(state.iterations()) * static_cast<double>(items);
    state.counters["per_item"] = Counter(total, Counter::kIsRate | Counter::kInvert);
    state.counters["items"] = Counter(total, Counter::kIsRate);
}

void BM_BareRead(benchmark::State& state) {
    const std::vector<std::string>& names = Documents::first(static_cast<std::size_t>(state.range(0)));
    std::vector<std::string> datNames;
    for (const std::string& name : names) datNames.push_back(name + ".dat");
    std::vector<char> bytes(2 * kDatFileSize);
    for (auto _ : state) {
        for (const std::string& name : datNames) {
            if (readBare(name, bytes.data(), static_cast<unsigned>(bytes.size())) <= 0)
                return state.SkipWithError("a DAT file cannot be read");
        }
    }
    report(state, names.size());
}

void BM_AddDocument(benchmark::State& state) {
    const std::vector<std::string>& names = Documents::first(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        VornCache cache;
        for (const std::string& name : names) {
            const CATUnicodeString text(name.data(), name.size());
            VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
            cache.addDocument(text, nullptr);
            cache.getModifiedStatus(text, flag);
            if (flag != VornCache::ModifiedFlagModified) return state.SkipWithError("a wrong status");
        }
        state.PauseTiming();
        embedded::Journal::get().clear();
        cache.release();
        state.ResumeTiming();
    }
    report(state, names.size());
}

void BM_CachedAnswers(benchmark::State& state) {
    const std::vector<std::string>& names = Documents::first(static_cast<std::size_t>(state.range(0)));
    std::vector<CATUnicodeString> texts;
    VornCache cache;
    for (const std::string& name : names) {
        texts.emplace_back(name.data(), name.size());
        cache.addDocument(texts.back(), nullptr);
    }
    CATUnicodeString revision;
    for (auto _ : state) {
        for (const CATUnicodeString& name : texts) {
            VornCache::EnumModifiedFlag flag = VornCache::ModifiedFlagNew;
            cache.getModifiedStatus(name, flag);
            cache.getItemRevUID(name, revision);
            if (revision.IsNull()) return state.SkipWithError("a wrong answer");
        }
        embedded::Journal::get().clear();
    }
    report(state, 2 * names.size());
}

BENCHMARK(BM_BareRead)->Arg(1000)->Arg(50000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_AddDocument)->Arg(1000)->Arg(50000)->Arg(100000)->MinTime(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CachedAnswers)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
