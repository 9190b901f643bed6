#pragma once
#include "ombrel/platform/gdi/geometry/DashPattern.h"
#include "ombrel/platform/gdi/geometry/LinePixels.h"
#include "ombrel/platform/gdi/raster/CoverageMask.h"
#include "ombrel/platform/gdi/raster/RasterCanvas.h"

#include <optional>

namespace ombrel {

/// How lines of one pixel are drawn.
struct ThinPen {
    Ink ink;
    /// Painted between the dashes when present.
    std::optional<Ink> gap;
    DashPattern dashes;
    Halves halves = Halves::Smaller;
    /// Whether the last point of a segment belongs to it.
    bool withEnd = false;
};

/// Draws figures of one-pixel lines; the pattern starts at the first point of each and runs on over its vertices.
/// The mask is used where pixels must not be painted twice, or where it is faster.
void DrawThinLines(RasterCanvas const& canvas, CoverageMask& mask, Figures const& figures, ThinPen const& pen);

/// What figures cover of the canvas, margin pixels more on every side than their points.
struct FiguresExtent {
    CRect box;
    /// Visible lengths along both axes, summed over the segments.
    double across = 0.0;
    double down = 0.0;
    /// Whether the figures run more up and down than across, wherever they are clipped.
    bool isUpright = false;
};
FiguresExtent MeasureFigures(RasterCanvas const& canvas, Figures const& figures, int margin);

} // namespace ombrel
