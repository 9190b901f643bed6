#include "ombrel/platform/gdi/VectorGraphics.h"

#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/DC.h"
#include "ombrel/platform/gdi/geometry/EllipsePixels.h"

#include <algorithm>
#include <cmath>

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

/// Outline pixels as a curve, clockwise from the middle of the right edge and back.
std::vector<CPoint> PixelCurve(std::vector<CPoint> outline, CRect const& box)
{
    if (outline.empty())
        return outline;
    std::reverse(outline.begin(), outline.end());
    auto const fromStart = [&box](CPoint p) {
        return std::abs(2LL * p.y - box.top - box.bottom) + 2LL * (static_cast<long long>(box.right) - p.x);
    };
    auto const start = std::min_element(
        outline.begin(), outline.end(), [&](CPoint a, CPoint b) { return fromStart(a) < fromStart(b); });
    std::rotate(outline.begin(), start, outline.end());
    outline.push_back(outline.front());
    return outline;
}

} // namespace

VectorGraphics::VectorGraphics(CDC& dc)
    : m_dc(dc)
    , m_clip(dc.GetClip())
{
}

void VectorGraphics::SetClipRect(CRect const& rect)
{
    CRect const moved = MoveRect(rect, m_dc.GetViewportOrg());
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
    MovedPoints const moved(figures.points, m_dc.GetViewportOrg());
    m_dc.GetSurface().Stroke({ moved.Points(), figures.starts }, pen, m_smooth, m_clip);
}

std::vector<CPoint> VectorGraphics::EllipsePoints(VectorPen const& pen, CRect const& box) const
{
    CRect const limited = ClampRect(box);
    if (limited.IsRectEmpty())
        return {};
    // Larger ones have too many pixels to list, and look as round.
    constexpr int kLargestPixelCurve = 8192;
    bool const byPixel = pen.width <= 1.0 && !m_smooth && !m_dc.IsPrinting()
        && std::max(limited.Width(), limited.Height()) <= kLargestPixelCurve;
    if (!byPixel)
        return FlattenedEllipse(limited);
    return PixelCurve(EllipseOutline({ limited.left, limited.top, limited.right + 1, limited.bottom + 1 }), limited);
}

void VectorGraphics::FillRegion(VectorBrush const& brush, Region const& region)
{
    if (region.IsEmpty())
        return;
    CPoint const origin = m_dc.GetViewportOrg();
    if (origin == CPoint()) {
        m_dc.GetSurface().Fill(region, brush, m_clip);
        return;
    }
    Region moved = region;
    moved.Offset(origin.x, origin.y);
    m_dc.GetSurface().Fill(moved, brush, m_clip);
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
