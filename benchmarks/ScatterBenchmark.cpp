// Points in space at 1200 x 900: 100,000 spheres drawn again, from another side, anti-aliased and from new data; as
// many cubes; a tube through them; 1,000 texts. SurfaceBenchmark's Redraw is what 2,000,000 triangles of a surface
// take.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/graph3d/3DScatterCurve.h"
#include "ombrel/graph3d/3DTextCurve.h"

#include <cmath>

namespace ombrel::bench {
namespace {

constexpr int kPoints = 100'000;

/// Points on a wound spiral, evenly spread over a ball.
template <typename Curve> class PointPicture : public ScenePicture<Curve> {
public:
    PointPicture(ItemType type, int count)
        : ScenePicture<Curve>(type)
    {
        Curve& curve = this->GetCurve();
        curve.SetNumPts(count);
        for (int i = 0; i < count; ++i) {
            double const part = (i + 0.5) / count;
            double const radius = std::cbrt(std::fmod(i * 0.7548776662, 1.0));
            double const z = 1.0 - 2.0 * part;
            double const across = std::sqrt(1.0 - z * z);
            curve.SetXVal(i, radius * across * std::cos(2.39996 * i));
            curve.SetYVal(i, radius * across * std::sin(2.39996 * i));
            curve.SetZVal(i, radius * z);
        }
    }
};

class Spheres : public PointPicture<C3DScatterCurve> {
public:
    Spheres()
        : PointPicture(it3DScatterPlot, kPoints)
    {
        GetCurve().SetColourByZVal(1);
        GetCurve().SetColourmap("Spectrum");
        Draw();
    }
};

void Redraw(benchmark::State& state)
{
    Spheres picture;
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Redraw)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Turned(benchmark::State& state)
{
    Spheres picture;
    double azimuth = 30.0;
    for (auto _ : state) {
        picture.GetGraph().SetViewingAzimuth(azimuth += 0.5);
        picture.Draw();
    }
}
BENCHMARK(Turned)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

/// Eight passes.
void Antialiased(benchmark::State& state)
{
    Spheres picture;
    picture.GetGraph().SetAntialiasMode(1);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Antialiased)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void NewData(benchmark::State& state)
{
    Spheres picture;
    for (auto _ : state) {
        picture.GetCurve().SetPlotDataModified(1);
        picture.Draw();
    }
}
BENCHMARK(NewData)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Cubes(benchmark::State& state)
{
    Spheres picture;
    picture.GetCurve().SetSymbolStyle(3);
    picture.Draw();
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Cubes)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Tube(benchmark::State& state)
{
    PointPicture<C3DLineCurve> picture(it3DLinePlot, kPoints);
    for (int i = 0; i < kPoints; ++i) {
        double const t = 0.002 * i;
        picture.GetCurve().SetXVal(i, std::cos(t));
        picture.GetCurve().SetYVal(i, std::sin(t));
        picture.GetCurve().SetZVal(i, t);
    }
    picture.Draw();
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Tube)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Texts(benchmark::State& state)
{
    constexpr int kTexts = 1000;
    PointPicture<C3DTextCurve> picture(it3DTextPlot, kTexts);
    for (int i = 0; i < kTexts; ++i)
        picture.GetCurve().GetText().Add("Label");
    picture.Draw();
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Texts)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

} // namespace
} // namespace ombrel::bench
