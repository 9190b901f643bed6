#pragma once
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph3d/3DCurve.h"
#include "ombrel/model/TableData.h"

#include <array>
#include <cstddef>
#include <span>

namespace ombrel {

/// Scattered points as a curve holds them: a table of three rows x, y and z with a column a point. A point is missing
/// when one of its coordinates is (IsGridGap).
///
/// The rows stay where they are; a table with fewer rows has no points.
class PointRows {
public:
    explicit PointRows(CTableData const& table);
    std::size_t GetSize() const { return m_rows[0].size(); }
    /// Those of x, y or z: 0 … 2.
    std::span<double const> GetRow(std::size_t k) const { return m_rows[k]; }
    std::array<double, 3> At(std::size_t i) const { return { m_rows[0][i], m_rows[1][i], m_rows[2][i] }; }
    bool IsMissing(std::size_t i) const;

private:
    std::array<std::span<double const>, 3> m_rows;
};

/// The table of the first n points of three arrays x, y and z. Throws CInvalidArgException* (newly allocated) when an
/// array is not there or has fewer; a count below 1 gives an empty table.
CTableData MakePointTable(CDoubleArray const* const* arrays, int n);

/// Whether points can be given in the coordinate system: it is Cartesian, polar or cylindrical.
inline bool TakesPoints(C3DCurve::CurveType type)
{
    return type == C3DCurve::ctCartesian || type == C3DCurve::ctPolar || type == C3DCurve::ctCylindrical;
}
/// A point as a place in space, by coordinate system (angles in degrees): Cartesian (x, y, z); polar with z as the
/// radius, x as the angle about the z axis and y as that from it; cylindrical with z as the radius, x as the angle and
/// y as the height. In any other system all points lie at (0, 0, 0).
std::array<double, 3> GetPointPlace(C3DCurve::CurveType type, std::array<double, 3> const& point);
/// The places of all points of a curve's table, by its coordinate system and then its transforms. Missing points have
/// gaps, as have those whose place is not finite.
CTableData MakePointPlaces(C3DCurve const& curve, CTableData const& points);

/// The smallest and the largest coordinates.
struct PointRanges {
    std::array<double, 3> min {};
    std::array<double, 3> max {};
    /// Points that are not missing; ranges are 0 without any.
    std::size_t count = 0;
};
PointRanges GetPointRanges(CTableData const& points);

} // namespace ombrel
