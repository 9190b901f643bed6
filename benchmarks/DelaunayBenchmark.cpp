// Scattered points without any order, on a grid, on a circle and in clusters: their triangulation; and surfaces at 1200
// x 900 through a million of them, drawn again, from new data, and transparent.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"

#include <array>
#include <cmath>
#include <random>
#include <utility>

namespace ombrel::bench {
namespace {

enum Kind : int { kRandom = 0, kGrid = 1, kCircle = 2, kClusters = 3 };

void Fill(C3DIrregularSurfaceCurve& curve, int n, Kind kind)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> unit;
    auto const side = static_cast<int>(std::sqrt(n));
    auto const place = [&](int i) -> std::pair<double, double> {
        double const size = std::pow(10.0, -(i % 7));
        double const angle = 6.283185307179586 * unit(random);
        switch (kind) {
        case kGrid:
            return { i % side, i / side };
        case kCircle:
            return { std::cos(angle), std::sin(angle) };
        case kClusters:
            return { i % 50 + size * unit(random), i % 11 + size * unit(random) };
        default:
            return { 10 * unit(random), 10 * unit(random) };
        }
    };
    CDoubleArray x;
    CDoubleArray y;
    CDoubleArray z;
    for (int i = 0; i < n; ++i) {
        auto const [px, py] = place(i);
        x.Add(px);
        y.Add(py);
        z.Add(0.3 * std::sin(px - 5) * std::cos(py - 5));
    }
    std::array<CDoubleArray const*, 3> const arrays { &x, &y, &z };
    curve.SetTableData(arrays.data(), n);
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.SetColourDescription(1);
    curve.SetColourmap("Spectrum");
}

void Triangulate(benchmark::State& state)
{
    C3DIrregularSurfaceCurve curve;
    Fill(curve, static_cast<int>(state.range(0)), static_cast<Kind>(state.range(1)));
    curve.TranslateRotate();
    for (auto _ : state)
        curve.Triangulate();
    state.counters["triangles"] = static_cast<double>(curve.GetTriangles().size());
}
BENCHMARK(Triangulate)
    ->ArgNames({ "points", "kind" })
    ->ArgsProduct({ { 100'000, 1'000'000 }, { kRandom, kGrid, kCircle, kClusters } })
    ->Unit(benchmark::kMillisecond);

class ScatteredPicture : public ScenePicture<C3DIrregularSurfaceCurve> {
public:
    explicit ScatteredPicture(int n)
        : ScenePicture(it3DIrregularSurfacePlot)
    {
        Fill(GetCurve(), n, kRandom);
        Draw();
    }
};

void Redraw(benchmark::State& state)
{
    ScatteredPicture picture(static_cast<int>(state.range(0)));
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Redraw)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void NewData(benchmark::State& state)
{
    ScatteredPicture picture(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        picture.GetCurve().SetPlotDataModified(1);
        picture.Draw();
    }
}
BENCHMARK(NewData)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Transparent(benchmark::State& state)
{
    ScatteredPicture picture(50'000);
    picture.GetCurve().SetTransparency(0.5);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Transparent)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Wireframe(benchmark::State& state)
{
    ScatteredPicture picture(100'000);
    picture.GetCurve().SetWireframeOn(1);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Wireframe)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

} // namespace
} // namespace ombrel::bench
