#pragma once
#include "ombrel/model/AnnotationFrame.h"
#include "ombrel/platform/framework/Export.h"
#include "ombrel/platform/framework/Geometry.h"

#include <functional>

namespace ombrel {
class C2DGraph;
class CAnnotation;
class CDC;

/// Auto: beside or over the data, wherever there is room, when there is more than one curve. Ends: the names of lines
/// at their right ends where there is room, else as Auto.
enum class LegendPlace { Auto, Off, TopLeft, TopRight, BottomLeft, BottomRight, Ends };

/// Gives a box of that kind text as high as the axes' labels, however small the picture is. The graph must have been
/// laid out.
OMBREL_EXPORT void SetReadableFont(
    CAnnotation& box, C2DGraph const& graph, CDC& dc, AnnotationKind kind = AnnotationKind::Caption);

/// Switches the legend on and puts it in a corner of the plotting area; with LegendPlace::Auto or Ends where it covers
/// no data, else beside the plotting area at the right, or below it in narrow pictures.
///
/// The graph must have been laid out in the rectangle for a context like dc, and its curves evaluated. layOut lays it
/// out again in a smaller rectangle of the same window. Its samples show curves as they are drawn, those of
/// stacks from the top down. Off leaves the legend alone.
OMBREL_EXPORT void PlaceLegend(
    C2DGraph& graph, LegendPlace place, CRect const& rect, CDC& dc, std::function<void(CRect const&)> const& layOut);

} // namespace ombrel
