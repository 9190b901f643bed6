#pragma once
#include "ombrel/platform/framework/Export.h"

#include <string>
#include <vector>

namespace ombrel {
class C2DGraph;
class C2DLine;
class CDC;
class ChartNotes;
struct Look;
} // namespace ombrel

namespace ombrel {

/// Texts to be written at the points of a curve, one a point. The curve is the graph's.
struct PointLabels {
    C2DLine const* curve = nullptr;
    std::vector<std::string> texts;
};

/// Enlarges the marks of points that would be too small to tell apart. The graph must have been laid out for a context
/// like dc.
OMBREL_EXPORT void SettleMarks(C2DGraph& graph, CDC& dc);

/// Writes the labels beside their points, where they cover neither points nor other labels and are not cut: to the
/// right, else to the left, above or below. Tells how many found no place and are left out. The graph must have been
/// laid out for a context like dc.
OMBREL_EXPORT void PlaceLabels(
    C2DGraph& graph, std::vector<PointLabels> const& labels, CDC& dc, Look const& look, ChartNotes& notes);

} // namespace ombrel
