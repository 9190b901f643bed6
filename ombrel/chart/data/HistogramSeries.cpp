#include "ombrel/chart/data/BarSeries.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DLine.h"
#include "ombrel/graph2d/2DLinePlot.h"
#include "ombrel/layout/Histogram.h"

#include <cmath>

namespace ombrel {

namespace {

/// The values of a column that are shown; counts the others.
std::vector<double> ShownValues(
    std::span<double const> column, AxisRange const& shown, std::size_t& gaps, std::size_t& outside)
{
    std::vector<double> values;
    for (double const v : column) {
        if (IsGap(v))
            ++gaps;
        else if (v < shown.min || v > shown.max)
            ++outside;
        else
            values.push_back(v);
    }
    return values;
}

/// The middles of the bins. A single one has neighbours without bars, since distances give bars their width.
std::vector<double> MiddlesOf(std::vector<double> const& edges)
{
    std::vector<double> middles;
    for (std::size_t i = 0; i + 1 < edges.size(); ++i)
        middles.push_back((edges[i] + edges[i + 1]) / 2.0);
    if (middles.size() == 1)
        middles.push_back(middles[0] + edges[1] - edges[0]);
    return middles;
}

/// Bars side by side can be told apart where there are no more.
bool AreFew(std::size_t columns, std::size_t bins) { return columns <= 3 && bins <= 8; }

/// The outlines of bars over the same bins.
void AddOutlines(CurveInput const& input, std::span<double const> edges, SharedColumns const& shared, CurveData& data)
{
    auto& plot = static_cast<C2DLinePlot&>(*input.graph.AddPlot(it2DLinePlot));
    for (SharedColumns::Column const& column : shared.columns) {
        SeriesData const& one = *column.series;
        CurveLook const look = input.LookOf(one);
        auto& line = static_cast<C2DLine&>(*plot.CreateCurve());
        line.SetTitle(CString(one.name));
        line.SetDataSourceType(CPlotComponent::dsTable);
        line.SetColour(look.colour);
        line.SetLineType(look.lineType);
        line.SetLineWidth(one.lineWidth);
        line.SetAntialiasingOn(one.smooth);
        std::vector<std::size_t> const counts(
            column.ys.begin(), column.ys.begin() + static_cast<long>(edges.size()) - 1);
        Outline outline = OutlineOf(counts, edges);
        for (double const y : outline.ys)
            data.AddY(y);
        // No count is beyond the end of a logarithmic axis.
        for (double& y : outline.ys)
            y = input.settings.yLog && y == 0.0 ? kGap : y;
        CTableData points(2, static_cast<int>(outline.xs.size()));
        std::copy(outline.xs.begin(), outline.xs.end(), points.GetRow(0));
        std::copy(outline.ys.begin(), outline.ys.end(), points.GetRow(1));
        line.SetPoints(std::move(points));
    }
    if (input.settings.yLog && data.y.max >= 1.0)
        data.y.min = 1.0;
}

} // namespace

void AddHistogram(CurveInput const& input, CurveData& data)
{
    std::size_t gaps = 0;
    std::size_t outside = 0;
    std::vector<std::vector<double>> columns;
    std::vector<double> all;
    for (SeriesData const* const one : input.series) {
        columns.push_back(ShownValues(one->Y(), input.shown, gaps, outside));
        all.insert(all.end(), columns.back().begin(), columns.back().end());
    }
    std::vector<double> const edges = HistogramEdges(all, input.settings.bins);
    if (edges.empty())
        return;
    input.notes.AddNote(Counted(all.size(), "value", "values") + " in " + Counted(edges.size() - 1, "bin", "bins")
        + " of " + NumberText(edges[1] - edges[0]) + " from " + NumberText(edges.front()) + " to "
        + NumberText(edges.back()) + "; left out: " + Counted(gaps, "gap", "gaps") + ", "
        + Counted(outside, "value", "values") + " outside of the x range");
    CurveData bars;
    SharedColumns shared;
    shared.xs = MiddlesOf(edges);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::vector<std::size_t> const counts = CountInBins(columns[i], edges);
        shared.columns.push_back({ input.series[i], { counts.begin(), counts.end() }, {} });
        if (columns[i].empty())
            bars.empty.push_back(input.series[i]->name);
    }
    // Bars that touch; the groups of several columns have to be kept apart.
    if (columns.size() > 1 && !AreFew(columns.size(), edges.size() - 1)) {
        AddOutlines(input, edges, shared, bars);
    } else {
        for (SharedColumns::Column& column : shared.columns) {
            column.ys.resize(shared.xs.size(), kGap);
            // No count is no bar, on a logarithmic axis too.
            for (double& count : column.ys)
                count = input.settings.yLog && count == 0.0 ? kGap : count;
        }
        if (columns.size() == 1)
            AddSingleBars(input, shared, 1.0, bars);
        else
            AddClusteredBars(input, shared, 0.9, bars);
    }
    bars.wholeNumbers = false;
    bars.x = { edges.front(), edges.back() };
    bars.spacing = 0.0;
    data.Add(bars);
}

} // namespace ombrel
