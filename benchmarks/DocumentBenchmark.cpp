// A document with a million points, 16 MB: stored in a file, and loaded from the page cache.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/platform/framework/Archive.h"

#include <benchmark/benchmark.h>

#include <filesystem>

namespace ombrel::bench {
namespace {

std::string TemporaryPath() { return (std::filesystem::temp_directory_path() / "ombrel-benchmark.ombrel").string(); }

void StoreDocument(CGraph const& graph)
{
    CMemFile file;
    CArchive ar(&file, CArchive::store);
    ar.WriteObject(&graph);
    ar.Close();
    WriteFileAtomically(TemporaryPath(), file.GetBytes());
}

void Store(benchmark::State& state)
{
    auto const graph = RandomWalk(1000000);
    for (auto _ : state)
        StoreDocument(*graph);
    std::filesystem::remove(TemporaryPath());
}
BENCHMARK(Store)->Unit(benchmark::kMillisecond);

void Load(benchmark::State& state)
{
    StoreDocument(*RandomWalk(1000000));
    for (auto _ : state) {
        std::vector<std::byte> const bytes = ReadWholeFile(TemporaryPath());
        CArchive ar(bytes);
        benchmark::DoNotOptimize(ar.ReadObjectOf<CGraph>());
    }
    std::filesystem::remove(TemporaryPath());
}
BENCHMARK(Load)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
