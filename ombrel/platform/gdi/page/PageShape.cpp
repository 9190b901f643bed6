#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/geometry/HatchPatterns.h"
#include "ombrel/platform/gdi/geometry/PathSimplify.h"
#include "ombrel/platform/gdi/page/PageCanvas.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <numeric>
#include <tuple>

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

namespace {

using Corners = std::vector<HatchCorner>;

/// Bands of one pixel's thickness from the upper left to the lower right through the corners of all cells.
void AddDiagonals(std::vector<Corners>& lines, int cells, bool mirrored)
{
    // Half the band's extent along an axis.
    static constexpr double kHalf = 0.5 * std::numbers::sqrt2;
    double const side = 8.0 * cells;
    // The line y = x + shift from where it enters the square to where it leaves it.
    auto const enter = [](double shift) { return HatchCorner { std::max(0.0, -shift), std::max(0.0, shift) }; };
    auto const leave = [side](double shift) {
        return HatchCorner { std::min(side, side - shift), std::min(side, side + shift) };
    };
    for (int diagonal = -cells; diagonal <= cells; ++diagonal) {
        double const above = std::clamp(8.0 * diagonal - kHalf, -side, side);
        double const below = std::clamp(8.0 * diagonal + kHalf, -side, side);
        Corners band { enter(above), leave(above), leave(below), enter(below) };
        if (diagonal == 0) {
            band.insert(band.begin() + 2, { side, side });
            band.push_back({ 0.0, 0.0 });
        }
        if (mirrored) {
            for (HatchCorner& corner : band)
                corner.x = side - corner.x;
            // The same turning sense, so that bands that cross add up.
            std::reverse(band.begin(), band.end());
        }
        lines.push_back(std::move(band));
    }
}

/// A rectangle over each run of pixels; equal runs of successive rows make one.
void AddRuns(std::vector<Corners>& lines, std::array<std::uint8_t, 8> const& rows, int cells)
{
    int const side = 8 * cells;
    auto const isSet = [&](int x, int y) {
        return x >= 0 && x < side && (rows[static_cast<std::size_t>(y % 8)] >> (7 - x % 8) & 1) != 0;
    };
    // Whether row y has exactly the run left ≤ x < right.
    auto const hasRun = [&isSet](int left, int right, int y) {
        bool exact = !isSet(left - 1, y) && !isSet(right, y);
        for (int x = left; x < right; ++x)
            exact = exact && isSet(x, y);
        return exact;
    };
    for (int y = 0; y < side; ++y) {
        for (int left = 0; left < side; ++left) {
            if (!isSet(left, y) || isSet(left - 1, y))
                continue;
            int right = left + 1;
            while (isSet(right, y))
                ++right;
            if (y > 0 && hasRun(left, right, y - 1))
                continue;
            int bottom = y + 1;
            while (bottom < side && hasRun(left, right, bottom))
                ++bottom;
            double const l = left, t = y, r = right, b = bottom;
            lines.push_back({ { l, t }, { r, t }, { r, b }, { l, b } });
        }
    }
}

} // namespace

std::vector<std::vector<HatchCorner>> HatchLines(int style, int cells)
{
    static constexpr int kForwardDiagonal = 2;
    static constexpr int kBackwardDiagonal = 3;
    static constexpr int kDiagonalCross = 5;
    std::vector<Corners> lines;
    if (style == kForwardDiagonal || style == kDiagonalCross)
        AddDiagonals(lines, cells, false);
    if (style == kBackwardDiagonal || style == kDiagonalCross)
        AddDiagonals(lines, cells, true);
    if (lines.empty())
        AddRuns(lines, HatchPattern(style), cells);
    return lines;
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

namespace {

/// The part of the source that exists, and where it goes to; false when there is none.
bool LimitToSource(ImageCopy const& copy, CRect& from, CRect& to)
{
    CRect whole = ClampRect(copy.from);
    whole.NormalizeRect();
    to = ClampRect(copy.to);
    to.NormalizeRect();
    if (!copy.source || to.IsRectEmpty() || !from.IntersectRect(whole, copy.source->Bounds()))
        return false;
    double const scaleX = static_cast<double>(to.Width()) / whole.Width();
    double const scaleY = static_cast<double>(to.Height()) / whole.Height();
    auto const scaled = [](int distance, double scale) { return static_cast<int>(std::lround(distance * scale)); };
    to = { to.left + scaled(from.left - whole.left, scaleX), to.top + scaled(from.top - whole.top, scaleY),
        to.left + scaled(from.right - whole.left, scaleX), to.top + scaled(from.bottom - whole.top, scaleY) };
    return !to.IsRectEmpty();
}

} // namespace

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

std::optional<PagePicture> MakePicture(ImageCopy const& copy)
{
    static constexpr std::uint32_t kColourBits = 0xFFFFFF;
    CRect from;
    CRect to;
    if (!LimitToSource(copy, from, to))
        return {};
    PagePicture picture { Raster(from.Width(), from.Height(), 24), {}, to };
    std::uint32_t const inverse = copy.operation == NOTSRCCOPY ? kColourBits : 0;
    std::uint32_t const zero = Raster::FromColour(copy.zeroColour);
    std::uint32_t const one = Raster::FromColour(copy.oneColour);
    bool const mono = copy.source->BitsPerPixel() == 1;
    for (int y = 0; y < from.Height(); ++y) {
        std::uint32_t const* const source = copy.source->Row(from.top + y) + from.left;
        std::transform(source, source + from.Width(), picture.pixels.Row(y), [&](std::uint32_t pixel) {
            std::uint32_t const colour = pixel & kColourBits;
            return (mono ? (colour ? one : zero) : colour) ^ inverse;
        });
    }
    if (copy.operation == SRCAND)
        picture.transparent = RGB(255, 255, 255);
    else if (copy.operation == SRCPAINT || copy.operation == SRCINVERT)
        picture.transparent = RGB(0, 0, 0);
    return picture;
}

} // namespace ombrel
