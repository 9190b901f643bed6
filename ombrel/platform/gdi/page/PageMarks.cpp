#include "ombrel/platform/gdi/page/PageMarks.h"

#include "ombrel/platform/gdi/Coordinates.h"
#include "ombrel/platform/gdi/marks/MarkPlanes.h"

#include <algorithm>
#include <numeric>
#include <tuple>

namespace ombrel {

namespace {

/// Around the points; at least one.
CRect BoxOf(std::span<CPoint const> points)
{
    CRect box(points.front(), CSize(1, 1));
    for (CPoint const& p : points)
        box = { std::min(box.left, p.x), std::min(box.top, p.y), std::max(box.right, p.x + 1),
            std::max(box.bottom, p.y + 1) };
    return box;
}

/// Whether each of the points is the last one at its place.
std::vector<bool> AreLast(std::span<CPoint const> points)
{
    std::vector<bool> last(points.size());
    CRect const box = points.empty() ? CRect() : BoxOf(points);
    static constexpr std::int64_t kMostPlaces = 1 << 28;
    if (std::int64_t { box.Width() } * box.Height() <= kMostPlaces) {
        SeenPlaces seen(box);
        for (std::size_t i = points.size(); i-- > 0;)
            last[i] = seen.Add(points[i]);
        return last;
    }
    std::vector<std::size_t> order(points.size());
    std::iota(order.begin(), order.end(), std::size_t { 0 });
    std::sort(order.begin(), order.end(), [points](std::size_t a, std::size_t b) {
        return std::tie(points[a].y, points[a].x, a) < std::tie(points[b].y, points[b].x, b);
    });
    for (std::size_t i = 0; i < order.size(); ++i)
        last[order[i]] = i + 1 == order.size() || !(points[order[i]] == points[order[i + 1]]);
    return last;
}

/// Of the mark's box with a pixel more on each side.
CSize SizeWithRim(MarkPicture const& mark) { return { mark.box.Width() + 2, mark.box.Height() + 2 }; }

/// The mark's pixels with their neighbours, or those whose neighbours are all the mark's.
MarkBits<1> Widened(MarkPicture const& mark)
{
    MarkBits<1> bits(SizeWithRim(mark));
    for (int y = 0; y < mark.box.Height(); ++y)
        for (int x = 0; x < mark.box.Width(); ++x)
            for (int i = 0; i < 9 && mark.Has(mark.box.TopLeft() + CPoint(x, y)); ++i)
                bits.Set(x + i % 3, y + i / 3, 0);
    return bits;
}

MarkBits<1> Narrowed(MarkPicture const& mark)
{
    MarkBits<1> bits(SizeWithRim(mark));
    for (int y = 0; y < mark.box.Height(); ++y)
        for (int x = 0; x < mark.box.Width(); ++x) {
            bool inner = true;
            for (int i = 0; i < 9 && inner; ++i)
                inner = mark.Has(mark.box.TopLeft() + CPoint(x + i % 3 - 1, y + i / 3 - 1));
            if (inner)
                bits.Set(x + 1, y + 1, 0);
        }
    return bits;
}

template <std::size_t Colours>
MarkImage DrawColours(MarkPicture const& mark, std::span<CPoint const> points, CRect const& corners)
{
    MarkBits<Colours> const bits = BitsOf<Colours>(mark);
    MarkPlanes<Colours> planes(corners, mark.box.Size());
    for (std::size_t i = points.size(); i-- > 0;) {
        CPoint const corner = MovePoint(points[i], mark.box.TopLeft());
        if (corners.PtInRect(corner))
            planes.AddUnderMany(bits, corner);
    }
    MarkImage image { planes.Box(), planes.RowWords(), {} };
    for (std::size_t c = 0; c < Colours; ++c) {
        std::vector<std::uint64_t> words(planes.Words().size());
        std::transform(planes.Words().begin(), planes.Words().end(), words.begin(),
            [c](PlaneWord<Colours> const& word) { return word[c]; });
        image.layers.push_back({ Raster::ToColour(mark.colours[c]), std::move(words) });
    }
    return image;
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

std::optional<std::vector<RecordedPrimitive>> WithPageLines(std::span<RecordedPrimitive const> mark, int thinWidth)
{
    bool dashed = false;
    auto const widen = [&](LineStyle& line) {
        if (line.width > 1 || line.style == PS_NULL)
            return;
        dashed = dashed || line.style != PS_SOLID;
        line.width = thinWidth;
    };
    std::vector<RecordedPrimitive> lines(mark.begin(), mark.end());
    for (RecordedPrimitive& p : lines) {
        if (auto* const polyline = std::get_if<primitive::Polyline>(&p.what))
            widen(polyline->line);
        else if (auto* const arc = std::get_if<primitive::Arc>(&p.what))
            widen(arc->line);
        else if (auto* const ellipse = std::get_if<primitive::Ellipse>(&p.what); ellipse && ellipse->line)
            widen(*ellipse->line);
    }
    return dashed ? std::nullopt : std::optional(std::move(lines));
}

std::vector<CPoint> LastOfEach(std::span<CPoint const> points)
{
    std::vector<bool> const areLast = AreLast(points);
    std::vector<CPoint> last;
    for (std::size_t i = 0; i < points.size(); ++i)
        if (areLast[i])
            last.push_back(points[i]);
    return last;
}

std::optional<std::vector<CPoint>> WithoutCovered(
    MarkPicture const& mark, std::span<CPoint const> points, std::size_t most)
{
    if (points.empty())
        return std::vector<CPoint>();
    // A shape covers the pixels that it touches only in part: what hides must lie within, what is hidden may reach out.
    MarkBits<1> const reached = Widened(mark);
    MarkBits<1> const covered = Narrowed(mark);
    CRect const box = BoxOf(points);
    MarkPlanes<1> planes(box, SizeWithRim(mark));
    std::vector<CPoint> shown;
    for (std::size_t i = points.size(); i-- > 0;) {
        std::uint64_t open = 0;
        planes.Lay(reached, points[i], [&open](auto& plane, auto const& bits) { open |= bits[0] & ~plane[0]; });
        if (open == 0)
            continue;
        if (shown.size() == most)
            return {};
        shown.push_back(points[i]);
        planes.Lay(covered, points[i], [](auto& plane, auto const& bits) { plane[0] |= bits[0]; });
    }
    std::reverse(shown.begin(), shown.end());
    return shown;
}

MarkImage DrawMarkImage(MarkPicture const& mark, std::span<CPoint const> points, CRect const& visible)
{
    CRect const corners = VisibleCorners(visible, mark.box, points);
    return mark.colours.size() == 1 ? DrawColours<1>(mark, points, corners) : DrawColours<2>(mark, points, corners);
}

} // namespace ombrel
