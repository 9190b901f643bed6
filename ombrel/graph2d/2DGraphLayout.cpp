#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/graph2d/Axes.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace ombrel {
namespace {

/// Puts the axes and the polar grid into measuring mode for the life of a scope. Labels keep their texts and sizes
/// meanwhile: only where they lie depends on the axes rectangle.
class MeasuringScope {
public:
    MeasuringScope(CAxes& axes, C2DPolarGrid* polarGrid)
        : m_axes(axes)
        , m_polarGrid(polarGrid)
    {
        m_axes.SetDrawMode(dmMeasure);
        m_axes.BeginLayout();
        if (!m_polarGrid)
            return;
        m_polarGrid->SetDrawMode(dmMeasure);
        m_polarGrid->BeginLayout();
    }
    ~MeasuringScope()
    {
        m_axes.EndLayout();
        m_axes.SetDrawMode(dmDraw);
        if (!m_polarGrid)
            return;
        m_polarGrid->EndLayout();
        m_polarGrid->SetDrawMode(dmDraw);
    }
    MeasuringScope(MeasuringScope const&) = delete;
    MeasuringScope& operator=(MeasuringScope const&) = delete;

private:
    CAxes& m_axes;
    C2DPolarGrid* m_polarGrid;
};

/// Draws without output.
void Measure(CGraphComponent& component, CPort& port)
{
    DrawMode const mode = component.GetDrawMode();
    component.SetDrawMode(dmMeasure);
    component.Draw(&port);
    component.SetDrawMode(mode);
}

} // namespace

void C2DGraph::UpdateUnitsRect()
{
    if (!m_axes || m_layout.axesRect.Width() == 0 || m_layout.axesRect.Height() == 0)
        return;
    CRealRect const range = m_axes->GetRealExtentRect();
    double const perColumn = range.Width() / m_layout.axesRect.Width();
    double const perRow = range.Height() / m_layout.axesRect.Height();
    CRect const& graph = m_graphRect;
    double const left = range.left - perColumn * std::abs(graph.left - m_layout.axesRect.left);
    double const right = range.right + perColumn * std::abs(graph.right - m_layout.axesRect.right);
    double const bottom = range.bottom - perRow * std::abs(graph.bottom - m_layout.axesRect.bottom);
    double const top = range.top + perRow * std::abs(graph.top - m_layout.axesRect.top);
    m_layout.unitsRect.Set({ left, top }, { right, bottom });
}

CRect C2DGraph::GetAxesExtent()
{
    if (!m_axes)
        return m_layout.axesRect;
    CDC* const dc = m_dc ? m_dc : m_dib.GetDC();
    CPort port(dc, CRect({ 0, 0 }, m_windowRect.Size()), m_graphRect, m_layout.unitsRect);
    Measure(*m_axes, port);
    CRect const axes = m_axes->GetExtentRect();
    if (!m_polarGrid || !m_polarGrid->IsOn())
        return axes;
    Measure(*m_polarGrid, port);
    CRect const grid = m_polarGrid->GetExtentRect();
    return { std::min(axes.left, grid.left), std::min(axes.top, grid.top), std::max(axes.right, grid.right),
        std::max(axes.bottom, grid.bottom) };
}

void C2DGraph::SetGraphSize(CRect const& rect)
{
    m_graphRect = rect;
    m_layout.axesRect = rect;
    UpdateUnitsRect();
    if (!m_axes)
        return;
    MeasuringScope const measuring(*m_axes, m_polarGrid);
    constexpr int kMaxSteps = 1001;
    CRect extent = GetAxesExtent();
    auto const shrinkWhile = [&](auto const& sticksOut, LONG& side, int step) {
        for (int steps = 0; steps < kMaxSteps && sticksOut(); ++steps) {
            // A plotting area of no size has no scale: a label larger than the graph stays cut.
            if (m_layout.axesRect.Width() <= 1 || m_layout.axesRect.Height() <= 1)
                return;
            side += step;
            UpdateUnitsRect();
            extent = GetAxesExtent();
        }
    };
    shrinkWhile([&] { return extent.left < m_graphRect.left; }, m_layout.axesRect.left, 1);
    shrinkWhile([&] { return extent.bottom > m_graphRect.bottom; }, m_layout.axesRect.bottom, -1);
    shrinkWhile([&] { return extent.right > m_graphRect.right; }, m_layout.axesRect.right, -1);
    shrinkWhile([&] { return extent.top < m_graphRect.top; }, m_layout.axesRect.top, 1);
}

void C2DGraph::SetInitialSize(CDC* dc)
{
    CDC* const before = std::exchange(m_dc, dc ? dc : m_dc);
    SetInitialSize();
    m_dc = before;
}

void C2DGraph::SetInitialSize()
{
    if (m_graphRect.Width() == 0) {
        double const width = m_windowRect.Width();
        double const height = m_windowRect.Height();
        auto const nearest = [](double v) { return static_cast<int>(std::trunc(v + 0.5)); };
        m_graphRect = CRect(CPoint(nearest(width * m_initialOrigin.x), nearest(height * m_initialOrigin.y)),
            CSize(nearest(width * m_initialSize.cx), nearest(height * m_initialSize.cy)));
    }
    SetGraphSize(m_graphRect);
    UpdateNormalisedRect();
}

void C2DGraph::ExchangeLayout() { std::swap(m_layout, m_otherLayout); }

} // namespace ombrel
