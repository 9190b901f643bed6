#include "ombrel/chart/data/SeriesCurves.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace ombrel {

namespace {

/// On a logarithmic axis a bar that reaches down to zero ends this many decades below its point.
constexpr double kDecadesToZero = 3.0;

/// The plot of error bars that the graph has already, or a new one.
C2DErrorBarPlot& ErrorPlotOf(C2DGraph& graph)
{
    for (CPlot* plot : graph.GetPlotArray()->GetPlots()) {
        if (auto* const errors = DynamicDowncast<C2DErrorBarPlot>(plot))
            return *errors;
    }
    return static_cast<C2DErrorBarPlot&>(*graph.AddPlot(it2DErrorBarPlot));
}

C2DErrorBarCurve& AddCurve(CurveInput const& input, CDoubleArray const& xs, CDoubleArray const& middles,
    CDoubleArray const& heights, COLORREF colour)
{
    auto& curve = static_cast<C2DErrorBarCurve&>(*ErrorPlotOf(input.graph).CreateCurve());
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.SetColour(colour);
    if ((input.settings.xKind == XKind::Dates))
        curve.SetXValMode(C2DCurve::xvDates);
    curve.SetPoints(&xs, &middles, &heights, xs.GetSize());
    return curve;
}

} // namespace

ErrorBar MakeErrorBar(double y, double error, bool logarithmic)
{
    ErrorBar bar { y, 2.0 * error, y - error, y + error };
    if (!logarithmic)
        return bar;
    // Equal differences are unequal in decades: the bar's middle lies elsewhere.
    double const top = std::log10(bar.high);
    double const bottom = bar.low > 0.0 ? std::log10(bar.low) : std::log10(y) - kDecadesToZero;
    bar.middle = std::pow(10.0, (top + bottom) / 2.0);
    bar.height = top - bottom;
    bar.low = bar.low > 0.0 ? bar.low : y;
    return bar;
}

void AddErrorBars(CurveInput const& input, std::span<double const> xs, std::span<double const> ys,
    std::span<double const> errors, COLORREF colour, CurveData& data)
{
    CDoubleArray barXs;
    CDoubleArray middles;
    CDoubleArray heights;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (IsGap(xs[i]) || IsGap(ys[i]) || !(errors[i] >= 0.0))
            continue;
        ErrorBar const bar = MakeErrorBar(ys[i], errors[i], input.settings.yLog);
        barXs.Add(xs[i]);
        middles.Add(bar.middle);
        heights.Add(bar.height);
        if (xs[i] >= input.shown.min && xs[i] <= input.shown.max) {
            data.AddY(bar.low);
            data.AddY(bar.high);
        }
    }
    AddCurve(input, barXs, middles, heights, colour).SetTitle("errors");
}

void AddDashes(CurveInput const& input, std::span<double const> xs, std::span<double const> ys, double length,
    COLORREF colour, CurveData const& data)
{
    // Too low to be seen, whatever the scale.
    constexpr double kNoHeight = 1e-18;
    double const largest = std::max(std::abs(data.y.min), std::abs(data.y.max));
    CDoubleArray dashXs;
    CDoubleArray middles;
    CDoubleArray heights;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        dashXs.Add(xs[i]);
        middles.Add(ys[i]);
        heights.Add(kNoHeight * (input.settings.yLog || largest == 0.0 ? 1.0 : largest));
    }
    C2DErrorBarCurve& curve = AddCurve(input, dashXs, middles, heights, colour);
    curve.SetTitle("dashes");
    curve.SetScaleFac(length);
}

void MarkZero(CurveInput const& input, CurveData const& data)
{
    if (input.settings.yLog || data.y.min >= 0.0 || data.y.max <= 0.0)
        return;
    // Caps take up a hundredth of the plotting area; the dash reaches beyond both its ends, wherever its middle is.
    constexpr double kAcross = 300.0;
    AddDashes(input, std::span(&data.x.min, 1), std::array { 0.0 }, kAcross, input.look.axes, data);
}

} // namespace ombrel
