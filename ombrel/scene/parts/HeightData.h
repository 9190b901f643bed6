#pragma once
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/scene/Heights.h"

namespace ombrel {

class CSurface;

enum class GridSide { Columns, Rows };
/// Lays the columns or the rows of the curve's table, and its grid with them, from one coordinate to another.
void PlaceGrid(C3DRowColCurve& curve, GridSide side, AxisRange ends);

/// Gives the curve other heights in place of those of its table. name is how messages call them. Throws ChartError when
/// there are more or fewer.
void UpdateHeights(C3DRowColCurve& curve, std::span<double const> heights, std::string const& name);

/// Looks at the heights of an evaluated surface: throws ChartError when there is none, and warns when no cell of the
/// grid has all of its four. name is how messages call them.
void CheckHeights(CSurface const& surface, std::string const& name, ChartNotes& notes);

HeightTitles TitlesOf(Points const& points);

/// Leaves out the points without a place, and tells how many. Throws ChartError when there is no other.
void LeaveOutGaps(Points& points, ChartNotes& notes);

/// The points, when that is what the heights are.
bool ArePoints(HeightSource const& heights);

} // namespace ombrel
