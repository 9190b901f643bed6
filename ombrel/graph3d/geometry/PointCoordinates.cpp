#include "ombrel/graph3d/geometry/PointCoordinates.h"
#include "ombrel/graph3d/ContourLines.h"
#include "ombrel/graph3d/geometry/GridCoordinates.h"
#include "ombrel/platform/framework/Exception.h"

#include <algorithm>

namespace ombrel {

PointRows::PointRows(CTableData const& table)
{
    if (table.GetNumRows() < 3 || !table.HasData())
        return;
    for (int k = 0; k < 3; ++k)
        m_rows[static_cast<std::size_t>(k)] = { table.GetRow(k), static_cast<std::size_t>(table.GetNumCols()) };
}

bool PointRows::IsMissing(std::size_t i) const
{
    return IsGridGap(m_rows[0][i]) || IsGridGap(m_rows[1][i]) || IsGridGap(m_rows[2][i]);
}

CTableData MakePointTable(CDoubleArray const* const* arrays, int n)
{
    if (n < 1)
        return {};
    for (int k = 0; k < 3; ++k) {
        if (!arrays || !arrays[k] || arrays[k]->GetSize() < n)
            throw new CInvalidArgException("Points need arrays of x, y and z with a value for each of them.");
    }
    CTableData table;
    table.Initialise(3, n, 0);
    for (int k = 0; k < 3; ++k)
        std::copy_n(arrays[k]->GetData(), n, table.GetRow(k));
    return table;
}

std::array<double, 3> GetPointPlace(C3DCurve::CurveType type, std::array<double, 3> const& point)
{
    if (!TakesPoints(type))
        return {};
    return GridCoordinates(type, false).At(point[0], point[1], point[2]);
}

CTableData MakePointPlaces(C3DCurve const& curve, CTableData const& points)
{
    PointRows const from(points);
    auto const n = static_cast<int>(from.GetSize());
    CTableData places;
    places.Initialise(3, n, 0);
    if (n == 0)
        return places;
    std::array<double*, 3> const rows { places.GetRow(0), places.GetRow(1), places.GetRow(2) };
    bool const hasTransforms = curve.GetNumTransforms() != 0;
    for (std::size_t i = 0; i < from.GetSize(); ++i) {
        std::array<double, 3> place { kGap, kGap, kGap };
        if (!from.IsMissing(i)) {
            place = GetPointPlace(curve.GetCurveType(), from.At(i));
            if (hasTransforms)
                curve.Transform(&place[0], &place[1], &place[2]);
            if (std::ranges::any_of(place, IsGridGap))
                place = { kGap, kGap, kGap };
        }
        for (std::size_t k = 0; k < 3; ++k)
            rows[k][i] = place[k];
    }
    return places;
}

PointRanges GetPointRanges(CTableData const& points)
{
    PointRows const rows(points);
    PointRanges ranges;
    for (std::size_t i = 0; i < rows.GetSize(); ++i) {
        if (rows.IsMissing(i))
            continue;
        std::array<double, 3> const point = rows.At(i);
        for (std::size_t k = 0; k < 3; ++k) {
            ranges.min[k] = ranges.count == 0 ? point[k] : std::min(ranges.min[k], point[k]);
            ranges.max[k] = ranges.count == 0 ? point[k] : std::max(ranges.max[k], point[k]);
        }
        ++ranges.count;
    }
    return ranges;
}

} // namespace ombrel
