#include "tools/ombrel/PlotCurves.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DLinePlot.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/Options.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <limits>

namespace ombrel::host {

namespace {

/// Distinct for colour-blind readers too, and dark enough on white: blue, vermilion, green, purple, sky blue, orange,
/// black.
constexpr std::array<COLORREF, 7> kColours { RGB(0, 114, 178), RGB(213, 94, 0), RGB(0, 158, 115), RGB(204, 121, 167),
    RGB(86, 180, 233), RGB(230, 159, 0), RGB(0, 0, 0) };

constexpr std::array<C2DSymbol::SymbolType, 7> kSymbols { C2DSymbol::Circle, C2DSymbol::Square, C2DSymbol::Diamond,
    C2DSymbol::Triangle, C2DSymbol::InvertedTriangle, C2DSymbol::Cross, C2DSymbol::Plus };

/// Points of usual tables stand close together.
constexpr double kSymbolScale = 0.7;

/// A lighter shade, so that a curve stands out from the area under it.
COLORREF Tint(COLORREF colour)
{
    auto const lighten = [](int channel) { return 255 - (255 - channel) * 2 / 5; };
    return RGB(lighten(GetRValue(colour)), lighten(GetGValue(colour)), lighten(GetBValue(colour)));
}

void SetLook(C2DLine& line, Options const& options, std::size_t index)
{
    COLORREF const colour = kColours[index % kColours.size()];
    line.SetColour(colour);
    // When the colours begin again, dashes tell the curves apart.
    line.SetLineType(static_cast<int>(index / kColours.size() % (C2DCurve::kLineTypes + 1)));
    line.SetLineWidth(options.lineWidth);
    line.SetAntialiasingOn(options.antialias);
    switch (options.kind) {
    case PlotKind::Line:
        break;
    case PlotKind::Steps:
        line.SetPointConnectionMode(C2DLine::cmStepped);
        // A value holds until the next one.
        line.SetStepMode(C2DLine::smHorizontalFirst);
        break;
    case PlotKind::Pairs:
        line.SetPointConnectionMode(C2DLine::cmPairs);
        break;
    case PlotKind::Points:
        line.SetPointConnectionMode(C2DLine::cmNone);
        break;
    case PlotKind::Filled:
        line.SetFillOn(1);
        line.SetFillPattern(C2DLine::kSolidPattern);
        line.SetFillColour(Tint(colour));
        if (!options.yLog) {
            line.SetAutoBaseline(0);
            line.SetBaseline(0.0);
        }
        break;
    }
    if (options.symbols || options.kind == PlotKind::Points) {
        line.SetSymbolType(kSymbols[index % kSymbols.size()]);
        line.SetSymbolColour(colour);
        line.SetSymbolFillColour(colour);
        line.SetFillSymbol(1);
        line.SetSymbolScaleFac(kSymbolScale);
    }
}

/// The largest and smallest of what was seen.
struct Extent {
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();
    void Add(AxisRange& range) const
    {
        if (min > max)
            return;
        bool const first = range.min > range.max;
        range = first ? AxisRange { min, max } : AxisRange { std::min(range.min, min), std::max(range.max, max) };
    }
};

/// Turns what the reader calls a gap, and what a logarithmic axis cannot show, into the library's gaps.
void MarkGaps(double* values, std::size_t count, bool logarithmic, std::size_t& notPositive)
{
    for (std::size_t i = 0; i < count; ++i) {
        bool const unfit = logarithmic && values[i] <= 0.0;
        notPositive += unfit;
        if (unfit || std::isnan(values[i]))
            values[i] = kGap;
    }
}

/// The points that have both values and lie in the part of the x axis that is shown.
void AddExtents(double const* xs, double const* ys, std::size_t count, AxisRange const& shown, CurveData& data)
{
    Extent x;
    Extent y;
    for (std::size_t i = 0; i < count; ++i) {
        if (xs[i] == kGap || ys[i] == kGap || xs[i] < shown.min || xs[i] > shown.max)
            continue;
        x.min = std::min(x.min, xs[i]);
        x.max = std::max(x.max, xs[i]);
        y.min = std::min(y.min, ys[i]);
        y.max = std::max(y.max, ys[i]);
    }
    x.Add(data.x);
    y.Add(data.y);
}

/// Writes the column's values to out; the last one who wants them takes them.
void TakeValues(ColumnValues& values, bool isLast, double* out)
{
    if (isLast)
        values.MoveTo(out);
    else
        values.ForEach([&out](double v) { *out++ = v; });
}

void FillCurve(C2DLine& line, PlotSource& source, std::size_t curve, Options const& options, AxisRange const& shown,
    CurveData& data)
{
    Table& table = source.table;
    std::size_t const count = table.rows;
    CTableData points;
    points.Initialise(2, static_cast<int>(count), 0);
    double* const xs = points.GetRow(0);
    double* const ys = points.GetRow(1);
    auto const begin = source.yColumns.begin();
    std::size_t const y = source.yColumns[curve];
    bool const isLastCurve = curve + 1 == source.yColumns.size();
    bool const yIsNeeded = y == source.xColumn
        || std::find(begin + static_cast<std::ptrdiff_t>(curve) + 1, source.yColumns.end(), y) != source.yColumns.end();
    TakeValues(table.columns[y].values, !yIsNeeded, ys);
    if (source.xColumn == PlotSource::kRowNumbers) {
        for (std::size_t i = 0; i < count; ++i)
            xs[i] = static_cast<double>(i + 1);
    } else {
        TakeValues(table.columns[source.xColumn].values, isLastCurve, xs);
    }
    MarkGaps(xs, count, options.xLog, data.notPositive);
    MarkGaps(ys, count, options.yLog, data.notPositive);
    AddExtents(xs, ys, count, shown, data);
    line.SetPoints(std::move(points));
}

} // namespace

std::vector<std::string> CurveTitles(std::vector<PlotSource> const& sources)
{
    std::vector<std::string> titles;
    std::vector<std::string> files;
    for (PlotSource const& source : sources) {
        for (std::size_t const column : source.yColumns) {
            std::string const& name = source.table.columns[column].name;
            titles.push_back(name.empty() ? "column " + std::to_string(column + 1) : name);
            files.push_back(std::filesystem::path(source.name).stem().string());
        }
    }
    std::vector<std::string> const names = titles;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (sources.size() > 1 && std::count(names.begin(), names.end(), names[i]) > 1)
            titles[i] = files[i] + ": " + names[i];
    }
    return titles;
}

CurveData AddCurves(C2DGraph& graph, Options const& options, std::vector<PlotSource>& sources, AxisRange const& shown)
{
    std::vector<std::string> const titles = CurveTitles(sources);
    auto* const plot = static_cast<C2DLinePlot*>(graph.AddPlot(it2DLinePlot));
    CurveData data;
    std::size_t index = 0;
    for (PlotSource& source : sources) {
        if (source.table.rows > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            throw Failure(kDataFault, source.name + ": has more than 2147483647 rows");
        for (std::size_t i = 0; i < source.yColumns.size(); ++i, ++index) {
            auto& line = static_cast<C2DLine&>(*plot->CreateCurve());
            line.SetTitle(CString(titles[index]));
            line.SetDataSourceType(CPlotComponent::dsTable);
            if (source.HasDates())
                line.SetXValMode(C2DCurve::xvDates);
            SetLook(line, options, index);
            FillCurve(line, source, i, options, shown, data);
        }
    }
    return data;
}

} // namespace ombrel::host
