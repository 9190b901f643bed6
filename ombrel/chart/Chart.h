#pragma once
#include "ombrel/chart/ChartAxis.h"
#include "ombrel/chart/DrawnPicture.h"
#include "ombrel/chart/Series.h"
#include "ombrel/layout/AxesLayout.h"
#include "ombrel/layout/ChartError.h"
#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/layout/Look.h"
#include "ombrel/model/TableData.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace ombrel {

class C2DGraph;
class CDC;

/// A 2D chart: series are added, and it finds axes, ticks, colours and places for legend and labels by itself.
///
///     ombrel::Chart chart("Damped oscillation");
///     chart.Line(t, y).Name("measured");
///     chart.X().Title("Time / s");
///     chart.Save("example.png");
///
/// Series of several kinds share one chart: areas lie lowest, then bars, then lines and marks. Values are copied; NaN
/// is a gap. Texts are UTF-8.
class OMBREL_EXPORT Chart : public DrawnPicture {
public:
    explicit Chart(std::string_view title = {});
    ~Chart() override;
    Chart(Chart&&) noexcept;
    Chart& operator=(Chart&&) noexcept;

    // Series. Of each, x and y have the same length, and without x they are drawn against 1, 2, 3, ... References stay
    // valid as long as the chart does. They throw ChartError.

    Series& Line(XValues const& x, std::span<double const> y) { return Add(SeriesKind::Line, x, y); }
    Series& Line(std::span<double const> y) { return Add(SeriesKind::Line, y); }
    Series& Steps(XValues const& x, std::span<double const> y) { return Add(SeriesKind::Steps, x, y); }
    Series& Points(XValues const& x, std::span<double const> y) { return Add(SeriesKind::Points, x, y); }
    Series& Points(std::span<double const> y) { return Add(SeriesKind::Points, y); }
    Series& Filled(XValues const& x, std::span<double const> y) { return Add(SeriesKind::Filled, x, y); }
    /// Bars of several series stand side by side, those of equal x together.
    Series& Bars(XValues const& x, std::span<double const> y) { return Add(SeriesKind::Bars, x, y); }
    Series& Bars(std::span<double const> y) { return Add(SeriesKind::Bars, y); }
    Series& Stacked(XValues const& x, std::span<double const> y) { return Add(SeriesKind::Stacked, x, y); }
    Series& Area(XValues const& x, std::span<double const> y) { return Add(SeriesKind::Area, x, y); }
    /// Counts the values in bins, which all histograms of the chart share.
    Series& Histogram(std::span<double const> values) { return Add(SeriesKind::Histogram, values); }
    /// Marks with texts beside them, one a point, as far as there is room.
    Series& Texts(XValues const& x, std::span<double const> y, std::span<std::string const> texts);

    Series& Add(SeriesKind kind, XValues const& x, std::span<double const> y);
    Series& Add(SeriesKind kind, std::span<double const> y);
    /// Takes over a table of two rows, x and y, in place of copying its values: numbers, or dates as DateValue gives
    /// them.
    Series& Add(SeriesKind kind, CTableData&& points, XKind xKind = XKind::Numbers);
    /// In the order in which they were added; null beyond the last.
    Series* GetSeries(std::size_t index);

    ChartAxis& X();
    ChartAxis& Y();

    // What the whole chart looks like; each takes effect when it is drawn next.

    Chart& Title(std::string_view title);
    /// A small line below everything, such as where the data come from.
    Chart& Footnote(std::string_view text);
    Chart& SetTheme(Theme theme);
    /// "distinct", "grey" or the name of a colour map; empty for what the theme prefers.
    Chart& SetPalette(std::string_view name);
    Chart& Grid(GridChoice grid);
    /// Auto without it.
    Chart& Legend(LegendPlace place);
    /// A text with its top-left corner at fractions of the plotting area: (0, 0) is its top left.
    Chart& Caption(std::string_view text, double x, double y);
    /// x values become angles, counterclockwise from the right, and y values distances from the middle.
    enum class Angle { Degrees, Radians };
    Chart& Polar(Angle unit = Angle::Degrees);
    /// Angles of a polar chart run clockwise from the top, as bearings and the hours of a clock do.
    Chart& North(bool on = true);
    /// A unit of x is as long as one of y, both axes being numbers, so that circles are round and maps keep their
    /// shape.
    Chart& EqualScales(bool on = true);
    /// Stacked bars show parts of 100.
    Chart& Percent(bool on = true);
    /// Bands show parts of 1.
    Chart& Normalised(bool on = true);
    /// Of histograms; 0 for as many as fit the data.
    Chart& Bins(int bins);

    ChartNotes Notes() const override;

    /// The graph as it was built for a context and a rectangle, for everything that charts do not offer. It is the
    /// chart's; what is changed in it lasts until the chart changes.
    C2DGraph& Graph(CDC& dc, CRect const& rect);
    /// Likewise, but given away, together with the points; the chart is of no use afterwards.
    std::unique_ptr<C2DGraph> TakeGraph(CDC& dc, CRect const& rect);

private:
    template <typename Change> Chart& Set(Change const& change);
    CAnnotatedGraph& LaidOut(CDC& dc, CRect const& window) override;

    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace ombrel
