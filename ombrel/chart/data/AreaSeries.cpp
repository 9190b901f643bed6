#include "ombrel/chart/data/BarSeries.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DAreaPlot.h"
#include "ombrel/graph2d/2DGraph.h"

#include <algorithm>

namespace ombrel {

namespace {

/// The running totals at each x, or their shares.
void AddTotals(CurveInput const& input, SharedColumns const& shared, CurveData& data)
{
    for (std::size_t i = 0; i < shared.xs.size(); ++i) {
        if (shared.xs[i] < input.shown.min || shared.xs[i] > input.shown.max)
            continue;
        double total = 0.0;
        double highest = 0.0;
        double lowest = 0.0;
        bool isEmpty = true;
        for (SharedColumns::Column const& column : shared.columns) {
            if (IsGap(column.ys[i]))
                continue;
            isEmpty = false;
            total += column.ys[i];
            highest = std::max(highest, total);
            lowest = std::min(lowest, total);
        }
        if (isEmpty)
            continue;
        double const whole = highest - lowest;
        double const unit = input.settings.normalised && whole > 0.0 ? whole : 1.0;
        data.AddX(shared.xs[i]);
        data.AddY(highest / unit);
        data.AddY(lowest / unit);
    }
}

} // namespace

void AddBands(CurveInput const& input, CurveData& all)
{
    CurveData data;
    SharedColumns shared = ShareColumns(input, EqualX::Allowed);
    std::size_t gaps = 0;
    std::size_t negative = 0;
    MarkGaps(input, shared, false, data);
    for (SharedColumns::Column const& column : shared.columns) {
        gaps += static_cast<std::size_t>(
            std::count_if(column.ys.begin(), column.ys.end(), [](double y) { return IsGap(y); }));
        negative += static_cast<std::size_t>(
            std::count_if(column.ys.begin(), column.ys.end(), [](double y) { return y < 0.0; }));
    }
    if (gaps > 0)
        input.notes.AddWarning(Counted(gaps, "gap counts", "gaps count") + " as 0 in the bands");
    if (negative > 0)
        input.notes.AddWarning(Counted(negative, "value is", "values are")
            + " negative: there the bands lie over each other (stacked bars keep them apart)");
    if (shared.xs.size() < 2)
        input.notes.AddWarning("a single row has no area: there is nothing to see");
    AddTotals(input, shared, data);
    if (input.settings.normalised && data.y.min == data.y.max)
        data.AddY(1.0);
    data.wholeNumbers = shared.HasWholeNumbers();
    auto& plot = static_cast<C2DAreaPlot&>(*input.graph.AddPlot(it2DAreaPlot));
    plot.SetNormalised(input.settings.normalised);
    plot.SetBorderColour(input.look.barBorder);
    FillSeriesPlot(plot, input, shared);
    MarkZero(input, data);
    all.Add(data);
}

} // namespace ombrel
