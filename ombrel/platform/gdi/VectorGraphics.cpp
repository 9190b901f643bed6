#include "ombrel/platform/gdi/VectorGraphics.h"

#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/DC.h"

#include <vector>

namespace ombrel {

namespace {

/// The points moved by the viewport origin; without one, the points themselves.
class MovedPoints {
public:
    MovedPoints(std::span<CPoint const> points, CPoint origin)
        : m_points(points)
    {
        if (origin == CPoint())
            return;
        m_moved.assign(points.begin(), points.end());
        for (CPoint& p : m_moved)
            p = MovePoint(p, origin);
        m_points = m_moved;
    }
    MovedPoints(MovedPoints const&) = delete;
    MovedPoints& operator=(MovedPoints const&) = delete;
    std::span<CPoint const> Points() const { return m_points; }

private:
    std::span<CPoint const> m_points;
    std::vector<CPoint> m_moved;
};

} // namespace

VectorGraphics::VectorGraphics(CDC& dc)
    : m_dc(dc)
    , m_clip(dc.m_state.clip)
{
}

void VectorGraphics::SetClipRect(CRect const& rect)
{
    CRect const moved = MoveRect(rect, m_dc.m_state.origin);
    m_clip.box = moved.IsRectEmpty() ? CRect() : moved;
}

void VectorGraphics::DrawLine(VectorPen const& pen, CPoint from, CPoint to)
{
    CPoint const ends[] { from, to };
    DrawPath(pen, { ends, {} });
}

void VectorGraphics::DrawCurve(VectorPen const& pen, std::span<CPoint const> points) { DrawPath(pen, { points, {} }); }

void VectorGraphics::DrawPath(VectorPen const& pen, Figures const& figures)
{
    if (figures.points.size() < 2 || pen.colour.alpha == 0)
        return;
    MovedPoints const moved(figures.points, m_dc.m_state.origin);
    m_dc.m_surface->Stroke({ moved.Points(), figures.starts }, pen, m_smooth, m_clip);
}

void VectorGraphics::FillRegion(VectorBrush const& brush, Region const& region)
{
    if (region.IsEmpty())
        return;
    CPoint const origin = m_dc.m_state.origin;
    if (origin == CPoint()) {
        m_dc.m_surface->Fill(region, brush, m_clip);
        return;
    }
    Region moved = region;
    moved.Offset(origin.x, origin.y);
    m_dc.m_surface->Fill(moved, brush, m_clip);
}

void VectorGraphics::FillPolygon(VectorBrush const& brush, std::span<CPoint const> points)
{
    FillRegion(brush, Region::FromPolygon(points, ALTERNATE));
}

void VectorGraphics::FillRectangle(VectorBrush const& brush, double x, double y, double w, double h)
{
    if (!(w > 0.0 && h > 0.0))
        return;
    CRect const rect(CeilToInt(x), CeilToInt(y), CeilToInt(x + w), CeilToInt(y + h));
    if (!rect.IsRectEmpty())
        FillRegion(brush, Region::FromRect(rect));
}

} // namespace ombrel
