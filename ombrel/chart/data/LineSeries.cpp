#include "ombrel/chart/data/SeriesCurves.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DLinePlot.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace ombrel {

namespace {

/// Points of usual tables stand close together.
constexpr double kSymbolScale = 0.7;

void SetConnection(C2DLine& line, SeriesKind kind, ChartSettings const& settings, CurveLook const& look)
{
    switch (kind) {
    case SeriesKind::Steps:
        line.SetPointConnectionMode(C2DLine::cmStepped);
        // A value holds until the next one.
        line.SetStepMode(C2DLine::smHorizontalFirst);
        break;
    case SeriesKind::Pairs:
        line.SetPointConnectionMode(C2DLine::cmPairs);
        break;
    case SeriesKind::Points:
    case SeriesKind::Texts:
        line.SetPointConnectionMode(C2DLine::cmNone);
        break;
    case SeriesKind::Filled:
        line.SetFillOn(1);
        line.SetFillPattern(kSolidFillPattern);
        line.SetFillColour(look.tint);
        if (settings.polar) {
            line.SetShadeMode(C2DLine::shClosed);
        } else if (!settings.yLog) {
            line.SetAutoBaseline(0);
            line.SetBaseline(0.0);
        }
        break;
    default:
        break;
    }
}

void SetSymbols(C2DLine& line, SeriesData const& one, CurveLook const& look)
{
    line.SetSymbolType(look.symbol);
    line.SetSymbolColour(look.colour);
    line.SetSymbolFillColour(look.colour);
    line.SetFillSymbol(1);
    line.SetSymbolScaleFac(kSymbolScale * one.markSize);
}

void SetLook(C2DLine& line, SeriesData const& one, ChartSettings const& settings, CurveLook const& look)
{
    line.SetColour(look.colour);
    line.SetLineType(look.lineType);
    line.SetLineWidth(one.lineWidth);
    line.SetAntialiasingOn(one.smooth);
    SetConnection(line, one.kind, settings, look);
    if (one.marked || line.GetPointConnectionMode() == C2DLine::cmNone)
        SetSymbols(line, one, look);
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

/// Angles and radii become x and y.
void MakeCartesian(std::span<double> xs, std::span<double> ys, ChartSettings const& settings)
{
    double const unit = settings.radians ? 1.0 : std::numbers::pi / 180.0;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (xs[i] == kGap || ys[i] == kGap)
            continue;
        double const angle = xs[i] * unit;
        double const radius = ys[i];
        xs[i] = radius * (settings.north ? std::sin(angle) : std::cos(angle));
        ys[i] = radius * (settings.north ? std::cos(angle) : std::sin(angle));
    }
}

/// The points that the line leaves out.
std::vector<std::size_t> LeftOut(C2DLine const& line, std::span<double const> xs, std::span<double const> ys)
{
    int const mode = line.GetPointConnectionMode();
    if (mode == C2DLine::cmNone || line.GetSymbolType() != C2DSymbol::None)
        return {};
    return LonePoints(xs, ys, mode == C2DLine::cmPairs);
}

/// Marks points that the line leaves out: with all others in a short curve, by dashes in a longer one, whose line would
/// not be seen for marks.
void MarkLonePoints(C2DLine& line, SeriesData const& one, CurveLook const& look, std::span<double const> xs,
    std::span<double const> ys, std::size_t shownPoints, CurveInput const& input, CurveData const& data)
{
    constexpr std::size_t kFew = 100;
    std::vector<std::size_t> const lone = LeftOut(line, xs, ys);
    if (lone.empty())
        return;
    if (shownPoints <= kFew) {
        SetSymbols(line, one, look);
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

/// A series' points as its curve has them.
class CurvePoints {
public:
    /// one.shown gets what they say.
    CurvePoints(CurveInput const& input, SeriesData& one)
        : m_points(input.takeOver ? std::move(one.points) : one.points)
        , m_count(static_cast<std::size_t>(m_points.GetNumCols()))
    {
        ChartSettings const& settings = input.settings;
        one.shown = CurveData();
        MarkGaps(X(), settings.xLog, one.shown.notPositive);
        MarkGaps(Y(), settings.yLog, one.shown.notPositive);
        if (settings.polar)
            MakeCartesian(X(), Y(), settings);
        m_shown = AddExtents(X().data(), Y().data(), m_count, input.shown, one.shown);
        if (m_shown == 0)
            one.shown.empty.push_back(one.name);
    }
    std::span<double> X() { return { m_points.GetRow(0), m_count }; }
    std::span<double> Y() { return { m_points.GetRow(1), m_count }; }
    /// How many of them are shown.
    std::size_t CountShown() const { return m_shown; }
    /// What a value holds for, and the area below, go from each x to the next one; words have no order but that in
    /// which they stand.
    void Sort(SeriesKind kind, ChartSettings const& settings)
    {
        bool const fromLeft = kind == SeriesKind::Filled || kind == SeriesKind::Steps
            || (kind == SeriesKind::Line && settings.xKind == XKind::Words);
        if (fromLeft && !settings.polar)
            SortByX(X(), Y());
    }
    CTableData Take() { return std::move(m_points); }

private:
    CTableData m_points;
    std::size_t m_count;
    std::size_t m_shown = 0;
};

void AddLine(C2DLinePlot& plot, CurveInput const& input, SeriesData& one)
{
    auto& line = static_cast<C2DLine&>(*plot.CreateCurve());
    line.SetTitle(CString(one.name));
    line.SetDataSourceType(CPlotComponent::dsTable);
    if (input.settings.xKind == XKind::Dates)
        line.SetXValMode(C2DCurve::xvDates);
    CurveLook const look = input.LookOf(one);
    SetLook(line, one, input.settings, look);
    CurvePoints points(input, one);
    if (!one.errors.empty())
        AddErrorBars(input, points.X(), points.Y(), one.errors, look.colour, one.shown);
    points.Sort(one.kind, input.settings);
    MarkLonePoints(line, one, look, points.X(), points.Y(), points.CountShown(), input, one.shown);
    line.SetPoints(points.Take());
    if (!one.labels.empty())
        one.shown.labels.push_back({ &line, one.labels });
    one.line = &line;
}

} // namespace

void AddLines(CurveInput const& input, CurveData& data)
{
    // Marks and lines lie over the error bars.
    if (std::any_of(
            input.series.begin(), input.series.end(), [](SeriesData const* one) { return !one->errors.empty(); }))
        input.graph.AddPlot(it2DErrorBarPlot);
    auto& plot = static_cast<C2DLinePlot&>(*input.graph.AddPlot(it2DLinePlot));
    for (SeriesData* const one : input.series) {
        AddLine(plot, input, *one);
        data.Add(one->shown);
    }
}

bool RefillLine(CurveInput const& input, SeriesData& one)
{
    if (!one.line || !one.errors.empty() || one.kind == SeriesKind::Texts)
        return false;
    CurvePoints points(input, one);
    points.Sort(one.kind, input.settings);
    if (!LeftOut(*one.line, points.X(), points.Y()).empty())
        return false;
    one.line->SetPoints(points.Take());
    return true;
}

} // namespace ombrel
