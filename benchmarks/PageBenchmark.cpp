// A line of a million points on a page.

#include "benchmarks/BenchmarkData.h"

#include <benchmark/benchmark.h>

namespace ombrel::bench {
namespace {

void Page(benchmark::State& state, PageFormat format)
{
    auto const graph = RandomWalk(1000000);
    DrawPages(state, *graph, format);
}
BENCHMARK_CAPTURE(Page, pdf, PageFormat::Pdf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Page, svg, PageFormat::Svg)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Page, postscript, PageFormat::PostScript)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
