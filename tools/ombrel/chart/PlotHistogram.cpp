#include "ombrel/chart/Histogram.h"
#include "ombrel/foundation/GArray.h"
#include "ombrel/graph2d/2DGraph.h"
#include "tools/ombrel/Messages.h"
#include "tools/ombrel/chart/PlotBars.h"
#include "tools/ombrel/commands/TableFile.h"

#include <cmath>

namespace ombrel::host {

namespace {

/// The values of a column that are shown; counts the others.
std::vector<double> ShownValues(
    ColumnValues const& column, AxisRange const& shown, std::size_t& gaps, std::size_t& outside)
{
    std::vector<double> values;
    column.ForEach([&](double v) {
        if (std::isnan(v))
            ++gaps;
        else if (v < shown.min || v > shown.max)
            ++outside;
        else
            values.push_back(v);
    });
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

} // namespace

CurveData AddHistogram(CurveInput const& input)
{
    std::size_t gaps = 0;
    std::size_t outside = 0;
    std::vector<std::vector<double>> columns;
    std::vector<double> all;
    for (PlotSource& source : input.sources) {
        for (std::size_t const column : source.yColumns) {
            columns.push_back(ShownValues(source.table.columns[column].values, input.shown, gaps, outside));
            all.insert(all.end(), columns.back().begin(), columns.back().end());
        }
    }
    CurveData data;
    std::vector<double> const edges = HistogramEdges(all, input.options.bins);
    if (edges.empty())
        return data;
    input.messages.Note(Counted(all.size(), "value", "values") + " in " + Counted(edges.size() - 1, "bin", "bins")
        + " of " + NumberText(edges[1] - edges[0]) + " from " + NumberText(edges.front()) + " to "
        + NumberText(edges.back()) + "; left out: " + Counted(gaps, "gap", "gaps") + ", "
        + Counted(outside, "value", "values") + " outside of --x-range");
    std::vector<std::string> const titles = CurveTitles(input.sources);
    SharedColumns shared;
    shared.xs = MiddlesOf(edges);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        std::vector<std::size_t> const counts = CountInBins(columns[i], edges);
        shared.columns.push_back({ titles[i], { counts.begin(), counts.end() }, {} });
        if (columns[i].empty())
            data.emptyColumns.push_back(titles[i]);
        shared.columns.back().ys.resize(shared.xs.size(), kGap);
        // No count is no bar, on a logarithmic axis too.
        for (double& count : shared.columns.back().ys)
            count = input.options.yLog && count == 0.0 ? kGap : count;
    }
    // Bars that touch; the groups of several columns have to be kept apart.
    if (columns.size() == 1)
        AddSingleBars(input, shared, 1.0, data);
    else
        AddClusteredBars(input, shared, 0.9, data);
    data.wholeNumbers = false;
    data.x = { edges.front(), edges.back() };
    data.spacing = 0.0;
    return data;
}

} // namespace ombrel::host
