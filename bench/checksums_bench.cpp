// The checksums of 10,000 configurations of 50 columns, against reading the same cells.

#include "VornToolsCommon.h"

#include "embedded/DesignTables.h"
#include "embedded/Records.h"

#include "CATDocument.h"
#include "CATICkeSheet.h"
#include "CATIDesignTable.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace {

constexpr int kConfigurations = 10000;
constexpr int kColumns = 50;

/** A document with such a table; its file lasts as long. */
class Table {
public:
    Table() {
        {
            std::ofstream file(m_file);
            for (int row = 0; row <= kConfigurations; ++row)
                for (int column = 0; column < kColumns; ++column)
                    file << (row == 0 ? "P" : "v" + std::to_string(row) + ".") << column
                         << (column + 1 == kColumns ? '\n' : '\t');
        }
        m_document = embedded::Session::current().product("/w/Bench.CATProduct");
        const auto publisher = embedded::parametersOf(m_document, "Relations", "Relations");
        m_table = embedded::addDesignTable(publisher, "DesignTable.1", file());
        for (int column = 0; column < kColumns; ++column) {
            const std::string title = "P" + std::to_string(column);
            m_table.associate(title, publisher.add(title, "x"));
        }
    }
    ~Table() {
        embedded::Session::current().reset();
        std::error_code ignored;
        std::filesystem::remove(m_file, ignored);
    }
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;

    std::string file() const { return m_file.u8string(); }
    CATDocument* document() const { return m_document.get(); }
    CATIDesignTable* table() const { return m_table.get(); }

private:
    const std::filesystem::path m_file = std::filesystem::temp_directory_path() / "vorntools_checksums_bench.txt";
    embedded::Document m_document;
    embedded::DesignTable m_table;
};

void BM_ReadCells(benchmark::State& state) {
    const Table table;
    for (auto pass : state) {
        (void)pass;
        const CATICkeSheet_var sheet = table.table()->Sheet();
        for (int row = 2; row <= kConfigurations + 1; ++row) {
            CATUnicodeString text;
            for (int column = 1; column <= kColumns; ++column) text.Append(sheet->Cell(row, column));
            benchmark::DoNotOptimize(text);
        }
    }
}
BENCHMARK(BM_ReadCells)->Unit(benchmark::kMillisecond);

void BM_CheckSums(benchmark::State& state) {
    const Table table;
    for (auto pass : state) {
        (void)pass;
        state.PauseTiming();
        CATListValCATUnicodeString lists[3];
        for (int i = 1; i <= kConfigurations; ++i) {
            lists[0].Append("1");
            lists[1].Append(std::to_string(i).c_str());
        }
        CATListValCATUnicodeString* pointers[] = {&lists[0], &lists[1], &lists[2]};
        unsigned char found = 0;
        state.ResumeTiming();
        VornToolsCommon::calculateCheckSums(table.document(), table.file().c_str(), nullptr, 0, pointers[0],
                                            pointers[1], pointers[2], found);
        state.PauseTiming();
        if (lists[2].Size() != kConfigurations) state.SkipWithError("not every checksum was computed");
        embedded::Journal::get().clear();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_CheckSums)->Unit(benchmark::kMillisecond);

} // namespace
