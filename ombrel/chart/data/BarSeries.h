#pragma once
#include "ombrel/chart/data/SharedColumns.h"

namespace ombrel {
class C2DSeriesPlot;
} // namespace ombrel

namespace ombrel {

/// Adds one bar for each value of the one column, which takes up that part of the room it has.
void AddSingleBars(CurveInput const& input, SharedColumns& shared, double widthFactor, CurveData& data);

/// Adds bars side by side at each x.
void AddClusteredBars(CurveInput const& input, SharedColumns& shared, double widthFactor, CurveData& data);

/// Gives the plot the x values, and adds a curve for each column to it.
void FillSeriesPlot(C2DSeriesPlot& plot, CurveInput const& input, SharedColumns& shared);

} // namespace ombrel
