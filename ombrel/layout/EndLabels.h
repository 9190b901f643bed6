#pragma once
#include "ombrel/layout/Look.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <functional>
#include <vector>

namespace ombrel {
class CDC;

/// Tops of boxes of that height which lie as near as they can to where they are wanted without overlapping, all between
/// first and last: the sum of the squared distances is the smallest. Isotonic regression by pooling adjacent violators
/// (Ayer et al. 1955) on the wanted tops, each less the height of those above. wanted ascends. Empty when there is no
/// room.
OMBREL_EXPORT std::vector<double> SpreadTops(
    std::vector<double> const& wanted, double height, double first, double last);

/// Names lines at their right ends in place of a legend: captions in the colours of the lines. False, and the graph as
/// it was, where a name would stand far from its line's end: lines that end elsewhere, too many ends at one height,
/// graphs of other curves.
///
/// The graph must have been laid out in the rectangle for a context like dc, and its curves evaluated. layOut lays it
/// out again in a smaller rectangle of the same window.
OMBREL_EXPORT bool PlaceEndLabels(
    C2DGraph& graph, CRect const& rect, CDC& dc, Look const& look, std::function<void(CRect const&)> const& layOut);

} // namespace ombrel
