#include "ombrel/platform/gdi/Primitive.h"

#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>

namespace ombrel {

namespace {

std::vector<CPoint> Moved(std::vector<CPoint> points, CPoint by)
{
    for (CPoint& point : points)
        point = MovePoint(point, by);
    return points;
}

/// Draws each kind of primitive, moved.
struct Replayer {
    CPoint by;
    Surface& surface;
    Clip const& clip;

    void operator()(primitive::Polyline const& p) const { surface.Polyline(Moved(p.points, by), p.line, clip); }
    void operator()(primitive::Stroke const& p) const
    {
        std::vector<CPoint> const points = Moved(p.points, by);
        surface.Stroke({ points, p.starts }, { p.pen.colour, p.pen.width, p.pen.dashes }, p.smooth, clip);
    }
    void operator()(primitive::Fill const& p) const
    {
        Region region = p.region;
        region.Offset(by.x, by.y);
        surface.Fill(region, p.brush, clip);
    }
    void operator()(primitive::Text const& p) const
    {
        surface.Text({ p.text, MovePoint(p.at, by), &p.font, p.colour, p.cellColour }, clip);
    }
    void operator()(primitive::Image const&) const { }
    void operator()(primitive::Ellipse const& p) const
    {
        surface.Ellipse(MoveRect(p.box, by), p.line ? &*p.line : nullptr, p.fill ? &*p.fill : nullptr, clip);
    }
    void operator()(primitive::Arc const& p) const
    {
        surface.Arc(MoveRect(p.box, by), MovePoint(p.start, by), MovePoint(p.end, by), p.line, clip);
    }
};

CRect Widened(CRect box, LineStyle const& line)
{
    int const margin = ClampCoordinate(line.width);
    box.InflateRect(margin, margin);
    return box;
}

CRect Normal(CRect const& rect)
{
    CRect box = ClampRect(rect);
    box.NormalizeRect();
    return box;
}

/// A box around each kind of plain primitive.
struct Reach {
    CRect operator()(primitive::Polyline const& p) const
    {
        CRect box;
        for (CPoint const& point : p.points)
            box.UnionRect(box, { ClampPoint(point), CSize(1, 1) });
        return Widened(box, p.line);
    }
    CRect operator()(primitive::Fill const& p) const { return p.region.Box(); }
    CRect operator()(primitive::Ellipse const& p) const
    {
        return p.line ? Widened(Normal(p.box), *p.line) : Normal(p.box);
    }
    CRect operator()(primitive::Arc const& p) const { return Widened(Normal(p.box), p.line); }
    template <typename Other> CRect operator()(Other const&) const { return {}; }
};

} // namespace

void Replay(RecordedPrimitive const& primitive, CPoint by, Surface& surface, Clip const& clip)
{
    std::visit(Replayer { by, surface, clip }, primitive.what);
}

bool IsPlain(RecordedPrimitive const& p)
{
    if (auto const* const fill = p.As<primitive::Fill>())
        return !fill->brush.hatchStyle && fill->brush.foreground.alpha == 255;
    return p.As<primitive::Polyline>() || p.As<primitive::Ellipse>() || p.As<primitive::Arc>();
}

CRect ReachOf(std::span<RecordedPrimitive const> primitives)
{
    CRect reach;
    for (RecordedPrimitive const& p : primitives)
        reach.UnionRect(reach, std::visit(Reach(), p.what));
    return reach;
}

} // namespace ombrel
