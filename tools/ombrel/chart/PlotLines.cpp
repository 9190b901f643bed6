#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DLinePlot.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/chart/PlotCurves.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ombrel::host {

namespace {

/// Points of usual tables stand close together.
constexpr double kSymbolScale = 0.7;

void SetConnection(C2DLine& line, Options const& options, CurveLook const& look)
{
    switch (options.kind) {
    case PlotKind::Steps:
        line.SetPointConnectionMode(C2DLine::cmStepped);
        // A value holds until the next one.
        line.SetStepMode(C2DLine::smHorizontalFirst);
        break;
    case PlotKind::Pairs:
        line.SetPointConnectionMode(C2DLine::cmPairs);
        break;
    case PlotKind::Points:
    case PlotKind::Error:
    case PlotKind::Text:
        line.SetPointConnectionMode(C2DLine::cmNone);
        break;
    case PlotKind::Filled:
        line.SetFillOn(1);
        line.SetFillPattern(kSolidFillPattern);
        line.SetFillColour(look.tint);
        if (options.polar) {
            line.SetShadeMode(C2DLine::shClosed);
        } else if (!options.yLog) {
            line.SetAutoBaseline(0);
            line.SetBaseline(0.0);
        }
        break;
    default:
        break;
    }
}

void SetSymbols(C2DLine& line, CurveLook const& look)
{
    line.SetSymbolType(look.symbol);
    line.SetSymbolColour(look.colour);
    line.SetSymbolFillColour(look.colour);
    line.SetFillSymbol(1);
    line.SetSymbolScaleFac(kSymbolScale);
}

void SetLook(C2DLine& line, Options const& options, CurveLook const& look)
{
    line.SetColour(look.colour);
    line.SetLineType(look.lineType);
    line.SetLineWidth(options.lineWidth);
    line.SetAntialiasingOn(options.antialias);
    SetConnection(line, options, look);
    if (options.symbols || line.GetPointConnectionMode() == C2DLine::cmNone)
        SetSymbols(line, look);
}

/// The largest and smallest of what was seen.
struct Extent {
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();
    void Add(AxisRange& range) const
    {
        if (min > max)
            return;
        CurveData::Add(range, min);
        CurveData::Add(range, max);
    }
};

/// Adds the points that have both values and lie in the part of the x axis that is shown; returns their number.
std::size_t AddExtents(double const* xs, double const* ys, std::size_t count, AxisRange const& shown, CurveData& data)
{
    Extent x;
    Extent y;
    bool isWhole = true;
    std::size_t shownPoints = 0;
    for (std::size_t i = 0; i < count; ++i) {
        if (xs[i] == kGap || ys[i] == kGap || xs[i] < shown.min || xs[i] > shown.max)
            continue;
        ++shownPoints;
        isWhole = isWhole && xs[i] == std::floor(xs[i]);
        x.min = std::min(x.min, xs[i]);
        x.max = std::max(x.max, xs[i]);
        y.min = std::min(y.min, ys[i]);
        y.max = std::max(y.max, ys[i]);
    }
    x.Add(data.x);
    y.Add(data.y);
    data.wholeNumbers = data.wholeNumbers && isWhole;
    return shownPoints;
}

/// Writes the column's values to out; the last one who wants them takes them.
void TakeValues(ColumnValues& values, bool isLast, double* out)
{
    if (isLast)
        values.MoveTo(out);
    else
        values.ForEach([&out](double v) { *out++ = v; });
}

/// Angles and radii become x and y.
void MakeCartesian(std::span<double> xs, std::span<double> ys, bool radians)
{
    double const unit = radians ? 1.0 : std::numbers::pi / 180.0;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (xs[i] == kGap || ys[i] == kGap)
            continue;
        double const angle = xs[i] * unit;
        double const radius = ys[i];
        xs[i] = radius * std::cos(angle);
        ys[i] = radius * std::sin(angle);
    }
}

/// Reads the points of one y column.
CTableData TakePoints(PlotSource& source, std::size_t curve)
{
    Table& table = source.table;
    CTableData points;
    points.Initialise(2, static_cast<int>(table.rows), 0);
    double* const xs = points.GetRow(0);
    auto const& columns = source.yColumns;
    std::size_t const y = columns[curve];
    auto const next = columns.begin() + static_cast<std::ptrdiff_t>(curve) + 1;
    bool const yIsNeeded = y == source.xColumn || std::find(next, columns.end(), y) != columns.end();
    TakeValues(table.columns[y].values, !yIsNeeded, points.GetRow(1));
    if (source.xColumn == PlotSource::kRowNumbers || source.HasWords()) {
        for (std::size_t i = 0; i < table.rows; ++i)
            xs[i] = static_cast<double>(i + 1);
    } else {
        TakeValues(table.columns[source.xColumn].values, next == columns.end(), xs);
    }
    return points;
}

/// Marks points that the line leaves out: with all others in a short curve, by dashes in a longer one, whose line would
/// not be seen for marks.
void MarkLonePoints(C2DLine& line, CurveLook const& look, std::span<double const> xs, std::span<double const> ys,
    std::size_t shownPoints, CurveInput const& input, CurveData const& data)
{
    constexpr std::size_t kFew = 100;
    int const mode = line.GetPointConnectionMode();
    if (mode == C2DLine::cmNone || line.GetSymbolType() != C2DSymbol::None)
        return;
    std::vector<std::size_t> const lone = LonePoints(xs, ys, mode == C2DLine::cmPairs);
    if (lone.empty())
        return;
    if (shownPoints <= kFew) {
        SetSymbols(line, look);
        return;
    }
    std::vector<double> loneXs;
    std::vector<double> loneYs;
    for (std::size_t const i : lone) {
        loneXs.push_back(xs[i]);
        loneYs.push_back(ys[i]);
    }
    AddDashes(input, loneXs, loneYs, 1.0, look.colour, data);
}

void FillCurve(C2DLine& line, CurveLook const& look, PlotSource& source, std::size_t curve, CurveInput const& input,
    CurveData& data)
{
    Options const& options = input.options;
    CTableData points = TakePoints(source, curve);
    std::size_t const count = source.table.rows;
    std::span<double> const xs(points.GetRow(0), count);
    std::span<double> const ys(points.GetRow(1), count);
    MarkGaps(xs, options.xLog, data.notPositive);
    MarkGaps(ys, options.yLog, data.notPositive);
    if (options.polar)
        MakeCartesian(xs, ys, options.radians);
    std::size_t const shownPoints = AddExtents(xs.data(), ys.data(), count, input.shown, data);
    if (shownPoints == 0)
        data.emptyColumns.push_back(line.GetTitle().ToUtf8());
    if (!source.errorColumns.empty()) {
        std::vector<double> errors(count);
        TakeValues(source.table.columns[source.errorColumns[curve]].values, false, errors.data());
        AddErrorBars(input, xs, ys, errors, static_cast<COLORREF>(line.GetColour()), data);
    }
    // What a value holds for, and the area below, go from each x to the next one.
    if (!options.polar && (options.kind == PlotKind::Filled || options.kind == PlotKind::Steps))
        SortByX(xs, ys);
    MarkLonePoints(line, look, xs, ys, shownPoints, input, data);
    line.SetPoints(std::move(points));
    if (options.kind == PlotKind::Text)
        data.labels.push_back({ &line, source.table.columns[source.labelColumn].texts });
}

} // namespace

CurveData AddLines(CurveInput const& input)
{
    std::vector<std::string> const titles = CurveTitles(input.sources);
    // Marks and lines lie over the error bars.
    if (!input.options.errorColumns.empty())
        input.graph.AddPlot(it2DErrorBarPlot);
    auto* const plot = static_cast<C2DLinePlot*>(input.graph.AddPlot(it2DLinePlot));
    CurveData data;
    data.wholeNumbers = true;
    std::size_t index = 0;
    for (PlotSource& source : input.sources) {
        for (std::size_t i = 0; i < source.yColumns.size(); ++i, ++index) {
            auto& line = static_cast<C2DLine&>(*plot->CreateCurve());
            line.SetTitle(CString(titles[index]));
            line.SetDataSourceType(CPlotComponent::dsTable);
            if (source.HasDates())
                line.SetXValMode(C2DCurve::xvDates);
            CurveLook const look = input.palette.At(index);
            SetLook(line, input.options, look);
            FillCurve(line, look, source, i, input, data);
        }
    }
    return data;
}

} // namespace ombrel::host
