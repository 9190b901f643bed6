#pragma once
#include "ombrel/platform/gdi/geometry/LinePixels.h"
#include "ombrel/platform/gdi/raster/RasterCanvas.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace ombrel {

/// Writes count times 255; most runs are short.
inline void CoverBytes(std::uint8_t* to, std::ptrdiff_t count)
{
    constexpr std::uint64_t kCovered = ~std::uint64_t { 0 };
    if (count > 16) {
        std::memset(to, 255, static_cast<std::size_t>(count));
    } else if (count >= 8) {
        std::memcpy(to, &kCovered, 8);
        std::memcpy(to + count - 8, &kCovered, 8);
    } else if (count >= 4) {
        std::memcpy(to, &kCovered, 4);
        std::memcpy(to + count - 4, &kCovered, 4);
    } else {
        for (std::ptrdiff_t i = 0; i < count; ++i)
            to[i] = 255;
    }
}

/// Gathers the coverage of one drawing call, so that parts which overlap are blended once.
///
/// The mask is made of lines along one axis of the bitmap: its rows, or its columns for what runs mostly up and down,
/// because then every run of pixels lies together in memory. u counts the lines, v the positions along them.
class CoverageMask {
public:
    enum class Lines { Rows, Columns };

    /// Makes an empty mask over the box.
    void Begin(CRect const& box, Lines lines);
    bool HasColumns() const { return m_lines == Lines::Columns; }
    /// From here on u and v count from this point of the bitmap, (0, 0) after Begin: what is worked out in fractions
    /// from where a figure begins comes out the same wherever the figure lies.
    void SetOrigin(CPoint origin)
    {
        m_uOrigin = HasColumns() ? origin.x : origin.y;
        m_vOrigin = HasColumns() ? origin.y : origin.x;
    }
    int UBegin() const { return m_uBegin - m_uOrigin; }
    int UEnd() const { return m_uEnd - m_uOrigin; }
    int VBegin() const { return m_vBegin - m_vOrigin; }
    int VEnd() const { return m_vEnd - m_vOrigin; }
    /// The whole mask by pixel; what is written there must be told to Touch.
    Plane<std::uint8_t> Pixels()
    {
        auto const stride = static_cast<std::ptrdiff_t>(m_stride);
        bool const columns = HasColumns();
        return { m_coverage.data(), columns ? m_uBegin : m_vBegin, columns ? m_vBegin : m_uBegin, columns ? stride : 1,
            columns ? 1 : stride };
    }

    /// The coverage at (u, v), both inside; positions v0 ≤ v < v1 of the line count as drawn on.
    std::uint8_t* Touch(int u, int v0, int v1)
    {
        int const line = u - UBegin();
        Extent& extent = m_extents[static_cast<std::size_t>(line)];
        extent.begin = std::min(extent.begin, v0 + m_vOrigin);
        extent.end = std::max(extent.end, v1 + m_vOrigin);
        return m_coverage.data() + static_cast<std::size_t>(line) * m_stride + static_cast<std::size_t>(v0 - VBegin());
    }
    /// Covers v0 ≤ v < v1 of a line wholly; what lies outside the mask is left out.
    void FillRun(int u, int v0, int v1)
    {
        v0 = std::max(v0, VBegin());
        v1 = std::min(v1, VEnd());
        if (u >= UBegin() && u < UEnd() && v0 < v1)
            CoverBytes(Touch(u, v0, v1), v1 - v0);
    }
    /// Paints what was gathered and empties the mask.
    void Flush(RasterCanvas const& canvas, Ink const& ink);

private:
    struct Extent {
        int begin;
        int end;
    };
    void FlushRows(RasterCanvas const& canvas, Ink const& ink);
    void FlushColumns(RasterCanvas const& canvas, Ink const& ink);
    /// Turns eight columns of a band.
    void TransposeGroup(int top, int left);
    void Clear();

    Lines m_lines = Lines::Rows;
    int m_uBegin = 0;
    int m_uEnd = 0;
    int m_vBegin = 0;
    int m_vEnd = 0;
    int m_uOrigin = 0;
    int m_vOrigin = 0;
    std::size_t m_stride = 0;
    /// All zero between Flush and the next drawing.
    std::vector<std::uint8_t> m_coverage;
    std::vector<Extent> m_extents;
    /// Eight rows of the bitmap, turned from columns.
    std::vector<std::uint8_t> m_band;
    std::vector<Extent> m_groups;
};

} // namespace ombrel
