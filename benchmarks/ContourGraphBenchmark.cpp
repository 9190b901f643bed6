// Contour graphs of 2000 x 2000 nodes at 1200 x 900: bands and lines of 20 levels, from new data and drawn again.

#include "ombrel/Init.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph2d/2DContourPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph3d/Surface.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <utility>

namespace ombrel::bench {
namespace {

constexpr int kNodes = 2000;

CTableData Peaks()
{
    CTableData table;
    table.Initialise(kNodes, kNodes, 0);
    for (int j = 0; j < kNodes; ++j) {
        double const y = -3.0 + 6.0 * j / (kNodes - 1);
        for (int i = 0; i < kNodes; ++i) {
            double const x = -3.0 + 6.0 * i / (kNodes - 1);
            table.GetRow(j)[i] = 3 * (1 - x) * (1 - x) * std::exp(-x * x - (y + 1) * (y + 1))
                - 10 * (x / 5 - x * x * x - std::pow(y, 5)) * std::exp(-x * x - y * y)
                - std::exp(-(x + 1) * (x + 1) - y * y) / 3 + 0.8 * std::sin(7 * x) * std::cos(6 * y);
        }
    }
    return table;
}

class ContourPicture {
public:
    explicit ContourPicture(C2DContourCurve::DisplayMode mode)
        : m_curve(*static_cast<C2DContourCurve*>(
            m_graph.AddPlot(it2DContourPlot)->AddCurve("Heights", CPlotComponent::dsTable)))
    {
        m_curve.SetDisplayMode(mode);
        m_curve.SetNumContours(20);
        m_curve.GetSurface()->SetWireframeColourmap("Spectrum");
        SetTable(Peaks());
        m_curve.GetSurface()->AlignMeshes();
        m_graph.UpdatePlots();
        Draw();
    }
    void SetTable(CTableData&& table) { m_curve.GetSurface()->SetTableData(std::move(table)); }
    void Update() { m_graph.UpdatePlots(); }
    void Draw()
    {
        m_graph.SetModifiedFlag(1);
        m_graph.Draw(m_target.GetDC(), CRect(0, 0, 1200, 900), pmOffScreen);
    }

private:
    C2DGraph m_graph { 1 };
    CDIB m_target { 1200, 900, 24 };
    C2DContourCurve& m_curve;
};

/// Evaluates new data, and draws it where that is asked for.
void NewData(benchmark::State& state, bool draws)
{
    OmbrelInit();
    CTableData const peaks = Peaks();
    ContourPicture picture(C2DContourCurve::dmShadingAndLines);
    for (auto _ : state) {
        state.PauseTiming();
        CTableData table = peaks;
        state.ResumeTiming();
        picture.SetTable(std::move(table));
        picture.Update();
        if (draws)
            picture.Draw();
    }
}
BENCHMARK_CAPTURE(NewData, drawn, true)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(NewData, evaluated, false)->Unit(benchmark::kMillisecond)->UseRealTime();

void Redraw(benchmark::State& state, C2DContourCurve::DisplayMode mode)
{
    OmbrelInit();
    ContourPicture picture(mode);
    for (auto _ : state)
        picture.Draw();
}
BENCHMARK_CAPTURE(Redraw, bandsAndLines, C2DContourCurve::dmShadingAndLines)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(Redraw, bands, C2DContourCurve::dmShading)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Redraw, lines, C2DContourCurve::dmLines)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
} // namespace ombrel::bench
