#include "ombrel/chart/data/BarSeries.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DBarPlot.h"
#include "ombrel/graph2d/2DClusteredBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DStackedBarPlot.h"
#include "ombrel/layout/ChartError.h"

#include <algorithm>
#include <cmath>

namespace ombrel {

namespace {

constexpr double kSingleWidth = 0.7;
constexpr double kClusterWidth = 0.8;

bool IsShown(CurveInput const& input, double x) { return x >= input.shown.min && x <= input.shown.max; }

CTableData TableOf(std::vector<double> const& xs, std::vector<double> const& ys)
{
    CTableData points(2, static_cast<int>(xs.size()));
    std::copy(xs.begin(), xs.end(), points.GetRow(0));
    std::copy(ys.begin(), ys.end(), points.GetRow(1));
    return points;
}

/// The x range of bars, whether or not all of them have values.
void AddPlaces(CurveInput const& input, SharedColumns const& shared, CurveData& data)
{
    data.spacing = shared.Spacing();
    data.wholeNumbers = shared.HasWholeNumbers();
    for (double const x : shared.xs) {
        if (IsShown(input, x))
            data.AddX(x);
    }
}

/// The values, and zero, where bars begin.
void AddHeights(CurveInput const& input, SharedColumns const& shared, CurveData& data)
{
    for (SharedColumns::Column const& column : shared.columns) {
        for (std::size_t i = 0; i < shared.xs.size(); ++i) {
            if (!IsGap(column.ys[i]) && IsShown(input, shared.xs[i]))
                data.AddY(column.ys[i]);
        }
    }
    if (!input.settings.yLog && data.y.min <= data.y.max)
        data.AddY(0.0);
}

/// The sums of the values above zero and of those below it at each x, or their shares.
void AddStackHeights(CurveInput const& input, SharedColumns const& shared, CurveData& data)
{
    bool anyPositive = false;
    for (std::size_t i = 0; i < shared.xs.size(); ++i) {
        double above = 0.0;
        double below = 0.0;
        bool isEmpty = true;
        for (SharedColumns::Column const& column : shared.columns) {
            double const y = column.ys[i];
            if (IsGap(y))
                continue;
            isEmpty = false;
            (y < 0.0 ? below : above) += y;
        }
        anyPositive = anyPositive || above > 0.0;
        if (isEmpty || !IsShown(input, shared.xs[i]))
            continue;
        double const whole = above - below;
        bool const isShare = input.settings.percent && whole > 0.0;
        data.AddY(isShare ? 100.0 * (above / whole) : above);
        data.AddY(isShare ? 100.0 * (below / whole) : below);
    }
    if (input.settings.percent && !anyPositive && data.y.min <= data.y.max)
        data.y = { 0.0, 100.0 };
}

void AddStackedBars(CurveInput const& input, SharedColumns& shared, CurveData& data)
{
    MarkGaps(input, shared, input.settings.yLog, data);
    AddPlaces(input, shared, data);
    AddStackHeights(input, shared, data);
    auto& plot = static_cast<C2DStackedBarPlot&>(*input.graph.AddPlot(it2DStackedBarPlot));
    plot.SetBarWidthFactor(kSingleWidth);
    plot.SetBorderColour(input.look.barBorder);
    plot.SetPlotStyle(input.settings.percent ? C2DStackedBarPlot::psPercent : C2DStackedBarPlot::psPlain);
    FillSeriesPlot(plot, input, shared);
}

void SetSolid(CPlotComponent& curve)
{
    if (auto* const clustered = DynamicDowncast<C2DClusteredBarCurve>(&curve))
        clustered->SetFillPattern(kSolidFillPattern);
    else if (auto* const stacked = DynamicDowncast<C2DStackedBarCurve>(&curve))
        stacked->SetFillPattern(kSolidFillPattern);
    else if (auto* const area = DynamicDowncast<C2DAreaCurve>(&curve))
        area->SetFillPattern(kSolidFillPattern);
}

/// Bars stand on the value 1 on a logarithmic axis: smaller values would hang from there.
void RequireValuesAboveOne(CurveInput const& input, SharedColumns const& shared)
{
    for (SharedColumns::Column const& column : shared.columns) {
        for (double const y : column.ys) {
            if (input.settings.yLog && y < 1.0)
                throw ChartError(ChartError::Cause::Setting,
                    "log y: bars side by side stand on 1, and " + column.series->name + " has values below it, such as "
                        + NumberText(y));
        }
    }
}

} // namespace

void FillSeriesPlot(C2DSeriesPlot& plot, CurveInput const& input, SharedColumns& shared)
{
    bool const dates = (input.settings.xKind == XKind::Dates);
    plot.SetXValueMode(1);
    plot.SetXValMode(dates ? C2DCurve::xvDates : C2DCurve::xvNumbers);
    plot.SetPoints(TableOf(shared.xs, std::vector<double>(shared.xs.size())));
    for (SharedColumns::Column const& column : shared.columns) {
        auto& curve = static_cast<C2DCurve&>(*plot.CreateCurve());
        CurveLook const look = input.LookOf(*column.series);
        curve.SetTitle(CString(column.series->name));
        curve.SetDataSourceType(CPlotComponent::dsTable);
        curve.SetScriptXValueMode(1);
        curve.SetXValMode(plot.GetXValMode());
        curve.SetColour(look.fill);
        SetSolid(curve);
        curve.SetPoints(TableOf(shared.xs, column.ys));
    }
}

void AddSingleBars(CurveInput const& input, SharedColumns& shared, double widthFactor, CurveData& data)
{
    MarkGaps(input, shared, input.settings.yLog, data);
    AddPlaces(input, shared, data);
    AddHeights(input, shared, data);
    SharedColumns::Column const& column = shared.columns.front();
    auto& bars = static_cast<C2DBarCurve&>(*input.graph.AddPlot(it2DBarPlot)->CreateCurve());
    CurveLook const look = input.LookOf(*column.series);
    bars.SetTitle(CString(column.series->name));
    bars.SetDataSourceType(CPlotComponent::dsTable);
    if ((input.settings.xKind == XKind::Dates))
        bars.SetXValMode(C2DCurve::xvDates);
    bars.SetColour(look.fill);
    bars.SetFillPattern(kSolidFillPattern);
    bars.SetBorderColour(input.look.barBorder);
    bars.SetBarWidthFactor(widthFactor);
    if (!input.settings.yLog) {
        bars.SetAutoBaseline(0);
        bars.SetBaseline(0.0);
    }
    bars.SetPoints(TableOf(shared.xs, column.ys));
    if (!column.errors.empty())
        AddErrorBars(input, shared.xs, column.ys, column.errors, input.look.text, data);
}

void AddClusteredBars(CurveInput const& input, SharedColumns& shared, double widthFactor, CurveData& data)
{
    RequireValuesAboveOne(input, shared);
    MarkGaps(input, shared, input.settings.yLog, data);
    AddPlaces(input, shared, data);
    AddHeights(input, shared, data);
    auto& plot = static_cast<C2DClusteredBarPlot&>(*input.graph.AddPlot(it2DClusteredBarPlot));
    plot.SetBarWidthFactor(widthFactor);
    plot.SetBorderColour(input.look.barBorder);
    FillSeriesPlot(plot, input, shared);
    double const bars = static_cast<double>(shared.columns.size());
    double const width = shared.Spacing() * widthFactor / bars;
    for (std::size_t i = 0; i < shared.columns.size(); ++i) {
        SharedColumns::Column const& column = shared.columns[i];
        if (column.errors.empty())
            continue;
        // In the middle of its bar.
        std::vector<double> xs = shared.xs;
        for (double& x : xs)
            x += (static_cast<double>(i) - (bars - 1.0) / 2.0) * width;
        AddErrorBars(input, xs, column.ys, column.errors, input.look.text, data);
    }
}

void AddBars(CurveInput const& input, CurveData& all)
{
    CurveData data;
    SharedColumns shared = ShareColumns(input, EqualX::Refused);
    if (input.series.front()->kind == SeriesKind::Stacked) {
        AddStackedBars(input, shared, data);
    } else if (shared.columns.size() == 1) {
        AddSingleBars(input, shared, kSingleWidth, data);
    } else {
        AddClusteredBars(input, shared, kClusterWidth, data);
    }
    MarkZero(input, data);
    all.Add(data);
}

} // namespace ombrel
