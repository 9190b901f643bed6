#include "ombrel/platform/gdi/raster/DashStrip.h"

#include <cstring>

namespace ombrel {

namespace {

/// Adds to a pixel that takes in part of a dash.
void Add(std::uint8_t& pixel, double share)
{
    pixel = static_cast<std::uint8_t>(std::min(255.0, pixel + 255.0 * share + 0.5));
}

/// A dash between two positions, over coverage that begins at position first.
void DrawSmoothDash(std::vector<std::uint8_t>& coverage, int first, double low, double high)
{
    int const last = first + static_cast<int>(coverage.size());
    int const fullFrom = CeilToInt(low + 0.5);
    int const fullTo = CeilToInt(high + 0.5) - 1;
    auto const add = [&](int v) {
        double const share = std::min(v + 0.5, high) - std::max(v - 0.5, low);
        if (v >= first && v < last && share > 0.0)
            Add(coverage[static_cast<std::size_t>(v - first)], share);
    };
    add(fullFrom - 1);
    // Within one pixel, or with its ends in neighbouring ones, the dash covers no pixel wholly.
    if (fullTo >= fullFrom - 1)
        add(std::max(fullTo, fullFrom));
    int const from = std::max(first, fullFrom);
    int const to = std::min(last, fullTo);
    if (from < to)
        CoverBytes(coverage.data() + (from - first), to - from);
}

} // namespace

void DashStrip::DrawPattern(StrokeSegment const& segment, DashPattern const& pattern, int first,
    std::vector<std::uint8_t>& coverage, bool smooth) const
{
    int const last = first + static_cast<int>(coverage.size());
    double const perDistance = segment.delta.v / segment.length;
    // Position and distance along the pattern: v = origin + distance · perDistance.
    double const origin = segment.start.v - segment.phase * perDistance;
    double const a = (first - 1.0 - origin) / perDistance;
    double const b = (last + 1.0 - origin) / perDistance;
    double const end = std::max(a, b);
    double const period = pattern.Period();
    std::vector<double> const& ends = pattern.Ends();
    for (double base = std::floor(std::min(a, b) / period) * period; base <= end; base += period) {
        for (std::size_t i = 0; i < ends.size(); i += 2) {
            double const p = origin + (base + (i == 0 ? 0.0 : ends[i - 1])) * perDistance;
            double const q = origin + (base + ends[i]) * perDistance;
            double const low = std::min(p, q);
            double const high = std::max(p, q);
            if (smooth) {
                DrawSmoothDash(coverage, first, low, high);
                continue;
            }
            int const from = std::max(first, CeilToInt(low));
            int const to = std::min(last, CeilToInt(high));
            if (from < to)
                CoverBytes(coverage.data() + (from - first), to - from);
        }
    }
}

void DashStrip::Build(StrokeSegment const& segment, DashPattern const& pattern, int first, int last, bool smooth)
{
    m_first = first;
    auto const count = static_cast<std::size_t>(std::max(0, last - first));
    double const extent = std::abs(segment.delta.v);
    double const period = pattern.Period() * extent / segment.length;
    double const whole = std::round(period);
    bool const repeats = whole >= 1.0 && 2.0 * whole < extent && std::abs(period - whole) * extent < kTolerance * whole;
    if (!repeats) {
        m_coverage.assign(count, 0);
        DrawPattern(segment, pattern, first, m_coverage, smooth);
        CutEnds(segment, smooth);
        return;
    }
    // One period from the segment's own beginning on, wherever it is clipped.
    auto const length = static_cast<std::size_t>(whole);
    int const begin = CeilToInt(std::min(segment.start.v, segment.start.v + segment.delta.v));
    m_period.assign(length, 0);
    DrawPattern(segment, pattern, begin, m_period, smooth);
    m_coverage.resize(std::max(count, length));
    auto const turn = static_cast<std::size_t>(
        FloorRemainder(static_cast<long long>(first) - begin, static_cast<long long>(length)));
    std::copy(m_period.begin() + static_cast<std::ptrdiff_t>(turn), m_period.end(), m_coverage.begin());
    std::copy_n(m_period.begin(), turn, m_coverage.begin() + static_cast<std::ptrdiff_t>(length - turn));
    for (std::size_t done = length; done < count;) {
        std::size_t const more = std::min(done, count - done);
        std::memcpy(m_coverage.data() + done, m_coverage.data(), more);
        done += more;
    }
    m_coverage.resize(count);
    CutEnds(segment, smooth);
}

void DashStrip::CutEnds(StrokeSegment const& segment, bool smooth)
{
    double const perDistance = segment.delta.v / segment.length;
    double const p = segment.start.v - segment.startReach * perDistance;
    double const q = segment.start.v + (segment.length + segment.endReach) * perDistance;
    double const low = std::min(p, q);
    double const high = std::max(p, q);
    int const last = m_first + static_cast<int>(m_coverage.size());
    // Positions that lie wholly between the ends stay; those at the ends are cut, those beyond emptied.
    int const from = smooth ? CeilToInt(low + 0.5) : CeilToInt(low);
    int const to = smooth ? CeilToInt(high + 0.5) - 1 : CeilToInt(high);
    auto const cut = [&](int v) {
        double const share = smooth ? std::min(v + 0.5, high) - std::max(v - 0.5, low) : 0.0;
        std::uint8_t& pixel = m_coverage[static_cast<std::size_t>(v - m_first)];
        pixel = static_cast<std::uint8_t>(pixel * std::clamp(share, 0.0, 1.0) + 0.5);
    };
    for (int v = m_first; v < std::min(from, last); ++v)
        cut(v);
    for (int v = std::max({ m_first, from, to }); v < last; ++v)
        cut(v);
}

} // namespace ombrel
