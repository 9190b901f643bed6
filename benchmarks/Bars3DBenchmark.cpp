// 10,000 bars at 1200 x 900 beside a surface of 200,000 triangles: drawn again, turned, anti-aliased and from new data.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/graph3d/3DRowColCurve.h"

#include <cmath>
#include <utility>

namespace ombrel::bench {
namespace {

/// A wave over nodes × nodes values as a curve of that kind, coloured by value; drawn once.
class GridPicture : public ScenePicture<C3DRowColCurve> {
public:
    GridPicture(ItemType type, int colourDescription, int nodes)
        : ScenePicture(type)
    {
        CTableData table(nodes, nodes);
        for (int r = 0; r < nodes; ++r) {
            for (int c = 0; c < nodes; ++c)
                table.SetAt(r, c, 0.3 * std::sin(10.0 * c / nodes - 5) * std::cos(10.0 * r / nodes - 5));
        }
        GetCurve().SetTableData(std::move(table));
        GetCurve().AlignMeshes();
        GetCurve().SetColourDescription(colourDescription);
        GetCurve().SetColourmap("Spectrum");
        Draw();
    }
};

GridPicture MakeBars() { return { it3DBarPlot, 1, 100 }; }
GridPicture MakeSurface() { return { itSurfacePlot, 2, 317 }; }

void Redraw(benchmark::State& state, GridPicture (*make)())
{
    GridPicture picture = make();
    for (auto _ : state)
        picture.Draw();
}

void Turned(benchmark::State& state, GridPicture (*make)())
{
    GridPicture picture = make();
    double azimuth = 30.0;
    for (auto _ : state) {
        picture.GetGraph().SetViewingAzimuth(azimuth += 0.5);
        picture.Draw();
    }
}

void Antialiased(benchmark::State& state, GridPicture (*make)())
{
    GridPicture picture = make();
    picture.GetGraph().SetAntialiasMode(1);
    for (auto _ : state)
        picture.Draw();
}

void NewData(benchmark::State& state, GridPicture (*make)())
{
    GridPicture picture = make();
    for (auto _ : state) {
        picture.GetCurve().SetPlotDataModified(1);
        picture.Draw();
    }
}

BENCHMARK_CAPTURE(Redraw, bars, MakeBars)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(Redraw, surface, MakeSurface)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(Turned, bars, MakeBars)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(Turned, surface, MakeSurface)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(Antialiased, bars, MakeBars)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(Antialiased, surface, MakeSurface)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(NewData, bars, MakeBars)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();
BENCHMARK_CAPTURE(NewData, surface, MakeSurface)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

} // namespace
} // namespace ombrel::bench
