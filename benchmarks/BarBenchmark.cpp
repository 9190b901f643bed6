// Off-screen redraws of bars at 1200 x 900, outlines, axes and labels included.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"

#include <benchmark/benchmark.h>

#include <algorithm>

namespace ombrel::bench {
namespace {

enum class Order { Ascending, Shuffled };

/// A graph of one plot with that many bars of random height in all, the same every time.
std::unique_ptr<C2DGraph> RandomBars(ItemType type, int bars, int curves, Order order)
{
    OmbrelInit();
    auto graph = std::make_unique<C2DGraph>(1);
    CPlot& plot = *graph->AddPlot(type);
    int const points = bars / curves;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> height(-3.0, 10.0);
    if (auto* const series = DynamicDowncast<C2DSeriesPlot>(&plot))
        series->SetXValueMode(1);
    for (int k = 0; k < curves; ++k) {
        auto& curve = static_cast<C2DCurve&>(*plot.CreateCurve());
        curve.SetDataSourceType(CPlotComponent::dsTable);
        CTableData table(2, points);
        double* const xs = table.GetRow(0);
        double* const ys = table.GetRow(1);
        for (int i = 0; i < points; ++i) {
            xs[i] = i;
            ys[i] = height(random);
        }
        if (order == Order::Shuffled)
            std::shuffle(xs, xs + points, random);
        curve.SetPoints(std::move(table));
    }
    graph->UpdatePlots();
    return graph;
}

/// Everything but the data is computed and drawn again.
void Redraw(benchmark::State& state, ItemType type, int curves, Order order)
{
    auto const graph = RandomBars(type, static_cast<int>(state.range(0)), curves, order);
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    for (auto _ : state) {
        graph->SetModifiedFlag(1);
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    }
}
BENCHMARK_CAPTURE(Redraw, bars, it2DBarPlot, 1, Order::Ascending)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, shuffled, it2DBarPlot, 1, Order::Shuffled)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, clustered, it2DClusteredBarPlot, 3, Order::Ascending)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, stacked, it2DStackedBarPlot, 5, Order::Ascending)
    ->Arg(1000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
