#pragma once
#include "ombrel/platform/framework/Export.h"

#include <string>

namespace ombrel {
class CGraph;

/// The points of a graph's curves as a table of comma-separated values that ReadTable reads again, in UTF-8.
///
/// Each curve of points has columns x and y, of error bars x, y and the errors, of points in space and of grids (a row
/// for each node) x, y and z; curves that follow each other with the same x share its column. The first row names
/// columns after curves and axes. Numbers are the shortest that give the same value again, dates are ISO dates, gaps
/// and what lies beyond a curve's last point are empty. The graph must have been evaluated (UpdatePlots). Throws
/// ChartError when no curve has points, as in graphs of meshes or solid objects.
OMBREL_EXPORT std::string CurvesAsCsv(CGraph& graph);

} // namespace ombrel
