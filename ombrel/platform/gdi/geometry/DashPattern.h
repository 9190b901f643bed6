#pragma once
#include "ombrel/platform/gdi/GdiObjects.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

namespace ombrel {

/// The lengths "on", "off", … of a device context's thin pen, in pixels of a screen; none for a style that is solid.
inline std::span<double const> PenDashes(int style)
{
    static constexpr double kDash[] { 18, 6 };
    static constexpr double kDot[] { 3, 3 };
    static constexpr double kDashDot[] { 9, 6, 3, 6 };
    static constexpr double kDashDotDot[] { 9, 3, 3, 3, 3, 3 };
    switch (style) {
    case PS_DASH:
        return kDash;
    case PS_DOT:
        return kDot;
    case PS_DASHDOT:
        return kDashDot;
    case PS_DASHDOTDOT:
        return kDashDotDot;
    default:
        return {};
    }
}

/// Lengths "on", "off", "on", … that repeat along a line, in pixels.
class DashPattern {
public:
    /// A solid line.
    DashPattern() = default;
    /// The lengths are multiples of scale. An odd number of them is taken twice; lengths that make no pattern (negative
    /// or infinite ones, or a period below half a pixel) give a solid line.
    DashPattern(std::span<double const> lengths, double scale)
    {
        std::size_t const count = lengths.size() % 2 ? 2 * lengths.size() : lengths.size();
        double end = 0.0;
        for (std::size_t i = 0; i < count; ++i) {
            double const length = lengths[i % lengths.size()] * scale;
            if (!(length >= 0.0) || !std::isfinite(length)) {
                m_ends.clear();
                return;
            }
            m_ends.push_back(end += length);
        }
        if (!(end >= kShortestPeriod && end <= kLongestPeriod))
            m_ends.clear();
    }
    bool IsSolid() const { return m_ends.empty(); }
    /// Whether every length is a whole number of pixels.
    bool IsWhole() const
    {
        return std::all_of(m_ends.begin(), m_ends.end(), [](double end) { return end == std::floor(end); });
    }
    double Period() const { return m_ends.back(); }
    /// Where the lengths end, counted from the start of the pattern.
    std::vector<double> const& Ends() const { return m_ends; }

    /// Whether the line is drawn at a distance from its start.
    bool IsOn(double distance) const
    {
        if (IsSolid())
            return true;
        double const at = distance - std::floor(distance / Period()) * Period();
        return (std::upper_bound(m_ends.begin(), m_ends.end(), at) - m_ends.begin()) % 2 == 0;
    }

private:
    static constexpr double kShortestPeriod = 0.5;
    static constexpr double kLongestPeriod = 1e9;
    std::vector<double> m_ends;
};

/// Counts the pixels of a line through a pattern: pixel i is drawn when the pattern is "on" at distance i.
class DashCounter {
public:
    /// The pattern is not owned and not solid.
    DashCounter(DashPattern const& pattern, double pixel)
        : m_ends(&pattern.Ends())
    {
        m_left = m_ends->front() - (pixel - std::floor(pixel / pattern.Period()) * pattern.Period());
        Settle();
    }
    bool IsOn() const { return m_index % 2 == 0; }
    /// The pixels from here on until on and off change; at least 1.
    long long Length() const
    {
        auto const whole = static_cast<long long>(m_left);
        return whole + (static_cast<double>(whole) < m_left ? 1 : 0);
    }
    /// At most Length pixels.
    void Advance(long long pixels)
    {
        m_left -= static_cast<double>(pixels);
        Settle();
    }

private:
    void Settle()
    {
        while (m_left <= 0.0) {
            double const end = (*m_ends)[m_index];
            if (++m_index == m_ends->size())
                m_index = 0;
            m_left += (*m_ends)[m_index] - (m_index == 0 ? 0.0 : end);
        }
    }
    std::vector<double> const* m_ends;
    std::size_t m_index = 0;
    /// From the current pixel to the end of the current length.
    double m_left;
};

} // namespace ombrel
