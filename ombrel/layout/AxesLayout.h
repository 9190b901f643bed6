#pragma once
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <optional>
#include <string>
#include <vector>

namespace ombrel {
class C2DGraph;
class CDC;

/// Which lines the grid has: none, those at labels, or those between them, too.
enum class GridChoice { Off, Major, Both };

/// What is known of one axis before it is laid out.
struct PlotAxisSettings {
    /// The data's range; min > max without data.
    AxisRange data { 0.0, -1.0 };
    std::optional<double> min;
    std::optional<double> max;
    std::string title;
    bool logarithmic = false;
    /// The axis runs backwards: from right to left, or down.
    bool reversed = false;
    /// A logarithmic axis that ends at whole decades, since something stands on one of them.
    bool wholeDecades = false;
    bool dates = false;
    /// Values count something: ticks stand at whole numbers.
    bool counts = false;
    /// Room beyond the data on both sides as a part of its range, so that nothing runs along the frame. It ends at
    /// zero, and at the limit.
    double margin = 0.0;
    /// The margin goes on beyond zero.
    bool pastZero = false;
    /// What no value can be above, and with its sign changed below: 100 for percentages; 0 for none.
    double limit = 0.0;
    /// Room on both sides for half a bar and half of what is between bars, data units.
    double barRoom = 0.0;
    /// The words at 1, 2, 3, ...; empty for numbers and dates.
    std::vector<std::string> words;
};

/// For curves: they do not run along an axis.
inline constexpr double kCurveMargin = 0.01;
/// For bars, which keep a distance from the frame, and marks, which are not cut in half by it.
inline constexpr double kMarkMargin = 0.02;

/// Switches the grid on and gives it the lines that are asked for. No upright lines run between bars or words.
OMBREL_EXPORT void SetGrid(C2DGraph& graph, GridChoice choice, bool withUprightLines);

/// Chooses ranges, ticks and labels of both axes in the graph rectangle, so that labels neither overlap nor are cut
/// in the window, and lays the graph out; dc is a context like the one it will be drawn on.
OMBREL_EXPORT void LayOutAxes(
    C2DGraph& graph, PlotAxisSettings const& x, PlotAxisSettings const& y, CRect const& rect, CDC& dc);

/// Likewise with the same scale along both axes, which are numbers and not logarithmic: a unit of x is as many pixels
/// as one of y. The plotting area becomes as narrow or as low as that asks for, in the middle of the rectangle; where
/// it would be too narrow for readable labels, an axis whose ends were not both given shows more than the data.
OMBREL_EXPORT void LayOutEqualScales(
    C2DGraph& graph, PlotAxisSettings const& x, PlotAxisSettings const& y, CRect const& rect, CDC& dc);

/// Likewise a graph with a polar grid: a square plotting area in the middle of the rectangle, with room for the labels
/// round it.
OMBREL_EXPORT void LayOutPolar(C2DGraph& graph, CRect const& rect, CDC& dc);

/// The graph rectangle in a window: all of it but for a margin, and room for title and footnote.
OMBREL_EXPORT CRect GraphRectIn(C2DGraph& graph, CRect const& window, CDC& dc);

} // namespace ombrel
