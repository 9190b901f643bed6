#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DErrorBarPlot.h"
#include "ombrel/graph2d/2DGraph.h"
#include "tools/ombrel/chart/PlotCurves.h"

#include <algorithm>
#include <cmath>

namespace ombrel::host {

namespace {

/// On a logarithmic axis a bar that reaches down to zero ends this many decades below its point.
constexpr double kDecadesToZero = 3.0;

struct ErrorBar {
    /// Where the bar's middle is stored, and its height in the units that are drawn.
    double middle = 0.0;
    double height = 0.0;
    double low = 0.0;
    double high = 0.0;
};

ErrorBar MakeBar(double y, double error, bool logarithmic)
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

/// The plot of error bars that the graph has already, or a new one.
C2DErrorBarPlot& ErrorPlotOf(C2DGraph& graph)
{
    for (CPlot* plot : graph.GetPlotArray()->GetPlots()) {
        if (auto* const errors = DynamicDowncast<C2DErrorBarPlot>(plot))
            return *errors;
    }
    return static_cast<C2DErrorBarPlot&>(*graph.AddPlot(it2DErrorBarPlot));
}

} // namespace

void AddErrorBars(CurveInput const& input, std::span<double const> xs, std::span<double const> ys,
    std::span<double const> errors, COLORREF colour, CurveData& data)
{
    CDoubleArray barXs;
    CDoubleArray middles;
    CDoubleArray heights;
    for (std::size_t i = 0; i < xs.size(); ++i) {
        if (IsGap(xs[i]) || IsGap(ys[i]) || !(errors[i] >= 0.0))
            continue;
        ErrorBar const bar = MakeBar(ys[i], errors[i], input.options.yLog);
        barXs.Add(xs[i]);
        middles.Add(bar.middle);
        heights.Add(bar.height);
        if (xs[i] >= input.shown.min && xs[i] <= input.shown.max) {
            data.AddY(bar.low);
            data.AddY(bar.high);
        }
    }
    auto& curve = static_cast<C2DErrorBarCurve&>(*ErrorPlotOf(input.graph).CreateCurve());
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.SetColour(colour);
    curve.SetTitle("errors");
    if (input.sources.front().HasDates())
        curve.SetXValMode(C2DCurve::xvDates);
    curve.SetPoints(&barXs, &middles, &heights, barXs.GetSize());
}

} // namespace ombrel::host
