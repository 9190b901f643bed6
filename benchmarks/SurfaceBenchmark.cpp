// Surfaces at 1200 x 900: the first picture; 1000 x 1000 cells drawn again, from another side, anti-aliased and from
// new data; one with a wireframe and a transparent one.

#include "benchmarks/BenchmarkData.h"
#include "ombrel/graph3d/Surface.h"

#include <cmath>
#include <utility>

namespace ombrel::bench {
namespace {

class SurfacePicture : public ScenePicture<CSurface> {
public:
    explicit SurfacePicture(int cells)
        : ScenePicture(itSurfacePlot)
    {
        CTableData table(cells + 1, cells + 1);
        for (int r = 0; r <= cells; ++r) {
            for (int c = 0; c <= cells; ++c)
                table.SetAt(r, c, 0.3 * std::sin(10.0 * c / cells - 5) * std::cos(10.0 * r / cells - 5));
        }
        GetCurve().SetTableData(std::move(table));
        GetCurve().AlignMeshes();
        GetCurve().SetColourDescription(2);
        GetCurve().SetColourmap("Spectrum");
        Draw();
    }
};

// Stands first and runs once: the libraries are opened, and the driver starts.
void FirstPicture(benchmark::State& state)
{
    for (auto _ : state)
        SurfacePicture const picture(50);
}
BENCHMARK(FirstPicture)->Iterations(1)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Redraw(benchmark::State& state)
{
    SurfacePicture picture(1000);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Redraw)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Turned(benchmark::State& state)
{
    SurfacePicture picture(1000);
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
    SurfacePicture picture(1000);
    picture.GetGraph().SetAntialiasMode(1);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Antialiased)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

/// Of few cells: what passes cost whatever is drawn.
void AntialiasedSmall(benchmark::State& state)
{
    SurfacePicture picture(50);
    picture.GetGraph().SetAntialiasMode(1);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(AntialiasedSmall)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void NewData(benchmark::State& state)
{
    SurfacePicture picture(1000);
    for (auto _ : state) {
        picture.GetCurve().SetPlotDataModified(1);
        picture.Draw();
    }
}
BENCHMARK(NewData)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Wireframe(benchmark::State& state)
{
    SurfacePicture picture(200);
    picture.GetCurve().SetWireframeOn(1);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Wireframe)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

/// 100,000 faces, as many as the transparent ones.
void Opaque(benchmark::State& state)
{
    SurfacePicture picture(224);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Opaque)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Transparent(benchmark::State& state)
{
    SurfacePicture picture(224);
    picture.GetCurve().SetTransparency(0.5);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Transparent)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

} // namespace
} // namespace ombrel::bench
