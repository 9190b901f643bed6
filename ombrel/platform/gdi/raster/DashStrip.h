#pragma once
#include "ombrel/platform/gdi/raster/StrokeBands.h"

#include <cstdint>
#include <vector>

namespace ombrel {

/// The dashes of a segment that runs along the mask's lines, as coverage by position.
///
/// Every line of the mask that the band covers has the same dashes, so they are found once a segment; where the
/// pattern's period is a whole number of pixels, once a period.
class DashStrip {
public:
    /// Whether the ends of the segment's dashes lie at the same positions on all lines that it covers, but for a
    /// sixteenth of a pixel.
    static bool Fits(StrokeSegment const& segment, DashPattern const& pattern, double halfWidth)
    {
        return !pattern.IsSolid()
            && std::abs(segment.delta.u) * (halfWidth + 1.0) <= kTolerance * std::abs(segment.delta.v);
    }
    /// Finds the positions first ≤ v < last. Smooth ones are covered as far as they lie in a dash, others when a dash
    /// takes in their coordinate.
    void Build(StrokeSegment const& segment, DashPattern const& pattern, int first, int last, bool smooth);
    /// The coverage of the positions from v on.
    std::uint8_t const* At(int v) const { return m_coverage.data() + (v - m_first); }

private:
    static constexpr double kTolerance = 1.0 / 16.0;
    /// What dashes of a pattern without end leave on the positions from first on.
    void DrawPattern(StrokeSegment const& segment, DashPattern const& pattern, int first,
        std::vector<std::uint8_t>& coverage, bool smooth) const;
    void CutEnds(StrokeSegment const& segment, bool smooth);

    int m_first = 0;
    std::vector<std::uint8_t> m_coverage;
    std::vector<std::uint8_t> m_period;
};

} // namespace ombrel
