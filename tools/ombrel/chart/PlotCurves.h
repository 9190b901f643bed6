#pragma once
#include "ombrel/chart/AxisTicks.h"
#include "ombrel/chart/Look.h"
#include "ombrel/chart/PointLabels.h"
#include "tools/ombrel/commands/PlotSource.h"
#include "tools/ombrel/options/Options.h"

#include <span>
#include <string>
#include <vector>

namespace ombrel {
class C2DGraph;
class C2DLine;
} // namespace ombrel

namespace ombrel::host {

/// What the curves of one graph are made from.
struct CurveInput {
    C2DGraph& graph;
    Options const& options;
    std::vector<PlotSource>& sources;
    Look const& look;
    Palette const& palette;
    /// The part of the x axis that is shown; it may be infinite.
    AxisRange shown;
    Messages const& messages;
};

/// What curves say of the points that are shown.
struct CurveData {
    /// min > max without data.
    AxisRange x { 0.0, -1.0 };
    AxisRange y { 0.0, -1.0 };
    /// Values that a logarithmic axis cannot show.
    std::size_t notPositive = 0;
    /// From one bar's place to the next; half of it belongs beyond the outermost ones. 0 without bars.
    double spacing = 0.0;
    /// All x values are whole numbers: so are the ticks between bars.
    bool wholeNumbers = false;
    std::vector<PointLabels> labels;
    /// The titles of columns without a value that is shown.
    std::vector<std::string> emptyColumns;

    void AddX(double value) { Add(x, value); }
    void AddY(double value) { Add(y, value); }
    static void Add(AxisRange& range, double value);
};

/// Adds a curve for every y column of the sources, in their order, and takes the values out of the tables. Only points
/// with x in the shown range count for the ranges that are returned. Throws Failure.
CurveData AddCurves(CurveInput const& input);

// The families that AddCurves chooses from.

/// Lines and points, with error bars when there are errors, and the labels of a text plot.
CurveData AddLines(CurveInput const& input);
/// One bar at each x, several side by side, or stacked.
CurveData AddBars(CurveInput const& input);
CurveData AddBands(CurveInput const& input);
/// Bars that count values.
CurveData AddHistogram(CurveInput const& input);

/// One title a curve, in the order of AddCurves: the column's name, the group's word or both, with the file's name
/// where these are not enough.
std::vector<std::string> CurveTitles(std::vector<PlotSource> const& sources);

/// Turns what the reader calls a gap, and what a logarithmic axis cannot show, into the library's gaps.
void MarkGaps(std::span<double> values, bool logarithmic, std::size_t& notPositive);

/// Puts the points of a curve in the order of their x values; those without one are left out and become gaps at the
/// end.
void SortByX(std::span<double> xs, std::span<double> ys);

/// The points that a line would leave out since none of those beside them has both values: theirs is the only one
/// between gaps. With pairs, those that the other of their pair is missing for.
std::vector<std::size_t> LonePoints(std::span<double const> xs, std::span<double const> ys, bool pairs);

/// An error bar as it is stored.
struct ErrorBar {
    /// Where its middle lies, and its height in the units that are drawn (decades on a logarithmic axis).
    double middle = 0.0;
    double height = 0.0;
    /// Its ends; on a logarithmic axis the lower one is the point itself when it is not above zero.
    double low = 0.0;
    double high = 0.0;
};

/// The bar round y, with that error above and below. One that would reach down to zero on a logarithmic axis ends some
/// decades below its point.
ErrorBar MakeErrorBar(double y, double error, bool logarithmic);

/// Adds error bars of those heights above and below the points; what is missing in any of the three has none.
void AddErrorBars(CurveInput const& input, std::span<double const> xs, std::span<double const> ys,
    std::span<double const> errors, COLORREF colour, CurveData& data);

/// Adds level dashes at the points, length times as long as the caps of error bars. Legends do not list them as they do
/// lines and marks.
void AddDashes(CurveInput const& input, std::span<double const> xs, std::span<double const> ys, double length,
    COLORREF colour, CurveData const& data);

/// Draws a line across the plotting area at zero when there are values on both sides of it.
void MarkZero(CurveInput const& input, CurveData const& data);

} // namespace ombrel::host
