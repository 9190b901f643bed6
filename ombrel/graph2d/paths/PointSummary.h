#pragma once
#include "ombrel/model/TableData.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ombrel {

/// Smallest and largest of some values; min > max when there was none.
struct Extremes {
    double min;
    double max;
    bool IsEmpty() const { return !(min <= max); }
};

/// What drawing wants to know of a table of points (row 0 x, row 1 y) without reading it again: ranges, whether x
/// ascends, and the extremes of y over blocks of points. Made in one pass, kept until the table changes; it takes
/// 0.25 bytes a point.
class PointSummary {
public:
    /// Points a block.
    static constexpr std::size_t kBlock = 64;

    /// Reads the points if they changed since the last call.
    void Update(CTableData const& points);
    /// Forces the next Update to read the points.
    void Forget() { m_revision = 0; }

    /// Ranges over the points that are no gaps.
    Extremes XRange() const { return m_x; }
    Extremes YRange() const { return m_y; }
    /// No x is a gap, and none is smaller than the one before.
    bool XAscends() const { return m_ascends; }
    /// The extremes of y over the points first ≤ i < last, of the table that was summarised; false when one of them
    /// may be a gap.
    bool YExtremes(double const* ys, std::size_t first, std::size_t last, Extremes& found) const;

private:
    std::uint64_t m_revision = 0;
    Extremes m_x { 0.0, -1.0 };
    Extremes m_y { 0.0, -1.0 };
    bool m_ascends = false;
    /// Of each whole block; min > max marks a block with a gap.
    std::vector<Extremes> m_blocks;
};

} // namespace ombrel
