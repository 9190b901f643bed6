#pragma once
#include <cstddef>
#include <span>
#include <vector>

namespace ombrel {

/// The places of scattered points along one axis: which of them are the same, and how far apart they are.
class PointColumns {
public:
    PointColumns() = default;
    /// Gaps (IsGridGap) are left out. Places that differ by less than a billionth of their extent are one.
    explicit PointColumns(std::span<double const> places);
    /// Ascending.
    std::vector<double> const& GetPlaces() const { return m_places; }
    /// The index of the place among these; 0 without any.
    int Find(double place) const;
    /// The smallest distance between two places, or of the whole extent the share of one point of n that are scattered
    /// over it without order; 1 where there is only one place.
    double GetCell(bool isGrid, std::size_t n) const;

private:
    double m_slack = 0.0;
    std::vector<double> m_places;
};

/// Whether n points are those of a grid over these columns and rows, of which at most half are missing.
bool IsPointGrid(PointColumns const& columns, PointColumns const& rows, std::size_t n);

} // namespace ombrel
