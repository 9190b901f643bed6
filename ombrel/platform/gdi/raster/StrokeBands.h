#pragma once
#include "ombrel/platform/gdi/geometry/DashPattern.h"
#include "ombrel/platform/gdi/raster/CoverageMask.h"

#include <cmath>

namespace ombrel {

/// A point or direction along a mask's axes: u counts its lines, v runs along them.
struct MaskPoint {
    double u = 0.0;
    double v = 0.0;
};

/// The origin of a mask that something beginning at this point is drawn on: the point itself, unless it is so far away
/// that pixels counted from there on would lie beyond the limit of coordinates.
inline CPoint OriginFor(CPoint begin)
{
    constexpr int kFar = kCoordinateLimit / 2;
    return std::abs(begin.x) < kFar && std::abs(begin.y) < kFar ? begin : CPoint();
}

/// One straight piece of a figure.
struct StrokeSegment {
    MaskPoint start;
    /// From start to end; not zero.
    MaskPoint delta;
    double length = 0.0;
    /// The distance of the start from the figure's first point.
    double phase = 0.0;
    /// How far a dash that runs over the start or the end is drawn beyond it.
    double startReach = 0.0;
    double endReach = 0.0;

    MaskPoint Direction() const { return { delta.u / length, delta.v / length }; }
};

/// The positions between which a segment with its reaches and half its width lies, limited to the mask.
inline void LimitAlong(CoverageMask const& mask, StrokeSegment const& segment, double halfWidth, int& first, int& last)
{
    double const reach = halfWidth + std::max(segment.startReach, segment.endReach) + 2.0;
    double const end = segment.start.v + segment.delta.v;
    first = std::max(mask.VBegin(), CeilToInt(std::min(segment.start.v, end) - reach));
    last = std::min(mask.VEnd(), CeilToInt(std::max(segment.start.v, end) + reach));
}

/// Calls each(from, to) for the dashes that meet the distances low … high from the segment's start.
template <typename Each>
void ForEachDash(StrokeSegment const& segment, DashPattern const& pattern, double low, double high, Each&& each)
{
    double const end = segment.length + segment.endReach;
    if (pattern.IsSolid()) {
        each(-segment.startReach, end);
        return;
    }
    double const period = pattern.Period();
    double const first = segment.phase + std::clamp(low, 0.0, segment.length);
    double const last = segment.phase + std::clamp(high, 0.0, segment.length);
    std::vector<double> const& ends = pattern.Ends();
    for (double base = std::floor(first / period) * period; base <= last; base += period) {
        for (std::size_t i = 0; i < ends.size(); i += 2) {
            double const from = base + (i == 0 ? 0.0 : ends[i - 1]) - segment.phase;
            double const to = base + ends[i] - segment.phase;
            if (to > 0.0 && from < segment.length && to > from)
                each(from <= 0.0 ? -segment.startReach : from, to >= segment.length ? end : to);
        }
    }
}

class DashStrip;

/// Covers the pixels of a segment's dashes: bands with flat ends that take in their left and top edges, not their right
/// and bottom ones.
/// strip is working memory, kept from one segment to the next.
void CoverBand(
    CoverageMask& mask, StrokeSegment const& segment, double halfWidth, DashPattern const& pattern, DashStrip& strip);

/// Covers the outer corner where two bands meet: a mitre, or where that would be long, the bevel.
/// The directions are of length 1.
void CoverCorner(CoverageMask& mask, MaskPoint corner, MaskPoint before, MaskPoint after, double halfWidth);

/// As CoverBand, but each pixel as far as it lies inside the band; overlapping bands keep the larger coverage.
void SmoothBand(
    CoverageMask& mask, StrokeSegment const& segment, double halfWidth, DashPattern const& pattern, DashStrip& strip);

/// How far beyond a corner smoothed bands are drawn so that they meet there.
double SmoothReach(MaskPoint before, MaskPoint after, double halfWidth);

/// The mitre of a sharp smoothed corner; obtuse ones need none, since bands drawn beyond the corner form it.
void SmoothCorner(CoverageMask& mask, MaskPoint corner, MaskPoint before, MaskPoint after, double halfWidth);

} // namespace ombrel
