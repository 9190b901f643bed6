#pragma once
#include "ombrel/graph2d/2DCurve.h"
#include "ombrel/graph2d/2DGraph.h"
#include "ombrel/graph2d/2DGrid.h"
#include "ombrel/graph2d/2DSeriesPlot.h"
#include "ombrel/graph2d/Axes.h"
#include "ombrel/graph3d/3DGraph.h"
#include "ombrel/graph3d/Surface.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

// What the pictures of the gallery share: the code that they are shown with is all there is besides.

namespace ombrel::host {

/// Adds a curve of the plot's kind that takes its points from a table.
template <typename Curve> Curve& AddCurve(CPlot& plot, char const* title, COLORREF colour)
{
    auto& curve = static_cast<Curve&>(*plot.CreateCurve());
    curve.SetTitle(title);
    curve.SetDataSourceType(CPlotComponent::dsTable);
    curve.SetColour(colour);
    return curve;
}

/// Adds a curve in a plot of its own that takes its data from a table.
template <typename Curve> Curve& AddSceneCurve(C3DGraph& scene, ItemType plot)
{
    auto& curve = static_cast<Curve&>(*scene.AddPlot(plot)->CreateCurve());
    curve.SetDataSourceType(CPlotComponent::dsTable);
    return curve;
}

/// So many numbers, evenly spread from one to the other.
inline std::vector<double> Spread(double from, double to, std::size_t n)
{
    std::vector<double> numbers(n);
    for (std::size_t i = 0; i < n; ++i)
        numbers[i] = from + (to - from) * static_cast<double>(i) / static_cast<double>(n - 1);
    return numbers;
}

/// The function's value at each of the numbers.
template <typename Function> std::vector<double> Each(std::vector<double> const& numbers, Function const& f)
{
    std::vector<double> values(numbers.size());
    std::transform(numbers.begin(), numbers.end(), values.begin(), f);
    return values;
}

/// Gives the curve n points of y = f(x), evenly spread from one x to the other.
template <typename Function> void Sample(C2DCurve& curve, double from, double to, int n, Function const& f)
{
    curve.Initialise(n);
    for (int i = 0; i < n; ++i) {
        double const x = from + (to - from) * i / (n - 1);
        curve.SetAt(i, { x, f(x) });
    }
}

/// Gives the curve these values at first, first + 1, ...
inline void SetValues(C2DCurve& curve, std::span<double const> values, double first = 1.0)
{
    curve.Initialise(static_cast<int>(values.size()));
    int i = 0;
    for (double const value : values) {
        curve.SetAt(i, { first + i, value });
        ++i;
    }
}

/// Names the whole numbers of the x axis from 1 on, which then reaches so far beyond the first and the last.
inline void NameTicks(C2DGraph& graph, CStringArray const& names, double margin = 0.5)
{
    CAxes& axes = *graph.GetAxes();
    AxisSettings x = axes.GetAxis(CAxes::atX);
    x.rangeMode = CAxes::rmFixed;
    x.min = 1 - margin;
    x.max = names.GetSize() + margin;
    x.tickMode = CAxes::tmStep;
    x.tickMin = 1;
    x.tickDel = 1;
    x.numMinorTicks = 0;
    x.labelMode = CAxes::lmStrings;
    x.labels = names;
    axes.SetAxis(CAxes::atX, x);
    C2DGrid& grid = *graph.GetGrid();
    grid.SetVertLinesOn(0);
}

/// Gives the surface heights z = f(x, y) at the nodes of a grid of so many cells each way.
template <typename Function>
void SampleGrid(C3DRowColCurve& surface, CRealPoint const& from, CRealPoint const& to, int cells, Function const& f)
{
    double const dx = (to.x - from.x) / cells;
    double const dy = (to.y - from.y) / cells;
    CTableData heights(cells + 1, cells + 1);
    for (int j = 0; j <= cells; ++j) {
        for (int i = 0; i <= cells; ++i)
            heights.SetAt(j, i, f(from.x + i * dx, from.y + j * dy));
    }
    surface.SetTableData(std::move(heights));
    surface.SetTablePlacement({ from.x, from.y, dx, dy });
    surface.AlignMeshes();
    surface.SetDataSourceType(CPlotComponent::dsTable);
}

inline void NameMonths(C2DGraph& graph, double margin = 0.5)
{
    NameTicks(graph, { "J", "F", "M", "A", "M", "J", "J", "A", "S", "O", "N", "D" }, margin);
}

/// Gives a plot of curves that share their x values those of the months.
inline void ShareMonths(C2DSeriesPlot& plot)
{
    plot.SetNumPts(12);
    plot.SetXMin(1);
    plot.SetXMax(12);
}

} // namespace ombrel::host
