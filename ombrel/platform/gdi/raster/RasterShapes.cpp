#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/geometry/EllipsePixels.h"
#include "ombrel/platform/gdi/raster/RasterSurface.h"
#include "ombrel/platform/gdi/raster/WideLines.h"

namespace ombrel {

namespace {

bool IsTooLarge(CRect const& box) { return box.Width() > kLargestEllipse || box.Height() > kLargestEllipse; }

CRect NormalBox(CRect const& box)
{
    CRect normal = ClampRect(box);
    normal.NormalizeRect();
    return normal;
}

} // namespace

void RasterSurface::Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    CRect const normal = NormalBox(box);
    CRect reached = normal;
    if (outline)
        reached.InflateRect(outline->width, outline->width);
    if (canvas.IsEmpty() || !reached.IntersectRect(reached, canvas.Box()))
        return;
    if (IsTooLarge(normal)) {
        Surface::Ellipse(normal, outline, fill, clip);
        return;
    }
    std::vector<CPoint> const pixels = EllipseOutline(normal);
    if (fill && !pixels.empty()) {
        std::uint32_t const pixel = canvas.Pixel(*fill);
        int y = normal.top;
        for (EllipseRow const& row : EllipseRows(normal, pixels))
            canvas.FillSpan(y++, row.left, row.right + 1, pixel);
    }
    if (outline && outline->style != PS_NULL)
        DrawPixels(canvas, m_mask, pixels, *outline);
}

void RasterSurface::Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip)
{
    RasterCanvas const canvas(m_raster.get(), clip);
    CRect const normal = NormalBox(box);
    if (canvas.IsEmpty() || line.style == PS_NULL)
        return;
    if (IsTooLarge(normal))
        Surface::Arc(normal, ClampPoint(start), ClampPoint(end), line, clip);
    else
        DrawPixels(canvas, m_mask, ArcPixels(normal, ClampPoint(start), ClampPoint(end)), line);
}

} // namespace ombrel
