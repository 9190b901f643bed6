#include "tools/ombrel/PlotCommand.h"
#include "ombrel/graph2d/2DGraph.h"
#include "tools/ombrel/Document.h"
#include "tools/ombrel/InputFile.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/Output.h"
#include "tools/ombrel/PlotAxes.h"
#include "tools/ombrel/PlotCurves.h"
#include "tools/ombrel/TableFile.h"
#include "tools/ombrel/Utf8.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ombrel::host {

namespace {

[[noreturn]] void FailUsage(std::string const& text) { throw Failure(kUsageFault, text); }

/// One end of a range; a year alone is a date where dates are wanted.
std::optional<double> ParseEnd(std::string const& text, bool dates, std::optional<DateFormat> const& format)
{
    if (!dates)
        return ParseCellNumber(text, '.');
    if (format) {
        if (auto const date = format->Parse(text))
            return date;
    }
    if (auto const date = ParseIsoDate(text))
        return date->days;
    auto const year = text.size() == 4 ? ParseCellNumber(text, '.') : std::nullopt;
    return year && *year >= 100.0 ? MakeDate(static_cast<int>(*year), 1, 1, 0.0) : std::nullopt;
}

/// A:B, where A and B may themselves hold colons, as times do.
void ApplyRange(AxisWish& axis, std::optional<std::string> const& text, Options const& options, char const* option)
{
    if (!text)
        return;
    if (axis.logarithmic)
        FailUsage(std::string(option) + ": a logarithmic axis spans the decades of its data");
    for (std::size_t colon = text->find(':'); colon != std::string::npos; colon = text->find(':', colon + 1)) {
        std::string const first = text->substr(0, colon);
        std::string const second = text->substr(colon + 1);
        auto const min = ParseEnd(first, axis.dates, options.dateFormat);
        auto const max = ParseEnd(second, axis.dates, options.dateFormat);
        if ((!min && !first.empty()) || (!max && !second.empty()))
            continue;
        bool const inOrder = !min || !max || *min < *max;
        bool const inReach
            = std::abs(min.value_or(0.0)) <= kLargestNumber && std::abs(max.value_or(0.0)) <= kLargestNumber;
        if (!inOrder || !inReach)
            break;
        axis.min = min;
        axis.max = max;
        return;
    }
    FailUsage(std::string(option) + ": expected A:B with A below B, "
        + (axis.dates ? "dates such as 2020-01-01" : "numbers") + ", found " + QuoteForMessage(*text));
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

/// Titles are one line.
std::string OneLine(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return text;
}

void CheckPaths(Options const& options, Target const& target)
{
    for (std::string const& file : options.files) {
        for (std::string const& path : { target.path, options.save }) {
            if (file != "-" && !path.empty() && IsSameFile(file, path))
                FailUsage(path + ": would be written over the input");
        }
    }
    if (!options.save.empty() && options.save == target.path)
        FailUsage(options.save + ": is to be the picture and the document");
}

} // namespace

void RunPlot(Options const& options, std::vector<std::unique_ptr<InputFile>>& files, Messages const& messages)
{
    Target target = MakeTarget(options, options.files.front());
    target.title = OneLine(options.title);
    CheckPaths(options, target);
    std::vector<PlotSource> sources;
    for (auto const& file : files) {
        if (LooksLikeDocument(file->Peek(kDocumentMarkLength)))
            throw Failure(
                kDataFault, file->GetName() + ": expected a table, found a graph document (ombrel draw draws it)");
        sources.push_back(ReadSource(options, *file, messages));
    }
    AxisWish x;
    AxisWish y;
    x.dates = CheckDates(sources, options);
    x.logarithmic = options.xLog;
    y.logarithmic = options.yLog;
    x.counts = std::all_of(
        sources.begin(), sources.end(), [](PlotSource const& s) { return s.xColumn == PlotSource::kRowNumbers; });
    x.title = OneLine(options.xTitle.value_or(XTitle(sources)));
    y.title = OneLine(options.yTitle.value_or(YTitle(sources)));
    ApplyRange(x, options.xRange, options, "--x-range");
    ApplyRange(y, options.yRange, options, "--y-range");

    C2DGraph graph(1);
    if (!target.title.empty())
        graph.SetTitle(CString(target.title));
    graph.SetGraphFrameOn(0);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    CurveData const data
        = AddCurves(graph, options, sources, { x.min.value_or(-kInfinity), x.max.value_or(kInfinity) });
    sources.clear();
    if (data.notPositive > 0)
        messages.Warning(Counted(data.notPositive, "value is", "values are")
            + " not above zero and cannot be shown on a logarithmic axis; taken as gaps");
    if (data.x.min > data.x.max || data.y.min > data.y.max)
        throw Failure(kDataFault,
            files.front()->GetName() + ": there is nothing to draw: all values are gaps"
                + (options.xRange ? " or outside of --x-range" : ""));
    x.data = data.x;
    y.data = data.y;
    if (options.kind == PlotKind::Filled && !options.yLog)
        y.data = { std::min(y.data.min, 0.0), std::max(y.data.max, 0.0) };
    {
        // Measured before the curves are evaluated, so that they are not drawn yet.
        Picture scratch(target);
        LayOutAxes(graph, x, y, scratch);
    }
    graph.UpdatePlots();
    Picture picture(target);
    DrawGraph(graph, picture);
    std::string const bytes = picture.Encode();
    if (!options.save.empty())
        SaveDocument(options.save, graph);
    WriteTarget(target, bytes, messages);
}

} // namespace ombrel::host
