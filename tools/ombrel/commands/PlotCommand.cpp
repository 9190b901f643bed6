#include "tools/ombrel/commands/PlotCommand.h"
#include "ombrel/chart/AxesLayout.h"
#include "ombrel/chart/Document.h"
#include "ombrel/chart/FillLook.h"
#include "ombrel/chart/LegendPlacement.h"
#include "ombrel/chart/PointLabels.h"
#include "ombrel/chart/Titles.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DPolarGrid.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/chart/PlotCurves.h"
#include "tools/ombrel/commands/SharedWords.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/PlotChecks.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace ombrel::host {

namespace {

[[noreturn]] void FailUsage(std::string const& text) { throw Failure(kUsageFault, text); }

void ApplyRange(
    PlotAxisSettings& axis, std::optional<std::string> const& text, Options const& options, char const* option)
{
    if (!text)
        return;
    if (!axis.words.empty())
        FailUsage(std::string(option) + ": the x values are words");
    auto const ends = ParseRange(*text, axis.dates, options.dateFormat ? &*options.dateFormat : nullptr);
    if (!ends)
        FailUsage(std::string(option) + ": expected A:B with A below B, "
            + (axis.dates ? "dates such as 2020-01-01" : "numbers") + ", found " + QuoteForMessage(*text));
    for (std::optional<double> const& end : { ends->min, ends->max }) {
        if (axis.logarithmic && end && *end <= 0.0)
            FailUsage(std::string(option) + ": expected ends above zero on a logarithmic axis, found "
                + QuoteForMessage(*text));
    }
    axis.min = ends->min;
    axis.max = ends->max;
}

/// All sources have dates along x, or none has.
bool CheckDates(std::vector<PlotSource> const& sources, Options const& options)
{
    bool const dates = sources.front().HasDates();
    for (PlotSource const& source : sources) {
        if (source.HasDates() != dates)
            throw Failure(kDataFault,
                source.name + ": expected " + (dates ? "dates" : "numbers") + " along x as in " + sources.front().name
                    + ", found " + (dates ? "numbers" : "dates"));
    }
    if (dates && options.xLog)
        FailUsage("--log x: the x values are dates");
    if (dates && options.polar)
        FailUsage("--polar: the x values are dates, not angles");
    if (sources.front().HasWords() && options.xLog)
        FailUsage("--log x: the x values are words");
    if (sources.front().HasWords() && options.polar)
        FailUsage("--polar: the x values are words, not angles");
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

bool IsBarKind(PlotKind kind)
{
    return kind == PlotKind::Bar || kind == PlotKind::Clustered || kind == PlotKind::Stacked
        || kind == PlotKind::Histogram;
}

bool IsMarkKind(PlotKind kind) { return kind == PlotKind::Points || kind == PlotKind::Error || kind == PlotKind::Text; }

/// What the kind of plot calls its heights; empty for what the columns are called.
std::string MeasureOf(Options const& options)
{
    if (options.kind == PlotKind::Histogram)
        return "count";
    if (options.percent)
        return "%";
    return options.normalised ? "share" : "";
}

PlotAxisSettings XSettings(Options const& options, std::vector<PlotSource> const& sources)
{
    PlotAxisSettings x;
    x.words = WordsAlongX(sources);
    x.dates = CheckDates(sources, options);
    x.logarithmic = options.xLog;
    bool const histogram = options.kind == PlotKind::Histogram;
    x.counts = !histogram && std::all_of(sources.begin(), sources.end(), [](PlotSource const& s) {
        return s.xColumn == PlotSource::kRowNumbers;
    });
    // What a legend tells need not be told twice.
    bool const isInLegend = histogram && LegendNamesColumns(options, sources);
    x.title = OneLine(options.xTitle.value_or(isInLegend ? "" : histogram ? YTitle(sources) : XTitle(sources)));
    ApplyRange(x, options.xRange, options, "--x-range");
    return x;
}

PlotAxisSettings YSettings(Options const& options, std::vector<PlotSource> const& sources)
{
    PlotAxisSettings y;
    y.logarithmic = options.yLog;
    y.counts = options.kind == PlotKind::Histogram;
    std::string title = MeasureOf(options);
    if (title.empty() && !LegendNamesColumns(options, sources))
        title = YTitle(sources);
    y.title = OneLine(options.yTitle.value_or(title));
    ApplyRange(y, options.yRange, options, "--y-range");
    return y;
}

/// What the curves turned out to hold.
void TakeOver(PlotAxisSettings& x, PlotAxisSettings& y, CurveData const& data, Options const& options)
{
    x.data = data.x;
    y.data = data.y;
    x.barRoom = data.spacing / 2.0;
    if (IsMarkKind(options.kind))
        x.margin = kMarkMargin;
    y.margin = IsMarkKind(options.kind) || IsBarKind(options.kind) ? kMarkMargin : kCurveMargin;
    x.wholeDecades = y.wholeDecades = IsBarKind(options.kind);
    y.limit = options.percent ? 100.0 : options.normalised ? 1.0 : 0.0;
    x.counts = x.counts || data.wholeNumbers;
    if (options.kind == PlotKind::Filled && !options.yLog)
        y.data = { std::min(y.data.min, 0.0), std::max(y.data.max, 0.0) };
}

void CheckData(CurveData const& data, PlotAxisSettings const& y, Options const& options, std::string const& name,
    Messages const& messages)
{
    if (data.notPositive > 0)
        messages.Warning(Counted(data.notPositive, "value is", "values are")
            + " not above zero and cannot be shown on a logarithmic axis; taken as gaps");
    if (data.x.min > data.x.max || data.y.min > data.y.max)
        throw Failure(kDataFault,
            name + ": there is nothing to draw: all values are gaps"
                + (options.xRange ? " or outside of --x-range" : ""));
    if ((y.min && data.y.max < *y.min) || (y.max && data.y.min > *y.max))
        messages.Warning("nothing is drawn: all values, from " + NumberText(data.y.min) + " to "
            + NumberText(data.y.max) + ", lie outside of --y-range");
    for (std::string const& title : data.emptyColumns)
        messages.Warning(
            title + ": nothing is drawn: all values are gaps" + (options.xRange ? " or outside of --x-range" : ""));
}

/// Lays out axes, and on them what keeps its distance from the curves.
void LayOut(C2DGraph& graph, Options const& options, PlotAxisSettings const& x, PlotAxisSettings const& y,
    CurveData const& data, std::size_t curves, Look const& look, CDC& dc, Messages const& messages)
{
    auto const layOut = [&](CRect const& rect) {
        if (options.polar)
            LayOutPolar(graph, rect, dc);
        else
            LayOutAxes(graph, x, y, rect, dc);
    };
    CRect const rect = GraphRectIn(graph, graph.GetWindowRect(), dc);
    layOut(rect);
    if (HasLegend(options, curves))
        PlaceLegend(graph, options.legend, rect, dc, layOut);
    ChartNotes notes;
    SettleOutlines(graph, dc, notes);
    SettleMarks(graph, dc);
    PlaceLabels(graph, data.labels, dc, look, notes);
    messages.Tell(notes);
    PlaceTitle(graph, dc);
    PlaceCaptions(graph, options.captions, dc);
}

} // namespace

std::unique_ptr<C2DGraph> MakePlot(
    Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Picture& picture, Messages const& messages)
{
    std::vector<PlotSource> sources = ReadSources(options, files, messages);
    PlotAxisSettings x = XSettings(options, sources);
    PlotAxisSettings y = YSettings(options, sources);

    auto owner = std::make_unique<C2DGraph>(1);
    C2DGraph& graph = *owner;
    Look const look = options.polar ? PolarLookOf(options.theme) : LookOf(options.theme);
    graph.SetGraphFrameOn(0);
    graph.GetPolarGrid()->SetOn(options.polar);
    AddTitle(graph, OneLine(options.title), look);
    AddCaptions(graph, options.captions, look);
    ApplyLook(graph, look);
    bool const isLined = x.words.empty() && !IsBarKind(options.kind);
    SetGrid(graph, options.grid, isLined);
    std::size_t const curves = CountCurves(sources);
    Palette const palette = PaletteNamed(options.palette, curves, look);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    AxisRange const shown { x.min.value_or(-kInfinity), x.max.value_or(kInfinity) };
    CurveData const data = AddCurves({ graph, options, sources, look, palette, shown, messages });
    sources.clear();
    CheckData(data, y, options, files.front()->GetName(), messages);
    TakeOver(x, y, data, options);
    PutAxesOverFills(graph);
    graph.SetGraphAndWindowRect(picture.GetRect(), picture.GetRect());
    // Logarithmic axes follow the curves, and so does the legend.
    graph.UpdatePlots();
    LayOut(graph, options, x, y, data, curves, look, picture.GetDC(), messages);
    return owner;
}

void RunPlot(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages)
{
    CheckPlotOptions(options);
    Target target = MakeTarget(options, options.files.front());
    target.title = OneLine(options.title);
    CheckPaths(options, target);
    Picture picture(target);
    std::unique_ptr<C2DGraph> const graph = MakePlot(options, files, picture, messages);
    picture.Draw(*graph);
    std::string const bytes = picture.Encode();
    TellMarks(target, picture, messages);
    if (!options.save.empty())
        SaveDocument(options.save, *graph);
    WriteTarget(target, bytes, messages);
}

} // namespace ombrel::host
