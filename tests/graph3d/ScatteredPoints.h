#pragma once
#include "ombrel/graph3d/3DIrregularSurfaceCurve.h"

#include <array>
#include <vector>

namespace ombrel::test {

/// Gives the curve these points, and a table as its data source.
inline void SetPoints(C3DIrregularSurfaceCurve& curve, std::vector<std::array<double, 3>> const& points)
{
    std::array<CDoubleArray, 3> columns;
    for (std::array<double, 3> const& point : points) {
        for (std::size_t k = 0; k < 3; ++k)
            columns[k].Add(point[k]);
    }
    std::array<CDoubleArray const*, 3> const arrays { &columns[0], &columns[1], &columns[2] };
    curve.SetTableData(arrays.data(), static_cast<int>(points.size()));
    curve.SetDataSourceType(CPlotComponent::dsTable);
}

} // namespace ombrel::test
