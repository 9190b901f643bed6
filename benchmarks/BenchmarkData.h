#pragma once
#include "ombrel/Init.h"
#include "ombrel/drawing/DIB.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/platform/gdi/PageSurface.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <random>

namespace ombrel::bench {

/// A graph of one line curve: a random walk of that many points, the same every time.
inline std::unique_ptr<C2DGraph> RandomWalk(int points)
{
    OmbrelInit();
    auto graph = std::make_unique<C2DGraph>(1);
    auto& line = static_cast<C2DLine&>(*graph->AddPlot(it2DLinePlot)->AddCurve("Random walk", CPlotComponent::dsTable));
    CTableData table;
    table.Initialise(2, points, 0);
    std::mt19937 random(1);
    std::normal_distribution<double> step;
    double* const xs = table.GetRow(0);
    double* const ys = table.GetRow(1);
    double y = 0.0;
    for (int i = 0; i < points; ++i) {
        xs[i] = i;
        ys[i] = y += step(random);
    }
    line.SetPoints(std::move(table));
    graph->UpdatePlots();
    return graph;
}

inline C2DLine& LineOf(C2DGraph& graph)
{
    return static_cast<C2DLine&>(*graph.GetPlotArray()->GetAt(0)->GetComponent(0));
}

inline constexpr CRect kWindow { 0, 0, 1200, 900 };

/// A 3D graph of one curve, which has its data as a table, and the bitmap that it is drawn on.
template <typename Curve> class ScenePicture {
public:
    explicit ScenePicture(ItemType type)
        : m_curve(*static_cast<Curve*>(m_graph.AddPlot(type)->CreateCurve()))
    {
        m_curve.SetDataSourceType(CPlotComponent::dsTable);
    }
    C3DGraph& GetGraph() { return m_graph; }
    Curve& GetCurve() { return m_curve; }
    void Draw()
    {
        m_graph.SetModifiedFlag(1);
        m_graph.Draw(m_target.GetDC(), kWindow, pmOffScreen);
    }

private:
    C3DGraph m_graph { 1 };
    CDIB m_target { kWindow.Width(), kWindow.Height(), 24 };
    Curve& m_curve;
};

/// Draws the graph on page after page and counts the bytes of one.
inline void DrawPages(benchmark::State& state, C2DGraph& graph, PageFormat format)
{
    std::size_t size = 0;
    for (auto _ : state) {
        PageSetup setup;
        setup.format = format;
        std::shared_ptr<PageSurface> const page = MakePageSurface(setup);
        CDC dc(page);
        graph.Draw(&dc, page->Bounds(), pmDirect);
        size = page->Finish().size();
    }
    state.counters["bytes"] = static_cast<double>(size);
}

} // namespace ombrel::bench
