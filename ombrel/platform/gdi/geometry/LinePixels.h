#pragma once
#include "ombrel/platform/gdi/Coordinates.h"

#include <algorithm>
#include <cstddef>

namespace ombrel {

/// Where a line's pixel goes that lies exactly between two: the device context's pens choose the smaller coordinate,
/// those of the vector interface the larger.
enum class Halves { Smaller, Larger };

/// The one-pixel line between two points, pixel by pixel along its longer axis.
///
/// Pixel 0 is the start, pixel n = max(|dx|, |dy|) the end. Any range of them can be visited: clipping chooses a range
/// and so never moves a line.
struct LinePixels {
    /// Both points within the coordinate limit.
    LinePixels(CPoint from, CPoint to, Halves halves)
    {
        long long const dx = static_cast<long long>(to.x) - from.x;
        long long const dy = static_cast<long long>(to.y) - from.y;
        steep = (dy < 0 ? -dy : dy) > (dx < 0 ? -dx : dx);
        long long const along = steep ? dy : dx;
        majorStart = steep ? from.y : from.x;
        minorStart = steep ? from.x : from.y;
        majorStep = along < 0 ? -1 : 1;
        n = along < 0 ? -along : along;
        minorDelta = steep ? dx : dy;
        offset = halves == Halves::Larger ? n : n - 1;
    }
    /// The coordinate across the longer axis; only for lines of at least one step.
    int Minor(long long i) const
    {
        return static_cast<int>(minorStart + FloorDivide(2 * i * minorDelta + offset, 2 * n));
    }
    int Major(long long i) const { return static_cast<int>(majorStart + majorStep * i); }
    CPoint At(long long i) const { return steep ? CPoint(Minor(i), Major(i)) : CPoint(Major(i), Minor(i)); }

    /// Narrows the pixels first ≤ i < last to those inside the box.
    void Clip(CRect const& box, long long& first, long long& last) const;

    bool steep;
    int majorStart;
    int minorStart;
    int majorStep;
    long long n;
    /// Signed length of the shorter axis.
    long long minorDelta;
    /// Rounding, in 1 / (2n).
    long long offset;
};

/// A two-dimensional array of T: the element of pixel (left, top), and the elements from one pixel to the next.
template <typename T> struct Plane {
    T* first;
    int left;
    int top;
    std::ptrdiff_t xStride;
    std::ptrdiff_t yStride;
};

/// Writes consecutive pixels of a line into a plane that they lie in.
template <typename T> class LineWalker {
public:
    LineWalker(LinePixels const& line, long long first, Plane<T> const& plane)
        : m_base(plane.first)
        , m_limit(2 * line.n)
        , m_step(2 * (line.minorDelta < 0 ? -line.minorDelta : line.minorDelta))
        , m_major((line.steep ? plane.yStride : plane.xStride) * line.majorStep)
        , m_minor((line.steep ? plane.xStride : plane.yStride) * (line.minorDelta < 0 ? -1 : 1))
    {
        long long minor = 0;
        long long remainder = line.offset;
        if (first != 0) {
            long long const numerator = 2 * first * line.minorDelta + line.offset;
            minor = FloorDivide(numerator, m_limit);
            remainder = numerator - minor * m_limit;
        }
        // Counted so that the error always grows, whichever way the line goes.
        m_error = line.minorDelta < 0 ? m_limit - 1 - remainder : remainder;
        long long const major = line.majorStart + line.majorStep * first;
        long long const across = line.minorStart + minor;
        long long const x = (line.steep ? across : major) - plane.left;
        long long const y = (line.steep ? major : across) - plane.top;
        m_at = static_cast<std::ptrdiff_t>(x) * plane.xStride + static_cast<std::ptrdiff_t>(y) * plane.yStride;
    }
    void Write(long long count, T value)
    {
        if (m_step == 0 && (m_major == 1 || m_major == -1)) {
            std::ptrdiff_t const length = static_cast<std::ptrdiff_t>(count);
            std::fill_n(m_base + (m_major > 0 ? m_at : m_at - length + 1), length, value);
            m_at += m_major * length;
            return;
        }
        if (m_step == 0) {
            for (; count > 0; --count, m_at += m_major)
                m_base[m_at] = value;
            return;
        }
        if (HasLongRuns()) {
            WriteRuns(count, value);
            return;
        }
        for (; count > 0; --count) {
            m_base[m_at] = value;
            Step();
        }
    }
    /// Whether long runs of the line's pixels lie together in memory.
    bool HasLongRuns() const { return m_limit > kLongRun * m_step && (m_major == 1 || m_major == -1); }
    /// Calls each(first in memory, length, pixels before) for those runs.
    template <typename Each> void ForEachRun(long long count, Each&& each)
    {
        long long done = 0;
        while (done < count) {
            long long const untilStep = m_step == 0 ? count : (m_limit - m_error + m_step - 1) / m_step;
            long long const run = std::min(count - done, untilStep);
            auto const length = static_cast<std::ptrdiff_t>(run);
            each(m_base + (m_major > 0 ? m_at : m_at - length + 1), length, done);
            done += run;
            m_at += m_major * length;
            m_error += m_step * run;
            if (m_error >= m_limit) {
                m_error -= m_limit;
                m_at += m_minor;
            }
        }
    }
    void Skip(long long count)
    {
        if (count < kFewSteps) {
            for (; count > 0; --count)
                Step();
            return;
        }
        long long const error = m_error + m_step * count;
        m_at += m_major * static_cast<std::ptrdiff_t>(count) + m_minor * static_cast<std::ptrdiff_t>(error / m_limit);
        m_error = error % m_limit;
    }

private:
    static constexpr long long kFewSteps = 16;
    static constexpr long long kLongRun = 12;
    void WriteRuns(long long count, T value)
    {
        ForEachRun(count, [value](T* run, std::ptrdiff_t length, long long) { std::fill_n(run, length, value); });
    }
    void Step()
    {
        m_at += m_major;
        m_error += m_step;
        if (m_error >= m_limit) {
            m_error -= m_limit;
            m_at += m_minor;
        }
    }
    T* m_base;
    std::ptrdiff_t m_at;
    long long m_error;
    long long m_limit;
    long long m_step;
    std::ptrdiff_t m_major;
    std::ptrdiff_t m_minor;
};

} // namespace ombrel
