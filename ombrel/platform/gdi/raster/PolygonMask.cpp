#include "ombrel/platform/gdi/raster/PolygonMask.h"

#include "ombrel/platform/gdi/Coordinates.h"

#include <cstdlib>

namespace ombrel {

namespace {

/// Crossings on an average row from which on ordering them takes longer than the mask.
constexpr long long kCrowdedRow = 24;

/// Turns the pixels of a column over, from row `from` up to, not including, row `to`.
void ToggleRun(CoverageMask& mask, int x, long long from, long long to)
{
    int const low = static_cast<int>(std::max<long long>(from, mask.VBegin()));
    int const high = static_cast<int>(std::min<long long>(to, mask.VEnd()));
    if (low >= high || x >= mask.UEnd())
        return;
    std::uint8_t* const pixels = mask.Touch(std::max(x, mask.UBegin()), low, high);
    for (std::ptrdiff_t i = 0; i < high - low; ++i)
        pixels[i] = static_cast<std::uint8_t>(~pixels[i]);
}

/// Marks, on every row that an edge crosses, the first pixel at or right of the crossing.
void ToggleEdge(CoverageMask& mask, CPoint a, CPoint b)
{
    if (a.y > b.y)
        std::swap(a, b);
    long long const first = std::max(a.y, mask.VBegin());
    long long const last = std::min(b.y, mask.VEnd());
    if (first >= last)
        return;
    long long const dx = static_cast<long long>(b.x) - a.x;
    long long const dy = static_cast<long long>(b.y) - a.y;
    auto const crossing = [&](long long y) { return static_cast<int>(a.x - FloorDivide(-(y - a.y) * dx, dy)); };
    if (std::abs(dx) > dy) {
        for (long long y = first; y < last; ++y)
            ToggleRun(mask, crossing(y), y, y + 1);
        return;
    }
    // Rows with the same crossing together.
    for (long long y = first; y < last;) {
        int const x = crossing(y);
        long long next = last;
        if (x < mask.UBegin() && dx > 0)
            next = a.y + FloorDivide((mask.UBegin() - static_cast<long long>(a.x)) * dy, dx) + 1;
        else if (x >= mask.UEnd() && dx > 0)
            return;
        else if (dx > 0)
            next = a.y + FloorDivide((x - static_cast<long long>(a.x)) * dy, dx) + 1;
        else if (dx < 0)
            next = a.y - FloorDivide((x - 1 - static_cast<long long>(a.x)) * dy, -dx);
        next = std::clamp(next, y + 1, last);
        ToggleRun(mask, x, y, next);
        y = next;
    }
}

} // namespace

bool IsCrowdedPolygon(std::span<CPoint const> points, CRect const& box)
{
    if (points.size() < static_cast<std::size_t>(kCrowdedRow))
        return false;
    long long crossings = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        crossings += std::abs(
            std::clamp(points[i].y, box.top, box.bottom) - std::clamp(points[i - 1].y, box.top, box.bottom));
    return crossings > kCrowdedRow * box.Height();
}

void CoverPolygon(CoverageMask& mask, std::span<CPoint const> points, CRect const& box)
{
    mask.Begin(box, CoverageMask::Lines::Columns);
    for (std::size_t i = 0; i < points.size(); ++i)
        ToggleEdge(mask, ClampPoint(points[i]), ClampPoint(points[i + 1 < points.size() ? i + 1 : 0]));
    // A pixel is inside when the crossings up to it are odd.
    auto const height = static_cast<std::ptrdiff_t>(mask.VEnd() - mask.VBegin());
    for (int u = mask.UBegin() + 1; u < mask.UEnd(); ++u) {
        std::uint8_t const* const before = mask.Touch(u - 1, mask.VBegin(), mask.VEnd());
        std::uint8_t* const pixels = mask.Touch(u, mask.VBegin(), mask.VEnd());
        for (std::ptrdiff_t i = 0; i < height; ++i)
            pixels[i] ^= before[i];
    }
}

} // namespace ombrel
