// What a legend of 50 curves adds to the draw of an unchanged graph, which copies its finished picture.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/annotation/Legend.h"

#include <benchmark/benchmark.h>

#include <string>

namespace ombrel::bench {
namespace {

constexpr int kCurves = 50;

std::unique_ptr<C2DGraph> GraphOfManyCurves()
{
    auto graph = RandomWalk(1000);
    CPlot* const plot = graph->GetPlotArray()->GetAt(0);
    for (int i = 1; i < kCurves; ++i) {
        std::string const title = "Temperature of sensor " + std::to_string(i) + ", °C";
        auto& line = static_cast<C2DLine&>(*plot->AddCurve(title.c_str(), CPlotComponent::dsTable));
        line.SetPoints(LineOf(*graph).GetPoints(), -1, -1);
        line.SetLineType(i % 6);
        line.SetSymbolType(static_cast<C2DSymbol::SymbolType>(i % 9));
    }
    graph->UpdatePlots();
    return graph;
}

void DrawUnchanged(benchmark::State& state, C2DGraph& graph)
{
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    graph.Draw(target.GetDC(), kWindow, pmOffScreen);
    for (auto _ : state)
        graph.Draw(target.GetDC(), kWindow, pmOffScreen);
}

void UnchangedGraph(benchmark::State& state) { DrawUnchanged(state, *GraphOfManyCurves()); }
BENCHMARK(UnchangedGraph)->Unit(benchmark::kMicrosecond);

/// A caption brings in the copy that annotation is drawn on, and nearly nothing else.
void UnchangedGraphWithCaption(benchmark::State& state)
{
    auto const graph = GraphOfManyCurves();
    graph->AddCaption({ 100, 100 });
    DrawUnchanged(state, *graph);
}
BENCHMARK(UnchangedGraphWithCaption)->Unit(benchmark::kMicrosecond);

/// The argument is the legend's style.
void UnchangedGraphWithLegend(benchmark::State& state)
{
    auto const graph = GraphOfManyCurves();
    graph->GetLegend()->Create({ 600, 50 });
    graph->GetLegend()->SetStyle(static_cast<int>(state.range(0)));
    DrawUnchanged(state, *graph);
}
BENCHMARK(UnchangedGraphWithLegend)->DenseRange(0, 2)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace ombrel::bench
