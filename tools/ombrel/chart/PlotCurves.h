#pragma once
#include "tools/ombrel/chart/AxisLayout.h"
#include "tools/ombrel/chart/Look.h"
#include "tools/ombrel/commands/PlotSource.h"

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

/// Texts to be written at the points of a curve, one a point. The curve is the graph's.
struct PointLabels {
    C2DLine const* curve = nullptr;
    std::vector<std::string> texts;
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

/// Adds error bars of those heights above and below the points; what is missing in any of the three has none.
void AddErrorBars(CurveInput const& input, std::span<double const> xs, std::span<double const> ys,
    std::span<double const> errors, COLORREF colour, CurveData& data);

} // namespace ombrel::host
