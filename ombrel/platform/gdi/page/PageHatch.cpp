#include "ombrel/platform/gdi/page/PageHatch.h"

#include "ombrel/platform/gdi/Surface.h"
#include "ombrel/platform/gdi/geometry/HatchPatterns.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace ombrel {

namespace {

/// Bands from the upper left to the lower right, one through the square's corner and others at a distance along the
/// axes that divides a cell's side; half is half a band's extent along an axis.
void AddDiagonals(std::vector<HatchCorners>& lines, int cells, bool mirrored, int distance, double half)
{
    double const side = 8.0 * cells;
    int const count = 8 * cells / distance;
    // The line y = x + shift from where it enters the square to where it leaves it.
    auto const enter = [](double shift) { return HatchCorner { std::max(0.0, -shift), std::max(0.0, shift) }; };
    auto const leave = [side](double shift) {
        return HatchCorner { std::min(side, side - shift), std::min(side, side + shift) };
    };
    for (int diagonal = -count; diagonal <= count; ++diagonal) {
        double const shift = static_cast<double>(distance) * diagonal;
        double const above = std::clamp(shift - half, -side, side);
        double const below = std::clamp(shift + half, -side, side);
        HatchCorners band { enter(above), leave(above), leave(below), enter(below) };
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
void AddRuns(std::vector<HatchCorners>& lines, std::array<std::uint8_t, 8> const& rows, int cells)
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

std::vector<HatchCorners> HatchLines(int style, int cells)
{
    static constexpr int kHorizontal = 0;
    static constexpr int kVertical = 1;
    static constexpr int kForwardDiagonal = 2;
    static constexpr int kBackwardDiagonal = 3;
    static constexpr int kCross = 4;
    static constexpr int kDiagonalCross = 5;
    static constexpr int kLightDownward = 18;
    static constexpr int kLightUpward = 19;
    // One pixel thick; the light ones cover as much as the pixel of each row that they stand for.
    static constexpr double kThick = 0.5 * std::numbers::sqrt2;
    static constexpr double kThin = 0.5;
    std::vector<HatchCorners> lines;
    if (style == kForwardDiagonal || style == kDiagonalCross)
        AddDiagonals(lines, cells, false, 8, kThick);
    if (style == kBackwardDiagonal || style == kDiagonalCross)
        AddDiagonals(lines, cells, true, 8, kThick);
    if (style == kLightDownward || style == kLightUpward)
        AddDiagonals(lines, cells, style == kLightUpward, 4, kThin);
    if (style == kCross)
        for (int const part : { kHorizontal, kVertical })
            AddRuns(lines, HatchPattern(part), cells);
    if (lines.empty())
        AddRuns(lines, HatchPattern(style), cells);
    return lines;
}

bool HasLongLines(int style)
{
    static auto const kLong = [] {
        std::array<bool, kHatchStyles> isLong {};
        // Twice the side has at most twice the lines, not four times; a diagonal runs through the corner.
        for (int s = 0; s < kHatchStyles; ++s)
            isLong[static_cast<std::size_t>(s)] = HatchLines(s, 8).size() <= 2 * HatchLines(s, 4).size();
        return isLong;
    }();
    return kLong[static_cast<std::size_t>(style)];
}

std::vector<HatchCorners> HatchLinesOver(int style, CRect const& box, double scale)
{
    double const cell = kHatchSide * scale;
    double const left = std::floor(box.left / cell);
    double const top = std::floor(box.top / cell);
    double const cells = std::max(std::ceil(box.right / cell) - left, std::ceil(box.bottom / cell) - top);
    std::vector<HatchCorners> lines = HatchLines(style, static_cast<int>(cells));
    for (HatchCorners& line : lines)
        for (HatchCorner& corner : line)
            corner = { left * cell + corner.x * scale, top * cell + corner.y * scale };
    // The square reaches beyond the box to one side.
    std::erase_if(lines, [&box](HatchCorners const& line) {
        auto const beyond = [&line](auto const& isOutside) { return std::all_of(line.begin(), line.end(), isOutside); };
        return beyond([&box](HatchCorner const& c) { return c.x >= box.right; })
            || beyond([&box](HatchCorner const& c) { return c.y >= box.bottom; });
    });
    return lines;
}

} // namespace ombrel
