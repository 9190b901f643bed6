#include "ombrel/platform/gdi/page/PageHatch.h"

#include "ombrel/platform/gdi/geometry/HatchPatterns.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ombrel {

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

} // namespace ombrel
