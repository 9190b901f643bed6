// A line of a million points on a page.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/platform/gdi/PageSurface.h"

#include <benchmark/benchmark.h>

namespace ombrel::bench {
namespace {

void Page(benchmark::State& state, PageFormat format)
{
    auto const graph = RandomWalk(1000000);
    std::size_t size = 0;
    for (auto _ : state) {
        PageSetup setup;
        setup.format = format;
        std::shared_ptr<PageSurface> const page = MakePageSurface(setup);
        CDC dc(page);
        graph->Draw(&dc, page->Bounds(), pmDirect);
        size = page->Finish().size();
    }
    state.counters["bytes"] = static_cast<double>(size);
}
BENCHMARK_CAPTURE(Page, pdf, PageFormat::Pdf)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Page, svg, PageFormat::Svg)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Page, postscript, PageFormat::PostScript)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench

BENCHMARK_MAIN();
