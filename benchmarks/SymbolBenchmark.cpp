// Off-screen redraws of curves with symbols at 1200 x 900, and pages of them.

#include "benchmarks/BenchmarkData.h"

#include <benchmark/benchmark.h>

namespace ombrel::bench {
namespace {

/// Points all over the graph, without lines between them.
std::unique_ptr<C2DGraph> Cloud(int points)
{
    auto graph = RandomWalk(2);
    CTableData table;
    table.Initialise(2, points, 0);
    std::mt19937 random(1);
    std::normal_distribution<double> value;
    for (int i = 0; i < points; ++i) {
        table.GetRow(0)[i] = value(random);
        table.GetRow(1)[i] = value(random);
    }
    C2DLine& line = LineOf(*graph);
    line.SetPoints(std::move(table));
    line.SetPointConnectionMode(C2DLine::cmNone);
    graph->UpdatePlots();
    return graph;
}

enum class Filling { Open, Filled };

void SetSymbols(C2DGraph& graph, C2DSymbol::SymbolType type, Filling filling)
{
    C2DLine& line = LineOf(graph);
    line.SetSymbolType(type);
    line.SetSymbolColour(RGB(0, 0, 160));
    line.SetFillSymbol(filling == Filling::Filled ? 1 : 0);
    line.SetSymbolFillColour(RGB(255, 200, 0));
}

void Redraw(
    benchmark::State& state, std::unique_ptr<C2DGraph> (*make)(int), C2DSymbol::SymbolType type, Filling filling)
{
    auto const graph = make(static_cast<int>(state.range(0)));
    SetSymbols(*graph, type, filling);
    CDIB target(kWindow.Width(), kWindow.Height(), 24);
    for (auto _ : state) {
        graph->SetModifiedFlag(1);
        graph->Draw(target.GetDC(), kWindow, pmOffScreen);
    }
}

constexpr int kPoints = 100000;

BENCHMARK_CAPTURE(Redraw, walk_circles, RandomWalk, C2DSymbol::Circle, Filling::Open)
    ->Arg(1000)
    ->Arg(kPoints)
    ->Arg(10000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, walk_filled_circles, RandomWalk, C2DSymbol::Circle, Filling::Filled)
    ->Arg(1000)
    ->Arg(kPoints)
    ->Arg(10000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, cloud_circles, Cloud, C2DSymbol::Circle, Filling::Open)
    ->Arg(kPoints)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, cloud_filled_circles, Cloud, C2DSymbol::Circle, Filling::Filled)
    ->Arg(kPoints)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, cloud_filled_squares, Cloud, C2DSymbol::Square, Filling::Filled)
    ->Arg(kPoints)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, cloud_filled_triangles, Cloud, C2DSymbol::Triangle, Filling::Filled)
    ->Arg(kPoints)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, cloud_diamonds, Cloud, C2DSymbol::Diamond, Filling::Open)
    ->Arg(kPoints)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, cloud_crosses, Cloud, C2DSymbol::Cross, Filling::Open)
    ->Arg(kPoints)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Redraw, cloud_pixels, Cloud, C2DSymbol::Pixel, Filling::Open)
    ->Arg(kPoints)
    ->Unit(benchmark::kMillisecond);

void Page(benchmark::State& state, PageFormat format, C2DSymbol::SymbolType type, Filling filling)
{
    auto const graph = Cloud(kPoints);
    SetSymbols(*graph, type, filling);
    DrawPages(state, *graph, format);
}
BENCHMARK_CAPTURE(Page, svg_crosses, PageFormat::Svg, C2DSymbol::Cross, Filling::Open)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Page, svg_filled_circles, PageFormat::Svg, C2DSymbol::Circle, Filling::Filled)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Page, pdf_crosses, PageFormat::Pdf, C2DSymbol::Cross, Filling::Open)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Page, pdf_filled_circles, PageFormat::Pdf, C2DSymbol::Circle, Filling::Filled)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ombrel::bench
