#include "tools/ombrel/commands/PlotCommand.h"
#include "ombrel/chart/Chart.h"
#include "ombrel/chart/Document.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/commands/SourceSeries.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/PlotChecks.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace ombrel::host {

namespace {

[[noreturn]] void FailUsage(std::string const& text) { throw Failure(kUsageFault, text); }

/// Dates are in the order that options or the first column settle.
std::optional<AxisEnds> EndsOf(std::optional<std::string> const& text, std::vector<PlotSource> const& sources,
    bool dates, Options const& options, char axis)
{
    if (!text)
        return std::nullopt;
    PlotSource const& first = sources.front();
    std::optional<DateOrder> order = options.table.dateOrder;
    if (!order && dates)
        order = first.table.columns[first.xColumn].dateOrder;
    auto const parse = [&](std::string const& range) {
        return ParseRange(range, dates, options.dateFormat ? &*options.dateFormat : nullptr, order);
    };
    if (auto const ends = parse(*text))
        return ends;
    std::size_t const colon = text->find(':');
    bool const isSwapped = parse(text->substr(colon + 1) + ':' + text->substr(0, colon)).has_value();
    FailUsage(std::string("--") + axis + "-range: expected A:B with A below B, "
        + (dates ? "dates such as 2020-01-01" : "numbers") + ", found " + QuoteForMessage(*text)
        + (isSwapped ? std::string(" (--reverse ") + axis + " turns an axis round)" : ""));
}

/// Whether there are dates along x, which options ask for.
bool HaveDates(std::vector<PlotSource> const& sources, Options const& options)
{
    bool const dates = sources.front().HasDates();
    if (sources.front().HasWords() && options.xRange)
        FailUsage("--x-range: the x values are words");
    if (!dates && options.dateFormat)
        FailUsage("--date-format: there is no column of dates along x");
    return dates;
}

std::string XTitle(std::vector<PlotSource> const& sources)
{
    for (PlotSource const& source : sources) {
        if (source.xColumn == PlotSource::kRowNumbers)
            return "row";
        if (!source.table.columns[source.xColumn].name.empty())
            return source.table.columns[source.xColumn].name;
    }
    return {};
}

/// The different names of the columns, unless they are too long together or there are none.
std::string YTitle(std::vector<PlotSource> const& sources)
{
    constexpr std::size_t kLongest = 60;
    std::vector<std::string> names;
    std::string title;
    for (PlotSource const& source : sources) {
        for (std::size_t const index : source.yColumns) {
            std::string const& name = source.table.columns[index].name;
            if (name.empty())
                return {};
            if (std::find(names.begin(), names.end(), name) != names.end())
                continue;
            names.push_back(name);
            title += (title.empty() ? "" : ", ") + name;
            if (names.size() > 1 && title.size() > kLongest)
                return {};
        }
    }
    return title;
}

std::vector<PlotSource> ReadSources(
    Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages)
{
    std::vector<PlotSource> sources;
    for (auto const& file : files) {
        if (LooksLikeDocument(file->Peek(kDocumentMarkLength)))
            throw Failure(
                kDataFault, file->GetName() + ": expected a table, found a graph document (ombrel draw draws it)");
        std::vector<PlotSource> some = ReadPlotSources(options, *file, messages);
        std::move(some.begin(), some.end(), std::back_inserter(sources));
    }
    return sources;
}

std::size_t CountCurves(std::vector<PlotSource> const& sources)
{
    std::size_t count = 0;
    for (PlotSource const& source : sources)
        count += source.yColumns.size();
    return count;
}

bool HasLegend(Options const& options, std::size_t curves)
{
    return options.legend == LegendPlace::Auto ? curves > 1 : options.legend != LegendPlace::Off;
}

/// Of groups it tells the words, and the columns' names only where there are several.
bool LegendNamesColumns(Options const& options, std::vector<PlotSource> const& sources)
{
    std::size_t const curves = CountCurves(sources);
    bool const namesGroups = sources.front().group && sources.front().yColumns.size() == 1;
    return curves > 1 && HasLegend(options, curves) && !namesGroups;
}

/// What the kind of plot calls its heights; empty for what the columns are called.
std::string MeasureOf(Options const& options)
{
    if (options.kind == PlotKind::Histogram)
        return "count";
    if (options.percent)
        return "%";
    return options.normalised ? "share" : "";
}

/// The title, and the ends that were asked for.
void SetAxis(ChartAxis& axis, std::string const& title, std::optional<AxisEnds> const& ends)
{
    axis.Title(title);
    if (ends && ends->min)
        axis.From(*ends->min);
    if (ends && ends->max)
        axis.To(*ends->max);
}

void SetAxes(Chart& chart, Options const& options, std::vector<PlotSource> const& sources)
{
    bool const histogram = options.kind == PlotKind::Histogram;
    bool const inLegend = LegendNamesColumns(options, sources);
    // What a legend tells need not be told twice.
    std::string const x = histogram ? (inLegend ? "" : YTitle(sources)) : XTitle(sources);
    std::string y = MeasureOf(options);
    if (y.empty() && !inLegend)
        y = YTitle(sources);
    bool const dates = HaveDates(sources, options);
    if (options.equal && (dates || sources.front().HasWords()))
        FailUsage("--equal: the x values are " + std::string(dates ? "dates" : "words"));
    chart.EqualScales(options.equal);
    SetAxis(chart.X(), options.xTitle.value_or(x), EndsOf(options.xRange, sources, dates, options, 'x'));
    SetAxis(chart.Y(), options.yTitle.value_or(y), EndsOf(options.yRange, sources, false, options, 'y'));
    chart.X().Logarithmic(options.xLog).Reversed(options.xReversed);
    chart.Y().Logarithmic(options.yLog).Reversed(options.yReversed);
}

Chart ChartFor(Options const& options, std::vector<PlotSource> const& sources, Messages const& messages)
{
    std::size_t const curves = CountCurves(sources);
    if (options.kind == PlotKind::Bar && curves > 1)
        messages.Note(Counted(curves, "column", "columns") + ": the bars stand side by side");
    Chart chart(options.title);
    chart.Footnote(options.footnote)
        .SetTheme(options.theme)
        .SetPalette(options.palette)
        .Grid(options.grid)
        .Legend(options.legend);
    chart.Percent(options.percent).Normalised(options.normalised).Bins(options.bins);
    if (options.polar)
        chart.Polar(options.radians ? Chart::Angle::Radians : Chart::Angle::Degrees).North(options.north);
    for (CaptionSettings const& caption : options.captions)
        chart.Caption(caption.text, caption.x, caption.y);
    SetAxes(chart, options, sources);
    return chart;
}

/// The charts of options, one picture after the other.
class Plotter {
public:
    Plotter(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages)
        : m_options(options)
        , m_messages(messages)
        , m_sources(ReadSources(options, files, messages))
        , m_chart(ChartFor(options, m_sources, messages))
        , m_name(files.front()->GetName())
    {
    }

    /// Laid out for the picture; the points go into the last one.
    C2DGraph& Graph(Picture& picture, bool isLast)
    {
        try {
            if (!m_hasSeries)
                AddSeries(m_chart, m_sources, m_options);
            bool const isTold = std::exchange(m_hasSeries, true);
            if (isLast)
                m_graph = m_chart.TakeGraph(picture.GetDC(), picture.GetRect());
            C2DGraph& graph = isLast ? *m_graph : m_chart.Graph(picture.GetDC(), picture.GetRect());
            if (!isTold)
                m_messages.Tell(m_chart.Notes());
            return graph;
        } catch (SeriesError const& error) {
            throw Failure(kDataFault, PlacedText(error, m_sources));
        } catch (ChartError const& error) {
            m_messages.Tell(m_chart.Notes());
            if (error.GetCause() == ChartError::Cause::Data)
                throw Failure(kDataFault, m_name + ": " + error.what());
            throw;
        }
    }
    /// The last graph.
    std::unique_ptr<C2DGraph> Take() { return std::move(m_graph); }

private:
    Options const& m_options;
    Messages const& m_messages;
    std::vector<PlotSource> m_sources;
    Chart m_chart;
    bool m_hasSeries = false;
    std::string m_name;
    std::unique_ptr<C2DGraph> m_graph;
};

} // namespace

std::unique_ptr<C2DGraph> MakePlot(
    Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Picture& picture, Messages const& messages)
{
    Plotter plotter(options, files, messages);
    plotter.Graph(picture, true);
    return plotter.Take();
}

void RunPlot(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages)
{
    CheckPlotOptions(options);
    Outputs outputs(options, options.files.front());
    outputs.SetTitle(OneLine(options.title));
    Plotter plotter(options, files, messages);
    auto const draw = [&plotter](Picture& picture, bool isLast) {
        C2DGraph& graph = plotter.Graph(picture, isLast);
        picture.Draw(graph);
        return &graph;
    };
    outputs.Write(draw, messages);
}

} // namespace ombrel::host
