#include "tools/ombrel/commands/SourceSeries.h"
#include "ombrel/chart/Chart.h"
#include "ombrel/table/Utf8.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/options/Options.h"

#include <algorithm>
#include <filesystem>
#include <limits>

namespace ombrel::host {

namespace {

SeriesKind KindOf(PlotKind kind)
{
    switch (kind) {
    case PlotKind::Steps:
        return SeriesKind::Steps;
    case PlotKind::Pairs:
        return SeriesKind::Pairs;
    case PlotKind::Points:
    case PlotKind::Error:
        return SeriesKind::Points;
    case PlotKind::Filled:
        return SeriesKind::Filled;
    case PlotKind::Bar:
    case PlotKind::Clustered:
        return SeriesKind::Bars;
    case PlotKind::Stacked:
        return SeriesKind::Stacked;
    case PlotKind::Area:
        return SeriesKind::Area;
    case PlotKind::Text:
        return SeriesKind::Texts;
    case PlotKind::Histogram:
        return SeriesKind::Histogram;
    default:
        // Kinds in space are drawn otherwise.
        return SeriesKind::Line;
    }
}

/// Writes the column's values to out; the last one who wants them takes them.
void TakeValues(ColumnValues& values, bool isLast, double* out)
{
    if (isLast)
        values.MoveTo(out);
    else
        values.ForEach([&out](double v) { *out++ = v; });
}

/// Adds the points of one y column.
Series& AddPoints(Chart& chart, SeriesKind kind, PlotSource& source, std::size_t curve)
{
    Table& table = source.table;
    auto const& columns = source.yColumns;
    std::size_t const y = columns[curve];
    auto const next = columns.begin() + static_cast<std::ptrdiff_t>(curve) + 1;
    bool const yIsNeeded = y == source.xColumn || std::find(next, columns.end(), y) != columns.end();
    if (source.HasWords()) {
        std::vector<double> ys(table.rows);
        TakeValues(table.columns[y].values, !yIsNeeded, ys.data());
        return chart.Add(kind, table.columns[source.xColumn].texts, ys);
    }
    CTableData points;
    points.Initialise(2, static_cast<int>(table.rows), 0);
    double* const xs = points.GetRow(0);
    TakeValues(table.columns[y].values, !yIsNeeded, points.GetRow(1));
    if (source.xColumn == PlotSource::kRowNumbers) {
        for (std::size_t i = 0; i < table.rows; ++i)
            xs[i] = static_cast<double>(i + 1);
    } else {
        TakeValues(table.columns[source.xColumn].values, next == columns.end(), xs);
    }
    return chart.Add(kind, std::move(points), source.HasDates() ? XKind::Dates : XKind::Numbers);
}

} // namespace

std::vector<std::string> CurveTitles(std::vector<PlotSource> const& sources)
{
    std::vector<std::string> titles;
    std::vector<std::string> files;
    for (PlotSource const& source : sources) {
        for (std::size_t const column : source.yColumns) {
            std::string const& name = source.table.columns[column].name;
            std::string title = name.empty() ? "column " + std::to_string(column + 1) : name;
            if (source.group) {
                std::string const group = source.group->empty() ? "(none)" : *source.group;
                if (source.yColumns.size() > 1)
                    title.insert(0, group + ", ");
                else
                    title = group;
            }
            titles.push_back(std::move(title));
            files.push_back(std::filesystem::path(source.table.name).stem().string());
        }
    }
    std::vector<std::string> const names = titles;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (sources.size() > 1 && std::count(names.begin(), names.end(), names[i]) > 1)
            titles[i] = files[i] + ": " + names[i];
    }
    return titles;
}

void AddSeries(Chart& chart, std::vector<PlotSource>& sources, Options const& options)
{
    std::vector<std::string> const titles = CurveTitles(sources);
    std::size_t index = 0;
    for (PlotSource& source : sources) {
        SeriesKind const kind = source.isMixed ? SeriesKind::Points : KindOf(options.kind);
        if (source.table.rows > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            throw Failure(kDataFault, source.table.name + ": has more than 2147483647 rows");
        for (std::size_t i = 0; i < source.yColumns.size(); ++i) {
            Series& series = AddPoints(chart, kind, source, i);
            series.Name(titles[index++]).Marks(options.symbols).Smooth(!options.surface.plainEdges);
            series.MarkSize(options.surface.symbolSize).Opacity(options.opacity);
            if (options.lineWidth)
                series.Width(*options.lineWidth);
            if (!source.errorColumns.empty()) {
                std::vector<double> errors(source.table.rows);
                TakeValues(source.table.columns[source.errorColumns[i]].values, false, errors.data());
                series.Errors(errors);
            }
            if (kind == SeriesKind::Texts)
                series.Labels(source.table.columns[source.labelColumn].texts);
        }
    }
}

std::string PlacedText(SeriesError const& error, std::vector<PlotSource> const& sources)
{
    std::size_t before = 0;
    for (PlotSource const& source : sources) {
        if (error.GetSeries() >= before + source.yColumns.size()) {
            before += source.yColumns.size();
            continue;
        }
        if (!error.GetPoint())
            return source.table.name + ": " + error.what();
        std::string text = source.PlaceOf(*error.GetPoint());
        if (source.group)
            text += "group " + QuoteForMessage(*source.group) + ": ";
        text += error.what();
        if (error.GetEarlierPoint())
            text += " (line " + std::to_string(source.table.LineOf(*error.GetEarlierPoint())) + " has it)"
                + (source.group ? "" : "; --by COL makes a curve of each group");
        return text;
    }
    return error.what();
}

} // namespace ombrel::host
