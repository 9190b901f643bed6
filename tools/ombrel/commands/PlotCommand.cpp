#include "tools/ombrel/commands/PlotCommand.h"
#include "ombrel/chart/Chart.h"
#include "ombrel/chart/Document.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/OutputFile.h"
#include "tools/ombrel/commands/SharedWords.h"
#include "tools/ombrel/commands/SourceSeries.h"
#include "tools/ombrel/commands/TableFile.h"
#include "tools/ombrel/options/OptionValues.h"
#include "tools/ombrel/options/PlotChecks.h"

#include <algorithm>
#include <iterator>

namespace ombrel::host {

namespace {

[[noreturn]] void FailUsage(std::string const& text) { throw Failure(kUsageFault, text); }

std::optional<AxisEnds> EndsOf(
    std::optional<std::string> const& text, bool dates, Options const& options, char const* option)
{
    if (!text)
        return std::nullopt;
    auto const ends = ParseRange(*text, dates, options.dateFormat ? &*options.dateFormat : nullptr);
    if (!ends)
        FailUsage(std::string(option) + ": expected A:B with A below B, "
            + (dates ? "dates such as 2020-01-01" : "numbers") + ", found " + QuoteForMessage(*text));
    return ends;
}

/// All sources have dates along x, or none has.
bool HaveDates(std::vector<PlotSource> const& sources, Options const& options)
{
    bool const dates = sources.front().HasDates();
    for (PlotSource const& source : sources) {
        if (source.HasDates() != dates)
            throw Failure(kDataFault,
                source.name + ": expected " + (dates ? "dates" : "numbers") + " along x as in " + sources.front().name
                    + ", found " + (dates ? "numbers" : "dates"));
    }
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
    SetAxis(chart.X(), options.xTitle.value_or(x), EndsOf(options.xRange, dates, options, "--x-range"));
    SetAxis(chart.Y(), options.yTitle.value_or(y), EndsOf(options.yRange, false, options, "--y-range"));
    chart.X().Logarithmic(options.xLog);
    chart.Y().Logarithmic(options.yLog);
}

} // namespace

std::unique_ptr<C2DGraph> MakePlot(
    Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Picture& picture, Messages const& messages)
{
    std::vector<PlotSource> sources = ReadSources(options, files, messages);
    std::size_t const curves = CountCurves(sources);
    if (options.kind == PlotKind::Bar && curves > 1)
        messages.Note(Counted(curves, "column", "columns") + ": the bars stand side by side");
    Chart chart(options.title);
    chart.SetTheme(options.theme).SetPalette(options.palette).Grid(options.grid).Legend(options.legend);
    chart.Percent(options.percent).Normalised(options.normalised).Bins(options.bins);
    if (options.polar)
        chart.Polar(options.radians ? Chart::Angle::Radians : Chart::Angle::Degrees);
    for (CaptionSettings const& caption : options.captions)
        chart.Caption(caption.text, caption.x, caption.y);
    chart.SetWords(WordsAlongX(sources));
    SetAxes(chart, options, sources);
    try {
        AddSeries(chart, sources, options);
        std::unique_ptr<C2DGraph> graph = chart.TakeGraph(picture.GetDC(), picture.GetRect());
        messages.Tell(chart.Notes());
        return graph;
    } catch (SeriesError const& error) {
        throw Failure(kDataFault, PlacedText(error, sources));
    } catch (ChartError const& error) {
        messages.Tell(chart.Notes());
        if (error.GetCause() == ChartError::Cause::Data)
            throw Failure(kDataFault, files.front()->GetName() + ": " + error.what());
        throw;
    }
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
