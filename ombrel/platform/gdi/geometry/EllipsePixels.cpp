#include "ombrel/platform/gdi/geometry/EllipsePixels.h"

#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>

namespace ombrel {

namespace {

/// A quarter of the outline, from the leftmost pixels down to the lowest, relative to the box's corner.
std::vector<CPoint> LowerLeftQuarter(long long a, long long b)
{
    // Positive outside the ellipse through the centres of the outermost pixels.
    auto const outside = [a, b](long long x, long long y) {
        long long const across = b * (2 * x - a);
        long long const down = a * (2 * y - b);
        return across * across + down * down - a * b * (a * b);
    };
    std::vector<CPoint> quarter;
    long long x = 0;
    long long y = (b + 1) / 2;
    while (x <= a - x) {
        quarter.push_back({ static_cast<int>(x), static_cast<int>(y) });
        long long const diagonal = outside(x + 1, y + 1);
        bool const stepAcross = outside(x, y + 1) + diagonal >= 0;
        bool const stepDown = outside(x + 1, y) + diagonal <= 0;
        x += stepAcross ? 1 : 0;
        y += stepDown ? 1 : 0;
        if (!stepAcross && !stepDown)
            break;
    }
    return quarter;
}

void AddOnce(std::vector<CPoint>& outline, CPoint p)
{
    if (outline.empty() || !(outline.back() == p))
        outline.push_back(p);
}

/// Every pixel of a box of at most two columns or rows, counter-clockwise from the left top.
std::vector<CPoint> ThinBox(int a, int b)
{
    std::vector<CPoint> outline;
    for (int y = 0; y <= b; ++y)
        outline.push_back({ 0, y });
    for (int x = 1; x <= a; ++x)
        outline.push_back({ x, b });
    if (a > 0) {
        for (int y = b - 1; y >= 0; --y)
            outline.push_back({ a, y });
    }
    if (b > 0) {
        for (int x = a - 1; x > 0; --x)
            outline.push_back({ x, 0 });
    }
    return outline;
}

/// A direction seen from the centre of a box, in half pixels.
struct Direction {
    long long x;
    long long y;
};

/// The half turn a direction lies in, counted counter-clockwise from (including) straight left.
int HalfTurn(Direction d) { return d.y > 0 || (d.y == 0 && d.x < 0) ? 0 : 1; }

/// Counter-clockwise on the screen from a to b: positive when b lies ahead within half a turn.
long long Turn(Direction a, Direction b) { return a.y * b.x - a.x * b.y; }

/// Whether b comes after a going counter-clockwise from straight left; no direction comes after itself.
bool ComesAfter(Direction b, Direction a)
{
    if (HalfTurn(a) != HalfTurn(b))
        return HalfTurn(a) < HalfTurn(b);
    return Turn(a, b) > 0;
}

} // namespace

std::vector<CPoint> EllipseOutline(CRect const& box)
{
    int const a = box.Width() - 1;
    int const b = box.Height() - 1;
    std::vector<CPoint> outline;
    if (a < 0 || b < 0 || (a == 0 && b == 0))
        return outline;
    if (a <= 1 || b <= 1) {
        outline = ThinBox(a, b);
    } else {
        std::vector<CPoint> const quarter = LowerLeftQuarter(a, b);
        outline.reserve(4 * quarter.size());
        for (CPoint const& p : quarter)
            AddOnce(outline, p);
        for (std::size_t i = quarter.size(); i-- > 0;)
            AddOnce(outline, { a - quarter[i].x, quarter[i].y });
        for (CPoint const& p : quarter)
            AddOnce(outline, { a - p.x, b - p.y });
        for (std::size_t i = quarter.size(); i-- > 0;)
            AddOnce(outline, { quarter[i].x, b - quarter[i].y });
        while (outline.size() > 1 && outline.back() == outline.front())
            outline.pop_back();
    }
    for (CPoint& p : outline)
        p.Offset(box.left, box.top);
    return outline;
}

std::vector<EllipseRow> EllipseRows(CRect const& box, std::span<CPoint const> outline)
{
    std::vector<EllipseRow> rows(static_cast<std::size_t>(std::max(0, box.Height())), { box.right, box.left - 1 });
    for (CPoint const& p : outline) {
        EllipseRow& row = rows[static_cast<std::size_t>(p.y - box.top)];
        row = { std::min(row.left, p.x), std::max(row.right, p.x) };
    }
    return rows;
}

std::vector<CPoint> ArcPixels(CRect const& box, CPoint start, CPoint end)
{
    std::vector<CPoint> outline = EllipseOutline(box);
    if (outline.empty())
        return outline;
    // Corners of the box and centres of its pixels, both seen from the centre.
    auto const radial = [&box](CPoint p) {
        return Direction { 2LL * p.x - box.left - box.right, 2LL * p.y - box.top - box.bottom };
    };
    auto const pixel = [&box](CPoint p) {
        return Direction { 2LL * p.x + 1 - box.left - box.right, 2LL * p.y + 1 - box.top - box.bottom };
    };
    // The first pixel past the radial; one exactly on it counts as past in the upper half.
    auto const firstPast = [&](Direction d) {
        std::size_t best = 0;
        bool found = false;
        for (std::size_t i = 0; i < outline.size() && !found; ++i) {
            Direction const p = pixel(outline[i]);
            bool const isOn = HalfTurn(p) == HalfTurn(d) && Turn(d, p) == 0;
            if (isOn ? d.y < 0 : ComesAfter(p, d)) {
                best = i;
                found = true;
            }
        }
        return best;
    };
    std::size_t const begin = firstPast(radial(start));
    std::size_t const count = outline.size();
    std::size_t const length = (firstPast(radial(end)) + count - begin) % count;
    std::rotate(outline.begin(), outline.begin() + static_cast<std::ptrdiff_t>(begin), outline.end());
    outline.resize(length == 0 ? count - 1 : length - 1);
    return outline;
}

} // namespace ombrel
