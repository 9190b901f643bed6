// Laying out a graph: the axes are shrunk, measuring their labels, until everything fits.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/graph2d/Axes.h"

#include <benchmark/benchmark.h>

namespace ombrel::bench {
namespace {

void LayOut(benchmark::State& state)
{
    auto const graph = RandomWalk(1000);
    graph->GetAxes()->SetXAxisTitle("Time, s");
    graph->GetAxes()->SetYAxisTitle("Displacement, mm");
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    CRect const rect = graph->GetGraphRect();
    for (auto _ : state) {
        graph->UpdateComponentParameters();
        graph->SetGraphSize(rect);
    }
}
BENCHMARK(LayOut)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace ombrel::bench
