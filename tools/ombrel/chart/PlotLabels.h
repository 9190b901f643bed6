#pragma once
#include "tools/ombrel/chart/PlotCurves.h"

namespace ombrel {
class CDC;
}

namespace ombrel::host {

/// Enlarges the marks of points that would be too small to tell apart. The graph must have been laid out for a context
/// like dc.
void SettleMarks(C2DGraph& graph, CDC& dc);

/// Writes the labels beside their points, where they cover neither points nor other labels and are not cut: to the
/// right, else to the left, above or below. Tells how many found no place and are left out. The graph must have been
/// laid out for a context like dc.
void PlaceLabels(
    C2DGraph& graph, std::vector<PointLabels> const& labels, CDC& dc, Look const& look, Messages const& messages);

} // namespace ombrel::host
