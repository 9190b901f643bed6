#include "ombrel/platform/gdi/raster/StrokeBands.h"

#include "ombrel/platform/gdi/raster/DashStrip.h"
#include "ombrel/platform/gdi/raster/StrokeCorner.h"

#include <array>

namespace ombrel {

namespace {

// A pixel's coverage is taken across the band where it runs through the pixel's middle, as the mean of two such
// measures a quarter of a pixel before and behind, and along the band at its ends.

std::uint8_t ToByte(float coverage) { return static_cast<std::uint8_t>(coverage * 255.0F + 0.5F); }

float Limit(float coverage)
{
    float const low = coverage > 0.0F ? coverage : 0.0F;
    return low < 1.0F ? low : 1.0F;
}

/// The coverage across a band: reach is half its width and half a pixel, distance the pixel's from its middle.
struct Profile {
    float reach;
    /// How far the middle moves in a quarter of a pixel along the band.
    float quarter;
    float At(float distance) const
    {
        float const ahead = Limit(reach - std::abs(distance + quarter));
        float const behind = Limit(reach - std::abs(distance - quarter));
        return 0.5F * (ahead + behind);
    }
    float Outside() const { return reach + std::abs(quarter); }
};

void Raise(std::uint8_t& pixel, float coverage) { pixel = std::max(pixel, ToByte(coverage)); }

/// Raises pixels whose distance from the middle of the band changes by slope from one to the next.
void RaiseRun(std::uint8_t* pixels, int count, float distance, float slope, Profile profile)
{
    if (slope == 0.0F) {
        std::uint8_t const value = ToByte(profile.At(distance));
        if (value == 255) {
            std::fill_n(pixels, count, value);
            return;
        }
        for (int i = 0; i < count; ++i)
            pixels[i] = std::max(pixels[i], value);
        return;
    }
    for (int i = 0; i < count; ++i) {
        float const coverage = profile.At(distance + slope * static_cast<float>(i));
        auto const value = static_cast<std::uint8_t>(static_cast<int>(coverage * 255.0F + 0.5F));
        pixels[i] = std::max(pixels[i], value);
    }
}

/// As RaiseRun, only as far as the strip covers each pixel.
void RaiseStrip(
    std::uint8_t* pixels, std::uint8_t const* strip, int count, float distance, float slope, Profile profile)
{
    if (slope == 0.0F) {
        int const value = ToByte(profile.At(distance));
        for (int i = 0; i < count; ++i)
            pixels[i] = std::max(pixels[i], static_cast<std::uint8_t>((value * strip[i] + 255) >> 8));
        return;
    }
    for (int i = 0; i < count; ++i) {
        float const coverage = profile.At(distance + slope * static_cast<float>(i));
        int const value = static_cast<int>(coverage * 255.0F + 0.5F);
        pixels[i] = std::max(pixels[i], static_cast<std::uint8_t>((value * strip[i] + 255) >> 8));
    }
}

/// Length that the pixel at x shares with low … high.
double Overlap(int x, double low, double high)
{
    return std::max(0.0, std::min(x + 0.5, high) - std::max(x - 0.5, low));
}

/// The part of a mask line that a steep band covers at full length, and its pixels at the ends.
class SteepLine {
public:
    SteepLine(CoverageMask& mask, int u, Profile const& profile, double distanceAtZero, double slope)
        : m_mask(mask)
        , m_u(u)
        , m_profile(profile)
        , m_distanceAtZero(distanceAtZero)
        , m_slope(slope)
    {
    }
    /// One dash between two positions along the line; only the pixels first ≤ v < last.
    void Raise(double low, double high, int first, int last) const
    {
        int const fullFrom = std::max(first, CeilToInt(low + 0.5));
        int const fullTo = std::min(last, CeilToInt(high + 0.5) - 1);
        if (fullFrom >= fullTo) {
            for (int v = std::max(first, CeilToInt(low - 0.5)); v < std::min(last, CeilToInt(high + 0.5)); ++v)
                RaiseOne(v, Overlap(v, low, high));
            return;
        }
        RaiseRun(m_mask.Touch(m_u, fullFrom, fullTo), fullTo - fullFrom, DistanceAt(fullFrom),
            static_cast<float>(m_slope), m_profile);
        if (fullFrom > first)
            RaiseOne(fullFrom - 1, Overlap(fullFrom - 1, low, high));
        if (fullTo < last)
            RaiseOne(fullTo, Overlap(fullTo, low, high));
    }

private:
    float DistanceAt(int v) const { return static_cast<float>(m_distanceAtZero + m_slope * v); }
    void RaiseOne(int v, double share) const
    {
        if (share > 0.0)
            ombrel::Raise(*m_mask.Touch(m_u, v, v + 1), m_profile.At(DistanceAt(v)) * static_cast<float>(share));
    }
    CoverageMask& m_mask;
    int m_u;
    Profile m_profile;
    double m_distanceAtZero;
    double m_slope;
};

/// A band that runs mostly along the mask's lines.
void SmoothSteep(
    CoverageMask& mask, StrokeSegment const& segment, double halfWidth, DashPattern const& pattern, DashStrip& strip)
{
    MaskPoint const start = segment.start;
    double const slope = segment.delta.u / segment.delta.v;
    double const perDistance = segment.length / segment.delta.v;
    Profile const profile { static_cast<float>(halfWidth * std::abs(perDistance) + 0.5),
        static_cast<float>(0.25 * slope) };
    double const outside = static_cast<double>(profile.Outside());
    auto const uAt = [&](double distance) { return start.u + distance * segment.delta.u / segment.length; };
    double const uFirst = uAt(-segment.startReach);
    double const uLast = uAt(segment.length + segment.endReach);
    // The ends are square to the band: their corners lie farther out than their middle.
    double const corner = outside + halfWidth * std::abs(slope);
    int const first = std::max(mask.UBegin(), CeilToInt(std::min(uFirst, uLast) - corner));
    int const last = std::min(mask.UEnd(), CeilToInt(std::max(uFirst, uLast) + corner));
    int begin = 0;
    int end = 0;
    LimitAlong(mask, segment, halfWidth, begin, end);
    bool const hasStrip = DashStrip::Fits(segment, pattern, halfWidth) && begin < end && first < last;
    if (hasStrip)
        strip.Build(segment, pattern, begin, end, true);
    for (int u = first; u < last; ++u) {
        double low = begin;
        double high = end;
        if (slope != 0.0) {
            double const middle = start.v + (u - start.u) / slope;
            double const half = outside / std::abs(slope);
            low = std::max(low, middle - half);
            high = std::min(high, middle + half);
        } else if (std::abs(u - start.u) >= outside) {
            continue;
        }
        int const vFirst = CeilToInt(low);
        int const vLast = CeilToInt(high);
        if (vFirst >= vLast)
            continue;
        if (hasStrip) {
            RaiseStrip(mask.Touch(u, vFirst, vLast), strip.At(vFirst), vLast - vFirst,
                static_cast<float>(start.u + slope * (vFirst - start.v) - u), static_cast<float>(slope), profile);
            continue;
        }
        SteepLine const line(mask, u, profile, start.u - slope * start.v - u, slope);
        double const origin = start.v - (u - start.u) * slope;
        double const a = (low - 1.0 - origin) / perDistance;
        double const b = (high + 1.0 - origin) / perDistance;
        ForEachDash(segment, pattern, std::min(a, b), std::max(a, b), [&](double from, double to) {
            double const p = origin + from * perDistance;
            double const q = origin + to * perDistance;
            line.Raise(std::min(p, q), std::max(p, q), vFirst, vLast);
        });
    }
}

/// One dash of a band that runs mostly across the mask's lines.
void SmoothFlatDash(CoverageMask& mask, StrokeSegment const& segment, double halfWidth, double from, double to)
{
    MaskPoint const start = segment.start;
    double const slope = segment.delta.v / segment.delta.u;
    double const perDistance = segment.length / segment.delta.u;
    Profile const profile { static_cast<float>(halfWidth * std::abs(perDistance) + 0.5),
        static_cast<float>(0.25 * slope) };
    double const outside = static_cast<double>(profile.Outside());
    // Where the dash's ends cross the middle of the band, and how far they lean.
    double const lean = halfWidth * std::abs(segment.delta.v) / segment.length;
    double const uMiddle[] { start.u + from * segment.delta.u / segment.length,
        start.u + to * segment.delta.u / segment.length };
    double const uLow = std::min(uMiddle[0], uMiddle[1]);
    double const uHigh = std::max(uMiddle[0], uMiddle[1]);
    double const margin = lean + 1.5;
    int const first = std::max(mask.UBegin(), CeilToInt(uLow - margin));
    int const last = std::min(mask.UEnd(), CeilToInt(uHigh + margin));
    for (int u = first; u < last; ++u) {
        double const middle = start.v + (u - start.u) * slope;
        int const vFirst = std::max(mask.VBegin(), CeilToInt(middle - outside));
        int const vLast = std::min(mask.VEnd(), CeilToInt(middle + outside));
        if (vFirst >= vLast)
            continue;
        bool const whole = u - margin > uLow && u + margin < uHigh;
        std::uint8_t* pixel = mask.Touch(u, vFirst, vLast);
        for (int v = vFirst; v < vLast; ++v, ++pixel) {
            double share = 1.0;
            if (!whole) {
                double const p = start.u + from * perDistance - (v - start.v) * slope;
                double const q = start.u + to * perDistance - (v - start.v) * slope;
                share = Overlap(u, std::min(p, q), std::max(p, q));
            }
            Raise(*pixel, profile.At(static_cast<float>(middle - v)) * static_cast<float>(share));
        }
    }
}

void SmoothFlat(CoverageMask& mask, StrokeSegment const& segment, double halfWidth, DashPattern const& pattern)
{
    // Only the dashes near the mask.
    double const perU = segment.length / segment.delta.u;
    double const a = (mask.UBegin() - halfWidth - 2.0 - segment.start.u) * perU;
    double const b = (mask.UEnd() + halfWidth + 2.0 - segment.start.u) * perU;
    ForEachDash(segment, pattern, std::min(a, b), std::max(a, b),
        [&](double from, double to) { SmoothFlatDash(mask, segment, halfWidth, from, to); });
}

} // namespace

void SmoothBand(
    CoverageMask& mask, StrokeSegment const& segment, double halfWidth, DashPattern const& pattern, DashStrip& strip)
{
    if (std::abs(segment.delta.v) >= std::abs(segment.delta.u))
        SmoothSteep(mask, segment, halfWidth, pattern, strip);
    else
        SmoothFlat(mask, segment, halfWidth, pattern);
}

double SmoothReach(MaskPoint before, MaskPoint after, double halfWidth)
{
    // The corner's own pixel must be covered wholly; up to a right angle, bands drawn as far as the mitre form it.
    double const longer = std::max(std::abs(before.u), std::abs(before.v));
    double const pixel = 0.5 / longer;
    double const cosine = before.u * after.u + before.v * after.v;
    if (cosine < -1e-9)
        return pixel;
    double const mitre = halfWidth * std::sqrt(std::max(0.0, (1.0 - cosine) / (1.0 + cosine)));
    return std::max(pixel, mitre);
}

void SmoothCorner(CoverageMask& mask, MaskPoint corner, MaskPoint before, MaskPoint after, double halfWidth)
{
    double const cosine = before.u * after.u + before.v * after.v;
    StrokeCorner const c = MakeCorner(corner, before, after, halfWidth);
    if (cosine >= -1e-9 || c.kind != StrokeCorner::Kind::Mitre)
        return;
    // The bands' outer edges, from a pixel inside them on so that no seam shows, up to the tip; and the other side
    // along the bands' middles.
    std::array<MaskPoint, 4> const points { MaskPoint { corner.u - before.u + after.u, corner.v - before.v + after.v },
        MaskPoint { c.outerBefore.u - before.u, c.outerBefore.v - before.v }, c.tip,
        MaskPoint { c.outerAfter.u + after.u, c.outerAfter.v + after.v } };
    struct Edge {
        double u;
        double v;
        double rest;
    };
    std::array<Edge, 4> edges;
    double const turn = before.u * after.v - before.v * after.u > 0.0 ? 1.0 : -1.0;
    MaskPoint low = points[0];
    MaskPoint high = points[0];
    for (std::size_t i = 0; i < 4; ++i) {
        MaskPoint const p = points[i];
        MaskPoint const q = points[(i + 1) % 4];
        MaskPoint const d { q.u - p.u, q.v - p.v };
        double const scale = turn / std::max(1e-9, std::max(std::abs(d.u), std::abs(d.v)));
        edges[i] = { -d.v * scale, d.u * scale, (d.v * p.u - d.u * p.v) * scale + 0.5 };
        low = { std::min(low.u, p.u), std::min(low.v, p.v) };
        high = { std::max(high.u, p.u), std::max(high.v, p.v) };
    }
    int const uLast = std::min(mask.UEnd(), CeilToInt(high.u + 1.0));
    int const vFirst = std::max(mask.VBegin(), CeilToInt(low.v - 1.0));
    int const vLast = std::min(mask.VEnd(), CeilToInt(high.v + 1.0));
    for (int u = std::max(mask.UBegin(), CeilToInt(low.u - 1.0)); u < uLast && vFirst < vLast; ++u) {
        std::uint8_t* pixel = mask.Touch(u, vFirst, vLast);
        for (int v = vFirst; v < vLast; ++v, ++pixel) {
            double inside = 1.0;
            for (Edge const& e : edges)
                inside = std::min(inside, e.u * u + e.v * v + e.rest);
            if (inside > 0.0)
                Raise(*pixel, static_cast<float>(inside));
        }
    }
}

} // namespace ombrel
