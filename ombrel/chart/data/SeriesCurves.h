#pragma once
#include "ombrel/chart/Series.h"
#include "ombrel/layout/AxisTicks.h"
#include "ombrel/layout/ChartNotes.h"
#include "ombrel/layout/Look.h"
#include "ombrel/layout/PointLabels.h"
#include "ombrel/model/TableData.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ombrel {

class C2DGraph;
class C2DLine;

/// What series say of the points that are shown.
struct CurveData {
    /// min > max without data.
    AxisRange x { 0.0, -1.0 };
    AxisRange y { 0.0, -1.0 };
    /// Values that a logarithmic axis cannot show.
    std::size_t notPositive = 0;
    /// From one bar's place to the next; half of it belongs beyond the outermost ones. 0 without bars.
    double spacing = 0.0;
    /// All x values are whole numbers: so are the ticks between bars.
    bool wholeNumbers = true;
    std::vector<PointLabels> labels;
    /// The names of series without a value that is shown.
    std::vector<std::string> empty;

    void AddX(double value) { Add(x, value); }
    void AddY(double value) { Add(y, value); }
    static void Add(AxisRange& range, double value);
    /// What other series say besides.
    void Add(CurveData const& other);
};

/// One series: what it was given, and how it is told from the others.
struct SeriesData {
    SeriesKind kind = SeriesKind::Line;
    /// Its place among the series of its chart, from 0.
    std::size_t index = 0;
    std::string name;
    /// Two rows, x and y; NaN is a gap.
    CTableData points;
    /// One a point, or none.
    std::vector<double> errors;
    std::vector<std::string> labels;
    std::optional<COLORREF> colour;
    std::optional<int> lineType;
    std::optional<C2DSymbol::SymbolType> symbol;
    int lineWidth = 2;
    /// Against the usual size.
    double markSize = 1.0;
    bool smooth = true;
    double opacity = 1.0;
    /// Its points are marked, besides the line.
    bool marked = false;
    /// What it said when it was drawn last.
    CurveData shown;
    /// The curve of a line, which is the graph's; null before it is built.
    C2DLine* line = nullptr;

    std::size_t Count() const { return static_cast<std::size_t>(points.GetNumCols()); }
    std::span<double const> X() const { return { points.GetRow(0), Count() }; }
    std::span<double const> Y() const { return { points.GetRow(1), Count() }; }
};

/// What the series of a chart share: their x axis, and what has changed since they were drawn last.
struct Series::Changes {
    XKind xKind = XKind::Numbers;
    /// The different words along x, in the order in which they came.
    std::vector<std::string> words;
    /// Everything has to be built anew; else the series whose points are new.
    bool all = true;
    std::vector<SeriesData*> points;

    /// Finds room for those words along x that are new, and gives the numbers of all.
    std::vector<double> TakeWords(XValues const& x);
};

/// What the curves of one graph are made from.
struct CurveInput {
    C2DGraph& graph;
    ChartSettings const& settings;
    /// Of one family, in their order; never empty.
    std::vector<SeriesData*> const& series;
    Look const& look;
    Palette const& palette;
    /// The part of the x axis that is shown; it may be infinite.
    AxisRange shown;
    ChartNotes& notes;
    /// Along x, at 1, 2, 3, ...
    std::vector<std::string> const& words;
    /// The points may be taken out of the series.
    bool takeOver = false;

    /// How a series is told from the others.
    CurveLook LookOf(SeriesData const& one) const;
};

// The families of curves. They add their curves to the graph and to what is known of the points that are shown; they
// throw ChartError.

/// Lines and points, with error bars when there are errors, and the labels of texts.
void AddLines(CurveInput const& input, CurveData& data);
/// Gives the line of a series that was added by AddLines its points as they are now. False when it would need other
/// curves than it has.
bool RefillLine(CurveInput const& input, SeriesData& one);
/// One bar at each x, several side by side, or stacked.
void AddBars(CurveInput const& input, CurveData& data);
void AddBands(CurveInput const& input, CurveData& data);
/// Bars that count values.
void AddHistogram(CurveInput const& input, CurveData& data);

/// Turns NaN, and what a logarithmic axis cannot show, into the library's gaps.
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

} // namespace ombrel
