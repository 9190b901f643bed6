#include "ombrel/layout/placing/OccupancySurface.h"
#include "ombrel/drawing/Port.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/RecordingSurface.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

CRect OccupancySurface::Bounds() const
{
    CRect bounds = m_occupancy.GetArea();
    // The frame's right and bottom lines.
    ++bounds.right;
    ++bounds.bottom;
    return bounds;
}

/// Parallel lines as close as the cells are wide.
void OccupancySurface::AddLine(CPoint from, CPoint to, double width, CRect const& within)
{
    double const dx = to.x - from.x;
    double const dy = to.y - from.y;
    double const length = std::hypot(dx, dy);
    auto const strands = static_cast<int>(std::ceil(width / Occupancy::kSmallestCell));
    for (int i = 0; i <= strands && length > 0.0; ++i) {
        double const aside
            = strands > 0 && width > 1.0 ? width * (static_cast<double>(i) / strands - 0.5) / length : 0.0;
        m_occupancy.AddSegment(from.x - dy * aside, from.y + dx * aside, to.x - dy * aside, to.y + dx * aside, within);
    }
}

void OccupancySurface::AddLines(std::span<CPoint const> points, double width, Clip const& clip)
{
    CRect const within = clip.Box();
    for (std::size_t i = 1; i < points.size(); ++i)
        AddLine(points[i - 1], points[i], width, within);
}

/// The pixels of a rectangle whose right and bottom edges are outside.
void OccupancySurface::AddPixels(CRect const& pixels, Clip const& clip)
{
    CRect shown;
    if (shown.IntersectRect(pixels, clip.Box()))
        m_occupancy.AddRect(shown);
}

void OccupancySurface::Polyline(std::span<CPoint const> points, LineStyle const& line, Clip const& clip)
{
    if (line.style != PS_NULL)
        AddLines(points, line.width, clip);
}

void OccupancySurface::Stroke(Figures const& figures, VectorPen const& pen, bool, Clip const& clip)
{
    if (pen.colour.alpha == 0)
        return;
    for (std::size_t i = 0; i < figures.Count(); ++i)
        AddLines(figures.PointsOf(i), pen.width, clip);
}

void OccupancySurface::Fill(Region const& region, VectorBrush const& brush, Clip const& clip)
{
    if (brush.foreground.alpha == 0 && brush.background.alpha == 0)
        return;
    if (region.IsRect()) {
        AddPixels(region.Box(), clip);
        return;
    }
    CRect shown;
    if (!shown.IntersectRect(Bounds(), clip.Box()))
        return;
    for (Region::Span const& span : region.Spans(shown.top, shown.bottom))
        AddPixels({ span.left, span.y, span.right, span.y + 1 }, clip);
}

void OccupancySurface::Ellipse(CRect const& box, LineStyle const*, COLORREF const*, Clip const& clip)
{
    AddPixels(box, clip);
}

void OccupancySurface::Arc(CRect const& box, CPoint, CPoint, LineStyle const&, Clip const& clip)
{
    AddPixels(box, clip);
}

void OccupancySurface::Text(TextRun const& run, Clip const& clip)
{
    CFont font;
    font.CreateFontIndirect(*run.font);
    CDC dc;
    dc.SelectObject(&font);
    CSize const size = dc.GetTextExtent(run.text);
    bool const runsUpwards = run.font->lfEscapement % 3600 == 900;
    AddPixels(
        runsUpwards ? CRect(run.at.x, run.at.y - size.cx, run.at.x + size.cy, run.at.y) : CRect(run.at, size), clip);
}

void OccupancySurface::Image(ImageCopy const& copy, Clip const& clip) { AddPixels(copy.to, clip); }

void OccupancySurface::Repeat(
    std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, BYTE alpha, Clip const& clip)
{
    if (!std::all_of(mark.begin(), mark.end(), IsPlain)) {
        Surface::Repeat(mark, points, alpha, clip);
        return;
    }
    CRect const reach = ReachOf(mark);
    for (CPoint const& point : points)
        AddPixels({ reach.TopLeft() + point, reach.Size() }, clip);
}

Occupancy OccupancyOf(C2DGraph& graph)
{
    auto const surface = std::make_shared<OccupancySurface>(graph.GetAxesRect());
    CDC dc(surface);
    CRect const map = graph.GetGraphRect();
    CRealRect const units(graph.WindowToUnits(map.TopLeft()), graph.WindowToUnits(map.BottomRight()));
    CPort port(&dc, graph.GetWindowRect(), map, units);
    graph.GetPlotArray()->Draw(&port);
    return surface->GetOccupancy();
}

} // namespace ombrel
