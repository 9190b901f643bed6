#pragma once
#include "tools/ombrel/chart/Occupancy.h"
#include "tools/ombrel/options/Options.h"

#include <functional>

namespace ombrel {
class C2DGraph;
class CAnnotation;
class CDC;
} // namespace ombrel

namespace ombrel::host {

/// Where the graph's curves are drawn in the plotting area that it was laid out with, the inside of closed shapes
/// included.
Occupancy OccupancyOf(C2DGraph& graph);

/// Gives a box text as high as the axes' labels, however small the picture is. The graph must have been laid out.
void SetReadableFont(CAnnotation& box, C2DGraph const& graph, CDC& dc);

/// Switches the legend on and puts it in a corner of the plotting area; with LegendPlace::Auto where it covers no data,
/// else beside the plotting area at the right, or below it in narrow pictures.
///
/// The graph must have been laid out in the rectangle for a context like dc, and its curves evaluated. layOut lays it
/// out again in a smaller rectangle of the same window. Its samples are patches for bars and bands, stretches of
/// lines, else symbols. Off leaves the legend alone.
void PlaceLegend(
    C2DGraph& graph, LegendPlace place, CRect const& rect, CDC& dc, std::function<void(CRect const&)> const& layOut);

} // namespace ombrel::host
