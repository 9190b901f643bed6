// Off-screen redraws of a stacked area plot at 1200 x 900, axes and labels included.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/Axes.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace ombrel::bench {
namespace {

constexpr int kCurves = 5;

/// Bands of five curves that wander between 0 and a few units, the same every time.
std::unique_ptr<C2DGraph> Bands(int points)
{
    OmbrelInit();
    auto graph = std::make_unique<C2DGraph>(1);
    auto& plot = static_cast<C2DAreaPlot&>(*graph->AddPlot(it2DAreaPlot));
    std::mt19937 random(1);
    std::normal_distribution<double> step(0.0, 0.02);
    for (int k = 0; k < kCurves; ++k) {
        CTableData table;
        table.Initialise(2, points, 0);
        double* const xs = table.GetRow(0);
        double* const ys = table.GetRow(1);
        double y = k;
        for (int i = 0; i < points; ++i) {
            xs[i] = i;
            ys[i] = std::abs(y += step(random));
        }
        if (k == 0) {
            plot.SetXValueMode(1);
            plot.SetPoints(table);
        }
        auto& curve = static_cast<C2DAreaCurve&>(*plot.CreateCurve());
        curve.SetDataSourceType(CPlotComponent::dsTable);
        curve.SetPoints(std::move(table));
    }
    graph->UpdatePlots();
    return graph;
}

C2DAreaPlot& PlotOf(C2DGraph& graph) { return static_cast<C2DAreaPlot&>(*graph.GetPlotArray()->GetAt(0)); }

using Setting = void (*)(C2DGraph&);

void Redraw(benchmark::State& state, Setting setting)
{
    auto const graph = Bands(static_cast<int>(state.range(0)));
    setting(*graph);
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    for (auto _ : state) {
        graph->SetModifiedFlag(1);
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    }
}

BENCHMARK_CAPTURE(Redraw, stacked, [](C2DGraph&) {})->Arg(200)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, normalised, [](C2DGraph& g) { PlotOf(g).SetNormalised(1); })
    ->Arg(200000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, clipped,
    [](C2DGraph& g) {
        CAxes& axes = *g.GetAxes();
        axes.SetXAxisRangeMode(CAxes::rmFixed);
        axes.SetYAxisRangeMode(CAxes::rmFixed);
        axes.SetRange(CAxes::atX, 50000, 60000);
        axes.SetRange(CAxes::atY, 5, 20);
    })
    ->Arg(200000)
    ->Unit(benchmark::kMillisecond);

/// As after a change of the data: the totals are added up once more for their range.
void RedrawNewData(benchmark::State& state)
{
    auto const graph = Bands(200000);
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    for (auto _ : state) {
        graph->UpdatePlots();
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    }
}
BENCHMARK(RedrawNewData)->Unit(benchmark::kMillisecond);

void Page(benchmark::State& state)
{
    auto const graph = Bands(200000);
    DrawPages(state, *graph, PageFormat::Pdf);
}
BENCHMARK(Page)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
