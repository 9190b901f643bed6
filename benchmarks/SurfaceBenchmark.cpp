// Surfaces at 1200 x 900: the first picture; 1000 x 1000 cells drawn again, from another side, anti-aliased and from
// new data; one with a wireframe and a transparent one.

#include "ombrel/drawing/DIB.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Surface.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <utility>

namespace ombrel::bench {
namespace {

class SurfacePicture {
public:
    explicit SurfacePicture(int cells)
        : m_graph(1)
        , m_target(1200, 900, 24)
        , m_surface(*static_cast<CSurface*>(m_graph.AddPlot(itSurfacePlot)->CreateCurve()))
    {
        CTableData table(cells + 1, cells + 1);
        for (int r = 0; r <= cells; ++r) {
            for (int c = 0; c <= cells; ++c)
                table.SetAt(r, c, 0.3 * std::sin(10.0 * c / cells - 5) * std::cos(10.0 * r / cells - 5));
        }
        m_surface.SetTableData(std::move(table));
        m_surface.SetDataSourceType(CPlotComponent::dsTable);
        m_surface.AlignMeshes();
        m_surface.SetColourDescription(2);
        m_surface.SetColourmap("Spectrum");
        Draw();
    }
    C3DGraph& GetGraph() { return m_graph; }
    CSurface& GetSurface() { return m_surface; }
    void Draw()
    {
        m_graph.SetModifiedFlag(1);
        m_graph.Draw(m_target.GetDC(), CRect(0, 0, 1200, 900), pmOffScreen);
    }

private:
    C3DGraph m_graph;
    CDIB m_target;
    CSurface& m_surface;
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
        picture.GetSurface().SetPlotDataModified(1);
        picture.Draw();
    }
}
BENCHMARK(NewData)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

void Wireframe(benchmark::State& state)
{
    SurfacePicture picture(200);
    picture.GetSurface().SetWireframeOn(1);
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
    picture.GetSurface().SetTransparency(0.5);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK(Transparent)->Unit(benchmark::kMillisecond)->UseRealTime()->MeasureProcessCPUTime();

} // namespace
} // namespace ombrel::bench
