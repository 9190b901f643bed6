#include "ombrel/platform/gdi/page/PageMarks.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace ombrel {

std::vector<RecordedPrimitive> WithoutRedrawn(std::span<RecordedPrimitive const> mark)
{
    std::vector<RecordedPrimitive> kept;
    for (RecordedPrimitive const& p : mark) {
        auto const* const arc = p.As<primitive::Arc>();
        auto const* const ellipse = kept.empty() ? nullptr : kept.back().As<primitive::Ellipse>();
        if (!arc || !ellipse || !(ellipse->box == arc->box) || ellipse->line != arc->line)
            kept.push_back(p);
    }
    return kept;
}

std::vector<CPoint> LastOfEach(std::span<CPoint const> points)
{
    std::vector<std::size_t> order(points.size());
    std::iota(order.begin(), order.end(), std::size_t { 0 });
    std::sort(order.begin(), order.end(), [points](std::size_t a, std::size_t b) {
        return std::tie(points[a].y, points[a].x, a) < std::tie(points[b].y, points[b].x, b);
    });
    std::vector<CPoint> last;
    std::vector<bool> isLast(points.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        isLast[order[i]] = i + 1 == order.size() || !(points[order[i]] == points[order[i + 1]]);
    for (std::size_t i = 0; i < points.size(); ++i)
        if (isLast[i])
            last.push_back(points[i]);
    return last;
}

} // namespace ombrel
