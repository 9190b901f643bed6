#include "ombrel/platform/gdi/page/PageShape.h"

#include "ombrel/platform/gdi/geometry/PathSimplify.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace ombrel {

bool PageArc::IsWhole() const
{
    static constexpr double kAlmostWhole = 2.0 * std::numbers::pi - 1e-9;
    return std::abs(sweep) >= kAlmostWhole;
}

void PageShape::Add(std::span<CPoint const> figurePoints, bool closed)
{
    figures.push_back({ points.size(), closed });
    points.insert(points.end(), figurePoints.begin(), figurePoints.end());
}

void PageShape::AddRect(CRect const& rect)
{
    CPoint const corners[]
        = { rect.TopLeft(), { rect.right, rect.top }, rect.BottomRight(), { rect.left, rect.bottom } };
    Add(corners, true);
}

std::span<CPoint const> PageShape::PointsOf(std::size_t figure) const
{
    std::size_t const first = figures[figure].first;
    std::size_t const end = figure + 1 < figures.size() ? figures[figure + 1].first : points.size();
    return std::span(points).subspan(first, end - first);
}

CRect PageShape::Box() const
{
    if (points.empty() && arcs.empty())
        return {};
    CRect box(INT32_MAX, INT32_MAX, INT32_MIN, INT32_MIN);
    auto const include = [&box](int left, int top, int right, int bottom) {
        box = { std::min(box.left, left), std::min(box.top, top), std::max(box.right, right),
            std::max(box.bottom, bottom) };
    };
    for (CPoint const& p : points)
        include(p.x, p.y, p.x, p.y);
    for (PageArc const& arc : arcs)
        include(static_cast<int>(std::floor(arc.centreX - arc.radiusX)),
            static_cast<int>(std::floor(arc.centreY - arc.radiusY)),
            static_cast<int>(std::ceil(arc.centreX + arc.radiusX)),
            static_cast<int>(std::ceil(arc.centreY + arc.radiusY)));
    return box;
}

PageShape RegionShape(Region const& region, CRect const& bounds)
{
    PageShape shape;
    CRect visible;
    if (!visible.IntersectRect(region.Box(), bounds))
        return shape;
    if (region.IsRect()) {
        shape.AddRect(region.Box());
        return shape;
    }
    if (!region.Outline().empty()) {
        // Exactly, so that neighbours keep their common edges.
        std::vector<CPoint> corners = SimplifyPath(region.Outline(), 0.0);
        if (corners.size() > 1 && corners.front() == corners.back())
            corners.pop_back();
        shape.Add(corners, true);
        return shape;
    }
    // Spans under each other with the same ends make one rectangle.
    std::vector<CRect> open;
    std::vector<CRect> next;
    auto const finish = [&shape](CRect const& rect) { shape.AddRect(rect); };
    int row = visible.top;
    for (Region::Span const& span : region.Spans(visible.top, visible.bottom)) {
        if (span.y != row) {
            std::for_each(open.begin(), open.end(), finish);
            open = std::exchange(next, {});
            row = span.y;
        }
        CRect rect(span.left, span.y, span.right, span.y + 1);
        auto const above = std::find_if(open.begin(), open.end(),
            [&rect](CRect const& r) { return r.left == rect.left && r.right == rect.right && r.bottom == rect.top; });
        if (above != open.end()) {
            rect.top = above->top;
            open.erase(above);
        }
        next.push_back(rect);
    }
    std::for_each(open.begin(), open.end(), finish);
    std::for_each(next.begin(), next.end(), finish);
    return shape;
}

} // namespace ombrel
