#pragma once
#include "ombrel/chart/data/SeriesCurves.h"
#include "ombrel/layout/AxesLayout.h"
#include "ombrel/layout/LegendPlacement.h"
#include "ombrel/layout/Titles.h"

#include <memory>
#include <optional>

namespace ombrel {

class CDC;

/// What a chart was told of one axis.
struct AxisContent {
    std::string title;
    std::optional<double> from;
    std::optional<double> to;
    bool reversed = false;
};

/// All that a chart was told.
struct ChartContent {
    std::string title;
    std::string footnote;
    Theme theme = Theme::Light;
    std::string palette;
    GridChoice grid = GridChoice::Major;
    LegendPlace legend = LegendPlace::Auto;
    std::vector<CaptionSettings> captions;
    ChartSettings settings;
    AxisContent x;
    AxisContent y;
    /// Along x; empty for numbers and dates.
    std::vector<std::string> words;
    std::vector<SeriesData*> series;
};

/// The graph of a chart, built and laid out for a size.
class ChartGraph {
public:
    /// With takeOver, the points are taken out of the series. dc is a context like the one it will be drawn on, size
    /// that of the window, device pixels. Throws ChartError.
    ChartGraph(ChartContent const& content, CDC& dc, CSize size, ChartNotes& notes, bool takeOver);

    /// Gives the series of that list their points as they are now, and the axes ranges and ticks that go with them.
    /// False when the graph has to be built anew.
    bool Refill(ChartContent const& content, std::vector<SeriesData*> const& changed, CDC& dc, ChartNotes& notes);

    C2DGraph& Get() { return *m_graph; }
    std::unique_ptr<C2DGraph> Take() { return std::move(m_graph); }
    /// Whether it was laid out for a window of that size on a context like that.
    bool Fits(CDC const& dc, CSize size) const;

private:
    void AddSeries(ChartContent const& content, ChartNotes& notes, bool takeOver);
    void LayOut(ChartContent const& content, CDC& dc, ChartNotes& notes);
    /// Of the data, for the axes.
    void TakeRanges(ChartContent const& content);
    void LayOutAxesIn(ChartContent const& content, CRect const& rect, CDC& dc);

    std::unique_ptr<C2DGraph> m_graph;
    CSize m_size;
    int m_dotsPerInch;
    Look m_look;
    Palette m_palette;
    /// What all series say together.
    CurveData m_data;
    PlotAxisSettings m_x;
    PlotAxisSettings m_y;
    /// Where axes and their labels have to stay.
    CRect m_axesRoom;
};

} // namespace ombrel
