#pragma once
#include "tools/ombrel/AxisLayout.h"
#include "tools/ombrel/PlotSource.h"

#include <string>
#include <vector>

namespace ombrel {
class C2DGraph;
}

namespace ombrel::host {

/// What curves say of the points that are shown.
struct CurveData {
    /// min > max without data.
    AxisRange x { 0.0, -1.0 };
    AxisRange y { 0.0, -1.0 };
    /// Values that a logarithmic axis cannot show.
    std::size_t notPositive = 0;
};

/// Adds a curve for every y column of the sources, in their order, and takes the values out of the tables. Only points
/// with x in the shown range (which may be infinite) count for the ranges that are returned. Throws Failure.
CurveData AddCurves(C2DGraph& graph, Options const& options, std::vector<PlotSource>& sources, AxisRange const& shown);

/// One title a curve, in the order of AddCurves: the column's name, with the file's where names are not enough.
std::vector<std::string> CurveTitles(std::vector<PlotSource> const& sources);

} // namespace ombrel::host
