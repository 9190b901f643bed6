// Reading a grid from a file: an elevation model of 1201 × 1201 cells, z-values of 1000 × 1000.

#include "ombrel/io/USGSDEM.h"
#include "ombrel/io/ZValsFile.h"
#include "ombrel/model/TableData.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace ombrel::bench {
namespace {

/// A file of this text that never touches a disk; it is left to the process's end.
CString MemoryFile(std::string const& text)
{
    int const file = memfd_create("grid", 0);
    if (write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
        std::abort();
    return "/proc/self/fd/" + std::to_string(file);
}

template <typename... Args> void Append(std::string& text, char const* format, Args... args)
{
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, format, args...);
    text += buffer;
}

double Height(int i, int j) { return std::sin(i * 0.01) * std::cos(j * 0.013); }

void FillRecord(std::string& text) { text.resize((text.size() + 1023) / 1024 * 1024, ' '); }

std::string ModelText(int size)
{
    std::string text(144, ' ');
    for (int const v : { 1, 1, 0, 0 })
        Append(text, "%6d", v);
    text.append(15 * 24, ' ');
    for (int const v : { 3, 2, 4 })
        Append(text, "%6d", v);
    double const last = 3.0 * (size - 1);
    for (double const v : { 0.0, 0.0, 0.0, last, last, last, last, 0.0, -1000.0, 3000.0, 0.0 })
        Append(text, "%24.15E", v);
    Append(text, "%6d%12.6E%12.6E%12.6E%6d%6d", 0, 3.0, 3.0, 1.0, 1, size);
    FillRecord(text);
    for (int i = 0; i < size; ++i) {
        Append(text, "%6d%6d%6d%6d", 1, i + 1, size, 1);
        for (double const v : { 3.0 * i, 0.0, 0.0, 0.0, 0.0 })
            Append(text, "%24.15E", v);
        for (int j = 0; j < size; ++j) {
            if (text.size() % 1024 > 1024 - 6)
                FillRecord(text);
            Append(text, "%6d", static_cast<int>(1000.0 + 2000.0 * Height(i, j)));
        }
        FillRecord(text);
    }
    return text;
}

void ElevationModel(benchmark::State& state)
{
    std::string const text = ModelText(static_cast<int>(state.range(0)));
    CString const path = MemoryFile(text);
    for (auto _ : state) {
        CUSGSDEM dem;
        if (dem.SetPathname(path) != 1)
            std::abort();
        benchmark::DoNotOptimize(dem.GetElevations().data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ElevationModel)->Arg(1201)->Unit(benchmark::kMillisecond);

struct Table : ZValsOwner {
    void PlaceZVals(double, double, double, double) override { }
    void SetZValsCurveType(int) override { }
    void SetZValsRadialGrid(int) override { }
    CTableData& GetZValsTable() override { return table; }
    void SetZValsRead() override { }

    CTableData table;
};

/// Lines along y (0) or x (1), numbers with so many decimals between blanks or commas.
void ZValues(benchmark::State& state)
{
    constexpr int kSize = 1000;
    char const separator = state.range(2) == 0 ? ' ' : ',';
    std::string text;
    Append(text, "0 %d %d %d 0 0 1 1 0", static_cast<int>(state.range(0)), kSize, kSize);
    if (separator == ',')
        std::replace(text.begin(), text.end(), ' ', ',');
    for (int i = 0; i < kSize; ++i) {
        text.back() = i == 0 ? text.back() : '\n';
        if (i == 0)
            text += '\n';
        for (int j = 0; j < kSize; ++j) {
            Append(text, "%.*f", static_cast<int>(state.range(1)), Height(i, j));
            text += separator;
        }
    }
    CString const path = MemoryFile(text);
    for (auto _ : state) {
        Table owner;
        CZValsFile file;
        file.SetOwner(&owner);
        file.Read(path);
        benchmark::DoNotOptimize(owner.table.GetRow(0));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(ZValues)
    ->ArgNames({ "order", "decimals", "commas" })
    ->Args({ 0, 5, 0 })
    ->Args({ 1, 5, 0 })
    ->Args({ 1, 5, 1 })
    ->Args({ 1, 17, 0 })
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
