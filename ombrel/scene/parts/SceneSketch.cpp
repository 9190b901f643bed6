#include "ombrel/scene/parts/SceneSketch.h"
#include "ombrel/graph3d/3DAxis.h"
#include "ombrel/graph3d/3DGraph.h"

#include <algorithm>

namespace ombrel {

SceneSketch::SceneSketch(C3DGraph& scene, CRect const& window)
    : m_scene(scene)
    , m_bitmap(window.Width(), window.Height(), 24)
{
    scene.LayOut(m_bitmap.GetDC(), window);
}

SceneSketch::SceneSketch(C3DGraph& scene, CRect const& window, CRect const& graph)
    : SceneSketch(scene, window)
{
    // The first layout of all gives the graph the whole window.
    scene.SetGraphAndWindowRect(graph, window);
}

CRect SceneSketch::Extent()
{
    CSize const size = m_bitmap.GetSize();
    m_scene.Draw(m_bitmap.GetDC(), CRect(0, 0, size.cx, size.cy), pmDirect);
    Raster const& pixels = *m_bitmap.GetBitmap().GetRaster();
    std::uint32_t const ground = Raster::FromColour(static_cast<COLORREF>(m_scene.GetBackgroundColour()));
    CRect extent(size.cx, size.cy, 0, 0);
    for (int y = 0; y < size.cy; ++y) {
        std::uint32_t const* const row = pixels.Row(y);
        for (int x = 0; x < size.cx; ++x) {
            if ((row[x] & 0xFFFFFFU) == ground)
                continue;
            extent = { std::min<LONG>(extent.left, x), std::min<LONG>(extent.top, y),
                std::max<LONG>(extent.right, x + 1), std::max<LONG>(extent.bottom, y + 1) };
        }
    }
    return extent;
}

BoxAlone::BoxAlone(C3DGraph& scene)
    : m_scene(scene)
    , m_plots(scene.GetPlotArray()->GetPlots().begin(), scene.GetPlotArray()->GetPlots().end())
{
    scene.GetPlotArray()->RemoveAll();
    for (std::size_t i = 0; i < m_titles.size(); ++i) {
        m_titles[i] = scene.GetAxes()[i]->GetTitle();
        scene.GetAxes()[i]->SetTitle("");
    }
}

BoxAlone::~BoxAlone()
{
    for (std::size_t i = 0; i < m_titles.size(); ++i)
        m_scene.GetAxes()[i]->SetTitle(m_titles[i]);
    for (CPlot* const plot : m_plots)
        m_scene.GetPlotArray()->Add(plot);
    // What changed meanwhile was told to the axes alone.
    m_scene.UpdateZVals();
}

} // namespace ombrel
