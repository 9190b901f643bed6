#include "ombrel/platform/gdi/raster/StrokeBands.h"

#include "ombrel/platform/gdi/raster/DashStrip.h"
#include "ombrel/platform/gdi/raster/StrokeCorner.h"

#include <limits>
#include <span>

namespace ombrel {

namespace {

/// Where a mask line lies within the band alone, whatever its ends.
struct LineRange {
    double low;
    double high;
};

/// The dashes of a band that runs straight across the mask's lines: each line lies in one or in none.
void CoverAcross(CoverageMask& mask, StrokeSegment const& segment, double halfWidth, DashPattern const& pattern)
{
    int const v0 = CeilToInt(segment.start.v - halfWidth);
    int const v1 = CeilToInt(segment.start.v + halfWidth);
    bool const forwards = segment.delta.u > 0;
    double const end = segment.start.u + segment.delta.u;
    int const first = std::max(mask.UBegin(), CeilToInt(std::min(segment.start.u, end)));
    int const last = std::min(mask.UEnd(), CeilToInt(std::max(segment.start.u, end)));
    // Drawn backwards, a dash takes in its far edge instead of its near one.
    double const nudge = forwards ? 0.0 : -1e-6;
    for (int u = first; u < last; ++u) {
        if (pattern.IsOn(segment.phase + std::abs(u - segment.start.u) + nudge))
            mask.FillRun(u, v0, v1);
    }
}

/// Fills a convex polygon: on each mask line from where the edges cross it to where they cross it again.
void CoverConvex(CoverageMask& mask, std::span<MaskPoint const> points)
{
    double low = points[0].u;
    double high = points[0].u;
    for (MaskPoint const& p : points) {
        low = std::min(low, p.u);
        high = std::max(high, p.u);
    }
    int const last = std::min(mask.UEnd(), CeilToInt(high));
    for (int u = std::max(mask.UBegin(), CeilToInt(low)); u < last; ++u) {
        double from = std::numeric_limits<double>::infinity();
        double to = -from;
        for (std::size_t i = 0; i < points.size(); ++i) {
            MaskPoint const a = points[i];
            MaskPoint const b = points[(i + 1) % points.size()];
            if ((a.u <= u) == (b.u <= u))
                continue;
            double const v = a.v + (u - a.u) * (b.v - a.v) / (b.u - a.u);
            from = std::min(from, v);
            to = std::max(to, v);
        }
        mask.FillRun(u, CeilToInt(from), CeilToInt(to));
    }
}

/// Covers the positions of a line that the strip covers.
void CoverStrip(CoverageMask& mask, DashStrip const& strip, int u, int from, int to)
{
    if (from >= to)
        return;
    std::uint8_t* const pixels = mask.Touch(u, from, to);
    std::uint8_t const* const covered = strip.At(from);
    for (std::ptrdiff_t i = 0; i < to - from; ++i)
        pixels[i] |= covered[i];
}

} // namespace

void CoverBand(
    CoverageMask& mask, StrokeSegment const& segment, double halfWidth, DashPattern const& pattern, DashStrip& strip)
{
    MaskPoint const start = segment.start;
    MaskPoint const delta = segment.delta;
    if (delta.v == 0.0) {
        CoverAcross(mask, segment, halfWidth, pattern);
        return;
    }
    double const sideways = halfWidth * std::abs(delta.v) / segment.length;
    double const uEnd = start.u + delta.u;
    int const first = std::max(mask.UBegin(), CeilToInt(std::min(start.u, uEnd) - sideways));
    int const last = std::min(mask.UEnd(), CeilToInt(std::max(start.u, uEnd) + sideways));
    double const slope = delta.u == 0.0 ? 0.0 : delta.v / delta.u;
    double const half = delta.u == 0.0 ? 0.0 : halfWidth * segment.length / std::abs(delta.u);
    double const endSlope = delta.u / delta.v;
    double const perDistance = segment.length / delta.v;
    int vFirst = 0;
    int vLast = 0;
    LimitAlong(mask, segment, halfWidth, vFirst, vLast);
    bool const hasStrip = DashStrip::Fits(segment, pattern, halfWidth) && vFirst < vLast && first < last;
    if (hasStrip)
        strip.Build(segment, pattern, vFirst, vLast, false);
    for (int u = first; u < last; ++u) {
        LineRange inside { static_cast<double>(mask.VBegin()) - 1.0, static_cast<double>(mask.VEnd()) };
        if (delta.u != 0.0) {
            double const centre = start.v + (u - start.u) * slope;
            inside = { std::max(inside.low, centre - half), std::min(inside.high, centre + half) };
        }
        if (inside.low >= inside.high)
            continue;
        if (hasStrip) {
            CoverStrip(
                mask, strip, u, std::max(vFirst, CeilToInt(inside.low)), std::min(vLast, CeilToInt(inside.high)));
            continue;
        }
        // The band's flat ends cross this line at origin + distance · perDistance.
        double const origin = start.v - (u - start.u) * endSlope;
        double const a = (inside.low - origin) / perDistance;
        double const b = (inside.high - origin) / perDistance;
        ForEachDash(segment, pattern, std::min(a, b), std::max(a, b), [&](double from, double to) {
            double const p = origin + from * perDistance;
            double const q = origin + to * perDistance;
            mask.FillRun(
                u, CeilToInt(std::max(inside.low, std::min(p, q))), CeilToInt(std::min(inside.high, std::max(p, q))));
        });
    }
}

void CoverCorner(CoverageMask& mask, MaskPoint corner, MaskPoint before, MaskPoint after, double halfWidth)
{
    StrokeCorner const c = MakeCorner(corner, before, after, halfWidth);
    if (c.kind == StrokeCorner::Kind::Mitre) {
        MaskPoint const points[] { corner, c.outerBefore, c.tip, c.outerAfter };
        CoverConvex(mask, points);
    } else if (c.kind == StrokeCorner::Kind::Bevel) {
        MaskPoint const points[] { corner, c.outerBefore, c.outerAfter };
        CoverConvex(mask, points);
    }
}

} // namespace ombrel
