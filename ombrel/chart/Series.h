#pragma once
#include "ombrel/chart/Colour.h"
#include "ombrel/chart/XValues.h"
#include "ombrel/platform/framework/Export.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ombrel {

struct SeriesData;

/// How a series is drawn.
enum class SeriesKind {
    /// From point to point.
    Line,
    /// Each value holds until the next one.
    Steps,
    /// The first point with the second, the third with the fourth.
    Pairs,
    /// A mark at each point.
    Points,
    /// A line with a shade below it.
    Filled,
    /// One bar at each x; those of several series stand side by side.
    Bars,
    /// One bar at each x, series upon series.
    Stacked,
    /// Bands, series upon series.
    Area,
    /// Bars that count values; x is not looked at.
    Histogram,
    /// A mark with a text at each point, as far as there is room.
    Texts,
};

/// Dashes of lines.
enum class Dash { Solid, Dashed, Dotted, DashDot, DashDotDot, LongDash };

/// What stands at points.
enum class Mark { None, Circle, Square, Triangle, InvertedTriangle, Diamond, Cross, Plus, Pixel };

/// What holds for all series of a chart.
struct ChartSettings {
    bool xLog = false;
    bool yLog = false;
    /// x values are angles, counterclockwise from the right unless north is set, and y values distances from the
    /// middle.
    bool polar = false;
    /// Angles are radians rather than degrees.
    bool radians = false;
    /// Angles run clockwise from the top.
    bool north = false;
    /// A unit of x is as long as one of y.
    bool equalScales = false;
    /// Stacked bars show parts of 100.
    bool percent = false;
    /// Bands show parts of 1.
    bool normalised = false;
    /// Of a histogram; 0 for a number that fits the data.
    int bins = 0;
    XKind xKind = XKind::Numbers;
};

/// Throws ChartError when series of that kind cannot be drawn with the settings.
OMBREL_EXPORT void CheckKind(SeriesKind kind, ChartSettings const& settings);

/// One series of a chart, which owns it. Setters give the series back, so that they can follow each other; they take
/// effect when the chart is drawn next.
class OMBREL_EXPORT Series {
public:
    ~Series();
    Series(Series const&) = delete;
    Series& operator=(Series const&) = delete;

    /// What the legend calls it.
    Series& Name(std::string_view name);
    /// Without it, the palette of the chart has a colour for it.
    Series& Colour(ombrel::Colour colour);
    /// Of lines, pixels of a screen; 2 without it.
    Series& Width(int pixels);
    Series& Dash(ombrel::Dash dash);
    /// Marks the points, those of lines too.
    Series& Mark(ombrel::Mark mark);
    /// Likewise with a mark that the palette chooses.
    Series& Marks(bool on = true);
    /// How large marks are against their usual size; 1 without it. Throws ChartError unless it is above 0.
    Series& MarkSize(double factor);
    /// Whether edges of lines are smooth; they are without it.
    Series& Smooth(bool on);
    /// How opaque lines, marks and fills are: above 0 up to 1, and 1 without it. Marks show through each other, so that
    /// places with many points are darker. Error bars and texts stay opaque. Throws ChartError.
    Series& Opacity(double opacity);
    /// Error bars reach so far above and below each point: one error a point; NaN for none. Throws ChartError.
    Series& Errors(std::span<double const> errors);

    /// Of texts, what stands at each point. Throws ChartError.
    Series& Labels(std::span<std::string const> texts);

    /// Other points for a series that is there. Charts of lines and marks are not built anew: the next drawing puts the
    /// points into the curves, and ticks where the axes' ends are not fixed; legend and title keep their places. Throws
    /// ChartError when x and y differ in length.
    void Update(XValues const& x, std::span<double const> y);
    /// Likewise, against 1, 2, 3, ...
    void Update(std::span<double const> y);

    SeriesKind Kind() const;

private:
    friend class Chart;
    struct Changes;
    Series(std::unique_ptr<SeriesData> data, Changes& changes);
    template <typename Change> Series& Set(Change const& change);

    std::unique_ptr<SeriesData> m_data;
    /// The chart's.
    Changes* m_changes;
};

} // namespace ombrel
