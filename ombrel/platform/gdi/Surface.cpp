#include "ombrel/platform/gdi/Surface.h"

#include "ombrel/platform/gdi/Primitive.h"
#include "ombrel/platform/gdi/geometry/EllipsePixels.h"

namespace ombrel {

namespace {

/// What the outermost pixels of an ellipse span whose right and bottom edges are excluded.
CRect OuterPixels(CRect const& box) { return { box.left, box.top, box.right - 1, box.bottom - 1 }; }

} // namespace

VectorBrush VectorBrush::Hatch(int style, VectorColour foreground, VectorColour background)
{
    if (style < 0 || style >= kHatchStyles)
        return { foreground, {}, {} };
    return { foreground, style, background };
}

DeviceCapabilities const& Surface::Capabilities() const
{
    static constexpr DeviceCapabilities kScreen;
    return kScreen;
}

void Surface::Ellipse(CRect const& box, LineStyle const* outline, COLORREF const* fill, Clip const& clip)
{
    if (box.IsRectEmpty())
        return;
    std::vector<CPoint> const curve = FlattenedEllipse(OuterPixels(box));
    if (fill)
        Fill(Region::FromPolygon(curve, ALTERNATE), VectorBrush::Solid(*fill), clip);
    if (outline)
        Polyline(curve, *outline, clip);
}

void Surface::Arc(CRect const& box, CPoint start, CPoint end, LineStyle const& line, Clip const& clip)
{
    if (!box.IsRectEmpty())
        Polyline(FlattenedArc(OuterPixels(box), start, end), line, clip);
}

void Surface::Repeat(std::span<RecordedPrimitive const> mark, std::span<CPoint const> points, BYTE, Clip const& clip)
{
    for (CPoint const& point : points)
        for (RecordedPrimitive const& primitive : mark)
            Replay(primitive, point, *this, clip);
}

} // namespace ombrel
